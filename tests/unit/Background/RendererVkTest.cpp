// The whole renderer on the real device: both stages, through a command list.
#include "Background/BackgroundRenderer.h"
#include "BlitBench.h"

#include <gtest/gtest.h>

namespace {

using Tamborel::BackgroundKind;
using Tamborel::BackgroundRenderer;
using Tamborel::BlitFrameRecord;

class RendererVk : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(renderer.InitializeOn(bench.Device()), S_OK); }

    FloatPicture Draw(UINT width, UINT height) { return bench.Draw(renderer, record, width, height); }

    BlitBench bench;
    BlitFrameRecord record;
    BackgroundRenderer renderer;
};

// A stand-in for all kinds: (0.03, 0.04, 0.05), opaque, through 16-bit floats.
void ExpectDark(const std::array<float, 4>& texel, float tolerance) {
    EXPECT_NEAR(texel[0], 0.03F, tolerance);
    EXPECT_NEAR(texel[1], 0.04F, tolerance);
    EXPECT_NEAR(texel[2], 0.05F, tolerance);
    EXPECT_EQ(texel[3], 1.0F);
}

TEST_F(RendererVk, LightKindFillsTheWindowFromTheReducedTextureAndIsDithered) {
    record.useThemeBackground = 1;
    const FloatPicture picture = Draw(900, 900);
    EXPECT_EQ(renderer.OffscreenTextureSize(), (Tamborel::OffscreenSize{640, 640}));
    for (const auto& texel : picture.texels) ExpectDark(texel, 0.5F / 255.0F + 0.0001F);
    EXPECT_NE(picture.At(10, 10), picture.At(11, 10));
}

TEST_F(RendererVk, FullSizeKindIsLeftAsItIs) {
    record.useThemeBackground = 1;
    renderer.SetBackground(BackgroundKind::QuietGoldSunrise);
    const FloatPicture picture = Draw(65, 33);
    EXPECT_EQ(renderer.OffscreenTextureSize(), (Tamborel::OffscreenSize{65, 33}));
    for (const auto& texel : picture.texels) {
        ExpectDark(texel, 0.00005F);
        EXPECT_EQ(texel, picture.texels[0]);
    }
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

TEST_F(RendererVk, SizesAndKindsCanChangeFromFrameToFrame) {
    record.useThemeBackground = 1;
    for (const UINT size : {1U, 900U, 333U, 2U}) {
        for (const std::uint32_t kind : {0U, 7U, 6U}) {
            renderer.SetBackground(static_cast<BackgroundKind>(kind));
            const FloatPicture picture = Draw(size, size);
            ExpectDark(picture.At(size / 2, size / 2), 0.5F / 255.0F + 0.0001F);
        }
    }
}

}  // namespace
