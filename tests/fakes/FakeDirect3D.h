// Fakes of Direct3D: the device, its contexts and what it makes. Views hold their resource; nothing holds the device.
#pragma once

#include "tests/fakes/FakeObject.h"

#include <d3d11_4.h>
#include <dxgi1_6.h>
#include <wrl/client.h>

#include <vector>

namespace Fakes {

/// A child of the device. Nobody here asks one for its device: it gives none.
template <class Interface, class... Bases>
class FakeChild : public FakeObject<Interface, ID3D11DeviceChild, Bases...> {
public:
    using FakeObject<Interface, ID3D11DeviceChild, Bases...>::FakeObject;
    void GetDevice(ID3D11Device** device) override { *device = nullptr; }
};

/// A resource with memory that Map gives out, so that a test can read what was written.
class FakeBuffer final : public FakeChild<ID3D11Buffer, ID3D11Resource> {
public:
    FakeBuffer(const D3D11_BUFFER_DESC& description, const D3D11_SUBRESOURCE_DATA* data);
    void GetType(D3D11_RESOURCE_DIMENSION* dimension) override { *dimension = D3D11_RESOURCE_DIMENSION_BUFFER; }
    void GetDesc(D3D11_BUFFER_DESC* description) override { *description = description_; }

    std::vector<std::byte> memory;

private:
    D3D11_BUFFER_DESC description_;
};

/// A texture, which is a DXGI surface too.
class FakeTexture final : public FakeChild<ID3D11Texture2D, ID3D11Resource> {
public:
    FakeTexture(const char* kind, const D3D11_TEXTURE2D_DESC& description);
    void GetType(D3D11_RESOURCE_DIMENSION* dimension) override { *dimension = D3D11_RESOURCE_DIMENSION_TEXTURE2D; }
    void GetDesc(D3D11_TEXTURE2D_DESC* description) override { *description = description_; }
    UINT Pitch() const { return description_.Width * 8; }  // enough for every format in use

    std::vector<std::byte> memory;

protected:
    void* Face(REFIID iid) override;

private:
    class Surface final : public FakeFace<FakeTexture, IDXGISurface2> {
    public:
        using FakeFace::FakeFace;
        HRESULT GetParent(REFIID, void** parent) override;
        HRESULT GetDevice(REFIID, void** device) override;
        HRESULT GetDesc(DXGI_SURFACE_DESC* description) override;
    };

    D3D11_TEXTURE2D_DESC description_;
    Surface surface_{*this};
};

template <class Interface>
class FakeView final : public FakeChild<Interface, ID3D11View> {
public:
    FakeView(const char* kind, ID3D11Resource* resource)
        : FakeChild<Interface, ID3D11View>(kind), resource_(resource) {}
    void GetResource(ID3D11Resource** resource) override { resource_.CopyTo(resource); }

private:
    Microsoft::WRL::ComPtr<ID3D11Resource> resource_;
};

class FakeContext final : public FakeChild<ID3D11DeviceContext4, ID3D11DeviceContext, ID3D11DeviceContext1,
                                           ID3D11DeviceContext2, ID3D11DeviceContext3> {
public:
    explicit FakeContext(D3D11_DEVICE_CONTEXT_TYPE type);

    void VSSetConstantBuffers(UINT slot, UINT count, ID3D11Buffer* const* buffers) override;
    void PSSetShaderResources(UINT slot, UINT count, ID3D11ShaderResourceView* const* views) override;
    void PSSetShader(ID3D11PixelShader* shader, ID3D11ClassInstance* const* instances, UINT count) override;
    void PSSetSamplers(UINT slot, UINT count, ID3D11SamplerState* const* samplers) override;
    void VSSetShader(ID3D11VertexShader* shader, ID3D11ClassInstance* const* instances, UINT count) override;
    void Draw(UINT count, UINT start) override;
    HRESULT Map(ID3D11Resource* resource, UINT index, D3D11_MAP type, UINT flags,
                D3D11_MAPPED_SUBRESOURCE* mapped) override;
    void Unmap(ID3D11Resource* resource, UINT index) override;
    void PSSetConstantBuffers(UINT slot, UINT count, ID3D11Buffer* const* buffers) override;
    void IASetInputLayout(ID3D11InputLayout* layout) override;
    void IASetVertexBuffers(UINT slot, UINT count, ID3D11Buffer* const* buffers, const UINT* strides,
                            const UINT* offsets) override;
    void IASetPrimitiveTopology(D3D11_PRIMITIVE_TOPOLOGY topology) override;
    void OMSetRenderTargets(UINT count, ID3D11RenderTargetView* const* views, ID3D11DepthStencilView* depth) override;
    void OMSetBlendState(ID3D11BlendState* state, const FLOAT factor[4], UINT mask) override;
    void OMSetDepthStencilState(ID3D11DepthStencilState* state, UINT reference) override;
    void Dispatch(UINT x, UINT y, UINT z) override;
    void RSSetState(ID3D11RasterizerState* state) override;
    void RSSetViewports(UINT count, const D3D11_VIEWPORT* viewports) override;
    void CopySubresourceRegion(ID3D11Resource* to, UINT toIndex, UINT x, UINT y, UINT z, ID3D11Resource* from,
                               UINT fromIndex, const D3D11_BOX* box) override;
    void CopyResource(ID3D11Resource* to, ID3D11Resource* from) override;
    void ClearRenderTargetView(ID3D11RenderTargetView* view, const FLOAT color[4]) override;
    void ExecuteCommandList(ID3D11CommandList* list, BOOL restore) override;
    void CSSetShaderResources(UINT slot, UINT count, ID3D11ShaderResourceView* const* views) override;
    void CSSetUnorderedAccessViews(UINT slot, UINT count, ID3D11UnorderedAccessView* const* views,
                                   const UINT* counts) override;
    void CSSetShader(ID3D11ComputeShader* shader, ID3D11ClassInstance* const* instances, UINT count) override;
    void CSSetSamplers(UINT slot, UINT count, ID3D11SamplerState* const* samplers) override;
    void CSSetConstantBuffers(UINT slot, UINT count, ID3D11Buffer* const* buffers) override;
    void ClearState() override;
    void Flush() override;
    D3D11_DEVICE_CONTEXT_TYPE GetType() override { return type_; }
    HRESULT FinishCommandList(BOOL restore, ID3D11CommandList** list) override;

protected:
    void* Face(REFIID iid) override;

private:
    class Multithread final : public FakeFace<FakeContext, ID3D11Multithread> {
    public:
        using FakeFace::FakeFace;
        void Enter() override {}
        void Leave() override {}
        BOOL SetMultithreadProtected(BOOL protect) override;
        BOOL GetMultithreadProtected() override { return protect_; }

    private:
        BOOL protect_ = FALSE;
    };

    D3D11_DEVICE_CONTEXT_TYPE type_;
    Multithread multithread_{*this};
};

class FakeDevice final
    : public FakeObject<ID3D11Device5, ID3D11Device, ID3D11Device1, ID3D11Device2, ID3D11Device3, ID3D11Device4> {
public:
    FakeDevice();

    HRESULT CreateBuffer(const D3D11_BUFFER_DESC* description, const D3D11_SUBRESOURCE_DATA* data,
                         ID3D11Buffer** buffer) override;
    HRESULT CreateTexture2D(const D3D11_TEXTURE2D_DESC* description, const D3D11_SUBRESOURCE_DATA* data,
                            ID3D11Texture2D** texture) override;
    HRESULT CreateShaderResourceView(ID3D11Resource* resource, const D3D11_SHADER_RESOURCE_VIEW_DESC* description,
                                     ID3D11ShaderResourceView** view) override;
    HRESULT CreateUnorderedAccessView(ID3D11Resource* resource, const D3D11_UNORDERED_ACCESS_VIEW_DESC* description,
                                      ID3D11UnorderedAccessView** view) override;
    HRESULT CreateRenderTargetView(ID3D11Resource* resource, const D3D11_RENDER_TARGET_VIEW_DESC* description,
                                   ID3D11RenderTargetView** view) override;
    HRESULT CreateInputLayout(const D3D11_INPUT_ELEMENT_DESC* elements, UINT count, const void* program, SIZE_T length,
                              ID3D11InputLayout** layout) override;
    HRESULT CreateVertexShader(const void* program, SIZE_T length, ID3D11ClassLinkage* linkage,
                               ID3D11VertexShader** shader) override;
    HRESULT CreatePixelShader(const void* program, SIZE_T length, ID3D11ClassLinkage* linkage,
                              ID3D11PixelShader** shader) override;
    HRESULT CreateComputeShader(const void* program, SIZE_T length, ID3D11ClassLinkage* linkage,
                                ID3D11ComputeShader** shader) override;
    HRESULT CreateBlendState(const D3D11_BLEND_DESC* description, ID3D11BlendState** state) override;
    HRESULT CreateDepthStencilState(const D3D11_DEPTH_STENCIL_DESC* description,
                                    ID3D11DepthStencilState** state) override;
    HRESULT CreateRasterizerState(const D3D11_RASTERIZER_DESC* description, ID3D11RasterizerState** state) override;
    HRESULT CreateSamplerState(const D3D11_SAMPLER_DESC* description, ID3D11SamplerState** state) override;
    HRESULT CreateDeferredContext(UINT flags, ID3D11DeviceContext** context) override;
    D3D_FEATURE_LEVEL GetFeatureLevel() override { return D3D_FEATURE_LEVEL_11_1; }
    HRESULT GetDeviceRemovedReason() override { return Call("GetDeviceRemovedReason"); }
    void GetImmediateContext(ID3D11DeviceContext** context) override { immediate_.CopyTo(context); }

protected:
    void* Face(REFIID iid) override;

private:
    class DxgiDevice final : public FakeFace<FakeDevice, IDXGIDevice3> {
    public:
        using FakeFace::FakeFace;
        HRESULT GetParent(REFIID, void** parent) override;
    };

    DxgiDevice dxgiDevice_{*this};
    Microsoft::WRL::ComPtr<ID3D11DeviceContext> immediate_;
};

}  // namespace Fakes
