// "Quiet Gold Sunrise" on the real device: what is told of it exactly, without its fine lines, against a calculation of
// its own; then the grain.
#include "ShaderBench.h"
#include "SunriseReference.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <memory>

namespace {

#include "tests/unit/Background/shaders/compiled/SunriseWithoutFilaments.inc"

using Tamborel::BackgroundKind;

constexpr Tamborel::ShaderBytecode kBare = {kSunriseWithoutFilaments, sizeof(kSunriseWithoutFilaments)};
constexpr UINT kWidth = 320;
constexpr UINT kHeight = 246;
constexpr double kGrain = 0.005882353;

// The device's sines and exponentials are good to some millionths, and the largest factors that their errors meet on
// the way are the slopes of the sun's fine lines: 1 / 0.0012 per unit of the plane times 3.2 times the glow.
constexpr double kTolerance = 3e-4;
constexpr double kSunTolerance = 3e-3;

class SunriseVk : public testing::Test {
protected:
    static void SetUpTestSuite() { bench = std::make_unique<ShaderBench>(); }
    static void TearDownTestSuite() { bench.reset(); }

    static Tamborel::ShaderBytecode Whole() {
        return Tamborel::BackgroundPixelPrograms()[static_cast<std::size_t>(BackgroundKind::QuietGoldSunrise)];
    }

    /// The picture agrees with the reference but for the grain, which is the same on all channels and at most one and a
    /// half steps of 255 strong.
    static void ExpectAgreement(float time, float glow, double tolerance) {
        SCOPED_TRACE(testing::Message() << "time " << time << ", glow " << glow);
        const FloatPicture picture = bench->Draw(kBare, ConstantsFor(kWidth, kHeight, time, 3, glow));
        const SunriseReference reference{kWidth, kHeight, static_cast<double>(time), static_cast<double>(glow)};
        int wrong = 0;
        for (UINT row = 0; row < kHeight; ++row) {
            for (UINT column = 0; column < kWidth; ++column) {
                const auto expected = reference.At(column + 0.5, kHeight - (row + 0.5));
                const auto& actual = picture.At(column, row);
                double least = 1.0;
                double most = -1.0;
                for (std::size_t i = 0; i < 3; ++i) {
                    const double grain = static_cast<double>(actual[i]) - expected[i];
                    if (std::abs(grain) > kGrain + tolerance) ++wrong;
                    // Where the colour was cut to 0 or 1, the grain can't be seen whole.
                    if (actual[i] <= 0.0F || actual[i] >= 1.0F) continue;
                    least = std::min(least, grain);
                    most = std::max(most, grain);
                }
                if (most - least > 2.0 * tolerance) ++wrong;
            }
        }
        EXPECT_EQ(wrong, 0);
    }

    static inline std::unique_ptr<ShaderBench> bench;
};

TEST_F(SunriseVk, WashBlotAndTwistAgreeWithTheReference) {
    for (const float time : {0.0F, 10.0F, 60.0F, 333.25F}) ExpectAgreement(time, 0.0F, kTolerance);
}

TEST_F(SunriseVk, SunAgreesWithTheReferenceAtAnyGlow) {
    for (const float glow : {0.25F, 1.0F, 16.0F}) {
        for (const float time : {0.0F, 60.0F}) ExpectAgreement(time, glow, kSunTolerance * std::max(glow, 1.0F));
    }
}

TEST_F(SunriseVk, WithoutGlowTheSunIsAbsent) {
    // At its own place the sun would whiten the picture.
    const SunriseReference dark{kWidth, kHeight, 0.0, 0.0};
    const SunriseReference bright{kWidth, kHeight, 0.0, 1.0};
    const auto& program = Whole();
    const FloatPicture without = bench->Draw(program, ConstantsFor(kWidth, kHeight, 0.0F));
    const FloatPicture with = bench->Draw(program, ConstantsFor(kWidth, kHeight, 0.0F, 0, 1.0F));
    UINT whiter = 0;
    for (UINT row = 0; row < kHeight; ++row) {
        for (UINT column = 0; column < kWidth; ++column) {
            const double y = kHeight - (row + 0.5);
            if (bright.At(column + 0.5, y)[0] - dark.At(column + 0.5, y)[0] < 0.5) continue;
            EXPECT_GT(with.At(column, row)[0], without.At(column, row)[0] + 0.2F);
            ++whiter;
        }
    }
    EXPECT_GT(whiter, 20U);
}

TEST_F(SunriseVk, LightIsLaidOverAndNeverClips) {
    // With the strongest glow the sun's middle comes to 1 and its surroundings stay below, in the order of the
    // channels.
    const FloatPicture picture = bench->Draw(kBare, ConstantsFor(kWidth, kHeight, 0.0F, 0, 0.5F));
    int between = 0;
    for (const auto& texel : picture.texels) {
        ASSERT_LE(texel[0], 1.0F);
        if (texel[0] > 0.8F && texel[0] < 0.99F) ++between;
    }
    EXPECT_GT(between, 10);
}

TEST_F(SunriseVk, GrainMovesWithTheFrameNumberAloneAtTheSameTime) {
    const FloatPicture first = bench->Draw(Whole(), ConstantsFor(kWidth, kHeight, 10.0F, 4));
    const FloatPicture second = bench->Draw(Whole(), ConstantsFor(kWidth, kHeight, 10.0F, 5));
    const FloatPicture again = bench->Draw(Whole(), ConstantsFor(kWidth, kHeight, 10.0F, 4));
    EXPECT_EQ(first.texels, again.texels);
    std::size_t differing = 0;
    for (std::size_t i = 0; i < first.texels.size(); ++i) {
        if (first.texels[i] != second.texels[i]) ++differing;
        // Nothing but the grain differs.
        for (std::size_t c = 0; c < 3; ++c) {
            ASSERT_NEAR(first.texels[i][c], second.texels[i][c], 2.0 * kGrain + 1e-6);
        }
    }
    EXPECT_GT(differing, first.texels.size() * 9 / 10);
}

TEST_F(SunriseVk, GrainMovesWithTheClockEverySixtieth) {
    // At these places the clock's floor is the same, then one more; the picture itself hardly moves in that time.
    const FloatPicture first = bench->Draw(kBare, ConstantsFor(kWidth, kHeight, 0.1005F, 4));
    const FloatPicture same = bench->Draw(kBare, ConstantsFor(kWidth, kHeight, 0.1155F, 4));
    const FloatPicture next = bench->Draw(kBare, ConstantsFor(kWidth, kHeight, 0.1175F, 4));
    double still = 0.0;
    double moved = 0.0;
    for (std::size_t i = 0; i < first.texels.size(); ++i) {
        still += std::abs(static_cast<double>(first.texels[i][1] - same.texels[i][1]));
        moved += std::abs(static_cast<double>(same.texels[i][1] - next.texels[i][1]));
    }
    EXPECT_GT(moved, 5.0 * still);
}

TEST_F(SunriseVk, GrainIsEvenlySpreadAndIndependentBetweenNeighbours) {
    const FloatPicture picture = bench->Draw(kBare, ConstantsFor(kWidth, kHeight, 0.0F, 7));
    const SunriseReference reference{kWidth, kHeight, 0.0, 0.0};
    double sum = 0.0;
    double squares = 0.0;
    double beside = 0.0;
    double count = 0.0;
    double before = 0.0;
    std::map<int, double> tenths;
    for (UINT row = 0; row < kHeight; ++row) {
        for (UINT column = 0; column < kWidth; ++column) {
            const double color = reference.At(column + 0.5, kHeight - (row + 0.5))[2];
            const double grain = (static_cast<double>(picture.At(column, row)[2]) - color) / kGrain;
            sum += grain;
            squares += grain * grain;
            beside += grain * before;
            before = grain;
            ++tenths[static_cast<int>(std::floor((grain + 1.0) * 5.0))];
            ++count;
        }
    }
    EXPECT_NEAR(sum / count, 0.0, 0.02);
    EXPECT_NEAR(squares / count, 1.0 / 3.0, 0.01);  // of an even spread from -1 to 1
    EXPECT_NEAR(beside / count, 0.0, 0.01);
    for (int tenth = 0; tenth < 10; ++tenth) EXPECT_NEAR(tenths[tenth] / count, 0.1, 0.01) << tenth;
}

TEST_F(SunriseVk, FinitePictureForAWidthOrHeightOfOne) {
    for (const auto& [width, height] : {std::pair{1U, 1U}, {1U, 200U}, {200U, 1U}, {4096U, 1U}, {1U, 4096U}}) {
        for (const float glow : {0.0F, 16.0F}) {
            const FloatPicture picture = bench->Draw(Whole(), ConstantsFor(width, height, 60.0F, 1, glow));
            for (const auto& texel : picture.texels) {
                for (const float component : texel) ASSERT_TRUE(component >= 0.0F && component <= 1.0F);
            }
        }
    }
}

}  // namespace
