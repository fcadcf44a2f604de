// A Direct3D device that makes nothing but named objects, fails where it is told to, and contexts that write down what
// they are told.
#pragma once

#include <d3d11_4.h>

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// A device on the test's stack: reference counting doesn't end it. Objects are named by kind and number: the third
/// pixel shader is "PixelShader 2".
class RecordingDevice final : public ID3D11Device {
public:
    struct Texture {
        UINT width, height;
        DXGI_FORMAT format;
        UINT bindFlags;
    };

    std::vector<std::string> created;        ///< Names, in the order of creation, failed ones included.
    std::vector<D3D11_BUFFER_DESC> buffers;  ///< What was asked for.
    std::vector<Texture> textures;           ///< Likewise.
    std::optional<std::size_t> failAt;       ///< The index in `created` of the call that answers `failure`.
    HRESULT failure = E_OUTOFMEMORY;
    int alive = 0;  ///< Objects that someone still holds.
    D3D11_SAMPLER_DESC sampler{};
    D3D11_RASTERIZER_DESC rasterizer{};
    D3D11_BLEND_DESC blend{};
    D3D11_DEPTH_STENCIL_DESC depthStencil{};
    std::vector<D3D11_INPUT_ELEMENT_DESC> elements;

    HRESULT QueryInterface(REFIID, void** object) override;
    ULONG AddRef() override { return 1; }
    ULONG Release() override { return 1; }
    HRESULT CreateBuffer(const D3D11_BUFFER_DESC*, const D3D11_SUBRESOURCE_DATA*, ID3D11Buffer**) override;
    HRESULT CreateTexture2D(const D3D11_TEXTURE2D_DESC*, const D3D11_SUBRESOURCE_DATA*, ID3D11Texture2D**) override;
    HRESULT CreateShaderResourceView(ID3D11Resource*, const D3D11_SHADER_RESOURCE_VIEW_DESC*,
                                     ID3D11ShaderResourceView**) override;
    HRESULT CreateUnorderedAccessView(ID3D11Resource*, const D3D11_UNORDERED_ACCESS_VIEW_DESC*,
                                      ID3D11UnorderedAccessView**) override;
    HRESULT CreateRenderTargetView(ID3D11Resource*, const D3D11_RENDER_TARGET_VIEW_DESC*,
                                   ID3D11RenderTargetView**) override;
    HRESULT CreateInputLayout(const D3D11_INPUT_ELEMENT_DESC*, UINT, const void*, SIZE_T, ID3D11InputLayout**) override;
    HRESULT CreateVertexShader(const void*, SIZE_T, ID3D11ClassLinkage*, ID3D11VertexShader**) override;
    HRESULT CreatePixelShader(const void*, SIZE_T, ID3D11ClassLinkage*, ID3D11PixelShader**) override;
    HRESULT CreateComputeShader(const void*, SIZE_T, ID3D11ClassLinkage*, ID3D11ComputeShader**) override;
    HRESULT CreateBlendState(const D3D11_BLEND_DESC*, ID3D11BlendState**) override;
    HRESULT CreateDepthStencilState(const D3D11_DEPTH_STENCIL_DESC*, ID3D11DepthStencilState**) override;
    HRESULT CreateRasterizerState(const D3D11_RASTERIZER_DESC*, ID3D11RasterizerState**) override;
    HRESULT CreateSamplerState(const D3D11_SAMPLER_DESC*, ID3D11SamplerState**) override;
    HRESULT CreateDeferredContext(UINT, ID3D11DeviceContext**) override { return E_NOTIMPL; }
    D3D_FEATURE_LEVEL GetFeatureLevel() override { return D3D_FEATURE_LEVEL_11_1; }
    HRESULT GetDeviceRemovedReason() override { return S_OK; }
    void GetImmediateContext(ID3D11DeviceContext** context) override { *context = nullptr; }

private:
    template <class Object, class Interface>
    HRESULT Make(const char* kind, Interface** object);

    std::map<std::string, int> counts_;
};

/// A deferred context on the test's stack. Calls are lines such as "Draw 4"; what is mapped is kept by buffer.
class RecordingDeferredContext final : public ID3D11DeviceContext {
public:
    std::vector<std::string> calls;
    std::map<std::string, std::vector<std::byte>> written;  ///< What each buffer was last filled with, by name.
    HRESULT mapResult = S_OK;
    HRESULT finishResult = S_OK;
    int listsAlive = 0;

    /// What a buffer was last filled with, as the record that it is.
    template <class Record>
    Record Written(const std::string& buffer) const {
        return *reinterpret_cast<const Record*>(written.at(buffer).data());
    }
    std::vector<std::string> Take();

    HRESULT QueryInterface(REFIID, void** object) override;
    ULONG AddRef() override { return 1; }
    ULONG Release() override { return 1; }
    void GetDevice(ID3D11Device** device) override { *device = nullptr; }
    void VSSetConstantBuffers(UINT, UINT, ID3D11Buffer* const*) override;
    void PSSetShaderResources(UINT, UINT, ID3D11ShaderResourceView* const*) override;
    void PSSetShader(ID3D11PixelShader*, ID3D11ClassInstance* const*, UINT) override;
    void PSSetSamplers(UINT, UINT, ID3D11SamplerState* const*) override;
    void VSSetShader(ID3D11VertexShader*, ID3D11ClassInstance* const*, UINT) override;
    void Draw(UINT, UINT) override;
    HRESULT Map(ID3D11Resource*, UINT, D3D11_MAP, UINT, D3D11_MAPPED_SUBRESOURCE*) override;
    void Unmap(ID3D11Resource*, UINT) override;
    void PSSetConstantBuffers(UINT, UINT, ID3D11Buffer* const*) override;
    void IASetInputLayout(ID3D11InputLayout*) override;
    void IASetVertexBuffers(UINT, UINT, ID3D11Buffer* const*, const UINT*, const UINT*) override;
    void IASetPrimitiveTopology(D3D11_PRIMITIVE_TOPOLOGY) override;
    void OMSetRenderTargets(UINT, ID3D11RenderTargetView* const*, ID3D11DepthStencilView*) override;
    void OMSetBlendState(ID3D11BlendState*, const FLOAT[4], UINT) override;
    void OMSetDepthStencilState(ID3D11DepthStencilState*, UINT) override;
    void Dispatch(UINT, UINT, UINT) override;
    void RSSetState(ID3D11RasterizerState*) override;
    void RSSetViewports(UINT, const D3D11_VIEWPORT*) override;
    void CopySubresourceRegion(ID3D11Resource*, UINT, UINT, UINT, UINT, ID3D11Resource*, UINT,
                               const D3D11_BOX*) override;
    void CopyResource(ID3D11Resource*, ID3D11Resource*) override;
    void ClearRenderTargetView(ID3D11RenderTargetView*, const FLOAT[4]) override;
    void ExecuteCommandList(ID3D11CommandList*, BOOL) override;
    void CSSetShaderResources(UINT, UINT, ID3D11ShaderResourceView* const*) override;
    void CSSetUnorderedAccessViews(UINT, UINT, ID3D11UnorderedAccessView* const*, const UINT*) override;
    void CSSetShader(ID3D11ComputeShader*, ID3D11ClassInstance* const*, UINT) override;
    void CSSetSamplers(UINT, UINT, ID3D11SamplerState* const*) override;
    void CSSetConstantBuffers(UINT, UINT, ID3D11Buffer* const*) override;
    void ClearState() override;
    void Flush() override;
    D3D11_DEVICE_CONTEXT_TYPE GetType() override { return D3D11_DEVICE_CONTEXT_DEFERRED; }
    HRESULT FinishCommandList(BOOL, ID3D11CommandList**) override;

private:
    template <class... Words>
    void Say(const Words&... words);
};

/// The name of an object of a RecordingDevice; "none" for a null pointer.
std::string NameOf(IUnknown* object);
