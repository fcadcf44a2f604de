// Text on a target: its pixels, and what a change of it costs.

#include "Canvas.h"

#include <dwrite_3.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string_view>

namespace {

using Microsoft::WRL::ComPtr;

constexpr UINT32 width = 400;
constexpr UINT32 height = 80;

struct Look {
    float size = 14.0F;
    float boxWidth = 180.0F;
    float boxHeight = 30.0F;
    DWRITE_FONT_STYLE style = DWRITE_FONT_STYLE_NORMAL;
};

ComPtr<IDWriteTextLayout> Layout(std::wstring_view text, const Look& look = {}) {
    ComPtr<IDWriteFactory> factory;
    EXPECT_EQ(DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory),
                                  reinterpret_cast<IUnknown**>(factory.GetAddressOf())),
              S_OK);
    ComPtr<IDWriteTextFormat> format;
    EXPECT_EQ(factory->CreateTextFormat(L"Segoe UI", nullptr, DWRITE_FONT_WEIGHT_NORMAL, look.style,
                                        DWRITE_FONT_STRETCH_NORMAL, look.size, L"", &format),
              S_OK);
    ComPtr<IDWriteTextLayout> layout;
    EXPECT_EQ(factory->CreateTextLayout(text.data(), static_cast<UINT32>(text.size()), format.Get(), look.boxWidth,
                                        look.boxHeight, &layout),
              S_OK);
    return layout;
}

D2D1_MATRIX_3X2_F Scaled(float scale) {
    return {{{scale, 0.0F, 0.0F, scale, 0.0F, 0.0F}}};
}

class Text : public ::testing::Test {
protected:
    void Show(std::wstring_view text, D2D1_POINT_2F at = {5, 5}, float scale = 1.0F, const Look& look = {}) {
        const ComPtr<IDWriteTextLayout> layout = Layout(text, look);
        ASSERT_EQ(canvas_.Draw([&](ID2D1DeviceContext5& context) {
            context.SetTransform(Scaled(scale));
            context.DrawTextLayout(at, layout.Get(), white_.Get());
        }),
                  S_OK);
    }
    const ComposedFrame& Frame() { return canvas_.Record().frames.back(); }
    unsigned Alpha(UINT32 x, UINT32 y) { return canvas_.Pixel(x, y) >> 24U; }
    unsigned ColumnInk(UINT32 x) {
        unsigned ink = 0;
        for (UINT32 y = 0; y < height; ++y) ink += Alpha(x, y);
        return ink;
    }
    unsigned RowInk(UINT32 y) {
        unsigned ink = 0;
        for (UINT32 x = 0; x < width; ++x) ink += Alpha(x, y);
        return ink;
    }
    UINT32 LastInkedRow() {
        UINT32 last = 0;
        for (UINT32 y = 0; y < height; ++y) last = RowInk(y) > 0 ? y : last;
        return last;
    }
    /// Where the outer edges of a text that begins and ends in upright stems lie, to a part of a pixel.
    struct Edges {
        float left;
        float right;
    };
    Edges StemEdges(UINT32 row) {
        UINT32 first = 0;
        while (first < width && Alpha(first, row) == 0) ++first;
        UINT32 last = width - 1;
        while (last > 0 && Alpha(last, row) == 0) --last;
        return {static_cast<float>(first + 1) - static_cast<float>(Alpha(first, row)) / 255,
                static_cast<float>(last) + static_cast<float>(Alpha(last, row)) / 255};
    }
    bool IsBlank() {
        for (UINT32 y = 0; y < height; ++y) {
            if (RowInk(y) > 0) return false;
        }
        return true;
    }

    Canvas canvas_{width, height};
    ComPtr<ID2D1SolidColorBrush> white_ = canvas_.Brush(1, 1, 1);
};

TEST_F(Text, EdgesAreGreyAtEveryScale) {
    for (const float scale : {1.0F, 1.5F, 2.0F}) {
        Show(L"Sonic", {5, 5}, scale);
        int strong = 0;
        int partial = 0;
        for (const std::uint32_t pixel : Frame().pixels) {
            const std::uint32_t alpha = pixel >> 24U;
            // White, premultiplied: all components are alike, so there is no colour at the edges.
            ASSERT_EQ(pixel, alpha * 0x01010101U);
            strong += alpha > 180 ? 1 : 0;
            partial += alpha > 0 && alpha < 255 ? 1 : 0;
        }
        EXPECT_GT(partial, 30);
        EXPECT_GT(strong, 5);
    }
}

TEST_F(Text, TheSameStringTwiceIsPixelIdentical) {
    for (const float scale : {1.0F, 1.5F, 2.0F}) {
        Show(L"Sonic", {4, 4}, scale);
        const std::vector<std::uint32_t> first = Frame().pixels;
        Show(L"", {4, 4}, scale);
        Show(L"Sonic", {4, 4}, scale);
        EXPECT_EQ(Frame().pixels, first);
    }
}

TEST_F(Text, TheSameStringAtAnotherWholePixelLooksTheSame) {
    Show(L"Sonic", {4, 4});
    const std::vector<std::uint32_t> first = Frame().pixels;
    Show(L"Sonic", {24, 14});
    for (UINT32 y = 0; y < height - 10; ++y) {
        for (UINT32 x = 0; x < width - 20; ++x) {
            ASSERT_EQ(canvas_.Pixel(x + 20, y + 10), first[y * width + x]) << x << ' ' << y;
        }
    }
}

TEST_F(Text, BaselinesAreOnOneRowForAllStringsAtEveryScale) {
    for (const float scale : {1.0F, 1.5F, 2.0F}) {
        Show(L"H", {5, 5}, scale);
        const UINT32 row = LastInkedRow();
        for (const wchar_t* const text : {L"x", L"Hill", L"fi", L"TwZ"}) {
            Show(text, {9.3F, 5}, scale);
            EXPECT_EQ(LastInkedRow(), row) << text << ' ' << scale;
        }
    }
}

TEST_F(Text, BaselinesLieBetweenRowsOfPixels) {
    // A stem ends in a full row, wherever the box lies.
    for (const float y : {5.0F, 5.3F, 5.7F}) {
        Show(L"H", {5, y}, 1.0F, {.size = 20});
        const UINT32 last = LastInkedRow();
        EXPECT_EQ(RowInk(last), RowInk(last - 1)) << y;
    }
}

TEST_F(Text, TheMeasuredWidthIsWhatIsDrawnToHalfAPixel) {
    for (const float scale : {1.0F, 1.5F, 2.0F}) {
        for (const wchar_t* const text : {L"HellowH", L"HminimumH", L"HAVATAR 0123H"}) {
            DWRITE_TEXT_METRICS one{};
            DWRITE_TEXT_METRICS all{};
            ASSERT_EQ(Layout(L"H")->GetMetrics(&one), S_OK);
            ASSERT_EQ(Layout(text)->GetMetrics(&all), S_OK);
            Show(L"H", {5, 5}, scale);
            const UINT32 row = LastInkedRow() - 1;
            const Edges single = StemEdges(row);
            Show(text, {5, 5}, scale);
            const Edges whole = StemEdges(row);
            EXPECT_NEAR(whole.right - single.right, (all.width - one.width) * scale, 0.5F) << text << ' ' << scale;
            EXPECT_NEAR(whole.left, single.left, 0.01F);
        }
    }
}

TEST_F(Text, TextThatIsSetAnewAndComesOutTheSameRasterisesNothing) {
    Show(L"Select a folder");
    EXPECT_FALSE(Frame().changed.empty());
    Show(L"Select a folder");
    EXPECT_TRUE(Frame().changed.empty());
}

TEST_F(Text, AChangeTouchesOnlyTheTextsOwnBox) {
    const ComPtr<IDWriteTextLayout> kept = Layout(L"kept");
    const auto draw = [&](const wchar_t* text) {
        const ComPtr<IDWriteTextLayout> other = Layout(text);
        canvas_.Draw([&](ID2D1DeviceContext5& context) {
            context.DrawTextLayout({5, 5}, kept.Get(), white_.Get());
            context.DrawTextLayout({205, 5}, other.Get(), white_.Get());
        });
    };
    draw(L"one");
    draw(L"two");
    ASSERT_FALSE(Frame().changed.empty());
    for (const auto& rect : Frame().changed) {
        EXPECT_GE(rect.left, 200);
        EXPECT_LE(rect.right, 250);
        EXPECT_LE(rect.Height(), 24);
    }
}

TEST_F(Text, WhatIsTakenAwayLeavesNoPixelBehind) {
    const Look italic{.size = 22, .boxWidth = 180, .boxHeight = 40, .style = DWRITE_FONT_STYLE_ITALIC};
    for (const float scale : {0.8F, 1.0F, 1.5F}) {
        for (const wchar_t* const text : {L"fjord \u00c5\u0301\u0302g", L"\u05e9\u05dc\u05d5\u05dd", L"\u6f22\u5b57"}) {
            const ComPtr<IDWriteTextLayout> layout = Layout(text, italic);
            ASSERT_EQ(layout->SetUnderline(TRUE, {0, 4}), S_OK);
            canvas_.Draw([&](ID2D1DeviceContext5& context) {
                context.SetTransform(Scaled(scale));
                context.DrawTextLayout({5.37F, 5.61F}, layout.Get(), white_.Get());
            });
            EXPECT_FALSE(IsBlank());
            Show(L"");
            EXPECT_TRUE(IsBlank());
        }
    }
}

TEST_F(Text, AColourAloneChangesThePixels) {
    Show(L"Play");
    const ComPtr<ID2D1SolidColorBrush> red = canvas_.Brush(1, 0, 0);
    const ComPtr<IDWriteTextLayout> layout = Layout(L"Play");
    canvas_.Draw([&](ID2D1DeviceContext5& context) { context.DrawTextLayout({5, 5}, layout.Get(), red.Get()); });
    EXPECT_FALSE(Frame().changed.empty());
    for (const std::uint32_t pixel : Frame().pixels) ASSERT_EQ(pixel & 0xFFFFU, 0U);
}

TEST_F(Text, AClipCutsDescenders) {
    const ComPtr<IDWriteTextLayout> layout = Layout(L"gjpqy", {.size = 30});
    canvas_.Draw([&](ID2D1DeviceContext5& context) {
        context.PushAxisAlignedClip({0, 0, 400, 38}, D2D1_ANTIALIAS_MODE_ALIASED);
        context.DrawTextLayout({5, 5}, layout.Get(), white_.Get());
        context.PopAxisAlignedClip();
    });
    EXPECT_GT(RowInk(37), 0U);
    EXPECT_EQ(RowInk(38), 0U);
}

TEST_F(Text, TurnedAndVeryLargeTextIsPaintedToo) {
    const ComPtr<IDWriteTextLayout> layout = Layout(L"Turned");
    canvas_.Draw([&](ID2D1DeviceContext5& context) {
        context.SetTransform(D2D1_MATRIX_3X2_F{{{0.98F, 0.17F, -0.17F, 0.98F, 20.0F, 5.0F}}});
        context.DrawTextLayout({5, 5}, layout.Get(), white_.Get());
    });
    EXPECT_FALSE(IsBlank());
    Show(L"l", {-5, -35}, 12.0F, {.size = 40});
    EXPECT_FALSE(IsBlank());
}

TEST_F(Text, DrawTextSetsTheTextInItsRectangle) {
    ComPtr<IDWriteFactory> factory;
    ASSERT_EQ(DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory),
                                  reinterpret_cast<IUnknown**>(factory.GetAddressOf())),
              S_OK);
    ComPtr<IDWriteTextFormat> format;
    factory->CreateTextFormat(L"Segoe UI", nullptr, DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STYLE_NORMAL,
                              DWRITE_FONT_STRETCH_NORMAL, 14, L"", &format);
    const D2D1_RECT_F rect{100, 20, 150, 40};
    EXPECT_EQ(canvas_.Draw([&](ID2D1DeviceContext5& context) {
        context.DrawText(L"Play", 4, format.Get(), &rect, white_.Get(), D2D1_DRAW_TEXT_OPTIONS_NONE,
                         DWRITE_MEASURING_MODE_NATURAL);
    }),
              S_OK);
    EXPECT_FALSE(IsBlank());
    EXPECT_EQ(ColumnInk(99), 0U);
    EXPECT_EQ(ColumnInk(151), 0U);
}

TEST_F(Text, ALayoutThatIsNoneFailsThePass) {
    EXPECT_EQ(canvas_.Draw([&](ID2D1DeviceContext5& context) {
        context.DrawTextLayout({0, 0}, nullptr, white_.Get(), D2D1_DRAW_TEXT_OPTIONS_NONE);
    }),
              E_INVALIDARG);
}

TEST_F(Text, AnOutlineMadeAnewRasterisesNothing) {
    const auto draw = [&] {
        ComPtr<ID2D1PathGeometry> path;
        canvas_.Factory().CreatePathGeometry(&path);
        ComPtr<ID2D1GeometrySink> sink;
        path->Open(&sink);
        sink->BeginFigure({10, 10}, D2D1_FIGURE_BEGIN_FILLED);
        sink->AddLine({30, 10});
        sink->AddLine({30, 30});
        sink->EndFigure(D2D1_FIGURE_END_CLOSED);
        sink->Close();
        return canvas_.Draw(
            [&](ID2D1DeviceContext5& context) { context.DrawGeometry(path.Get(), white_.Get(), 2.0F); });
    };
    ASSERT_EQ(draw(), S_OK);
    EXPECT_FALSE(Frame().changed.empty());
    ASSERT_EQ(draw(), S_OK);
    EXPECT_TRUE(Frame().changed.empty());
}

}  // namespace
