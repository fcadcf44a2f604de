#include "DeviceFixture.h"
#include "Programs.h"

namespace {

using DeviceTest = DeviceFixture;

D3D11_TEXTURE2D_DESC GoodTexture() {
    D3D11_TEXTURE2D_DESC desc{};
    desc.Width = desc.Height = 4;
    desc.MipLevels = desc.ArraySize = desc.SampleDesc.Count = 1;
    desc.Format = DXGI_FORMAT_B8G8R8A8_UNORM;
    desc.BindFlags = D3D11_BIND_SHADER_RESOURCE;
    return desc;
}

TEST_F(DeviceTest, HasTheInterfacesThatAreAskedFor) {
    ComPtr<IDXGIDevice3> dxgi;
    EXPECT_EQ(device.As(&dxgi), S_OK);
    ComPtr<ID3D11Multithread> multithread;
    ASSERT_EQ(context.As(&multithread), S_OK);
    EXPECT_EQ(multithread->SetMultithreadProtected(TRUE), FALSE);
    EXPECT_EQ(multithread->GetMultithreadProtected(), TRUE);
    multithread->Enter();
    multithread->Leave();
    EXPECT_EQ(device->GetFeatureLevel(), D3D_FEATURE_LEVEL_11_1);
}

TEST_F(DeviceTest, ATextureIsASurfaceOfItsDevice) {
    const auto texture = MakeTexture(7, 5, D3D11_BIND_RENDER_TARGET);
    ComPtr<IDXGISurface2> surface;
    ASSERT_EQ(texture.As(&surface), S_OK);
    DXGI_SURFACE_DESC desc{};
    ASSERT_EQ(surface->GetDesc(&desc), S_OK);
    EXPECT_EQ(desc.Width, 7U);
    EXPECT_EQ(desc.Height, 5U);
    EXPECT_EQ(desc.Format, DXGI_FORMAT_B8G8R8A8_UNORM);
    ComPtr<ID3D11Device> owner;
    ASSERT_EQ(surface->GetDevice(IID_PPV_ARGS(&owner)), S_OK);
    EXPECT_EQ(owner.Get(), device.Get());
}

TEST_F(DeviceTest, BoundObjectsGoWithTheContextsLastReference) {
    const auto constants = MakeConstants();
    context->PSSetConstantBuffers(0, 1, constants.GetAddressOf());
    // TearDown sees that the device ends although the state was never cleared.
}

TEST_F(DeviceTest, RefusesTexturesThatItCannotMake) {
    ComPtr<ID3D11Texture2D> made;
    const auto refused = [&](auto change) {
        D3D11_TEXTURE2D_DESC desc = GoodTexture();
        change(desc);
        return device->CreateTexture2D(&desc, nullptr, &made) == E_INVALIDARG && !made;
    };
    EXPECT_EQ(device->CreateTexture2D(nullptr, nullptr, &made), E_INVALIDARG);
    EXPECT_TRUE(refused([](auto& desc) { desc.Width = 0; }));
    EXPECT_TRUE(refused([](auto& desc) { desc.Height = 16385; }));
    EXPECT_TRUE(refused([](auto& desc) { desc.MipLevels = 0; }));
    EXPECT_TRUE(refused([](auto& desc) { desc.SampleDesc.Count = 4; }));
    EXPECT_TRUE(refused([](auto& desc) { desc.Format = DXGI_FORMAT_UNKNOWN; }));
    EXPECT_TRUE(refused([](auto& desc) { desc.Usage = D3D11_USAGE_STAGING; }));
    EXPECT_TRUE(refused([](auto& desc) { desc.BindFlags = D3D11_BIND_DEPTH_STENCIL; }));
    EXPECT_TRUE(refused([](auto& desc) { desc.Usage = D3D11_USAGE_IMMUTABLE; }));
    const D3D11_TEXTURE2D_DESC good = GoodTexture();
    EXPECT_EQ(device->CreateTexture2D(&good, nullptr, nullptr), S_FALSE);
}

TEST_F(DeviceTest, RefusesBuffersThatItCannotMake) {
    ComPtr<ID3D11Buffer> made;
    const auto create = [&](UINT size, D3D11_USAGE usage, UINT bind, UINT access) {
        const D3D11_BUFFER_DESC desc{size, usage, bind, access, 0, 0};
        return device->CreateBuffer(&desc, nullptr, &made);
    };
    EXPECT_EQ(create(0, D3D11_USAGE_DEFAULT, D3D11_BIND_VERTEX_BUFFER, 0), E_INVALIDARG);
    EXPECT_EQ(create(20, D3D11_USAGE_DEFAULT, D3D11_BIND_CONSTANT_BUFFER, 0), E_INVALIDARG);
    EXPECT_EQ(create(16, D3D11_USAGE_IMMUTABLE, D3D11_BIND_VERTEX_BUFFER, 0), E_INVALIDARG);
    EXPECT_EQ(create(16, D3D11_USAGE_DYNAMIC, D3D11_BIND_VERTEX_BUFFER, 0), E_INVALIDARG);
    EXPECT_EQ(create(16, D3D11_USAGE_DEFAULT, D3D11_BIND_UNORDERED_ACCESS, 0), E_INVALIDARG);
    EXPECT_FALSE(made);
}

TEST_F(DeviceTest, RefusesBytesThatAreNoProgramOfTheStage) {
    ComPtr<ID3D11PixelShader> pixel;
    constexpr std::uint32_t noise[] = {1, 2, 3, 4, 5, 6, 7, 8};
    // A header, then an instruction that claims to be longer than the program.
    constexpr std::uint32_t torn[] = {0x07230203, 0x10000, 0, 8, 0, 0x00FF000F};
    EXPECT_EQ(device->CreatePixelShader(nullptr, 32, nullptr, &pixel), E_INVALIDARG);
    EXPECT_EQ(device->CreatePixelShader(noise, sizeof noise, nullptr, &pixel), E_INVALIDARG);
    EXPECT_EQ(device->CreatePixelShader(torn, sizeof torn, nullptr, &pixel), E_INVALIDARG);
    EXPECT_EQ(device->CreatePixelShader(Programs::constant.data(), 7, nullptr, &pixel), E_INVALIDARG);
    EXPECT_EQ(device->CreatePixelShader(Programs::corner.data(), Programs::corner.size_bytes(), nullptr, &pixel),
              E_INVALIDARG);
    EXPECT_FALSE(pixel);
}

TEST_F(DeviceTest, RefusesViewsThatTheTextureIsNotBoundFor) {
    const auto texture = MakeTexture(4, 4, D3D11_BIND_SHADER_RESOURCE);
    ComPtr<ID3D11RenderTargetView> target;
    ComPtr<ID3D11UnorderedAccessView> storage;
    EXPECT_EQ(device->CreateRenderTargetView(texture.Get(), nullptr, &target), E_INVALIDARG);
    EXPECT_EQ(device->CreateUnorderedAccessView(texture.Get(), nullptr, &storage), E_INVALIDARG);
    EXPECT_EQ(device->CreateRenderTargetView(nullptr, nullptr, &target), E_INVALIDARG);
    EXPECT_EQ(device->CreateRenderTargetView(MakeConstants().Get(), nullptr, &target), E_INVALIDARG);
}

TEST_F(DeviceTest, RefusesStatesThatItDoesNotKnow) {
    ComPtr<ID3D11SamplerState> sampler;
    ComPtr<ID3D11BlendState> blend;
    ComPtr<ID3D11RasterizerState> rasterizer;
    ComPtr<ID3D11InputLayout> layout;
    const D3D11_SAMPLER_DESC noSampler{};
    const D3D11_RASTERIZER_DESC noRasterizer{};
    D3D11_BLEND_DESC noBlend{};
    noBlend.RenderTarget[0].BlendEnable = TRUE;
    EXPECT_EQ(device->CreateSamplerState(&noSampler, &sampler), E_INVALIDARG);
    EXPECT_EQ(device->CreateRasterizerState(&noRasterizer, &rasterizer), E_INVALIDARG);
    EXPECT_EQ(device->CreateBlendState(&noBlend, &blend), E_INVALIDARG);
    EXPECT_EQ(device->CreateInputLayout(nullptr, 1, Programs::corner.data(), 4, &layout), E_INVALIDARG);
}

TEST_F(DeviceTest, RefusesMapsThatTheResourceDoesNotAllow) {
    const auto staging = MakeStaging(1, 1);
    const auto texture = MakeTexture(1, 1, D3D11_BIND_SHADER_RESOURCE);
    D3D11_MAPPED_SUBRESOURCE mapped{};
    EXPECT_EQ(context->Map(staging.Get(), 0, D3D11_MAP_WRITE, 0, &mapped), E_INVALIDARG);
    EXPECT_EQ(context->Map(texture.Get(), 0, D3D11_MAP_READ, 0, &mapped), E_INVALIDARG);
    EXPECT_EQ(context->Map(staging.Get(), 1, D3D11_MAP_READ, 0, &mapped), E_INVALIDARG);
    EXPECT_EQ(context->Map(staging.Get(), 0, D3D11_MAP_READ, 0, nullptr), E_INVALIDARG);
}

TEST(CreateDeviceTest, RefusesOtherDriversAndVersions) {
    ID3D11Device* device = nullptr;
    constexpr D3D_FEATURE_LEVEL unknown[] = {static_cast<D3D_FEATURE_LEVEL>(0xc000)};
    EXPECT_EQ(D3D11CreateDevice(nullptr, D3D_DRIVER_TYPE_REFERENCE, nullptr, 0, nullptr, 0, D3D11_SDK_VERSION, &device,
                                nullptr, nullptr),
              E_INVALIDARG);
    EXPECT_EQ(
        D3D11CreateDevice(nullptr, D3D_DRIVER_TYPE_HARDWARE, nullptr, 0, nullptr, 0, 6, &device, nullptr, nullptr),
        E_INVALIDARG);
    EXPECT_EQ(D3D11CreateDevice(nullptr, D3D_DRIVER_TYPE_HARDWARE, nullptr, 0, unknown, 1, D3D11_SDK_VERSION, &device,
                                nullptr, nullptr),
              E_INVALIDARG);
    EXPECT_EQ(device, nullptr);
}

}  // namespace
