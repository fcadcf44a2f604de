// What the setters keep, limit and ignore. None of it needs a device.
#include "Background/BackgroundRenderer.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using Tamborel::BackgroundKind;
using Tamborel::BackgroundPointer;
using Tamborel::BackgroundRenderer;
using Tamborel::BackgroundTuning;
using Tamborel::ColorGrade;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

TEST(BackgroundSettings, StartsAtTheDefaults) {
    const BackgroundRenderer renderer;
    EXPECT_EQ(renderer.Kind(), BackgroundKind::LiquidMetal);
    EXPECT_EQ(renderer.Grade(), (ColorGrade{0.0F, 1.0F, 0.0F, 1.0F}));
    EXPECT_EQ(renderer.SurfaceTuning(), (BackgroundTuning{1.0F, 0.85F, 1.3F, 2.0F, 5.0F, 2}));
    EXPECT_EQ(renderer.Pointer(), (BackgroundPointer{0.5F, 0.5F, 0.0F, 0.0F}));
    EXPECT_EQ(renderer.SunriseRate(), 1.0F);
    EXPECT_EQ(renderer.SunriseGlow(), 0.0F);
    EXPECT_EQ(renderer.SunriseClock(), 0.0);
    EXPECT_EQ(renderer.SurfaceClock(), 0.0);
    EXPECT_EQ(renderer.FrameCounter(), 0);
    EXPECT_FALSE(renderer.IsInitialized());
}

TEST(BackgroundSettings, GradeIsLimitedToItsRanges) {
    BackgroundRenderer renderer;
    renderer.SetColorGrade({200.0F, 3.0F, 2.0F, 2.5F});
    EXPECT_EQ(renderer.Grade(), (ColorGrade{180.0F, 2.0F, 1.0F, 2.0F}));
    renderer.SetColorGrade({-200.0F, -1.0F, -2.0F, -1.0F});
    EXPECT_EQ(renderer.Grade(), (ColorGrade{-180.0F, 0.0F, -1.0F, 0.0F}));
}

TEST(BackgroundSettings, GradeComponentThatIsNotFiniteKeepsItsFieldAlone) {
    BackgroundRenderer renderer;
    renderer.SetColorGrade({21.0F, 0.45F, 0.25F, 1.5F});
    renderer.SetColorGrade({kNaN, 0.5F, kInfinity, 1.25F});
    EXPECT_EQ(renderer.Grade(), (ColorGrade{21.0F, 0.5F, 0.25F, 1.25F}));
}

TEST(BackgroundSettings, EachKindHasAGradeOfItsOwn) {
    BackgroundRenderer renderer;
    for (std::uint32_t kind = 0; kind < Tamborel::kBackgroundKindCount; ++kind) {
        renderer.SetBackground(static_cast<BackgroundKind>(kind));
        EXPECT_EQ(renderer.Grade(), ColorGrade{}) << kind;
        renderer.SetColorGrade({static_cast<float>(kind) + 1.0F, 1.0F, 0.0F, 1.0F});
    }
    renderer.SetBackground(BackgroundKind::LiquidMetal);
    EXPECT_EQ(renderer.Grade().hue, 1.0F);
    renderer.SetBackground(BackgroundKind::LiquidMetalSurface);
    EXPECT_EQ(renderer.Grade().hue, 9.0F);
}

TEST(BackgroundSettings, GradeOfAValueThatIsNoKindIsNeutralAndStored) {
    BackgroundRenderer renderer;
    renderer.SetBackground(static_cast<BackgroundKind>(9));
    renderer.SetColorGrade({21.0F, 0.45F, 0.0F, 1.0F});
    EXPECT_EQ(renderer.Grade(), ColorGrade{});
    EXPECT_EQ(renderer.Kind(), static_cast<BackgroundKind>(9));
}

TEST(BackgroundSettings, TuningIsLimitedToItsRanges) {
    BackgroundRenderer renderer;
    renderer.SetSurfaceTuning({17.0F, 17.0F, 17.0F, 11.0F, 11.0F, 4});
    EXPECT_EQ(renderer.SurfaceTuning(), (BackgroundTuning{16.0F, 16.0F, 16.0F, 10.0F, 10.0F, 4}));
    renderer.SetSurfaceTuning({-1.0F, -1.0F, -1.0F, 0.0F, -1.0F, 2});
    EXPECT_EQ(renderer.SurfaceTuning(), (BackgroundTuning{0.0F, 0.0F, 0.0F, 0.1F, 0.0F, 2}));
}

TEST(BackgroundSettings, SampleSpacingOtherThanTwoOrFourIsIgnored) {
    BackgroundRenderer renderer;
    BackgroundTuning tuning;
    tuning.sampleSpacing = 4;
    renderer.SetSurfaceTuning(tuning);
    for (const int spacing : {0, 1, 3, 5, 8, -2}) {
        tuning.sampleSpacing = spacing;
        tuning.viewScale = 3.0F;
        renderer.SetSurfaceTuning(tuning);
        EXPECT_EQ(renderer.SurfaceTuning().sampleSpacing, 4) << spacing;
    }
    EXPECT_EQ(renderer.SurfaceTuning().viewScale, 3.0F);
}

TEST(BackgroundSettings, TuningComponentThatIsNotFiniteKeepsItsFieldAlone) {
    BackgroundRenderer renderer;
    renderer.SetSurfaceTuning({kNaN, 0.0F, kInfinity, -kInfinity, kNaN, 2});
    EXPECT_EQ(renderer.SurfaceTuning(), (BackgroundTuning{1.0F, 0.0F, 1.3F, 2.0F, 5.0F, 2}));
}

TEST(BackgroundSettings, SunriseParametersAreLimitedAndNotFiniteOnesIgnored) {
    BackgroundRenderer renderer;
    renderer.SetSunriseParameters(17.0F, -1.0F);
    EXPECT_EQ(renderer.SunriseRate(), 16.0F);
    EXPECT_EQ(renderer.SunriseGlow(), 0.0F);
    renderer.SetSunriseParameters(kNaN, 2.0F);
    EXPECT_EQ(renderer.SunriseRate(), 16.0F);
    EXPECT_EQ(renderer.SunriseGlow(), 2.0F);
}

TEST(BackgroundSettings, NegativeOrNaNSurfaceClockKeepsTheClock) {
    BackgroundRenderer renderer;
    renderer.SetSurfaceClock(12.5);
    for (const double seconds : {-1.0, -0.001, static_cast<double>(kNaN), static_cast<double>(kInfinity)}) {
        renderer.SetSurfaceClock(seconds);
        EXPECT_EQ(renderer.SurfaceClock(), 12.5) << seconds;
    }
    renderer.SetSurfaceClock(0.0);
    EXPECT_EQ(renderer.SurfaceClock(), 0.0);
}

TEST(BackgroundSettings, NegativeOrNaNSunriseClockKeepsClockAndFrame) {
    BackgroundRenderer renderer;
    renderer.SetSunriseClock(7.25, 99);
    for (const double seconds : {-1.0, static_cast<double>(kNaN), static_cast<double>(-kInfinity)}) {
        renderer.SetSunriseClock(seconds, 1);
        EXPECT_EQ(renderer.SunriseClock(), 7.25) << seconds;
        EXPECT_EQ(renderer.SunriseFrame(), 99) << seconds;
    }
}

TEST(BackgroundSettings, PointerIsLimitedAndTurnedUpward) {
    BackgroundRenderer renderer;
    renderer.SetPointer(0.25F, 0.25F, true);
    EXPECT_EQ(renderer.Pointer(), (BackgroundPointer{0.25F, 0.75F, 1.0F, 0.0F}));
    renderer.SetPointer(-1.0F, 2.0F, true);
    EXPECT_EQ(renderer.Pointer(), (BackgroundPointer{0.0F, 0.0F, 1.0F, 0.0F}));
}

TEST(BackgroundSettings, InactiveOrNotFinitePointerGoesBackToTheMiddle) {
    BackgroundRenderer renderer;
    renderer.SetPointer(0.1F, 0.2F, true);
    renderer.SetPointer(0.1F, 0.2F, false);
    EXPECT_EQ(renderer.Pointer(), BackgroundPointer{});
    renderer.SetPointer(0.1F, 0.2F, true);
    renderer.SetPointer(kNaN, 0.2F, true);
    EXPECT_EQ(renderer.Pointer(), BackgroundPointer{});
    renderer.SetPointer(0.1F, 0.2F, true);
    renderer.SetPointer(0.1F, kInfinity, true);
    EXPECT_EQ(renderer.Pointer(), BackgroundPointer{});
}

TEST(BackgroundKinds, DisplayNamesByIndex) {
    EXPECT_STREQ(Tamborel::kBackgroundDisplayNames[0], "Liquid Metal");
    EXPECT_STREQ(Tamborel::kBackgroundDisplayNames[6], "Cyberspace");
    EXPECT_STREQ(Tamborel::kBackgroundDisplayNames[7], "Quiet Gold Sunrise");
    EXPECT_STREQ(Tamborel::kBackgroundDisplayNames[8], "Liquid Metal Surface");
}

}  // namespace
