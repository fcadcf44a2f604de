#include "Platform/Linux/Direct3D/Direct3DDevice.h"

#include "Platform/Linux/Direct3D/DeferredContext.h"
#include "Platform/Linux/Direct3D/PipelineCache.h"

#include <cstring>

namespace Platform::Direct3D {

namespace {

/// The texture of a resource that can have a view for `bindFlag`; null for any other.
Texture2D* Viewable(ID3D11Resource* resource, UINT bindFlag) {
    if (!resource) return nullptr;
    D3D11_RESOURCE_DIMENSION dimension = D3D11_RESOURCE_DIMENSION_UNKNOWN;
    resource->GetType(&dimension);
    if (dimension != D3D11_RESOURCE_DIMENSION_TEXTURE2D) return nullptr;
    auto* const texture = static_cast<Texture2D*>(resource);
    return texture->Desc().BindFlags & bindFlag ? texture : nullptr;
}

bool IsFormatOf(const Texture2D& texture, DXGI_FORMAT format) {
    return format == DXGI_FORMAT_UNKNOWN || format == texture.Desc().Format;
}

template <class Made, class Interface>
HRESULT MakeShader(const char* className, IGraphicsObject& owner, VkShaderStageFlagBits stage, const void* code,
                   SIZE_T size, Interface** shader) try {
    if (shader) *shader = nullptr;
    if (!code || size == 0 || size % sizeof(std::uint32_t) != 0) return E_INVALIDARG;
    // Embedded programs may lie at any address.
    std::vector<std::uint32_t> words(size / sizeof(std::uint32_t));
    std::memcpy(words.data(), code, size);
    std::string entryPoint = FindEntryPoint(words, stage);
    if (entryPoint.empty()) return E_INVALIDARG;
    auto program = owner.Graphics()->Pipelines().Code(std::move(words), std::move(entryPoint));
    return HandOut(MakeObject<Made>(className, owner, std::move(program)), shader);
} catch (...) {
    return CurrentFailure();
}

template <class Made, class Description, class Interface>
HRESULT MakeState(const char* className, IGraphicsObject& owner, HRESULT check, const Description* desc,
                  Interface** state) try {
    if (state) *state = nullptr;
    if (FAILED(check)) return check;
    return HandOut(MakeObject<Made>(className, owner, *desc), state);
} catch (...) {
    return CurrentFailure();
}

}  // namespace

Direct3DDevice::Direct3DDevice(std::shared_ptr<GraphicsDevice> graphics, D3D_FEATURE_LEVEL level)
    : graphics_(std::move(graphics)), level_(level), context_(*this, *graphics_) {}

HRESULT Direct3DDevice::QueryInterface(REFIID iid, void** object) {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid == __uuidof(IUnknown) || iid == __uuidof(ID3D11Device) || iid == __uuidof(ID3D11Device1) ||
        iid == __uuidof(ID3D11Device2) || iid == __uuidof(ID3D11Device3) || iid == __uuidof(ID3D11Device4) ||
        iid == __uuidof(ID3D11Device5)) {
        *object = static_cast<ID3D11Device5*>(this);
    } else if (iid == __uuidof(IDXGIObject) || iid == __uuidof(IDXGIDevice) || iid == __uuidof(IDXGIDevice1) ||
               iid == __uuidof(IDXGIDevice2) || iid == __uuidof(IDXGIDevice3)) {
        *object = static_cast<IDXGIDevice3*>(this);
    } else if (iid == __uuidof(IGraphicsObject)) {
        *object = static_cast<IGraphicsObject*>(this);
    } else {
        return NoInterface("ID3D11Device", iid);
    }
    AddRef();
    return S_OK;
}

ULONG Direct3DDevice::Release() {
    const ULONG left = references_.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (left == 0) {
        // The last commands keep what they use, and that keeps the Vulkan device: they would hold each other for ever.
        try {
            graphics_->Finish();
        } catch (const VulkanError&) {
            // A device that is lost lets go of nothing.
        }
        delete this;
    }
    return left;
}

HRESULT Direct3DDevice::CreateBuffer(const D3D11_BUFFER_DESC* desc, const D3D11_SUBRESOURCE_DATA* initialData,
                                     ID3D11Buffer** buffer) try {
    if (buffer) *buffer = nullptr;
    if (const HRESULT hr = CheckBuffer(desc, initialData); FAILED(hr)) return hr;
    if (!buffer) return S_FALSE;
    return HandOut(MakeObject<Buffer>(*this, *desc, initialData ? initialData->pSysMem : nullptr), buffer);
} catch (...) {
    return CurrentFailure();
}

HRESULT Direct3DDevice::CreateTexture2D(const D3D11_TEXTURE2D_DESC* desc, const D3D11_SUBRESOURCE_DATA* initialData,
                                        ID3D11Texture2D** texture) try {
    if (texture) *texture = nullptr;
    if (const HRESULT hr = CheckTexture(desc, initialData); FAILED(hr)) return hr;
    if (!texture) return S_FALSE;
    auto made = MakeObject<Texture2D>(*this, *desc);
    if (initialData)
        graphics_->Upload(made->Image(), {0, 0, desc->Width, desc->Height}, initialData->pSysMem,
                          initialData->SysMemPitch);
    return HandOut(std::move(made), texture);
} catch (...) {
    return CurrentFailure();
}

HRESULT Direct3DDevice::CreateShaderResourceView(ID3D11Resource* resource, const D3D11_SHADER_RESOURCE_VIEW_DESC* desc,
                                                 ID3D11ShaderResourceView** view) try {
    if (view) *view = nullptr;
    Texture2D* const texture = Viewable(resource, D3D11_BIND_SHADER_RESOURCE);
    if (!texture) return E_INVALIDARG;
    if (desc && (!IsFormatOf(*texture, desc->Format) || desc->ViewDimension != D3D11_SRV_DIMENSION_TEXTURE2D ||
                 desc->Texture2D.MostDetailedMip != 0))
        return E_INVALIDARG;
    return HandOut(MakeObject<ShaderResourceView>("ID3D11ShaderResourceView", *this, *texture), view);
} catch (...) {
    return CurrentFailure();
}

HRESULT Direct3DDevice::CreateUnorderedAccessView(ID3D11Resource* resource,
                                                  const D3D11_UNORDERED_ACCESS_VIEW_DESC* desc,
                                                  ID3D11UnorderedAccessView** view) try {
    if (view) *view = nullptr;
    Texture2D* const texture = Viewable(resource, D3D11_BIND_UNORDERED_ACCESS);
    if (!texture) return E_INVALIDARG;
    if (desc && (!IsFormatOf(*texture, desc->Format) || desc->ViewDimension != D3D11_UAV_DIMENSION_TEXTURE2D ||
                 desc->Texture2D.MipSlice != 0))
        return E_INVALIDARG;
    return HandOut(MakeObject<UnorderedAccessView>("ID3D11UnorderedAccessView", *this, *texture), view);
} catch (...) {
    return CurrentFailure();
}

HRESULT Direct3DDevice::CreateRenderTargetView(ID3D11Resource* resource, const D3D11_RENDER_TARGET_VIEW_DESC* desc,
                                               ID3D11RenderTargetView** view) try {
    if (view) *view = nullptr;
    Texture2D* const texture = Viewable(resource, D3D11_BIND_RENDER_TARGET);
    if (!texture) return E_INVALIDARG;
    if (desc && (!IsFormatOf(*texture, desc->Format) || desc->ViewDimension != D3D11_RTV_DIMENSION_TEXTURE2D ||
                 desc->Texture2D.MipSlice != 0))
        return E_INVALIDARG;
    return HandOut(MakeObject<RenderTargetView>("ID3D11RenderTargetView", *this, *texture), view);
} catch (...) {
    return CurrentFailure();
}

HRESULT Direct3DDevice::CreateInputLayout(const D3D11_INPUT_ELEMENT_DESC* elements, UINT count, const void* code,
                                          SIZE_T size, ID3D11InputLayout** layout) try {
    if (layout) *layout = nullptr;
    if (!elements || count == 0 || !code || size == 0) return E_INVALIDARG;
    std::vector<VertexElement> made = ElementsOf(elements, count);
    if (made.empty()) return E_INVALIDARG;
    return HandOut(MakeObject<InputLayout>("ID3D11InputLayout", *this, std::move(made)), layout);
} catch (...) {
    return CurrentFailure();
}

HRESULT Direct3DDevice::CreateVertexShader(const void* code, SIZE_T size, ID3D11ClassLinkage*,
                                           ID3D11VertexShader** shader) {
    return MakeShader<VertexShader>("ID3D11VertexShader", *this, VK_SHADER_STAGE_VERTEX_BIT, code, size, shader);
}

HRESULT Direct3DDevice::CreatePixelShader(const void* code, SIZE_T size, ID3D11ClassLinkage*,
                                          ID3D11PixelShader** shader) {
    return MakeShader<PixelShader>("ID3D11PixelShader", *this, VK_SHADER_STAGE_FRAGMENT_BIT, code, size, shader);
}

HRESULT Direct3DDevice::CreateComputeShader(const void* code, SIZE_T size, ID3D11ClassLinkage*,
                                            ID3D11ComputeShader** shader) {
    return MakeShader<ComputeShader>("ID3D11ComputeShader", *this, VK_SHADER_STAGE_COMPUTE_BIT, code, size, shader);
}

HRESULT Direct3DDevice::CreateBlendState(const D3D11_BLEND_DESC* desc, ID3D11BlendState** state) {
    return MakeState<BlendState>("ID3D11BlendState", *this, CheckBlend(desc), desc, state);
}

HRESULT Direct3DDevice::CreateDepthStencilState(const D3D11_DEPTH_STENCIL_DESC* desc, ID3D11DepthStencilState** state) {
    return MakeState<DepthStencilState>("ID3D11DepthStencilState", *this, CheckDepthStencil(desc), desc, state);
}

HRESULT Direct3DDevice::CreateRasterizerState(const D3D11_RASTERIZER_DESC* desc, ID3D11RasterizerState** state) {
    return MakeState<RasterizerState>("ID3D11RasterizerState", *this, CheckRasterizer(desc), desc, state);
}

HRESULT Direct3DDevice::CreateSamplerState(const D3D11_SAMPLER_DESC* desc, ID3D11SamplerState** state) try {
    if (state) *state = nullptr;
    if (const HRESULT hr = CheckSampler(desc); FAILED(hr)) return hr;
    return HandOut(MakeObject<SamplerState>(*this, *desc), state);
} catch (...) {
    return CurrentFailure();
}

HRESULT Direct3DDevice::CreateDeferredContext(UINT flags, ID3D11DeviceContext** context) try {
    if (context) *context = nullptr;
    if (flags != 0) return E_INVALIDARG;
    return HandOut(MakeObject<DeferredContext>(*this), context);
} catch (...) {
    return CurrentFailure();
}

void Direct3DDevice::GetImmediateContext(ID3D11DeviceContext** context) {
    context_.AddRef();
    *context = &context_;
}

HRESULT Direct3DDevice::GetParent(REFIID, void** parent) {
    if (parent) *parent = nullptr;
    return NotImplemented("IDXGIDevice::GetParent");
}

}  // namespace Platform::Direct3D
