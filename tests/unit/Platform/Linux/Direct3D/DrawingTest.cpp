#include "DeviceFixture.h"
#include "Programs.h"

#include "Platform/Linux/Direct3D/SurfaceAccess.h"

#include <cstdlib>
#include <vector>

namespace {

using DrawingTest = DeviceFixture;
constexpr UINT targetFlags = D3D11_BIND_RENDER_TARGET | D3D11_BIND_SHADER_RESOURCE;
constexpr float red[4] = {1, 0, 0, 1};
constexpr float blue[4] = {0, 0, 1, 1};

/// Equal but for one step of each channel: drivers round colours differently, lavapipe downwards.
void ExpectNear(std::uint32_t actual, std::uint32_t expected) {
    for (const unsigned shift : {0U, 8U, 16U, 24U}) {
        const int difference = static_cast<int>(actual >> shift & 0xFF) - static_cast<int>(expected >> shift & 0xFF);
        EXPECT_LE(std::abs(difference), 1) << std::hex << actual << " instead of " << expected;
    }
}

TEST_F(DrawingTest, ANewTextureIsTransparentBlack) {
    EXPECT_EQ(Pixel(MakeTexture(3, 2, targetFlags).Get(), 2, 1), 0U);
}

TEST_F(DrawingTest, AClearReachesEveryPixel) {
    const auto texture = MakeTexture(5, 3, targetFlags);
    context->ClearRenderTargetView(MakeTarget(texture.Get()).Get(), red);
    EXPECT_EQ(Pixel(texture.Get(), 0, 0), 0xFFFF0000U);
    EXPECT_EQ(Pixel(texture.Get(), 4, 2), 0xFFFF0000U);
}

TEST_F(DrawingTest, InitialDataIsTheTexturesContent) {
    D3D11_TEXTURE2D_DESC desc{};
    desc.Width = desc.Height = 2;
    desc.MipLevels = desc.ArraySize = desc.SampleDesc.Count = 1;
    desc.Format = DXGI_FORMAT_B8G8R8A8_UNORM;
    desc.BindFlags = D3D11_BIND_SHADER_RESOURCE;
    constexpr std::uint32_t pixels[] = {1, 2, 99, 3, 4, 99};  // one pixel of padding in each row
    const D3D11_SUBRESOURCE_DATA data{pixels, 12, 0};
    ComPtr<ID3D11Texture2D> texture;
    ASSERT_EQ(device->CreateTexture2D(&desc, &data, &texture), S_OK);
    EXPECT_EQ(Pixel(texture.Get(), 1, 0), 2U);
    EXPECT_EQ(Pixel(texture.Get(), 0, 1), 3U);
}

TEST_F(DrawingTest, ACopyTakesOnlyItsBox) {
    const auto source = MakeTexture(4, 4, targetFlags);
    const auto target = MakeTexture(4, 4, targetFlags);
    context->ClearRenderTargetView(MakeTarget(source.Get()).Get(), red);
    context->ClearRenderTargetView(MakeTarget(target.Get()).Get(), blue);
    const D3D11_BOX box{0, 0, 0, 2, 1, 1};
    context->CopySubresourceRegion(target.Get(), 0, 1, 3, 0, source.Get(), 0, &box);
    EXPECT_EQ(Pixel(target.Get(), 0, 3), 0xFF0000FFU);
    EXPECT_EQ(Pixel(target.Get(), 1, 3), 0xFFFF0000U);
    EXPECT_EQ(Pixel(target.Get(), 2, 3), 0xFFFF0000U);
    EXPECT_EQ(Pixel(target.Get(), 3, 3), 0xFF0000FFU);
    EXPECT_EQ(Pixel(target.Get(), 1, 2), 0xFF0000FFU);
}

TEST_F(DrawingTest, ACopyBeyondTheEdgeIsLeftOut) {
    const auto source = MakeTexture(4, 4, targetFlags);
    const auto target = MakeTexture(4, 4, targetFlags);
    context->ClearRenderTargetView(MakeTarget(source.Get()).Get(), red);
    context->CopySubresourceRegion(target.Get(), 0, 1, 0, 0, source.Get(), 0, nullptr);
    EXPECT_EQ(Pixel(target.Get(), 1, 0), 0U);
}

TEST_F(DrawingTest, CopyResourceCopiesAll) {
    const auto source = MakeTexture(4, 4, targetFlags);
    const auto target = MakeTexture(4, 4, targetFlags);
    context->ClearRenderTargetView(MakeTarget(source.Get()).Get(), red);
    context->CopyResource(target.Get(), source.Get());
    EXPECT_EQ(Pixel(target.Get(), 3, 3), 0xFFFF0000U);
}

TEST_F(DrawingTest, AStripsTopLeftIsTheTargetsTopLeft) {
    const auto texture = MakeTexture(64, 32, targetFlags);
    const auto target = MakeTarget(texture.Get());
    SetStrip(context.Get(), target.Get(), 64, 32);
    context->PSSetShader(MakePixelShader(Programs::coordinates).Get(), nullptr, 0);
    context->Draw(4, 0);
    context->ClearState();
    // The middle of a pixel at x is (x + 0.5) / 64 of red; that of one at y is (y + 0.5) / 32 of green.
    ExpectNear(Pixel(texture.Get(), 0, 0), 0xFF020400U);
    ExpectNear(Pixel(texture.Get(), 63, 0), 0xFFFD0400U);
    ExpectNear(Pixel(texture.Get(), 0, 31), 0xFF02FB00U);
}

TEST_F(DrawingTest, AViewportLimitsTheDrawing) {
    const auto texture = MakeTexture(8, 8, targetFlags);
    const auto target = MakeTarget(texture.Get());
    const auto constants = MakeConstants();
    SetStrip(context.Get(), target.Get(), 8, 8);
    const D3D11_VIEWPORT viewport{2, 1, 4, 3, 0, 1};
    context->RSSetViewports(1, &viewport);
    context->PSSetShader(MakePixelShader(Programs::constant).Get(), nullptr, 0);
    context->PSSetConstantBuffers(0, 1, constants.GetAddressOf());
    WriteColor(context.Get(), constants.Get(), {0, 1, 0, 1});
    context->Draw(4, 0);
    context->ClearState();
    EXPECT_EQ(Pixel(texture.Get(), 2, 1), 0xFF00FF00U);
    EXPECT_EQ(Pixel(texture.Get(), 5, 3), 0xFF00FF00U);
    EXPECT_EQ(Pixel(texture.Get(), 1, 1), 0U);
    EXPECT_EQ(Pixel(texture.Get(), 2, 0), 0U);
    EXPECT_EQ(Pixel(texture.Get(), 5, 4), 0U);
}

TEST_F(DrawingTest, ATargetIsReadAsATextureByTheNextDraw) {
    const auto first = MakeTexture(4, 4, targetFlags, DXGI_FORMAT_R16G16B16A16_FLOAT);
    const auto second = MakeTexture(4, 4, targetFlags);
    const auto firstTarget = MakeTarget(first.Get());
    const auto secondTarget = MakeTarget(second.Get());
    ComPtr<ID3D11ShaderResourceView> view;
    ASSERT_EQ(device->CreateShaderResourceView(first.Get(), nullptr, &view), S_OK);
    D3D11_SAMPLER_DESC desc{};
    desc.Filter = D3D11_FILTER_MIN_MAG_MIP_POINT;
    desc.AddressU = desc.AddressV = desc.AddressW = D3D11_TEXTURE_ADDRESS_CLAMP;
    desc.ComparisonFunc = D3D11_COMPARISON_NEVER;
    desc.MaxLOD = D3D11_FLOAT32_MAX;
    ComPtr<ID3D11SamplerState> sampler;
    ASSERT_EQ(device->CreateSamplerState(&desc, &sampler), S_OK);

    constexpr float tooBright[4] = {2, 0.5F, 0, 1};  // 16-bit floats keep what lies beyond 1
    const auto tint = MakeConstants();
    SetStrip(context.Get(), secondTarget.Get(), 4, 4);
    context->ClearRenderTargetView(firstTarget.Get(), tooBright);
    context->PSSetShader(MakePixelShader(Programs::sampled).Get(), nullptr, 0);
    context->PSSetShaderResources(0, 1, view.GetAddressOf());
    context->PSSetSamplers(0, 1, sampler.GetAddressOf());
    context->PSSetConstantBuffers(1, 1, tint.GetAddressOf());
    WriteColor(context.Get(), tint.Get(), {0.5F, 1, 1, 1});
    context->Draw(4, 0);
    context->ClearState();
    EXPECT_EQ(Pixel(second.Get(), 2, 2), 0xFFFF8000U);
}

TEST_F(DrawingTest, AnUnboundTextureReadsAsZero) {
    const auto texture = MakeTexture(4, 4, targetFlags);
    const auto target = MakeTarget(texture.Get());
    context->ClearRenderTargetView(target.Get(), red);
    SetStrip(context.Get(), target.Get(), 4, 4);
    context->PSSetShader(MakePixelShader(Programs::sampled).Get(), nullptr, 0);
    context->Draw(4, 0);
    context->ClearState();
    EXPECT_EQ(Pixel(texture.Get(), 0, 0), 0U);
}

TEST_F(DrawingTest, ADrawWithoutTargetOrProgramIsLeftOut) {
    context->Draw(4, 0);
    const auto texture = MakeTexture(4, 4, targetFlags);
    const auto target = MakeTarget(texture.Get());
    SetStrip(context.Get(), target.Get(), 4, 4);
    context->Draw(4, 0);
    context->ClearState();
    EXPECT_EQ(Pixel(texture.Get(), 0, 0), 0U);
}

TEST_F(DrawingTest, BlendingMixesWithTheTarget) {
    const auto texture = MakeTexture(4, 4, targetFlags);
    const auto target = MakeTarget(texture.Get());
    D3D11_BLEND_DESC desc{};
    desc.RenderTarget[0] = {TRUE,
                            D3D11_BLEND_SRC_ALPHA,
                            D3D11_BLEND_INV_SRC_ALPHA,
                            D3D11_BLEND_OP_ADD,
                            D3D11_BLEND_ZERO,
                            D3D11_BLEND_ONE,
                            D3D11_BLEND_OP_ADD,
                            D3D11_COLOR_WRITE_ENABLE_ALL};
    ComPtr<ID3D11BlendState> blend;
    ASSERT_EQ(device->CreateBlendState(&desc, &blend), S_OK);
    const auto constants = MakeConstants();
    context->ClearRenderTargetView(target.Get(), blue);
    SetStrip(context.Get(), target.Get(), 4, 4);
    context->OMSetBlendState(blend.Get(), nullptr, D3D11_DEFAULT_SAMPLE_MASK);
    context->PSSetShader(MakePixelShader(Programs::constant).Get(), nullptr, 0);
    context->PSSetConstantBuffers(0, 1, constants.GetAddressOf());
    WriteColor(context.Get(), constants.Get(), {1, 0, 0, 0.2F});
    context->Draw(4, 0);
    context->ClearState();
    EXPECT_EQ(Pixel(texture.Get(), 1, 1), 0xFF3300CCU);
}

TEST_F(DrawingTest, TheBackOfAStripIsCulledByDefault) {
    const auto texture = MakeTexture(4, 4, targetFlags);
    const auto target = MakeTarget(texture.Get());
    SetStrip(context.Get(), target.Get(), 4, 4);
    context->RSSetState(nullptr);
    context->PSSetShader(MakePixelShader(Programs::coordinates).Get(), nullptr, 0);
    context->Draw(4, 0);
    context->ClearState();
    EXPECT_EQ(Pixel(texture.Get(), 1, 1), 0U);
}

TEST_F(DrawingTest, UploadAndReadBackCarryARectangle) {
    const auto texture = MakeTexture(6, 5, targetFlags);
    const auto graphics = Platform::Direct3D::GraphicsDevice::From(device.Get());
    const auto image = Platform::Direct3D::TextureOf(texture.Get());
    ASSERT_TRUE(graphics && image);
    EXPECT_EQ(Platform::Direct3D::GraphicsDevice::From(texture.Get()), graphics);
    constexpr std::uint32_t pixels[] = {1, 2, 3, 4, 5, 6};
    graphics->Upload(image, {2, 1, 2, 3}, pixels, 8);
    std::vector<std::uint32_t> all(30);
    graphics->ReadBack(image, {0, 0, 6, 5}, all.data(), 24);
    EXPECT_EQ(all[1 * 6 + 2], 1U);
    EXPECT_EQ(all[3 * 6 + 3], 6U);
    EXPECT_EQ(all[1 * 6 + 4], 0U);
    EXPECT_EQ(all[4 * 6 + 2], 0U);
}

TEST_F(DrawingTest, ManyBatchesInFlightKeepTheirOwnConstants) {
    const auto texture = MakeTexture(16, 1, targetFlags);
    const auto target = MakeTarget(texture.Get());
    const auto constants = MakeConstants();
    SetStrip(context.Get(), target.Get(), 16, 1);
    context->PSSetShader(MakePixelShader(Programs::constant).Get(), nullptr, 0);
    context->PSSetConstantBuffers(0, 1, constants.GetAddressOf());
    for (int i = 0; i < 16; ++i) {
        const D3D11_VIEWPORT viewport{static_cast<float>(i), 0, 1, 1, 0, 1};
        context->RSSetViewports(1, &viewport);
        WriteColor(context.Get(), constants.Get(), {0, 0, static_cast<float>(i) / 255, 1});
        context->Draw(4, 0);
        context->Flush();
    }
    context->ClearState();
    for (UINT i = 0; i < 16; ++i) EXPECT_EQ(Pixel(texture.Get(), i, 0), 0xFF000000U + i);
}

}  // namespace
