#include "DeviceFixture.h"
#include "Programs.h"

#include <cstring>

namespace {

using ComputeTest = DeviceFixture;

TEST_F(ComputeTest, AProgramStoresItsGrid) {
    const auto texture =
        MakeTexture(16, 8, D3D11_BIND_UNORDERED_ACCESS | D3D11_BIND_SHADER_RESOURCE, DXGI_FORMAT_R16G16B16A16_FLOAT);
    ComPtr<ID3D11UnorderedAccessView> view;
    ASSERT_EQ(device->CreateUnorderedAccessView(texture.Get(), nullptr, &view), S_OK);
    ComPtr<ID3D11ComputeShader> shader;
    ASSERT_EQ(device->CreateComputeShader(Programs::grid.data(), Programs::grid.size_bytes(), nullptr, &shader), S_OK);
    const auto constants = MakeConstants();
    const auto deferred = MakeDeferred();
    WriteColor(deferred.Get(), constants.Get(), {0.5F, 0, 2, 0});
    deferred->CSSetConstantBuffers(0, 1, constants.GetAddressOf());
    deferred->CSSetShader(shader.Get(), nullptr, 0);
    deferred->CSSetUnorderedAccessViews(0, 1, view.GetAddressOf(), nullptr);
    deferred->Dispatch(2, 1, 1);
    ID3D11UnorderedAccessView* const none = nullptr;
    deferred->CSSetUnorderedAccessViews(0, 1, &none, nullptr);
    ComPtr<ID3D11CommandList> list;
    ASSERT_EQ(deferred->FinishCommandList(FALSE, &list), S_OK);
    context->ExecuteCommandList(list.Get(), TRUE);

    const auto staging = MakeStaging(16, 8, DXGI_FORMAT_R16G16B16A16_FLOAT);
    context->CopyResource(staging.Get(), texture.Get());
    D3D11_MAPPED_SUBRESOURCE mapped{};
    ASSERT_EQ(context->Map(staging.Get(), 0, D3D11_MAP_READ, 0, &mapped), S_OK);
    std::uint16_t texel[4] = {};
    std::memcpy(texel, static_cast<const char*>(mapped.pData) + 3 * mapped.RowPitch + 9 * 8, sizeof texel);
    context->Unmap(staging.Get(), 0);
    EXPECT_EQ(texel[0], 0x48C0);  // 9.5 as a 16-bit float
    EXPECT_EQ(texel[1], 0x4200);  // 3
    EXPECT_EQ(texel[2], 0x4000);  // 2
    EXPECT_EQ(texel[3], 0x3C00);  // 1
}

TEST_F(ComputeTest, ADispatchWithNowhereToStoreIsLeftOut) {
    ComPtr<ID3D11ComputeShader> shader;
    ASSERT_EQ(device->CreateComputeShader(Programs::grid.data(), Programs::grid.size_bytes(), nullptr, &shader), S_OK);
    context->CSSetShader(shader.Get(), nullptr, 0);
    context->Dispatch(1, 1, 1);
    context->ClearState();
    context->Flush();
}

}  // namespace
