// The canvas in the window.

#include "SceneTest.h"

#include <cmath>

namespace {

using Tamborel::Matrix3x2;

/// The same by another way: in double precision, from the pixels of the four sides.
struct Placed {
    double scale, left, top;
};
Placed Place(double width, double height, double dpi, bool zoomed, double canvas) {
    const double unit = dpi / 96;
    const double side = zoomed ? 0 : 9;
    double w = width / unit - side - side;
    double h = height / unit - 36 - (zoomed ? 0 : 10);
    if (w < 1) w = 1;
    if (h < 1) h = 1;
    double padding = std::fmin(w, h) / 20;
    if (padding > 12) padding = 12;
    const double scale = std::fmin((w - padding - padding) / 820, (h - padding - padding) / canvas);
    return {scale, (w - 820 * scale) / 2, (h - canvas * scale) / 2};
}

TEST(SceneFit, AgreesWithTheOtherWayAtManySizes) {
    for (const UINT dpi : {96U, 120U, 144U, 192U}) {
        for (const bool zoomed : {false, true}) {
            for (UINT width = 1; width < 4000; width += 173) {
                for (UINT height = 1; height < 3000; height += 211) {
                    for (const bool developer : {false, true}) {
                        const Matrix3x2 fit = FitScene({width, height, dpi, zoomed}, CanvasHeight(developer));
                        const Placed placed = Place(width, height, dpi, zoomed, developer ? 1048 : 770);
                        ASSERT_NEAR(fit.m11, placed.scale, 1e-5);
                        ASSERT_EQ(fit.m22, fit.m11);
                        ASSERT_EQ(fit.m12, 0);
                        ASSERT_EQ(fit.m21, 0);
                        ASSERT_NEAR(fit.dx, placed.left, 1e-2);
                        ASSERT_NEAR(fit.dy, placed.top, 1e-2);
                    }
                }
            }
        }
    }
}

TEST(SceneFit, AWindowOfOnePixelGivesASmallPositiveScale) {
    const Matrix3x2 fit = FitScene({1, 1, 96, false}, 770);
    EXPECT_GT(fit.m11, 0);
    EXPECT_NEAR(fit.m11, (1 - 2 * 0.05) / 820, 1e-7);
}

TEST(SceneFit, MaximisingAtTheSameSizeEnlargesTheSceneALittle) {
    const float normal = FitScene({1280, 984, 96, false}, 770).m11;
    const float zoomed = FitScene({1280, 984, 96, true}, 770).m11;
    EXPECT_GT(zoomed, normal);
    EXPECT_LT(zoomed, normal * 1.05F);
}

TEST(SceneFit, SizesWithTheSameSmallerSideHaveTheSameScale) {
    EXPECT_EQ(FitScene({3000, 900, 96, false}, 770).m11, FitScene({2000, 900, 96, false}, 770).m11);
    EXPECT_EQ(FitScene({900, 3000, 96, false}, 770).m11, FitScene({900, 2000, 96, false}, 770).m11);
}

TEST(SceneFit, TheLayoutHasTwoHeights) {
    EXPECT_EQ(CanvasHeight(false), 770);
    EXPECT_EQ(CanvasHeight(true), 1048);
}

class PlacedScene : public SceneTest {};

TEST_F(PlacedScene, TheFitIsTheScenesTransformInEachFrame) {
    Show();
    actions_->surroundings = {.width = 900, .height = 900, .dpi = 144, .zoomed = false};
    Frame();
    EXPECT_EQ(scene_->localTransform, FitScene(actions_->surroundings, 770));
    EXPECT_EQ(scene_->worldTransform, scene_->localTransform);
}

class Decorations : public SceneTest {};

TEST_F(Decorations, AClickOnACardsNameMarkOrDescriptionLandsOnTheCardsButton) {
    for (const Tamborel::Point place : {Tamborel::Point{470, 445}, {443, 450}, {500, 480}}) {
        Show();
        ASSERT_TRUE(scene_->modernRenderer);
        Click(place);
        EXPECT_FALSE(scene_->modernRenderer) << place.x;
    }
}

TEST_F(Decorations, AClickOnThePanelDoesNothing) {
    Show();
    const std::size_t saves = actions_->saved.size();
    Click({300, 300});
    EXPECT_EQ(actions_->saved.size(), saves);
}

TEST_F(Decorations, NeverTakeThePointer) {
    DecorationText text;
    text.bounds = {0, 0, 10, 10};
    DecorationEllipse ellipse;
    DecorationRectangle rectangle;
    rectangle.rect = {0, 0, 10, 10};
    EXPECT_FALSE(text.HitTest({5, 5}));
    EXPECT_FALSE(ellipse.HitTest({0, 0}));
    EXPECT_FALSE(rectangle.HitTest({5, 5}));
}

}  // namespace
