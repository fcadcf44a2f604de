// The metal surface's compute stage: its sizes, what a frame of it records, and each of its objects failing.
#include "Background/BackgroundRenderer.h"
#include "Background/LiquidMetalSurface.h"
#include "RecordingDevice.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using Microsoft::WRL::ComPtr;
using Tamborel::BackgroundKind;
using Tamborel::BackgroundRenderer;
using Tamborel::LiquidMetalConstants;
using Tamborel::SurfaceGridSizeFor;
using Lines = std::vector<std::string>;

void ExpectSize(const Tamborel::SurfaceGridSize& size, std::uint32_t width, std::uint32_t height, std::uint32_t groupsX,
                std::uint32_t groupsY) {
    EXPECT_EQ(size.width, width);
    EXPECT_EQ(size.height, height);
    EXPECT_EQ(size.groupsX, groupsX);
    EXPECT_EQ(size.groupsY, groupsY);
}

TEST(SurfaceGridSize, WindowOfOneByOneAtSpacingTwoIsFourByFourInOneGroup) {
    ExpectSize(SurfaceGridSizeFor(1, 1, 2), 4, 4, 1, 1);
}

TEST(SurfaceGridSize, ThousandBySixHundredAtSpacingTwo) {
    ExpectSize(SurfaceGridSizeFor(1000, 600, 2), 503, 303, 63, 38);
}

TEST(SurfaceGridSize, SpacingFourAndOddSizesRoundCellsAndGroupsUp) {
    ExpectSize(SurfaceGridSizeFor(1538, 1505, 4), 388, 380, 49, 48);
    ExpectSize(SurfaceGridSizeFor(1001, 601, 2), 504, 304, 63, 38);
    ExpectSize(SurfaceGridSizeFor(16384, 16384, 2), 8195, 8195, 1025, 1025);
    // The groups are (cells + 10) >> 3.
    for (std::uint32_t cells = 1; cells < 40; ++cells) {
        EXPECT_EQ(SurfaceGridSizeFor(2 * cells, 1, 2).groupsX, (cells + 10) >> 3);
    }
}

class Surface : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(renderer.InitializeOn(&device), S_OK);
        for (int i = 0; i < 2; ++i) {
            ASSERT_EQ(windowDevice.CreateRenderTargetView(nullptr, nullptr, windowImage.ReleaseAndGetAddressOf()),
                      S_OK);
        }
        surface = {windowImage.Get(), 1000, 600};
        record.useThemeBackground = 1;
        renderer.SetBackground(BackgroundKind::LiquidMetalSurface);
        initialized = device.created.size();
    }

    HRESULT Draw(float time = 0.0F) {
        return renderer.RecordDraw(&surface, time, &context, list.ReleaseAndGetAddressOf(), record, 1.0F);
    }

    LiquidMetalConstants ConstantsAt(float time) {
        EXPECT_EQ(Draw(time), S_OK);
        return context.Written<LiquidMetalConstants>("Buffer 3");
    }

    RecordingDevice windowDevice;
    RecordingDevice device;
    RecordingDeferredContext context;
    ComPtr<ID3D11RenderTargetView> windowImage;
    ComPtr<ID3D11CommandList> list;
    Tamborel::SurfaceTarget surface;
    Tamborel::BlitFrameRecord record;
    BackgroundRenderer renderer;
    std::size_t initialized = 0;
};

TEST_F(Surface, FrameRunsTheGridThenThePicture) {
    ASSERT_EQ(Draw(), S_OK);
    EXPECT_TRUE(list);
    const Lines expected = {
        "ClearRenderTargetView RenderTargetView 0 0 0 0 1",
        "OMSetRenderTargets 0: RenderTargetView 0",
        "PSSetShaderResources 0: none, none, none, none",
        "RSSetViewports 0 0 1000 600 0 1",
        "Map Buffer 1 discard",
        "Unmap Buffer 1",
        "VSSetConstantBuffers 2: Buffer 1",
        "Map Buffer 3 discard",
        "Unmap Buffer 3",
        "CSSetConstantBuffers 0: Buffer 3",
        "CSSetShader ComputeShader 0",
        "CSSetUnorderedAccessViews 0: UnorderedAccessView 0",
        "Dispatch 63 38 1",
        "CSSetUnorderedAccessViews 0: none",
        "CSSetShader none",
        "CSSetConstantBuffers 0: none",
        "PSSetShaderResources 0: ShaderResourceView 1",
        "PSSetConstantBuffers 0: Buffer 3",
        "PSSetShader PixelShader 9",
        "Draw 4 0",
    };
    const Lines calls = context.Take();
    const auto first = std::find(calls.begin(), calls.end(), expected.front());
    ASSERT_GE(calls.end() - first, static_cast<std::ptrdiff_t>(expected.size()));
    EXPECT_EQ(Lines(first, first + static_cast<std::ptrdiff_t>(expected.size())), expected);
}

TEST_F(Surface, ObjectsAreMadeAtTheFirstFrameAndNotBefore) {
    renderer.SetBackground(BackgroundKind::LiquidMetal);
    ASSERT_EQ(Draw(), S_OK);
    EXPECT_EQ(device.created.size(), initialized + 3);  // the offscreen texture and its views
    renderer.SetBackground(BackgroundKind::LiquidMetalSurface);
    ASSERT_EQ(Draw(), S_OK);
    const Lines made(device.created.begin() + static_cast<std::ptrdiff_t>(initialized + 6), device.created.end());
    EXPECT_EQ(made, (Lines{"ComputeShader 0", "PixelShader 9", "Buffer 3", "Texture 2", "UnorderedAccessView 0",
                           "ShaderResourceView 2"}));
    EXPECT_EQ(device.buffers[3].ByteWidth, 64U);
    EXPECT_EQ(device.buffers[3].Usage, D3D11_USAGE_DYNAMIC);
    EXPECT_EQ(device.textures[2].width, 503U);
    EXPECT_EQ(device.textures[2].height, 303U);
    EXPECT_EQ(device.textures[2].format, DXGI_FORMAT_R16G16B16A16_FLOAT);
    EXPECT_EQ(device.textures[2].bindFlags,
              static_cast<UINT>(D3D11_BIND_UNORDERED_ACCESS | D3D11_BIND_SHADER_RESOURCE));
    ASSERT_EQ(Draw(), S_OK);
    EXPECT_EQ(device.created.size(), initialized + 12);
}

TEST_F(Surface, GridLivesUntilSizeOrSpacingChange) {
    ASSERT_EQ(Draw(), S_OK);
    const int alive = device.alive;
    renderer.SetSurfaceTuning({.sampleSpacing = 4});
    ASSERT_EQ(Draw(), S_OK);
    EXPECT_EQ(device.textures.back().width, 253U);
    EXPECT_EQ(device.textures.back().height, 153U);
    surface.width = 800;
    ASSERT_EQ(Draw(), S_OK);
    EXPECT_EQ(device.textures.back().width, 203U);
    EXPECT_EQ(device.alive, alive);
    const std::size_t made = device.created.size();
    renderer.ReleaseSurfaceResources();
    EXPECT_EQ(device.alive, alive - 6);
    ASSERT_EQ(Draw(), S_OK);
    EXPECT_EQ(device.created.size(), made + 6);
}

TEST_F(Surface, ConstantsComeFromSizeTuningPointerAndClock) {
    renderer.SetSurfaceTuning({2.0F, 0.5F, 0.25F, 3.0F, 4.0F, 4});
    renderer.SetPointer(0.25F, 0.25F, true);
    renderer.SetSurfaceClock(12.5);
    const LiquidMetalConstants c = ConstantsAt(100.0F);
    EXPECT_EQ(c.iResolution, (std::array{1000.0F, 600.0F}));
    EXPECT_EQ(c.gridDimensions, (std::array{253.0F, 153.0F}));
    EXPECT_EQ(c.pointerPositionUV, (Tamborel::BackgroundPointer{0.25F, 0.75F, 1.0F, 0.0F}));
    EXPECT_EQ(c.iTime, 12.5F);
    EXPECT_EQ(c.emberStrength, 0.5F);
    EXPECT_EQ(c.pointerStrength, 0.25F);
    EXPECT_EQ(c.viewScale, 3.0F);
    EXPECT_EQ(c.fineDetail, 4.0F);
    EXPECT_EQ(c.sampleSpacing, 4.0F);
    EXPECT_EQ(c.reserved, (std::array{0.0F, 0.0F}));
    EXPECT_EQ(ConstantsAt(101.0F).iTime, 14.5F);  // timeScale 2
}

TEST_F(Surface, ClockStandsWithAnimateFalseAndSwitchingKindsAddsNoTime) {
    ConstantsAt(1.0F);
    EXPECT_EQ(ConstantsAt(2.0F).iTime, 1.0F);
    renderer.SetBackground(BackgroundKind::LiquidMetal);
    ASSERT_EQ(Draw(50.0F), S_OK);
    renderer.SetBackground(BackgroundKind::LiquidMetalSurface);
    EXPECT_EQ(ConstantsAt(100.0F).iTime, 1.0F);
    EXPECT_EQ(ConstantsAt(101.0F).iTime, 2.0F);
    renderer.SetAnimate(false);
    EXPECT_EQ(ConstantsAt(200.0F).iTime, 2.0F);
}

TEST_F(Surface, EachFailedObjectStopsTheFrameWithoutAListAndIsTriedAgain) {
    for (std::size_t object = 0; object < 6; ++object) {
        SCOPED_TRACE(object);
        RecordingDevice fresh;
        BackgroundRenderer other;
        ASSERT_EQ(other.InitializeOn(&fresh), S_OK);
        other.SetBackground(BackgroundKind::LiquidMetalSurface);
        fresh.failAt = fresh.created.size() + 3 + object;  // the offscreen texture and its views come first
        EXPECT_EQ(other.RecordDraw(&surface, 0.0F, &context, list.ReleaseAndGetAddressOf(), record, 1.0F),
                  E_OUTOFMEMORY);
        EXPECT_FALSE(list);
        EXPECT_EQ(context.Take().back(), "FinishCommandList reset");
        EXPECT_EQ(context.listsAlive, 0);
        EXPECT_EQ(other.FrameCounter(), 0);
        fresh.failAt.reset();
        EXPECT_EQ(other.RecordDraw(&surface, 0.0F, &context, list.ReleaseAndGetAddressOf(), record, 1.0F), S_OK);
        EXPECT_TRUE(list);
        list.Reset();
    }
}

TEST_F(Surface, FailedNewGridKeepsTheOldOneUntilItSucceeds) {
    ASSERT_EQ(Draw(), S_OK);
    const int alive = device.alive;
    renderer.SetSurfaceTuning({.sampleSpacing = 4});
    for (std::size_t object = 0; object < 3; ++object) {
        device.failAt = device.created.size() + object;
        EXPECT_EQ(Draw(), E_OUTOFMEMORY);
        EXPECT_EQ(device.alive, alive);
    }
    device.failAt.reset();
    const std::size_t made = device.created.size();
    renderer.SetSurfaceTuning({.sampleSpacing = 2});
    EXPECT_EQ(Draw(), S_OK);
    EXPECT_EQ(device.created.size(), made);
}

TEST_F(Surface, FailedMapOfItsConstantsStopsTheFrame) {
    context.mapResult = E_FAIL;
    EXPECT_EQ(Draw(), E_FAIL);
    EXPECT_FALSE(list);
    const Lines calls = context.Take();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "Draw 4 0"), 0);
    EXPECT_EQ(calls.back(), "FinishCommandList reset");
}

}  // namespace
