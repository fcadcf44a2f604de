// The whole renderer on the real device: both stages, through a command list.
#include "Background/BackgroundRenderer.h"
#include "ShaderBench.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

using Tamborel::BackgroundKind;
using Tamborel::BackgroundRenderer;
using Tamborel::BlitFrameRecord;

class RendererVk : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(renderer.InitializeOn(bench.Device()), S_OK); }

    FloatPicture Draw(UINT width, UINT height) { return bench.Draw(renderer, record, width, height); }

    ShaderBench bench;
    BlitFrameRecord record;
    BackgroundRenderer renderer;
};

double Average(const FloatPicture& picture, std::size_t channel) {
    double sum = 0.0;
    for (const auto& texel : picture.texels) sum += static_cast<double>(texel[channel]);
    return sum / static_cast<double>(picture.texels.size());
}

TEST_F(RendererVk, LightKindFillsTheWindowFromTheReducedTextureAndIsDithered) {
    record.useThemeBackground = 1;
    renderer.SetBackground(BackgroundKind::SilkRibbons);
    const FloatPicture picture = Draw(900, 900);
    EXPECT_EQ(renderer.OffscreenTextureSize(), (Tamborel::OffscreenSize{640, 640}));
    // The gradient's own average is (0.0775, 0.38, 0.6025); the ribbons add light to all channels alike.
    EXPECT_GT(Average(picture, 0), 0.0775);
    EXPECT_NEAR(Average(picture, 1) - Average(picture, 0), 0.3025, 0.002);
    EXPECT_NEAR(Average(picture, 2) - Average(picture, 0), 0.525, 0.002);
    // Smooth as the gradient is, neighbours differ by the dither.
    int steps = 0;
    for (UINT x = 1; x < 900; ++x) steps += std::abs(picture.At(x, 5)[1] - picture.At(x - 1, 5)[1]) > 0.001F;
    EXPECT_GT(steps, 300);
}

TEST_F(RendererVk, FullSizeKindIsLeftAsItIs) {
    record.useThemeBackground = 1;
    renderer.SetBackground(BackgroundKind::LiquidMetalSurface);
    const FloatPicture picture = Draw(65, 33);
    EXPECT_EQ(renderer.OffscreenTextureSize(), (Tamborel::OffscreenSize{65, 33}));
    const FloatPicture again = Draw(65, 33);
    EXPECT_EQ(picture.texels, again.texels);
}

TEST_F(RendererVk, FlatWindowShowsInteriorAndFrameTheRightWayUp) {
    record.windowMetrics = {64, 48, 0, 0};
    record.chromeMetrics = {4, 12, 0};
    record.titleBarFill = {1, 0, 0, 1};
    record.frameFill = {0, 1, 0, 1};
    record.flatInteriorFill = {0, 0, 1, 1};
    const FloatPicture picture = Draw(64, 48);
    const auto expectPrimary = [&](UINT x, UINT y, std::size_t channel) {
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_NEAR(picture.At(x, y)[i], i == channel ? 1.0F : 0.0F, 0.5F / 255.0F + 1e-5F) << x << ", " << y;
        }
    };
    expectPrimary(0, 0, 0);
    expectPrimary(63, 11, 0);
    expectPrimary(3, 12, 1);
    expectPrimary(4, 12, 2);
    expectPrimary(59, 43, 2);
    expectPrimary(60, 43, 1);
    expectPrimary(30, 44, 1);
}

TEST_F(RendererVk, SizesKindsSpacingAndTuningCanChangeFromFrameToFrame) {
    record.useThemeBackground = 1;
    std::mt19937 random(20240229);  // the same changes in every run
    const auto upTo = [&](std::uint32_t limit) { return static_cast<std::uint32_t>(random() % limit); };
    for (int frame = 0; frame < 60; ++frame) {
        // The hundred steps and the sixteen samples take too long on a processor to be drawn often.
        static constexpr std::array kinds = {0U, 1U, 2U, 4U, 5U, 7U, 8U, 8U};
        renderer.SetBackground(static_cast<BackgroundKind>(kinds[upTo(kinds.size())]));
        renderer.SetSurfaceTuning({1.0F, static_cast<float>(upTo(3)), 1.0F, static_cast<float>(upTo(4)),
                                   static_cast<float>(upTo(6)), upTo(2) ? 2 : 4});
        const UINT width = 1 + upTo(90);
        const UINT height = 1 + upTo(90);
        const FloatPicture picture = Draw(width, height);
        for (const auto& texel : picture.texels) {
            for (const float component : texel) ASSERT_TRUE(std::isfinite(component)) << frame;
        }
    }
}

}  // namespace
