#include "DeviceFixture.h"

#include "Platform/Linux/Direct3D/Instance.h"
#include "Programs.h"

#include <cstring>

void DeviceFixture::SetUp() {
    static const bool isValidating = Platform::Direct3D::EnableValidation();
    ASSERT_TRUE(isValidating) << "The package vulkan-validationlayers is missing.";
    messagesBefore_ = Platform::Direct3D::ValidationMessages();

    constexpr D3D_FEATURE_LEVEL levels[] = {D3D_FEATURE_LEVEL_11_1, D3D_FEATURE_LEVEL_11_0};
    ComPtr<ID3D11Device> madeDevice;
    ComPtr<ID3D11DeviceContext> madeContext;
    ASSERT_EQ(D3D11CreateDevice(nullptr, D3D_DRIVER_TYPE_HARDWARE, nullptr, D3D11_CREATE_DEVICE_BGRA_SUPPORT, levels, 2,
                                D3D11_SDK_VERSION, &madeDevice, nullptr, &madeContext),
              S_OK);
    ASSERT_EQ(madeDevice.As(&device), S_OK);
    ASSERT_EQ(madeContext.As(&context), S_OK);
}

void DeviceFixture::TearDown() {
    context.Reset();
    EXPECT_EQ(device.Reset(), 0U) << "Somebody still holds the device.";
    EXPECT_EQ(Platform::Direct3D::ValidationMessages(), messagesBefore_);
}

ComPtr<ID3D11Texture2D> DeviceFixture::MakeTexture(UINT width, UINT height, UINT bindFlags, DXGI_FORMAT format) {
    D3D11_TEXTURE2D_DESC desc{};
    desc.Width = width;
    desc.Height = height;
    desc.MipLevels = 1;
    desc.ArraySize = 1;
    desc.Format = format;
    desc.SampleDesc.Count = 1;
    desc.BindFlags = bindFlags;
    ComPtr<ID3D11Texture2D> made;
    EXPECT_EQ(device->CreateTexture2D(&desc, nullptr, &made), S_OK);
    return made;
}

ComPtr<ID3D11Texture2D> DeviceFixture::MakeStaging(UINT width, UINT height, DXGI_FORMAT format) {
    D3D11_TEXTURE2D_DESC desc{};
    desc.Width = width;
    desc.Height = height;
    desc.MipLevels = 1;
    desc.ArraySize = 1;
    desc.Format = format;
    desc.SampleDesc.Count = 1;
    desc.Usage = D3D11_USAGE_STAGING;
    desc.CPUAccessFlags = D3D11_CPU_ACCESS_READ;
    ComPtr<ID3D11Texture2D> made;
    EXPECT_EQ(device->CreateTexture2D(&desc, nullptr, &made), S_OK);
    return made;
}

ComPtr<ID3D11RenderTargetView> DeviceFixture::MakeTarget(ID3D11Texture2D* texture) {
    ComPtr<ID3D11RenderTargetView> made;
    EXPECT_EQ(device->CreateRenderTargetView(texture, nullptr, &made), S_OK);
    return made;
}

ComPtr<ID3D11Buffer> DeviceFixture::MakeConstants(UINT size) {
    D3D11_BUFFER_DESC desc{};
    desc.ByteWidth = size;
    desc.Usage = D3D11_USAGE_DYNAMIC;
    desc.BindFlags = D3D11_BIND_CONSTANT_BUFFER;
    desc.CPUAccessFlags = D3D11_CPU_ACCESS_WRITE;
    ComPtr<ID3D11Buffer> made;
    EXPECT_EQ(device->CreateBuffer(&desc, nullptr, &made), S_OK);
    return made;
}

ComPtr<ID3D11DeviceContext> DeviceFixture::MakeDeferred() {
    ComPtr<ID3D11DeviceContext> made;
    EXPECT_EQ(device->CreateDeferredContext(0, &made), S_OK);
    return made;
}

std::uint32_t DeviceFixture::Pixel(ID3D11Texture2D* texture, UINT x, UINT y) {
    const auto staging = MakeStaging(1, 1);
    const D3D11_BOX box{x, y, 0, x + 1, y + 1, 1};
    context->CopySubresourceRegion(staging.Get(), 0, 0, 0, 0, texture, 0, &box);
    D3D11_MAPPED_SUBRESOURCE mapped{};
    EXPECT_EQ(context->Map(staging.Get(), 0, D3D11_MAP_READ, 0, &mapped), S_OK);
    std::uint32_t pixel = 0;
    if (mapped.pData) std::memcpy(&pixel, mapped.pData, sizeof pixel);
    context->Unmap(staging.Get(), 0);
    return pixel;
}

void DeviceFixture::SetStrip(ID3D11DeviceContext* target, ID3D11RenderTargetView* view, UINT width, UINT height) {
    constexpr float vertices[4][4] = {{-1, 1, 0, 0}, {-1, -1, 0, 1}, {1, 1, 1, 0}, {1, -1, 1, 1}};
    D3D11_BUFFER_DESC desc{};
    desc.ByteWidth = sizeof vertices;
    desc.Usage = D3D11_USAGE_IMMUTABLE;
    desc.BindFlags = D3D11_BIND_VERTEX_BUFFER;
    const D3D11_SUBRESOURCE_DATA data{vertices, 0, 0};
    ComPtr<ID3D11Buffer> buffer;
    ASSERT_EQ(device->CreateBuffer(&desc, &data, &buffer), S_OK);

    constexpr D3D11_INPUT_ELEMENT_DESC elements[] = {
        {"POSITION", 0, DXGI_FORMAT_R32G32_FLOAT, 0, 0, D3D11_INPUT_PER_VERTEX_DATA, 0},
        {"TEXCOORD", 0, DXGI_FORMAT_R32G32_FLOAT, 0, D3D11_APPEND_ALIGNED_ELEMENT, D3D11_INPUT_PER_VERTEX_DATA, 0},
    };
    ComPtr<ID3D11InputLayout> layout;
    ASSERT_EQ(device->CreateInputLayout(elements, 2, Programs::corner.data(), Programs::corner.size_bytes(), &layout),
              S_OK);
    ComPtr<ID3D11VertexShader> shader;
    ASSERT_EQ(device->CreateVertexShader(Programs::corner.data(), Programs::corner.size_bytes(), nullptr, &shader),
              S_OK);

    constexpr UINT stride = 16;
    constexpr UINT offset = 0;
    target->IASetInputLayout(layout.Get());
    target->IASetVertexBuffers(0, 1, buffer.GetAddressOf(), &stride, &offset);
    target->IASetPrimitiveTopology(D3D11_PRIMITIVE_TOPOLOGY_TRIANGLESTRIP);
    target->VSSetShader(shader.Get(), nullptr, 0);
    // The strip's first triangle goes down its left side: counter-clockwise, the back for Direct3D's default state.
    D3D11_RASTERIZER_DESC raster{};
    raster.FillMode = D3D11_FILL_SOLID;
    raster.CullMode = D3D11_CULL_NONE;
    ComPtr<ID3D11RasterizerState> state;
    ASSERT_EQ(device->CreateRasterizerState(&raster, &state), S_OK);
    target->RSSetState(state.Get());
    const D3D11_VIEWPORT viewport{0, 0, static_cast<float>(width), static_cast<float>(height), 0, 1};
    target->RSSetViewports(1, &viewport);
    target->OMSetRenderTargets(1, &view, nullptr);
}

void DeviceFixture::WriteColor(ID3D11DeviceContext* target, ID3D11Buffer* buffer, const Color& color) {
    D3D11_MAPPED_SUBRESOURCE mapped{};
    ASSERT_EQ(target->Map(buffer, 0, D3D11_MAP_WRITE_DISCARD, 0, &mapped), S_OK);
    std::memcpy(mapped.pData, color.data(), sizeof color);
    target->Unmap(buffer, 0);
}

ComPtr<ID3D11PixelShader> DeviceFixture::MakePixelShader(std::span<const std::uint32_t> code) {
    ComPtr<ID3D11PixelShader> made;
    EXPECT_EQ(device->CreatePixelShader(code.data(), code.size_bytes(), nullptr, &made), S_OK);
    return made;
}
