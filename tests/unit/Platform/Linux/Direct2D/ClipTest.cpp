#include "Canvas.h"

#include <gtest/gtest.h>

namespace {

TEST(Direct2DClip, NothingIsPaintedOutside) {
    Canvas canvas(8, 8);
    canvas.Draw([&](auto& context) {
        context.PushAxisAlignedClip(D2D1::RectF(2, 2, 4, 4), D2D1_ANTIALIAS_MODE_PER_PRIMITIVE);
        context.FillRectangle(D2D1::RectF(0, 0, 8, 8), canvas.Brush(1, 1, 1).Get());
        context.PopAxisAlignedClip();
    });
    EXPECT_EQ(canvas.Pixel(2, 2), 0xFFFFFFFF);
    EXPECT_EQ(canvas.Pixel(3, 3), 0xFFFFFFFF);
    EXPECT_EQ(canvas.Pixel(1, 2), 0U);
    EXPECT_EQ(canvas.Pixel(4, 3), 0U);
}

TEST(Direct2DClip, SmoothClipCutsPixelsInPart) {
    Canvas canvas(4, 4);
    canvas.Draw([&](auto& context) {
        context.PushAxisAlignedClip(D2D1::RectF(0.5F, 0, 4, 4), D2D1_ANTIALIAS_MODE_PER_PRIMITIVE);
        context.FillRectangle(D2D1::RectF(0, 0, 4, 4), canvas.Brush(1, 1, 1).Get());
        context.PopAxisAlignedClip();
    });
    EXPECT_NEAR(static_cast<double>(canvas.Pixel(0, 0) >> 24), 128, 1);
}

TEST(Direct2DClip, AliasedClipTakesPixelsWhoseCentreIsInside) {
    Canvas canvas(6, 6);
    canvas.Draw([&](auto& context) {
        context.PushAxisAlignedClip(D2D1::RectF(0.4F, 0.6F, 2.4F, 2.6F), D2D1_ANTIALIAS_MODE_ALIASED);
        context.FillRectangle(D2D1::RectF(0, 0, 6, 6), canvas.Brush(1, 1, 1).Get());
        context.PopAxisAlignedClip();
    });
    EXPECT_EQ(canvas.Pixel(0, 1), 0xFFFFFFFF);  // Centre 0.5 lies right of 0.4 ...
    EXPECT_EQ(canvas.Pixel(0, 0), 0U);          // ... and above 0.6.
    EXPECT_EQ(canvas.Pixel(1, 2), 0xFFFFFFFF);
    EXPECT_EQ(canvas.Pixel(2, 2), 0U);
}

TEST(Direct2DClip, InnerClipIsCutByOuterOne) {
    Canvas canvas(8, 8);
    canvas.Draw([&](auto& context) {
        context.PushAxisAlignedClip(D2D1::RectF(0, 0, 4, 8), D2D1_ANTIALIAS_MODE_ALIASED);
        context.PushAxisAlignedClip(D2D1::RectF(2, 0, 8, 8), D2D1_ANTIALIAS_MODE_ALIASED);
        context.FillRectangle(D2D1::RectF(0, 0, 8, 8), canvas.Brush(1, 0, 0).Get());
        context.PopAxisAlignedClip();
        context.FillRectangle(D2D1::RectF(0, 4, 8, 8), canvas.Brush(0, 0, 1).Get());
        context.PopAxisAlignedClip();
    });
    EXPECT_EQ(canvas.Pixel(3, 0), 0xFFFF0000);
    EXPECT_EQ(canvas.Pixel(1, 0), 0U);
    EXPECT_EQ(canvas.Pixel(4, 0), 0U);
    EXPECT_EQ(canvas.Pixel(1, 5), 0xFF0000FF);
    EXPECT_EQ(canvas.Pixel(4, 5), 0U);
}

TEST(Direct2DClip, ClipsApartLeaveNothing) {
    Canvas canvas(8, 8);
    canvas.Draw([&](auto& context) {
        context.PushAxisAlignedClip(D2D1::RectF(0, 0, 2, 8), D2D1_ANTIALIAS_MODE_ALIASED);
        context.PushAxisAlignedClip(D2D1::RectF(4, 0, 8, 8), D2D1_ANTIALIAS_MODE_ALIASED);
        context.FillRectangle(D2D1::RectF(0, 0, 8, 8), canvas.Brush(1, 0, 0).Get());
        context.PopAxisAlignedClip();
        context.PopAxisAlignedClip();
    });
    for (UINT32 x = 0; x < 8; ++x) EXPECT_EQ(canvas.Pixel(x, 4), 0U);
}

TEST(Direct2DClip, ClipIsTakenThroughTheTransformOfItsPush) {
    Canvas canvas(8, 8);
    canvas.Draw([&](auto& context) {
        context.SetTransform(D2D1::Matrix3x2F::Translation(4, 0));
        context.PushAxisAlignedClip(D2D1::RectF(0, 0, 2, 2), D2D1_ANTIALIAS_MODE_ALIASED);
        context.SetTransform(D2D1::Matrix3x2F::Identity());
        context.FillRectangle(D2D1::RectF(0, 0, 8, 8), canvas.Brush(1, 1, 1).Get());
        context.PopAxisAlignedClip();
    });
    EXPECT_EQ(canvas.Pixel(4, 0), 0xFFFFFFFF);
    EXPECT_EQ(canvas.Pixel(0, 0), 0U);
}

}  // namespace
