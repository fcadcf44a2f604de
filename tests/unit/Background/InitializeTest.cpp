// The objects that a renderer makes, their order, and each of them failing.
#include "Background/BackgroundRenderer.h"
#include "RecordingDevice.h"

#include <gtest/gtest.h>

namespace {

using Tamborel::BackgroundKind;
using Tamborel::BackgroundRenderer;

struct Step {
    const char* object;
    const char* failure;  ///< What is logged when it can't be made; the sunrise's program says nothing.
};

constexpr std::array<Step, 18> kSteps = {{
    {"VertexShader 0", "[BackgroundRenderer] CreateVertexShader failed\n"},
    {"PixelShader 0", "[BackgroundRenderer] CreatePixelShader (LiquidMetal) failed\n"},
    {"PixelShader 1", "[BackgroundRenderer] CreatePixelShader (MagicCurtain) failed\n"},
    {"PixelShader 2", "[BackgroundRenderer] CreatePixelShader (CloudDiving) failed\n"},
    {"PixelShader 3", "[BackgroundRenderer] CreatePixelShader (CloudHorizon) failed\n"},
    {"PixelShader 4", "[BackgroundRenderer] CreatePixelShader (SilkRibbons) failed\n"},
    {"PixelShader 5", "[BackgroundRenderer] CreatePixelShader (DawnGrid) failed\n"},
    {"PixelShader 6", "[BackgroundRenderer] CreatePixelShader (Cyberspace) failed\n"},
    {"PixelShader 7", ""},
    {"PixelShader 8", "[BackgroundRenderer] CreatePixelShader (Blit) failed\n"},
    {"InputLayout 0", "[BackgroundRenderer] CreateInputLayout failed\n"},
    {"Buffer 0", "[BackgroundRenderer] CreateBuffer (vertex) failed\n"},
    {"Buffer 1", "[BackgroundRenderer] CreateBuffer (cbuffer) failed\n"},
    {"Buffer 2", "[BackgroundRenderer] CreateBuffer (blit cbuffer) failed\n"},
    {"SamplerState 0", "[BackgroundRenderer] CreateSamplerState failed\n"},
    {"RasterizerState 0", "[BackgroundRenderer] CreateRasterizerState failed\n"},
    {"BlendState 0", "[BackgroundRenderer] CreateBlendState failed\n"},
    {"DepthStencilState 0", "[BackgroundRenderer] CreateDepthStencilState failed\n"},
}};

TEST(BackgroundInitialize, MakesAllObjectsInOrderAndSaysSo) {
    RecordingDevice device;
    BackgroundRenderer renderer;
    testing::internal::CaptureStderr();
    EXPECT_EQ(renderer.InitializeOn(&device), S_OK);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "[BackgroundRenderer] Initialize succeeded\n");
    EXPECT_TRUE(renderer.IsInitialized());
    ASSERT_EQ(device.created.size(), kSteps.size());
    for (std::size_t i = 0; i < kSteps.size(); ++i) EXPECT_EQ(device.created[i], kSteps[i].object);
}

class BackgroundInitializeFailure : public testing::TestWithParam<std::size_t> {};

TEST_P(BackgroundInitializeFailure, EndsThereWithItsTextAndHoldsNothing) {
    const Step& step = kSteps[GetParam()];
    RecordingDevice device;
    device.failAt = GetParam();
    device.failure = static_cast<HRESULT>(0x887A0005);
    BackgroundRenderer renderer;
    testing::internal::CaptureStderr();
    EXPECT_EQ(renderer.InitializeOn(&device), static_cast<HRESULT>(0x887A0005));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), step.failure);
    EXPECT_FALSE(renderer.IsInitialized());
    EXPECT_EQ(device.created.back(), step.object);
    EXPECT_EQ(device.alive, 0);
}

INSTANTIATE_TEST_SUITE_P(EachObject, BackgroundInitializeFailure, testing::Range(std::size_t{0}, kSteps.size()));

TEST(BackgroundInitialize, SucceedsOnASecondTryAfterAFailure) {
    RecordingDevice device;
    device.failAt = 5;
    BackgroundRenderer renderer;
    EXPECT_EQ(renderer.InitializeOn(&device), E_OUTOFMEMORY);
    device.failAt.reset();
    EXPECT_EQ(renderer.InitializeOn(&device), S_OK);
    EXPECT_TRUE(renderer.IsInitialized());
}

TEST(BackgroundInitialize, NoDeviceIsAnError) {
    BackgroundRenderer renderer;
    EXPECT_EQ(renderer.InitializeOn(nullptr), E_INVALIDARG);
    EXPECT_EQ(renderer.Initialize(nullptr), E_INVALIDARG);
    EXPECT_FALSE(renderer.IsInitialized());
}

TEST(BackgroundInitialize, BuffersHaveTheirSizesAndUses) {
    RecordingDevice device;
    BackgroundRenderer renderer;
    ASSERT_EQ(renderer.InitializeOn(&device), S_OK);
    ASSERT_EQ(device.buffers.size(), 3U);
    EXPECT_EQ(device.buffers[0].ByteWidth, 128U);
    EXPECT_EQ(device.buffers[0].Usage, D3D11_USAGE_IMMUTABLE);
    EXPECT_EQ(device.buffers[1].ByteWidth, 192U);
    EXPECT_EQ(device.buffers[2].ByteWidth, 144U);
    for (const std::size_t i : {1U, 2U}) {
        EXPECT_EQ(device.buffers[i].Usage, D3D11_USAGE_DYNAMIC);
        EXPECT_EQ(device.buffers[i].BindFlags, static_cast<UINT>(D3D11_BIND_CONSTANT_BUFFER));
        EXPECT_EQ(device.buffers[i].CPUAccessFlags, static_cast<UINT>(D3D11_CPU_ACCESS_WRITE));
    }
}

TEST(BackgroundInitialize, VerticesAreColourPositionAndTextureCoordinate) {
    RecordingDevice device;
    BackgroundRenderer renderer;
    ASSERT_EQ(renderer.InitializeOn(&device), S_OK);
    ASSERT_EQ(device.elements.size(), 3U);
    EXPECT_STREQ(device.elements[0].SemanticName, "COLOR");
    EXPECT_EQ(device.elements[0].AlignedByteOffset, 0U);
    EXPECT_EQ(device.elements[0].Format, DXGI_FORMAT_R32G32B32A32_FLOAT);
    EXPECT_STREQ(device.elements[1].SemanticName, "POSITION");
    EXPECT_EQ(device.elements[1].AlignedByteOffset, 16U);
    EXPECT_EQ(device.elements[1].Format, DXGI_FORMAT_R32G32_FLOAT);
    EXPECT_STREQ(device.elements[2].SemanticName, "TEXCOORD");
    EXPECT_EQ(device.elements[2].AlignedByteOffset, 24U);
    EXPECT_EQ(device.elements[2].Format, DXGI_FORMAT_R32G32_FLOAT);
}

TEST(BackgroundInitialize, FixedStateIsTrilinearClampedSolidUnblendedAndWithoutDepth) {
    RecordingDevice device;
    BackgroundRenderer renderer;
    ASSERT_EQ(renderer.InitializeOn(&device), S_OK);
    EXPECT_EQ(device.sampler.Filter, D3D11_FILTER_MIN_MAG_MIP_LINEAR);
    EXPECT_EQ(device.sampler.AddressU, D3D11_TEXTURE_ADDRESS_CLAMP);
    EXPECT_EQ(device.sampler.AddressV, D3D11_TEXTURE_ADDRESS_CLAMP);
    EXPECT_EQ(device.sampler.AddressW, D3D11_TEXTURE_ADDRESS_CLAMP);
    EXPECT_EQ(device.sampler.ComparisonFunc, D3D11_COMPARISON_NEVER);
    EXPECT_EQ(device.sampler.MinLOD, 0.0F);
    EXPECT_EQ(device.sampler.MaxLOD, D3D11_FLOAT32_MAX);
    EXPECT_EQ(device.rasterizer.FillMode, D3D11_FILL_SOLID);
    EXPECT_EQ(device.rasterizer.CullMode, D3D11_CULL_NONE);
    EXPECT_EQ(device.rasterizer.DepthClipEnable, FALSE);
    EXPECT_EQ(device.blend.RenderTarget[0].BlendEnable, FALSE);
    EXPECT_EQ(device.blend.RenderTarget[0].RenderTargetWriteMask, D3D11_COLOR_WRITE_ENABLE_ALL);
    EXPECT_EQ(device.depthStencil.DepthEnable, FALSE);
    EXPECT_EQ(device.depthStencil.StencilEnable, FALSE);
}

TEST(BackgroundRelease, LetsGoOfEverythingAndKeepsKindGradesAndTuning) {
    RecordingDevice device;
    BackgroundRenderer renderer;
    renderer.SetBackground(BackgroundKind::DawnGrid);
    renderer.SetColorGrade({21.0F, 0.45F, 0.0F, 1.0F});
    Tamborel::BackgroundTuning tuning;
    tuning.emberStrength = 0.0F;
    renderer.SetSurfaceTuning(tuning);
    ASSERT_EQ(renderer.InitializeOn(&device), S_OK);
    EXPECT_EQ(device.alive, 18);
    renderer.ReleaseResources();
    EXPECT_EQ(device.alive, 0);
    EXPECT_FALSE(renderer.IsInitialized());
    EXPECT_EQ(renderer.Kind(), BackgroundKind::DawnGrid);
    EXPECT_EQ(renderer.Grade().hue, 21.0F);
    EXPECT_EQ(renderer.SurfaceTuning(), tuning);
    renderer.ReleaseResources();
}

TEST(BackgroundRelease, HappensInTheDestructor) {
    RecordingDevice device;
    {
        BackgroundRenderer renderer;
        ASSERT_EQ(renderer.InitializeOn(&device), S_OK);
    }
    EXPECT_EQ(device.alive, 0);
}

}  // namespace
