// The pixel programs of the kinds 0 to 5 on the real device against the same arithmetic on the processor.
#include "KindReference.h"
#include "ShaderBench.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using Tamborel::BackgroundKind;
using Tamborel::Constants;

constexpr std::array kAllPrograms = {BackgroundKind::LiquidMetal, BackgroundKind::MagicCurtain,
                                     BackgroundKind::CloudDiving, BackgroundKind::CloudHorizon,
                                     BackgroundKind::SilkRibbons, BackgroundKind::DawnGrid,
                                     BackgroundKind::Cyberspace,  BackgroundKind::QuietGoldSunrise};

/// How far a picture may be from the reference: `Pixels` of a hundred are within `difference` on every channel.
struct Tolerance {
    double difference;
    double share = 1.0;
};

Constants At(UINT width, UINT height, float time) {
    Constants c;
    c.iResolution = {static_cast<float>(width), static_cast<float>(height), 0.0F, 0.0F};
    c.iTime = time;
    return c;
}

class Kinds : public testing::Test {
protected:
    static void SetUpTestSuite() { bench = new ShaderBench; }
    static void TearDownTestSuite() {
        delete bench;
        bench = nullptr;
    }

    /// Compares every third pixel on both axes, at the start, early and late, on a wide and on a tall picture.
    static void ExpectAgreement(BackgroundKind kind, KindReference::Vector (*reference)(const KindReference::Place&),
                                Tolerance tolerance) {
        for (const auto& [width, height] : {std::pair{240U, 135U}, {90U, 120U}}) {
            for (const float time : {0.0F, 10.0F, 60.0F, 1234.5F}) {
                SCOPED_TRACE(testing::Message() << width << " by " << height << " at " << time);
                ExpectAgreement(bench->DrawKind(kind, At(width, height, time), width, height), time, reference,
                                tolerance, 3);
            }
        }
    }

    static void ExpectAgreement(const FloatPicture& picture, float time,
                                KindReference::Vector (*reference)(const KindReference::Place&), Tolerance tolerance,
                                UINT stride) {
        int pixels = 0;
        int far = 0;
        double worst = 0.0;
        for (UINT y = stride / 2; y < picture.height; y += stride) {
            for (UINT x = stride / 2; x < picture.width; x += stride) {
                const auto expected =
                    reference({static_cast<double>(picture.width), static_cast<double>(picture.height),
                               static_cast<double>(time), x + 0.5, picture.height - (y + 0.5)});
                const auto& actual = picture.At(x, y);
                const double difference = std::max({std::abs(static_cast<double>(actual[0]) - expected.x),
                                                    std::abs(static_cast<double>(actual[1]) - expected.y),
                                                    std::abs(static_cast<double>(actual[2]) - expected.z)});
                ASSERT_TRUE(std::isfinite(difference)) << x << ", " << y;
                ASSERT_EQ(actual[3], 1.0F);
                worst = std::max(worst, difference);
                ++pixels;
                if (difference > tolerance.difference) ++far;
            }
        }
        EXPECT_LE(far, (1.0 - tolerance.share) * pixels) << "of " << pixels << " pixels; the worst is off by " << worst;
    }

    static inline ShaderBench* bench = nullptr;
};

TEST_F(Kinds, LiquidMetalPansAtTheStart) {
    const auto pans = KindReference::LiquidMetalPans(0.0);
    EXPECT_EQ(pans[0], 105.0);
    EXPECT_EQ(pans[1], 100.0);
    EXPECT_EQ(pans[2], 7.601398);
    EXPECT_EQ(pans[3], 7.601398);
}

// Sizes as the renderer has them, since the slope is taken over one pixel. Along the tiles' borders the program looks
// at the neighbours from within the pixel's own hexagon, and highlights are a power of fifty: a pixel in a hundred may
// be off.
TEST_F(Kinds, LiquidMetalAgrees) {
    for (const auto& [width, height] : {std::pair{640U, 360U}, {640U, 627U}}) {
        for (const float time : {0.0F, 10.0F, 60.0F, 1234.5F}) {
            SCOPED_TRACE(testing::Message() << width << " by " << height << " at " << time);
            ExpectAgreement(bench->DrawKind(BackgroundKind::LiquidMetal, At(width, height, time), width, height), time,
                            KindReference::LiquidMetal, {0.004, 0.99}, 7);
        }
    }
}

TEST_F(Kinds, MagicCurtainAgrees) {
    ExpectAgreement(BackgroundKind::MagicCurtain, KindReference::MagicCurtain, {0.002});
}

// The seventh octave divides the place by 0.02, which costs digits; its folds are sharp, and the colour turns over
// there.
TEST_F(Kinds, CloudDivingAgrees) {
    ExpectAgreement(BackgroundKind::CloudDiving, KindReference::CloudDiving, {0.004, 0.995});
}

// Every step's length depends on all before it: single precision drifts off in the steepest folds.
TEST_F(Kinds, CloudHorizonAgrees) {
    ExpectAgreement(BackgroundKind::CloudHorizon, KindReference::CloudHorizon, {0.01, 0.99});
}

// A pixel whose middle lies on a band's hard stop may fall on either side of it.
TEST_F(Kinds, SilkRibbonsAgrees) {
    ExpectAgreement(BackgroundKind::SilkRibbons, KindReference::SilkRibbons, {0.002, 0.998});
}

// Towards the horizon, the lines crowd within a pixel and their steep power makes much of the last digits.
TEST_F(Kinds, DawnGridAgrees) {
    ExpectAgreement(BackgroundKind::DawnGrid, KindReference::DawnGrid, {0.004, 0.995});
}

TEST_F(Kinds, EveryProgramYieldsFiniteOutputForWidthOrHeightOfOne) {
    for (const BackgroundKind kind : kAllPrograms) {
        for (const auto& [width, height] : {std::pair{1U, 1U}, {1U, 64U}, {64U, 1U}, {1U, 2000U}, {2000U, 1U}}) {
            for (const float time : {0.0F, 10.0F, 100000.0F}) {
                const FloatPicture picture = bench->DrawKind(kind, At(width, height, time), width, height);
                for (const auto& texel : picture.texels) {
                    for (const float component : texel) {
                        ASSERT_TRUE(std::isfinite(component))
                            << static_cast<unsigned>(kind) << ": " << width << " by " << height << " at " << time;
                    }
                }
            }
        }
    }
}

TEST_F(Kinds, OneToSixDependOnTimeThroughTheClockAlone) {
    for (std::size_t kind = 1; kind <= 6; ++kind) {
        Constants c = At(64, 36, 5.0F);
        const auto still = bench->DrawKind(kAllPrograms[kind], c, 64, 36).texels;
        c.iFrame = 77;
        EXPECT_EQ(bench->DrawKind(kAllPrograms[kind], c, 64, 36).texels, still) << kind;
        c.iTime = 9.0F;
        EXPECT_NE(bench->DrawKind(kAllPrograms[kind], c, 64, 36).texels, still) << kind;
    }
}

TEST_F(Kinds, LiquidMetalFollowsThePointersPlaceAndOthersDoNot) {
    for (std::size_t kind = 0; kind < kAllPrograms.size(); ++kind) {
        Constants c = At(64, 36, 5.0F);
        const auto still = bench->DrawKind(kAllPrograms[kind], c, 64, 36).texels;
        c.iMouse = {2.0F, 1.0F, 0.0F, 0.0F};
        EXPECT_EQ(bench->DrawKind(kAllPrograms[kind], c, 64, 36).texels != still, kind == 0) << kind;
    }
}

TEST_F(Kinds, GradeTintAndRangeWorkInEveryProgramAndPremultiply) {
    for (const BackgroundKind kind : kAllPrograms) {
        Constants c = At(48, 32, 5.0F);
        const auto plain = bench->DrawKind(kind, c, 48, 32).texels;
        // No saturation: grey, at the Rec. 709 luma, then brightness and contrast, not limited.
        c.colorSaturation = 0.0F;
        c.colorBrightness = 0.25F;
        c.colorContrast = 2.0F;
        c.diffuseColor = {0.5F, 1.0F, 0.25F, 0.5F};
        c.rangeMin = {0.125F, 0.0F, 0.0F, 0.0F};
        const auto graded = bench->DrawKind(kind, c, 48, 32).texels;
        for (std::size_t i = 0; i < plain.size(); ++i) {
            const double luma = 0.2126 * static_cast<double>(plain[i][0]) + 0.7152 * static_cast<double>(plain[i][1]) +
                                0.0722 * static_cast<double>(plain[i][2]);
            const double grey = (luma + 0.25 - 0.5) * 2.0 + 0.5;
            ASSERT_NEAR(static_cast<double>(graded[i][0]), (0.125 + grey * 0.5 * 0.875) * 0.5, 1e-4);
            ASSERT_NEAR(static_cast<double>(graded[i][1]), grey * 0.5, 1e-4);
            ASSERT_NEAR(static_cast<double>(graded[i][2]), grey * 0.125, 1e-4);
            ASSERT_NEAR(static_cast<double>(graded[i][3]), 0.5, 1e-6);
        }
    }
}

TEST_F(Kinds, NeutralGradeWithinTheToleranceChangesNothing) {
    Constants c = At(48, 32, 5.0F);
    const auto plain = bench->DrawKind(BackgroundKind::SilkRibbons, c, 48, 32).texels;
    c.colorHueDegrees = 0.000009F;
    c.colorSaturation = 1.000009F;
    EXPECT_EQ(bench->DrawKind(BackgroundKind::SilkRibbons, c, 48, 32).texels, plain);
    c.colorSaturation = 1.1F;
    EXPECT_NE(bench->DrawKind(BackgroundKind::SilkRibbons, c, 48, 32).texels, plain);
}

}  // namespace
