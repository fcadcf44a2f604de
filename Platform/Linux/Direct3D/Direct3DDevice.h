#pragma once

#include "Platform/Linux/Direct3D/DeviceChild.h"
#include "Platform/Linux/Direct3D/ImmediateContext.h"

namespace Platform::Direct3D {

/// The device for Direct3D and for DXGI. It makes objects and has its own context as a part of it.
class Direct3DDevice final : public ID3D11Device5, public IDXGIDevice3, public IGraphicsObject {
public:
    Direct3DDevice(std::shared_ptr<GraphicsDevice> graphics, D3D_FEATURE_LEVEL level);
    Direct3DDevice(const Direct3DDevice&) = delete;
    Direct3DDevice& operator=(const Direct3DDevice&) = delete;

    HRESULT QueryInterface(REFIID iid, void** object) override;
    ULONG AddRef() override { return references_.fetch_add(1, std::memory_order_relaxed) + 1; }
    ULONG Release() override;

    HRESULT CreateBuffer(const D3D11_BUFFER_DESC* desc, const D3D11_SUBRESOURCE_DATA* initialData,
                         ID3D11Buffer** buffer) override;
    HRESULT CreateTexture2D(const D3D11_TEXTURE2D_DESC* desc, const D3D11_SUBRESOURCE_DATA* initialData,
                            ID3D11Texture2D** texture) override;
    HRESULT CreateShaderResourceView(ID3D11Resource* resource, const D3D11_SHADER_RESOURCE_VIEW_DESC* desc,
                                     ID3D11ShaderResourceView** view) override;
    HRESULT CreateUnorderedAccessView(ID3D11Resource* resource, const D3D11_UNORDERED_ACCESS_VIEW_DESC* desc,
                                      ID3D11UnorderedAccessView** view) override;
    HRESULT CreateRenderTargetView(ID3D11Resource* resource, const D3D11_RENDER_TARGET_VIEW_DESC* desc,
                                   ID3D11RenderTargetView** view) override;
    HRESULT CreateInputLayout(const D3D11_INPUT_ELEMENT_DESC* elements, UINT count, const void* code, SIZE_T size,
                              ID3D11InputLayout** layout) override;
    HRESULT CreateVertexShader(const void* code, SIZE_T size, ID3D11ClassLinkage* linkage,
                               ID3D11VertexShader** shader) override;
    HRESULT CreatePixelShader(const void* code, SIZE_T size, ID3D11ClassLinkage* linkage,
                              ID3D11PixelShader** shader) override;
    HRESULT CreateComputeShader(const void* code, SIZE_T size, ID3D11ClassLinkage* linkage,
                                ID3D11ComputeShader** shader) override;
    HRESULT CreateBlendState(const D3D11_BLEND_DESC* desc, ID3D11BlendState** state) override;
    HRESULT CreateDepthStencilState(const D3D11_DEPTH_STENCIL_DESC* desc, ID3D11DepthStencilState** state) override;
    HRESULT CreateRasterizerState(const D3D11_RASTERIZER_DESC* desc, ID3D11RasterizerState** state) override;
    HRESULT CreateSamplerState(const D3D11_SAMPLER_DESC* desc, ID3D11SamplerState** state) override;
    HRESULT CreateDeferredContext(UINT flags, ID3D11DeviceContext** context) override;
    D3D_FEATURE_LEVEL GetFeatureLevel() override { return level_; }
    HRESULT GetDeviceRemovedReason() override { return S_OK; }
    void GetImmediateContext(ID3D11DeviceContext** context) override;

    HRESULT GetParent(REFIID iid, void** parent) override;

    const std::shared_ptr<GraphicsDevice>& Graphics() override { return graphics_; }
    ID3D11Device5* AsDirect3D() override { return this; }

private:
    ~Direct3DDevice() = default;

    std::atomic<ULONG> references_{1};
    std::shared_ptr<GraphicsDevice> graphics_;
    const D3D_FEATURE_LEVEL level_;
    ImmediateContext context_;
};

}  // namespace Platform::Direct3D
