#include "Background/OffscreenSize.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

using Tamborel::BackgroundKind;
using Tamborel::OffscreenSize;
using Tamborel::OffscreenSizeFor;

constexpr auto kLight = BackgroundKind::LiquidMetal;

TEST(OffscreenSize, Window1920By1080RendersAt640By360) {
    EXPECT_EQ(OffscreenSizeFor(kLight, 1920, 1080), (OffscreenSize{640, 360}));
}

TEST(OffscreenSize, Window1280By720RendersAt640By360) {
    EXPECT_EQ(OffscreenSizeFor(kLight, 1280, 720), (OffscreenSize{640, 360}));
}

TEST(OffscreenSize, Window900By900RendersAt640By640) {
    EXPECT_EQ(OffscreenSizeFor(kLight, 900, 900), (OffscreenSize{640, 640}));
}

TEST(OffscreenSize, LargeWindowRendersAtAThirdRoundedUp) {
    EXPECT_EQ(OffscreenSizeFor(kLight, 2560, 1440), (OffscreenSize{854, 480}));
    EXPECT_EQ(OffscreenSizeFor(kLight, 3840, 2160), (OffscreenSize{1280, 720}));
    EXPECT_EQ(OffscreenSizeFor(kLight, 1921, 1081), (OffscreenSize{641, 361}));
}

TEST(OffscreenSize, HeightDecidesInAWideWindow) {
    EXPECT_EQ(OffscreenSizeFor(kLight, 3000, 300), (OffscreenSize{3600, 360}));
    EXPECT_EQ(OffscreenSizeFor(kLight, 2000, 600), (OffscreenSize{1200, 360}));
}

TEST(OffscreenSize, WindowsBelowThreePixelsCountAsThree) {
    EXPECT_EQ(OffscreenSizeFor(kLight, 1, 1), (OffscreenSize{640, 640}));
    EXPECT_EQ(OffscreenSizeFor(kLight, 2, 3), (OffscreenSize{640, 640}));
}

TEST(OffscreenSize, FullSizeKindsKeepTheSurfaceSize) {
    EXPECT_EQ(OffscreenSizeFor(BackgroundKind::QuietGoldSunrise, 900, 700), (OffscreenSize{900, 700}));
    EXPECT_EQ(OffscreenSizeFor(BackgroundKind::LiquidMetalSurface, 1, 1), (OffscreenSize{1, 1}));
}

TEST(OffscreenSize, AllLightKindsAreSizedAlike) {
    for (std::uint32_t kind = 0; kind <= 6; ++kind) {
        EXPECT_EQ(OffscreenSizeFor(static_cast<BackgroundKind>(kind), 1000, 600), (OffscreenSize{640, 384})) << kind;
    }
}

// The rule in real numbers, a hair less before rounding up: what is left of a product after 64 binary places.
TEST(OffscreenSize, AgreesWithTheRuleInExtendedPrecision) {
    const auto up = [](long double value) {
        return static_cast<std::uint32_t>(std::max(std::ceil(value - 1e-9L), 1.0L));
    };
    for (std::uint32_t width = 1; width < 4000; width += 37) {
        for (std::uint32_t height = 1; height < 2400; height += 41) {
            const long double a = std::max(width / 3.0L, 1.0L);
            const long double b = std::max(height / 3.0L, 1.0L);
            const long double scale = std::max({640.0L / a, 360.0L / b, 1.0L});
            const OffscreenSize expected{up(a * scale), up(b * scale)};
            ASSERT_EQ(OffscreenSizeFor(kLight, width, height), expected) << width << " by " << height;
        }
    }
}

}  // namespace
