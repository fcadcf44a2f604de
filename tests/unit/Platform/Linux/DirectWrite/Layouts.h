// Short ways to text that is set, and a renderer that notes what it is handed.
#pragma once

#include <dwrite_3.h>
#include <wrl/client.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace Layouts {

using Microsoft::WRL::ComPtr;

struct Setting {
    const wchar_t* family = L"Segoe UI";
    float size = 14.0F;
    float width = 1000.0F;
    float height = 100.0F;
    DWRITE_TEXT_ALIGNMENT alignment = DWRITE_TEXT_ALIGNMENT_LEADING;
    DWRITE_PARAGRAPH_ALIGNMENT paragraph = DWRITE_PARAGRAPH_ALIGNMENT_NEAR;
    DWRITE_WORD_WRAPPING wrapping = DWRITE_WORD_WRAPPING_WRAP;
    DWRITE_FONT_WEIGHT weight = DWRITE_FONT_WEIGHT_NORMAL;
    DWRITE_FONT_STYLE style = DWRITE_FONT_STYLE_NORMAL;
    IDWriteFontCollection* collection = nullptr;
};

inline ComPtr<IDWriteFactory5> Factory() {
    ComPtr<IDWriteFactory5> factory;
    EXPECT_EQ(DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory5),
                                  reinterpret_cast<IUnknown**>(factory.GetAddressOf())),
              S_OK);
    return factory;
}

inline ComPtr<IDWriteTextLayout> Layout(std::wstring_view text, const Setting& setting = {}) {
    const ComPtr<IDWriteFactory5> factory = Factory();
    ComPtr<IDWriteTextFormat> format;
    EXPECT_EQ(factory->CreateTextFormat(setting.family, setting.collection, setting.weight, setting.style,
                                        DWRITE_FONT_STRETCH_NORMAL, setting.size, L"", &format),
              S_OK);
    EXPECT_EQ(format->SetTextAlignment(setting.alignment), S_OK);
    EXPECT_EQ(format->SetParagraphAlignment(setting.paragraph), S_OK);
    EXPECT_EQ(format->SetWordWrapping(setting.wrapping), S_OK);
    ComPtr<IDWriteTextLayout> layout;
    EXPECT_EQ(factory->CreateTextLayout(text.data(), static_cast<UINT32>(text.size()), format.Get(), setting.width,
                                        setting.height, &layout),
              S_OK);
    return layout;
}

inline DWRITE_TEXT_METRICS Metrics(IDWriteTextLayout* layout) {
    DWRITE_TEXT_METRICS metrics{};
    EXPECT_EQ(layout->GetMetrics(&metrics), S_OK);
    return metrics;
}

inline DWRITE_TEXT_METRICS Metrics(std::wstring_view text, const Setting& setting = {}) {
    return Metrics(Layout(text, setting).Get());
}

inline std::vector<DWRITE_LINE_METRICS> Lines(IDWriteTextLayout* layout) {
    UINT32 count = 0;
    layout->GetLineMetrics(nullptr, 0, &count);
    std::vector<DWRITE_LINE_METRICS> lines(count);
    EXPECT_EQ(layout->GetLineMetrics(lines.data(), count, &count), S_OK);
    return lines;
}

/// A glyph run that a renderer was handed.
struct DrawnRun {
    ComPtr<IDWriteFontFace> face;
    float x;
    float y;
    float width;
    UINT32 level;
    UINT32 textPosition;
    UINT32 textLength;
    std::vector<UINT16> glyphs;
    std::vector<float> advances;
};

/// Lives on the stack.
class Renderer final : public IDWriteTextRenderer {
public:
    std::vector<DrawnRun> runs;
    std::vector<DWRITE_UNDERLINE> underlines;
    std::vector<DWRITE_STRIKETHROUGH> strikethroughs;
    BOOL snappingDisabled = TRUE;
    float pixelsPerDip = 1.0F;

    HRESULT QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG AddRef() override { return 1; }
    ULONG Release() override { return 1; }
    HRESULT IsPixelSnappingDisabled(void*, BOOL* disabled) override {
        *disabled = snappingDisabled;
        return S_OK;
    }
    HRESULT GetCurrentTransform(void*, DWRITE_MATRIX* transform) override {
        *transform = {1, 0, 0, 1, 0, 0};
        return S_OK;
    }
    HRESULT GetPixelsPerDip(void*, FLOAT* pixels) override {
        *pixels = pixelsPerDip;
        return S_OK;
    }
    HRESULT DrawGlyphRun(void*, FLOAT x, FLOAT y, DWRITE_MEASURING_MODE, const DWRITE_GLYPH_RUN* run,
                         const DWRITE_GLYPH_RUN_DESCRIPTION* description, IUnknown*) override {
        float width = 0.0F;
        for (UINT32 i = 0; i < run->glyphCount; ++i) width += run->glyphAdvances[i];
        runs.push_back({run->fontFace,
                        x,
                        y,
                        width,
                        run->bidiLevel,
                        description->textPosition,
                        description->stringLength,
                        {run->glyphIndices, run->glyphIndices + run->glyphCount},
                        {run->glyphAdvances, run->glyphAdvances + run->glyphCount}});
        return S_OK;
    }
    HRESULT DrawUnderline(void*, FLOAT, FLOAT, const DWRITE_UNDERLINE* underline, IUnknown*) override {
        underlines.push_back(*underline);
        return S_OK;
    }
    HRESULT DrawStrikethrough(void*, FLOAT, FLOAT, const DWRITE_STRIKETHROUGH* strikethrough, IUnknown*) override {
        strikethroughs.push_back(*strikethrough);
        return S_OK;
    }
    HRESULT DrawInlineObject(void*, FLOAT, FLOAT, IDWriteInlineObject*, BOOL, BOOL, IUnknown*) override { return S_OK; }
};

inline std::vector<DrawnRun> Runs(std::wstring_view text, const Setting& setting = {}) {
    Renderer renderer;
    EXPECT_EQ(Layout(text, setting)->Draw(nullptr, &renderer, 0.0F, 0.0F), S_OK);
    return renderer.runs;
}

}  // namespace Layouts
