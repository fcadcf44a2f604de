// Pixels one can reason about: 0xAARRGGBB, premultiplied.

#include "Canvas.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using Microsoft::WRL::ComPtr;

TEST(Direct2DPixels, FillOfWholePixelsTouchesThoseAlone) {
    Canvas canvas(8, 8);
    ASSERT_EQ(canvas.Draw(
                  [&](auto& context) { context.FillRectangle(D2D1::RectF(2, 3, 5, 6), canvas.Brush(1, 0, 0).Get()); }),
              S_OK);
    EXPECT_EQ(canvas.Pixel(2, 3), 0xFFFF0000);
    EXPECT_EQ(canvas.Pixel(4, 5), 0xFFFF0000);
    EXPECT_EQ(canvas.Pixel(1, 3), 0U);
    EXPECT_EQ(canvas.Pixel(5, 3), 0U);
    EXPECT_EQ(canvas.Pixel(4, 6), 0U);
}

TEST(Direct2DPixels, FillOfHalfAPixelIsHalfCovered) {
    Canvas canvas(4, 4);
    canvas.Draw([&](auto& context) { context.FillRectangle(D2D1::RectF(0.5F, 0, 2, 1), canvas.Brush(1, 1, 1).Get()); });
    EXPECT_NEAR(static_cast<double>(canvas.Pixel(0, 0) >> 24), 128, 1);
    EXPECT_EQ(canvas.Pixel(1, 0), 0xFFFFFFFF);
}

TEST(Direct2DPixels, AliasedModePaintsWholePixels) {
    Canvas canvas(4, 4);
    canvas.Context().SetAntialiasMode(D2D1_ANTIALIAS_MODE_ALIASED);
    canvas.Draw(
        [&](auto& context) { context.FillRectangle(D2D1::RectF(0.4F, 0, 1.6F, 1), canvas.Brush(1, 1, 1).Get()); });
    EXPECT_EQ(canvas.Pixel(0, 0), 0xFFFFFFFF);
    EXPECT_EQ(canvas.Pixel(1, 0), 0xFFFFFFFF);
    EXPECT_EQ(canvas.Pixel(2, 0), 0U);
}

TEST(Direct2DPixels, AlphaIsPremultiplied) {
    Canvas canvas(2, 2);
    canvas.Draw(
        [&](auto& context) { context.FillRectangle(D2D1::RectF(0, 0, 2, 2), canvas.Brush(1, 0.5F, 0, 0.5F).Get()); });
    const std::uint32_t pixel = canvas.Pixel(0, 0);
    EXPECT_NEAR(static_cast<double>(pixel >> 24), 128, 1);
    EXPECT_NEAR(static_cast<double>(pixel >> 16 & 0xFF), 128, 1);
    EXPECT_NEAR(static_cast<double>(pixel >> 8 & 0xFF), 64, 1);
    EXPECT_EQ(pixel & 0xFF, 0U);
}

TEST(Direct2DPixels, BrushOpacityMultipliesAlpha) {
    Canvas canvas(2, 2);
    const auto brush = canvas.Brush(0, 0, 1, 0.5F);
    brush->SetOpacity(0.5F);
    canvas.Draw([&](auto& context) { context.FillRectangle(D2D1::RectF(0, 0, 2, 2), brush.Get()); });
    EXPECT_NEAR(static_cast<double>(canvas.Pixel(0, 0) >> 24), 64, 1);
}

TEST(Direct2DPixels, LaterFillLiesOverEarlierOne) {
    Canvas canvas(2, 2);
    canvas.Draw([&](auto& context) {
        context.FillRectangle(D2D1::RectF(0, 0, 2, 2), canvas.Brush(1, 0, 0).Get());
        context.FillRectangle(D2D1::RectF(0, 0, 2, 2), canvas.Brush(0, 0, 1, 0.5F).Get());
    });
    const std::uint32_t pixel = canvas.Pixel(1, 1);
    EXPECT_EQ(pixel >> 24, 0xFFU);
    EXPECT_NEAR(static_cast<double>(pixel >> 16 & 0xFF), 127, 1);
    EXPECT_NEAR(static_cast<double>(pixel & 0xFF), 128, 1);
}

TEST(Direct2DPixels, StrokeIsCentredOnTheOutline) {
    Canvas canvas(10, 10);
    canvas.Draw(
        [&](auto& context) { context.DrawRectangle(D2D1::RectF(2, 2, 8, 8), canvas.Brush(0, 1, 0).Get(), 2.0F); });
    EXPECT_EQ(canvas.Pixel(1, 1), 0xFF00FF00);  // The corner, pointed.
    EXPECT_EQ(canvas.Pixel(2, 5), 0xFF00FF00);
    EXPECT_EQ(canvas.Pixel(8, 5), 0xFF00FF00);
    EXPECT_EQ(canvas.Pixel(3, 5), 0U);
    EXPECT_EQ(canvas.Pixel(0, 5), 0U);
    EXPECT_EQ(canvas.Pixel(9, 9), 0U);
}

TEST(Direct2DPixels, StrokeWidthIsScaledByTheTransform) {
    Canvas canvas(20, 20);
    canvas.Draw([&](auto& context) {
        context.SetTransform(D2D1::Matrix3x2F::Scale(2, 2));
        context.DrawLine(D2D1::Point2F(0, 5), D2D1::Point2F(10, 5), canvas.Brush(1, 1, 1).Get(), 2.0F);
    });
    EXPECT_EQ(canvas.Pixel(10, 7), 0U);
    EXPECT_EQ(canvas.Pixel(10, 8), 0xFFFFFFFF);
    EXPECT_EQ(canvas.Pixel(10, 11), 0xFFFFFFFF);
    EXPECT_EQ(canvas.Pixel(10, 12), 0U);
}

TEST(Direct2DPixels, LineHasFlatEnds) {
    Canvas canvas(10, 10);
    canvas.Draw([&](auto& context) {
        context.DrawLine(D2D1::Point2F(2, 5), D2D1::Point2F(7, 5), canvas.Brush(1, 1, 1).Get(), 2.0F);
    });
    EXPECT_EQ(canvas.Pixel(1, 4), 0U);
    EXPECT_EQ(canvas.Pixel(2, 4), 0xFFFFFFFF);
    EXPECT_EQ(canvas.Pixel(6, 5), 0xFFFFFFFF);
    EXPECT_EQ(canvas.Pixel(7, 5), 0U);
}

TEST(Direct2DPixels, TransformMovesAndOutlivesTheFrame) {
    Canvas canvas(8, 8);
    canvas.Context().SetTransform(D2D1::Matrix3x2F::Translation(3, 2));
    const auto draw = [&](auto& context) {
        context.FillRectangle(D2D1::RectF(0, 0, 1, 1), canvas.Brush(1, 1, 1).Get());
    };
    canvas.Draw(draw);
    canvas.Draw(draw);
    EXPECT_EQ(canvas.Pixel(3, 2), 0xFFFFFFFF);
    EXPECT_EQ(canvas.Pixel(0, 0), 0U);
    D2D1_MATRIX_3X2_F transform;
    canvas.Context().GetTransform(&transform);
    EXPECT_EQ(transform._31, 3.0F);
}

TEST(Direct2DPixels, EllipseFillsItsMiddleAndNotItsCorners) {
    Canvas canvas(20, 20);
    canvas.Draw([&](auto& context) {
        context.FillEllipse(D2D1::Ellipse(D2D1::Point2F(10, 10), 8, 4), canvas.Brush(1, 1, 1).Get());
    });
    EXPECT_EQ(canvas.Pixel(10, 10), 0xFFFFFFFF);
    EXPECT_EQ(canvas.Pixel(3, 10), 0xFFFFFFFF);
    EXPECT_EQ(canvas.Pixel(2, 7), 0U);
    EXPECT_EQ(canvas.Pixel(10, 5), 0U);
}

TEST(Direct2DPixels, EllipseStrokeHasOneWidthAllAround) {
    Canvas canvas(40, 20);
    canvas.Draw([&](auto& context) {
        context.DrawEllipse(D2D1::Ellipse(D2D1::Point2F(20, 10), 18, 6), canvas.Brush(1, 1, 1).Get(), 2.0F);
    });
    EXPECT_GT(canvas.Pixel(20, 3) >> 24, 0xF0U);  // 3 to 5 above the centre ...
    EXPECT_GT(canvas.Pixel(20, 4) >> 24, 0xF0U);
    EXPECT_EQ(canvas.Pixel(20, 6), 0U);
    EXPECT_GT(canvas.Pixel(1, 9) >> 24, 0xA0U);  // ... and no wider where the ellipse is long.
    EXPECT_EQ(canvas.Pixel(4, 9), 0U);
}

TEST(Direct2DPixels, RoundedRectangleLeavesItsCornersFree) {
    Canvas canvas(20, 20);
    canvas.Draw([&](auto& context) {
        context.FillRoundedRectangle(D2D1::RoundedRect(D2D1::RectF(0, 0, 20, 20), 6, 6), canvas.Brush(1, 1, 1).Get());
    });
    EXPECT_EQ(canvas.Pixel(0, 0), 0U);
    EXPECT_EQ(canvas.Pixel(19, 19), 0U);
    EXPECT_EQ(canvas.Pixel(10, 0), 0xFFFFFFFF);
    EXPECT_EQ(canvas.Pixel(0, 10), 0xFFFFFFFF);
    EXPECT_EQ(canvas.Pixel(3, 3), 0xFFFFFFFF);
}

TEST(Direct2DPixels, RadiiBeyondHalfTheSizeMakeAnEllipse) {
    Canvas canvas(20, 20);
    canvas.Draw([&](auto& context) {
        context.FillRoundedRectangle(D2D1::RoundedRect(D2D1::RectF(0, 0, 20, 20), 100, 100),
                                     canvas.Brush(1, 1, 1).Get());
    });
    EXPECT_EQ(canvas.Pixel(1, 1), 0U);
    EXPECT_GT(canvas.Pixel(10, 0) >> 24, 0x80U);
    EXPECT_EQ(canvas.Pixel(10, 10), 0xFFFFFFFF);
}

TEST(Direct2DPixels, SingularTransformPaintsNothing) {
    Canvas canvas(4, 4);
    EXPECT_EQ(canvas.Draw([&](auto& context) {
        context.SetTransform(D2D1::Matrix3x2F::Scale(0, 1));
        context.FillRectangle(D2D1::RectF(0, 0, 4, 4), canvas.Brush(1, 1, 1).Get());
        context.SetTransform(D2D1::Matrix3x2F::Identity());
        context.FillRectangle(D2D1::RectF(0, 0, 1, 1), canvas.Brush(1, 0, 0).Get());
    }),
              S_OK);
    EXPECT_EQ(canvas.Pixel(0, 0), 0xFFFF0000);
    EXPECT_EQ(canvas.Pixel(2, 2), 0U);
}

TEST(Direct2DPixels, RectangleFarBeyondTheTargetFillsIt) {
    Canvas canvas(4, 4);
    canvas.Draw([&](auto& context) {
        context.FillRectangle(D2D1::RectF(-1e9F, -1e9F, 1e9F, 1e9F), canvas.Brush(1, 1, 1).Get());
    });
    EXPECT_EQ(canvas.Pixel(0, 0), 0xFFFFFFFF);
    EXPECT_EQ(canvas.Pixel(3, 3), 0xFFFFFFFF);
}

TEST(Direct2DPixels, RectangleThatIsNoNumberPaintsNothing) {
    Canvas canvas(4, 4);
    EXPECT_EQ(canvas.Draw([&](auto& context) {
        context.FillRectangle(D2D1::RectF(0, std::nanf(""), 4, 4), canvas.Brush(1, 1, 1).Get());
    }),
              S_OK);
    EXPECT_EQ(canvas.Pixel(2, 2), 0U);
}

TEST(Direct2DPixels, BitmapIsStretchedOverItsDestination) {
    Canvas canvas(8, 8);
    const std::uint32_t pixels[] = {0xFFFF0000, 0xFF00FF00};
    ComPtr<ID2D1Bitmap1> bitmap;
    const D2D1_BITMAP_PROPERTIES1 properties = D2D1::BitmapProperties1();
    ASSERT_EQ(canvas.Context().CreateBitmap(D2D1::SizeU(2, 1), pixels, 8, &properties, &bitmap), S_OK);
    canvas.Draw([&](auto& context) {
        const D2D1_RECT_F destination = D2D1::RectF(2, 2, 6, 4);
        context.DrawBitmap(bitmap.Get(), &destination, 1.0F, D2D1_INTERPOLATION_MODE_NEAREST_NEIGHBOR);
    });
    EXPECT_EQ(canvas.Pixel(2, 2), 0xFFFF0000);
    EXPECT_EQ(canvas.Pixel(3, 3), 0xFFFF0000);
    EXPECT_EQ(canvas.Pixel(4, 2), 0xFF00FF00);
    EXPECT_EQ(canvas.Pixel(6, 2), 0U);
    EXPECT_EQ(canvas.Pixel(2, 1), 0U);
}

TEST(Direct2DPixels, BitmapEdgesStayOpaqueWhenSmoothed) {
    Canvas canvas(8, 8);
    const std::uint32_t pixel = 0xFFFFFFFF;
    ComPtr<ID2D1Bitmap1> bitmap;
    const D2D1_BITMAP_PROPERTIES1 properties = D2D1::BitmapProperties1();
    ASSERT_EQ(canvas.Context().CreateBitmap(D2D1::SizeU(1, 1), &pixel, 4, &properties, &bitmap), S_OK);
    canvas.Draw([&](auto& context) {
        const D2D1_RECT_F destination = D2D1::RectF(0, 0, 8, 8);
        context.DrawBitmap(bitmap.Get(), &destination, 0.5F, D2D1_INTERPOLATION_MODE_LINEAR);
    });
    EXPECT_NEAR(static_cast<double>(canvas.Pixel(0, 0) >> 24), 128, 1);
    EXPECT_NEAR(static_cast<double>(canvas.Pixel(7, 7) >> 24), 128, 1);
}

}  // namespace
