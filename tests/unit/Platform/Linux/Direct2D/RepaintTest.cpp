// What a frame costs: only what differs from the last one is rasterised.

#include "Canvas.h"

#include <gtest/gtest.h>

namespace {

using Platform::Direct2D::PixelRect;

// Three boxes of which the middle one has a colour of its own.
auto Boxes(Canvas& canvas, float red) {
    return [&canvas, red](ID2D1DeviceContext5& context) {
        context.FillRectangle(D2D1::RectF(0, 0, 10, 10), canvas.Brush(0, 0, 1).Get());
        context.FillRectangle(D2D1::RectF(20, 20, 30, 30), canvas.Brush(red, 0, 0).Get());
        context.FillRectangle(D2D1::RectF(40, 40, 50, 50), canvas.Brush(0, 1, 0).Get());
    };
}

TEST(Direct2DRepaint, EqualFrameRasterisesNothingAndIsLaidOnAgain) {
    Canvas canvas(64, 64);
    canvas.Draw(Boxes(canvas, 1.0F));
    canvas.Draw(Boxes(canvas, 1.0F));
    ASSERT_EQ(canvas.Record().frames.size(), 2U);
    EXPECT_FALSE(canvas.Record().frames[0].changed.empty());
    EXPECT_TRUE(canvas.Record().frames[1].changed.empty());
    EXPECT_EQ(canvas.Record().frames[1].painted.size(), 3U);
    EXPECT_EQ(canvas.Pixel(25, 25), 0xFFFF0000);
}

TEST(Direct2DRepaint, OneChangedNodeRasterisesOnlyItsBounds) {
    Canvas canvas(64, 64);
    canvas.Draw(Boxes(canvas, 1.0F));
    canvas.Draw(Boxes(canvas, 0.0F));
    EXPECT_EQ(canvas.Record().frames[1].changed, (std::vector{PixelRect{20, 20, 30, 30}}));
    EXPECT_EQ(canvas.Pixel(25, 25), 0xFF000000);
    EXPECT_EQ(canvas.Pixel(5, 5), 0xFF0000FF);
    EXPECT_EQ(canvas.Pixel(45, 45), 0xFF00FF00);
}

TEST(Direct2DRepaint, MovedNodeRasterisesWhereItWasAndWhereItIs) {
    Canvas canvas(64, 64);
    const auto frame = [&](float x) {
        return [&canvas, x](ID2D1DeviceContext5& context) {
            context.FillRectangle(D2D1::RectF(x, 0, x + 4, 4), canvas.Brush(1, 1, 1).Get());
        };
    };
    canvas.Draw(frame(0));
    canvas.Draw(frame(32));
    EXPECT_EQ(canvas.Record().frames[1].changed, (std::vector{PixelRect{0, 0, 4, 4}, PixelRect{32, 0, 36, 4}}));
    EXPECT_EQ(canvas.Pixel(1, 1), 0U);
    EXPECT_EQ(canvas.Pixel(33, 1), 0xFFFFFFFF);
}

TEST(Direct2DRepaint, NodeThatVanishesUncoversWhatLayBelow) {
    Canvas canvas(64, 64);
    const auto frame = [&](bool covered) {
        return [&canvas, covered](ID2D1DeviceContext5& context) {
            context.FillRectangle(D2D1::RectF(0, 0, 64, 64), canvas.Brush(0, 0, 1).Get());
            if (covered) context.FillRectangle(D2D1::RectF(8, 8, 16, 16), canvas.Brush(1, 0, 0, 0.5F).Get());
            context.FillRectangle(D2D1::RectF(60, 60, 62, 62), canvas.Brush(0, 1, 0).Get());
        };
    };
    canvas.Draw(frame(true));
    canvas.Draw(frame(false));
    EXPECT_EQ(canvas.Record().frames[1].changed, (std::vector{PixelRect{8, 8, 16, 16}}));
    EXPECT_EQ(canvas.Pixel(10, 10), 0xFF0000FF);
}

TEST(Direct2DRepaint, PartialRepaintEqualsAFullOne) {
    const auto frame = [](Canvas& canvas, float shift) {
        return [&canvas, shift](ID2D1DeviceContext5& context) {
            context.FillEllipse(D2D1::Ellipse(D2D1::Point2F(30.3F, 28.7F), 25, 20),
                                canvas.Brush(1, 0.5F, 0, 0.7F).Get());
            context.DrawRoundedRectangle(D2D1::RoundedRect(D2D1::RectF(5.5F, 5.5F, 50.25F, 40.75F), 7, 9),
                                         canvas.Brush(0, 1, 1, 0.8F).Get(), 1.5F);
            context.DrawLine(D2D1::Point2F(shift, 3), D2D1::Point2F(shift + 9, 50), canvas.Brush(1, 1, 1).Get(), 2.5F);
        };
    };
    Canvas partial(64, 64);
    partial.Draw(frame(partial, 12.0F));
    partial.Draw(frame(partial, 33.0F));
    Canvas full(64, 64);
    full.Draw(frame(full, 33.0F));
    const auto& a = partial.Record().frames.back().pixels;
    const auto& b = full.Record().frames.back().pixels;
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        for (int shift = 0; shift < 32; shift += 8) {
            // The rasteriser's arithmetic on edges depends on where it starts: one step of 255.
            ASSERT_NEAR(static_cast<double>(a[i] >> shift & 0xFF), static_cast<double>(b[i] >> shift & 0xFF), 1)
                << "pixel " << i % 64 << ", " << i / 64;
        }
    }
}

TEST(Direct2DRepaint, NodeOutsideTheTargetCostsNothing) {
    Canvas canvas(16, 16);
    const auto frame = [&](float x) {
        return [&canvas, x](ID2D1DeviceContext5& context) {
            context.FillRectangle(D2D1::RectF(x, 0, x + 4, 4), canvas.Brush(1, 1, 1).Get());
        };
    };
    canvas.Draw(frame(100));
    canvas.Draw(frame(200));
    EXPECT_TRUE(canvas.Record().frames[1].changed.empty());
    EXPECT_TRUE(canvas.Record().frames[1].painted.empty());
}

TEST(Direct2DRepaint, BrushChangedAfterTheCallLeavesTheCallAlone) {
    Canvas canvas(4, 4);
    const auto brush = canvas.Brush(1, 0, 0);
    canvas.Draw([&](auto& context) {
        context.FillRectangle(D2D1::RectF(0, 0, 2, 4), brush.Get());
        brush->SetColor(D2D1::ColorF(0, 1, 0));
        context.FillRectangle(D2D1::RectF(2, 0, 4, 4), brush.Get());
    });
    EXPECT_EQ(canvas.Pixel(0, 0), 0xFFFF0000);
    EXPECT_EQ(canvas.Pixel(2, 0), 0xFF00FF00);
}

TEST(Direct2DRepaint, FrameAfterAFailedOneIsComparedWithTheLastShown) {
    Canvas canvas(64, 64);
    canvas.Draw(Boxes(canvas, 1.0F));
    EXPECT_EQ(canvas.Draw([&](auto& context) { context.PopAxisAlignedClip(); }), D2DERR_POP_CALL_DID_NOT_MATCH_PUSH);
    canvas.Draw(Boxes(canvas, 1.0F));
    ASSERT_EQ(canvas.Record().frames.size(), 2U);
    EXPECT_TRUE(canvas.Record().frames[1].changed.empty());
}

TEST(Direct2DRepaint, ClearDropsWhatWasDrawnBefore) {
    Canvas canvas(16, 16);
    canvas.Draw([&](auto& context) {
        context.FillRectangle(D2D1::RectF(0, 0, 8, 8), canvas.Brush(1, 0, 0).Get());
        context.Clear(D2D1::ColorF(1, 1, 0, 0.5F));
        context.FillRectangle(D2D1::RectF(8, 8, 16, 16), canvas.Brush(0, 0, 1).Get());
    });
    const ComposedFrame& frame = canvas.Record().frames.back();
    ASSERT_TRUE(frame.clear);
    EXPECT_EQ(frame.clear->r, 0.5F);  // Premultiplied.
    EXPECT_EQ(frame.clear->a, 0.5F);
    EXPECT_EQ(canvas.Pixel(0, 0), 0U);
    EXPECT_EQ(frame.painted, (std::vector{PixelRect{8, 8, 16, 16}}));
}

TEST(Direct2DRepaint, ClearWithoutColourIsTransparent) {
    Canvas canvas(4, 4);
    canvas.Draw([](auto& context) { context.Clear(); });
    ASSERT_TRUE(canvas.Record().frames.back().clear);
    EXPECT_EQ(canvas.Record().frames.back().clear->a, 0.0F);
}

TEST(Direct2DRepaint, ClearOfATargetThatIgnoresAlphaIsOpaque) {
    Canvas canvas(4, 4, D2D1_ALPHA_MODE_IGNORE);
    canvas.Draw([](auto& context) { context.Clear(D2D1::ColorF(1, 0, 0, 0.25F)); });
    EXPECT_EQ(canvas.Record().frames.back().clear->r, 1.0F);
    EXPECT_EQ(canvas.Record().frames.back().clear->a, 1.0F);
}

TEST(Direct2DRepaint, FrameWithoutClearKeepsWhatTheTargetHolds) {
    Canvas canvas(4, 4);
    canvas.Draw([](auto&) {});
    EXPECT_FALSE(canvas.Record().frames.back().clear);
}

}  // namespace
