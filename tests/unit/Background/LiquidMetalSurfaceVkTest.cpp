// The metal surface on the real device, both stages, against the same arithmetic on the processor.
#include "LiquidMetalSurfaceReference.h"
#include "tools/background_shot/Shot.h"

#include <gtest/gtest.h>

namespace {

using KindReference::Vector;
using Tamborel::BackgroundTuning;
using Tamborel::LiquidMetalConstants;

constexpr std::uint32_t kWidth = 64;
constexpr std::uint32_t kHeight = 40;

BackgroundShot::Options OptionsFor(std::uint32_t width, std::uint32_t height, double time,
                                   const BackgroundTuning& tuning) {
    BackgroundShot::Options options;
    options.kind = Tamborel::BackgroundKind::LiquidMetalSurface;
    options.width = width;
    options.height = height;
    options.time = time;
    options.tuning = tuning;
    options.record.useThemeBackground = 1;
    return options;
}

BackgroundShot::Picture Drawn(std::uint32_t width, std::uint32_t height, double time, const BackgroundTuning& tuning,
                              std::optional<std::array<float, 2>> pointer = {}) {
    auto options = OptionsFor(width, height, time, tuning);
    options.pointer = pointer;
    return BackgroundShot::Draw(options).offscreen;
}

LiquidMetalConstants ConstantsFor(std::uint32_t width, std::uint32_t height, double time,
                                  const BackgroundTuning& tuning, std::optional<std::array<float, 2>> pointer) {
    const auto size = Tamborel::SurfaceGridSizeFor(width, height, static_cast<std::uint32_t>(tuning.sampleSpacing));
    LiquidMetalConstants c;
    c.iResolution = {static_cast<float>(width), static_cast<float>(height)};
    c.gridDimensions = {static_cast<float>(size.width), static_cast<float>(size.height)};
    if (pointer) c.pointerPositionUV = {(*pointer)[0], 1.0F - (*pointer)[1], 1.0F, 0.0F};
    c.iTime = static_cast<float>(time);
    c.emberStrength = tuning.emberStrength;
    c.pointerStrength = tuning.pointerStrength;
    c.viewScale = tuning.viewScale;
    c.fineDetail = tuning.fineDetail;
    c.sampleSpacing = static_cast<float>(tuning.sampleSpacing);
    return c;
}

// The march ends where the distance falls below a bound, and the fine octaves make it jumpy: in single precision some
// rays end a step earlier or later, or pass a crest. Those texels differ, each in the four by four cells around it.
constexpr double kDifference = 0.01;
constexpr double kShare = 0.97;

void ExpectAgreement(double time, const BackgroundTuning& tuning, std::optional<std::array<float, 2>> pointer = {}) {
    const auto picture = Drawn(kWidth, kHeight, time, tuning, pointer);
    const LiquidMetalConstants c = ConstantsFor(kWidth, kHeight, time, tuning, pointer);
    std::vector<Vector> texels;
    for (int row = 0; row < static_cast<int>(c.gridDimensions[1]); ++row) {
        for (int column = 0; column < static_cast<int>(c.gridDimensions[0]); ++column) {
            texels.push_back(KindReference::SurfaceTexel(c, column, row));
        }
    }
    int far = 0;
    double worst = 0.0;
    for (int y = 0; y < static_cast<int>(kHeight); ++y) {
        for (int x = 0; x < static_cast<int>(kWidth); ++x) {
            const Vector expected = KindReference::SurfacePixel(c, texels, x, y);
            const auto& actual = picture.texels[static_cast<std::size_t>(y) * kWidth + static_cast<std::size_t>(x)];
            const double difference = std::max({std::abs(static_cast<double>(actual[0]) - expected.x),
                                                std::abs(static_cast<double>(actual[1]) - expected.y),
                                                std::abs(static_cast<double>(actual[2]) - expected.z)});
            ASSERT_NEAR(actual[3], 1.0F, 0.002F);
            worst = std::max(worst, difference);
            if (!(difference <= kDifference)) ++far;
        }
    }
    EXPECT_LE(far, (1.0 - kShare) * kWidth * kHeight) << "the worst is off by " << worst;
}

TEST(SurfaceVk, AgreesAtBothSpacingsAndSeveralTimes) {
    for (const std::int32_t spacing : {2, 4}) {
        for (const double time : {0.0, 10.0, 60.0, 1234.5}) {
            SCOPED_TRACE(testing::Message() << spacing << " at " << time);
            BackgroundTuning tuning;
            tuning.sampleSpacing = spacing;
            ExpectAgreement(time, tuning);
        }
    }
}

TEST(SurfaceVk, AgreesWithOtherTuningAndAPointer) {
    ExpectAgreement(5.0, {1.0F, 2.0F, 4.0F, 1.0F, 2.0F, 2}, std::array{0.75F, 0.25F});
    ExpectAgreement(5.0, {1.0F, 0.0F, 0.0F, 4.0F, 5.0F, 2}, std::array{0.1F, 0.9F});
}

TEST(SurfaceVk, FineDetailZeroRemovesTheFineOctavesFromTheHeightButKeepsTheirWarp) {
    BackgroundTuning tuning;
    tuning.fineDetail = 0.0F;
    ExpectAgreement(10.0, tuning);
    // Without weight the fine octaves leave the sum of the two coarse ones.
    const Vector point = {0.3, -0.2, -0.7};
    const double coarse = KindReference::SurfaceHeight(point, 10.0, 0.0);
    EXPECT_LE(std::abs(coarse - 0.5), 0.25 * 1.55);
    const double fine = KindReference::SurfaceHeight(point, 10.0, 1.0) - coarse;
    EXPECT_NEAR(KindReference::SurfaceHeight(point, 10.0, 5.0), coarse + 5.0 * fine, 1e-12);
}

TEST(SurfaceVk, EmberStrengthZeroRemovesTheWarmEmberLightEntirely) {
    BackgroundTuning tuning;
    tuning.emberStrength = 0.0F;
    ExpectAgreement(10.0, tuning);
    BackgroundTuning warm;
    warm.emberStrength = 2.0F;
    const auto without = Drawn(kWidth, kHeight, 10.0, tuning);
    const auto with = Drawn(kWidth, kHeight, 10.0, warm);
    double red = 0.0;
    double blue = 0.0;
    for (std::size_t i = 0; i < with.texels.size(); ++i) {
        red += static_cast<double>(with.texels[i][0] - without.texels[i][0]);
        blue += static_cast<double>(with.texels[i][2] - without.texels[i][2]);
    }
    EXPECT_GT(red, 0.02 * static_cast<double>(with.texels.size()));
    EXPECT_GT(red, 2.0 * blue);
}

TEST(SurfaceVk, VignetteAtCornerAndCentre) {
    const auto corner = KindReference::VignetteAt(0.0, 0.0);
    EXPECT_EQ(corner.v, 0.0);
    EXPECT_DOUBLE_EQ(corner.w, 0.44);
    EXPECT_NEAR(KindReference::VignetteAt(0.5, 0.5).w, 0.94, 0.005);
}

TEST(SurfaceVk, SmallestWindowsYieldFiniteOutput) {
    for (const std::int32_t spacing : {2, 4}) {
        for (const auto& [width, height] : {std::pair{1U, 1U}, {1U, 64U}, {64U, 1U}, {2U, 3U}}) {
            BackgroundTuning tuning;
            tuning.sampleSpacing = spacing;
            for (const auto& texel : Drawn(width, height, 3.0, tuning).texels) {
                for (const float component : texel) ASSERT_TRUE(std::isfinite(component));
            }
        }
    }
}

TEST(SurfaceVk, IsDrawnAtFullSizeAndNotDithered) {
    const auto shot = BackgroundShot::Draw(OptionsFor(33, 17, 2.0, {}));
    EXPECT_EQ(shot.offscreen.width, 33U);
    EXPECT_EQ(shot.offscreen.height, 17U);
    for (std::size_t i = 0; i < shot.image.texels.size(); ++i) {
        for (std::size_t channel = 0; channel < 3; ++channel) {
            ASSERT_NEAR(shot.image.texels[i][channel], shot.offscreen.texels[i][channel], 1e-5F);
        }
    }
}

}  // namespace
