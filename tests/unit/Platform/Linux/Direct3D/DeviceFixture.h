#pragma once

#include "Platform/Linux/Direct3D/Device.h"

#include <d3d11_4.h>
#include <gtest/gtest.h>
#include <wrl/client.h>

#include <array>
#include <cstdint>

using Microsoft::WRL::ComPtr;

/// A device under the eyes of Vulkan's validation layer: a message of the layer fails the test.
class DeviceFixture : public testing::Test {
protected:
    using Color = std::array<float, 4>;

    void SetUp() override;
    void TearDown() override;

    ComPtr<ID3D11Texture2D> MakeTexture(UINT width, UINT height, UINT bindFlags,
                                        DXGI_FORMAT format = DXGI_FORMAT_B8G8R8A8_UNORM);
    ComPtr<ID3D11Texture2D> MakeStaging(UINT width, UINT height, DXGI_FORMAT format = DXGI_FORMAT_B8G8R8A8_UNORM);
    ComPtr<ID3D11RenderTargetView> MakeTarget(ID3D11Texture2D* texture);
    ComPtr<ID3D11Buffer> MakeConstants(UINT size = 16);
    ComPtr<ID3D11DeviceContext> MakeDeferred();

    /// The pixel of a 32-bit texture as 0xAARRGGBB, by way of a staging texture.
    std::uint32_t Pixel(ID3D11Texture2D* texture, UINT x, UINT y);

    /// Sets all that a full-screen strip needs but its pixel program.
    void SetStrip(ID3D11DeviceContext* context, ID3D11RenderTargetView* target, UINT width, UINT height);
    /// Writes a colour into a dynamic buffer.
    static void WriteColor(ID3D11DeviceContext* context, ID3D11Buffer* buffer, const Color& color);

    ComPtr<ID3D11PixelShader> MakePixelShader(std::span<const std::uint32_t> code);

    ComPtr<ID3D11Device5> device;
    ComPtr<ID3D11DeviceContext4> context;

private:
    std::uint64_t messagesBefore_ = 0;
};
