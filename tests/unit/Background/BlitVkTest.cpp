// The blit program on the real device against the same arithmetic on the processor, at all pixels.
#include "BlitReference.h"
#include "ShaderBench.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

using Tamborel::BlitConstants;

constexpr UINT kWidth = 160;
constexpr UINT kHeight = 100;
constexpr float kLight = 1.0F;     // UseThemeBackground: the blit dithers
constexpr float kFullSize = 2.0F;  // UseThemeBackground: left as it is
constexpr double kStep = 1.0 / 255.0;

/// All hues and a range of brightness beyond 1, different at every pixel.
FloatPicture Pattern() {
    FloatPicture picture{kWidth, kHeight, {}};
    for (UINT y = 0; y < kHeight; ++y) {
        for (UINT x = 0; x < kWidth; ++x) {
            const float u = static_cast<float>(x) / kWidth;
            const float v = static_cast<float>(y) / kHeight;
            picture.texels.push_back({1.3F * u, v, 1.0F - u * v, 0.25F + 0.5F * v});
        }
    }
    return picture;
}

/// A whole window with every part of the frame in sight, at whole and at broken sizes.
BlitConstants Window() {
    BlitConstants c;
    c.UseThemeBackground = kFullSize;
    c.WindowMetrics = {kWidth, kHeight, 0.0F, 0.0F};
    c.ChromeMetrics = {4.0F, 20.5F, 1.5F, 1.0F};
    c.TitleBarFill = {0.1F, 0.2F, 0.3F, 0.8F};
    c.FrameFill = {0.5F, 0.1F, 0.0F, 0.6F};
    c.InnerBorderColor = {0.9F, 0.8F, 0.1F, 0.5F};
    c.FlatInteriorFill = {0.25F, 0.5F, 0.125F, 0.75F};
    return c;
}

class BlitVk : public testing::Test {
protected:
    static void SetUpTestSuite() { bench = new ShaderBench; }
    static void TearDownTestSuite() {
        delete bench;
        bench = nullptr;
    }

    /// All pixels lie within 1/255 of the reference; where the blit dithers, the reference is limited to what shows.
    static void ExpectAgreement(const BlitConstants& c) {
        const FloatPicture source = Pattern();
        const FloatPicture actual = bench->Draw(c, source);
        const bool dithers = c.UseThemeBackground < 1.5F;
        for (UINT y = 0; y < kHeight; ++y) {
            for (UINT x = 0; x < kWidth; ++x) {
                const auto& texel = source.At(x, y);
                const Texel expected = BlitBeforeDither(c, {texel[0], texel[1], texel[2], texel[3]},
                                                        static_cast<int>(x), static_cast<int>(y));
                for (std::size_t i = 0; i < 4; ++i) {
                    const double value = dithers && i < 3 ? std::clamp(expected[i], 0.0, 1.0) : expected[i];
                    ASSERT_NEAR(static_cast<double>(actual.At(x, y)[i]), value, kStep)
                        << "channel " << i << " at " << x << ", " << y;
                }
            }
        }
    }

    static inline ShaderBench* bench = nullptr;
};

TEST_F(BlitVk, GradesAgree) {
    const std::array<Tamborel::ColorGrade, 8> grades = {{
        {21.0F, 0.45F, 0.0F, 1.0F},
        {0.0F, 1.2F, 0.0F, 1.0F},
        {-180.0F, 1.0F, 0.0F, 1.0F},
        {180.0F, 2.0F, 0.0F, 1.0F},
        {0.0F, 0.0F, 0.2F, 0.5F},
        {75.0F, 1.5F, -0.3F, 2.0F},
        {0.0F, 1.0F, 1.0F, 1.0F},
        {-33.0F, 0.7F, 0.1F, 0.0F},
    }};
    for (const float use : {kLight, kFullSize}) {
        for (const auto& grade : grades) {
            SCOPED_TRACE(testing::Message() << use << ": " << grade.hue << ", " << grade.saturation);
            BlitConstants c = Window();
            c.UseThemeBackground = use;
            c.ColorGrade = grade;
            ExpectAgreement(c);
        }
    }
}

TEST_F(BlitVk, WhiteScaleMultipliesColourAlone) {
    BlitConstants c = Window();
    c.SdrWhiteScale = 2.5F;
    ExpectAgreement(c);
}

TEST_F(BlitVk, FillsOfAnyAlphaAgree) {
    for (const float alpha : {-1.0F, 0.0F, 0.3F, 1.0F, 4.0F}) {
        SCOPED_TRACE(alpha);
        BlitConstants c = Window();
        c.TitleBarFill[3] = c.FrameFill[3] = c.InnerBorderColor[3] = alpha;
        ExpectAgreement(c);
    }
}

TEST_F(BlitVk, FlatInteriorBringsItsColourAndAlpha) {
    BlitConstants c = Window();
    c.UseThemeBackground = 0.0F;
    c.ColorGrade = {90.0F, 0.0F, 0.5F, 2.0F};  // grades the background alone
    ExpectAgreement(c);
}

TEST_F(BlitVk, MaximizedPoliciesAgree) {
    for (const float policy : {0.0F, 1.0F, 2.0F, 7.0F}) {
        for (const float maximized : {0.0F, 1.0F}) {
            SCOPED_TRACE(testing::Message() << policy << (maximized > 0.5F ? " maximized" : ""));
            BlitConstants c = Window();
            c.IsMaximized = maximized;
            c.MaximizedChromePolicy = policy;
            c.ClientFrameExtension = {3.0F, 5.0F, 7.0F, 9.0F};
            ExpectAgreement(c);
        }
    }
}

TEST_F(BlitVk, ExtensionsOffsetsAndNegativeMetricsAgree) {
    BlitConstants c = Window();
    c.ClientFrameExtension = {10.25F, 0.0F, 30.0F, 12.5F};
    ExpectAgreement(c);
    c.WindowMetrics = {kWidth + 20.0F, kHeight + 30.0F, 8.0F, 25.0F};
    ExpectAgreement(c);
    c.ChromeMetrics = {-4.0F, -20.0F, -1.0F, 1.0F};
    c.ClientFrameExtension = {-10.0F, -10.0F, -10.0F, -10.0F};
    ExpectAgreement(c);
}

TEST_F(BlitVk, FrameFillHasPrecedenceOverTheTitleFillWhereTheyMeet) {
    BlitConstants c = Window();
    c.ChromeMetrics = {4.0F, 99.0F, 1.0F, 1.0F};  // the title reaches below where the client rectangle ends
    ExpectAgreement(c);
    const FloatPicture picture = bench->Draw(c, Pattern());
    const auto& source = Pattern();
    EXPECT_NEAR(picture.At(80, 97)[2], source.At(80, 97)[2] * 0.4F, 1e-5F);
    EXPECT_NEAR(picture.At(80, 95)[2], source.At(80, 95)[2] * 0.2F + 0.24F, 1e-5F);
}

TEST_F(BlitVk, NoChromeWithoutAWindowSizeOrWithTheInnerBorderOff) {
    BlitConstants c = Window();
    c.ChromeMetrics[3] = 0.0F;
    ExpectAgreement(c);
    c = Window();
    c.WindowMetrics[0] = 0.0F;
    ExpectAgreement(c);
    c = Window();
    c.WindowMetrics[1] = -1.0F;
    ExpectAgreement(c);
}

TEST_F(BlitVk, NeutralGradeLeavesTheSourceBitExactAndAboveOne) {
    BlitConstants c;
    c.UseThemeBackground = kFullSize;
    c.ColorGrade = {0.000005F, 0.999995F, -0.000005F, 1.000005F};  // within the tolerance
    // Sides that are powers of two, where the texture coordinates hit the texels' middles exactly: elsewhere the linear
    // sampler mixes in a billionth of a neighbour.
    FloatPicture source{128, 64, {}};
    for (UINT i = 0; i < 128 * 64; ++i) {
        const float value = static_cast<float>(i) / 5000.0F;
        source.texels.push_back({value, 1.0F - value, 0.5F * value, 0.25F});
    }
    EXPECT_GT(source.At(127, 63)[0], 1.6F);
    EXPECT_EQ(bench->Draw(c, source).texels, source.texels);
}

TEST_F(BlitVk, HueOfZeroWithSaturationRunsTheGradeButSkipsTheRotation) {
    // The rotation by no angle isn't the identity: its matrices are rounded. Here that would show.
    FloatPicture grey{4, 4, std::vector<std::array<float, 4>>(16, {1.0F, 0.0F, 0.0F, 1.0F})};
    BlitConstants c;
    c.UseThemeBackground = kFullSize;
    c.ColorGrade = {0.0F, 0.9F, 0.0F, 1.0F};
    const auto unturned = bench->Draw(c, grey).At(1, 1);
    EXPECT_NEAR(unturned[0], 0.2126F + 0.9F * 0.7874F, 2e-6F);
    EXPECT_NEAR(unturned[1], 0.02126F, 2e-6F);
    c.ColorGrade.hue = 0.00002F;
    const auto turned = bench->Draw(c, grey).At(1, 1);
    EXPECT_GT(std::abs(turned[0] - unturned[0]) + std::abs(turned[1] - unturned[1]), 1e-5F);
    // And the grade ran: what lies beyond 1 is cut.
    grey.texels.assign(16, {1.5F, 0.0F, 0.0F, 1.0F});
    c.ColorGrade = {0.0F, 1.2F, 0.0F, 1.0F};
    EXPECT_EQ(bench->Draw(c, grey).At(1, 1)[0], 1.0F);
}

TEST_F(BlitVk, DitherIsOneStepWideAroundZeroSpreadEvenlyAndEqualOnAllChannels) {
    for (const float use : {0.0F, kLight}) {
        SCOPED_TRACE(use);
        BlitConstants c;
        c.UseThemeBackground = use;
        c.FlatInteriorFill = {0.5F, 0.5F, 0.5F, 1.0F};
        const FloatPicture grey{kWidth, kHeight,
                                std::vector<std::array<float, 4>>(kWidth * kHeight, {0.5F, 0.5F, 0.5F, 1.0F})};
        const FloatPicture actual = bench->Draw(c, grey);
        std::array<int, 10> tenths{};
        double sum = 0.0;
        double squares = 0.0;
        for (const auto& texel : actual.texels) {
            ASSERT_EQ(texel[0], texel[1]);
            ASSERT_EQ(texel[0], texel[2]);
            ASSERT_EQ(texel[3], 1.0F);
            const double noise = (static_cast<double>(texel[0]) - 0.5) * 255.0;
            ASSERT_LE(std::abs(noise), 0.5001);
            sum += noise;
            squares += noise * noise;
            ++tenths[static_cast<std::size_t>(std::clamp((noise + 0.5) * 10.0, 0.0, 9.0))];
        }
        const double count = static_cast<double>(actual.texels.size());
        EXPECT_NEAR(sum / count, 0.0, 0.01);                      // mean
        EXPECT_NEAR(std::sqrt(squares / count), 0.288675, 0.01);  // of an even spread
        for (const int share : tenths) EXPECT_NEAR(share / count, 0.1, 0.02);
    }
}

TEST_F(BlitVk, DitherKeepsWithinZeroAndOne) {
    BlitConstants c;
    c.UseThemeBackground = kLight;
    FloatPicture source{64, 64, std::vector<std::array<float, 4>>(64 * 64, {0.0F, 1.0F, 1.5F, 1.0F})};
    for (const auto& texel : bench->Draw(c, source).texels) {
        ASSERT_GE(texel[0], 0.0F);
        ASSERT_LE(texel[1], 1.0F);
        ASSERT_EQ(texel[2], 1.0F);
    }
}

}  // namespace
