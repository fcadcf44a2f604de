#include "tests/fakes/FakeDirect3D.h"

#include <cstring>
#include <span>

namespace Fakes {

namespace {

template <class Interface>
class FakeState final : public FakeChild<Interface> {
public:
    using FakeChild<Interface>::FakeChild;
};

}  // namespace

FakeBuffer::FakeBuffer(const D3D11_BUFFER_DESC& description, const D3D11_SUBRESOURCE_DATA* data)
    : FakeChild("Buffer"), memory(description.ByteWidth), description_(description) {
    if (data) std::memcpy(memory.data(), data->pSysMem, memory.size());
}

FakeTexture::FakeTexture(const char* kind, const D3D11_TEXTURE2D_DESC& description)
    : FakeChild(kind), memory(std::size_t{description.Width} * 8 * description.Height), description_(description) {}

void* FakeTexture::Face(REFIID iid) {
    const bool known = iid == __uuidof(IDXGIObject) || iid == __uuidof(IDXGIDeviceSubObject) ||
                       iid == __uuidof(IDXGISurface) || iid == __uuidof(IDXGISurface1) ||
                       iid == __uuidof(IDXGISurface2);
    return known ? &surface_ : nullptr;
}

HRESULT FakeTexture::Surface::GetParent(REFIID, void** parent) {
    *parent = nullptr;
    return E_NOINTERFACE;
}

HRESULT FakeTexture::Surface::GetDevice(REFIID, void** device) {
    *device = nullptr;
    return E_NOINTERFACE;
}

HRESULT FakeTexture::Surface::GetDesc(DXGI_SURFACE_DESC* description) {
    D3D11_TEXTURE2D_DESC texture{};
    owner_.GetDesc(&texture);
    *description = {texture.Width, texture.Height, texture.Format, texture.SampleDesc};
    return S_OK;
}

FakeDevice::FakeDevice() : FakeObject("Device") {
    immediate_.Attach(new FakeContext(D3D11_DEVICE_CONTEXT_IMMEDIATE));
}

void* FakeDevice::Face(REFIID iid) {
    const bool known = iid == __uuidof(IDXGIObject) || iid == __uuidof(IDXGIDevice) || iid == __uuidof(IDXGIDevice1) ||
                       iid == __uuidof(IDXGIDevice2) || iid == __uuidof(IDXGIDevice3);
    return known ? &dxgiDevice_ : nullptr;
}

HRESULT FakeDevice::DxgiDevice::GetParent(REFIID, void** parent) {
    *parent = nullptr;
    return E_NOINTERFACE;
}

HRESULT FakeDevice::CreateBuffer(const D3D11_BUFFER_DESC* d, const D3D11_SUBRESOURCE_DATA* data,
                                 ID3D11Buffer** buffer) {
    const HRESULT result =
        Call("CreateBuffer", d->ByteWidth, d->Usage, Hex{d->BindFlags}, Hex{d->CPUAccessFlags}, d->MiscFlags);
    return Make<FakeBuffer>(result, buffer, *d, data);
}

HRESULT FakeDevice::CreateTexture2D(const D3D11_TEXTURE2D_DESC* d, const D3D11_SUBRESOURCE_DATA*,
                                    ID3D11Texture2D** texture) {
    const HRESULT result = Call("CreateTexture2D", d->Width, d->Height, d->MipLevels, d->ArraySize, d->Format,
                                d->SampleDesc.Count, d->Usage, Hex{d->BindFlags}, Hex{d->CPUAccessFlags}, d->MiscFlags);
    return Make<FakeTexture>(result, texture, "Texture", *d);
}

HRESULT FakeDevice::CreateShaderResourceView(ID3D11Resource* resource, const D3D11_SHADER_RESOURCE_VIEW_DESC*,
                                             ID3D11ShaderResourceView** view) {
    const HRESULT result = Call("CreateShaderResourceView", resource);
    return Make<FakeView<ID3D11ShaderResourceView>>(result, view, "ShaderResourceView", resource);
}

HRESULT FakeDevice::CreateUnorderedAccessView(ID3D11Resource* resource, const D3D11_UNORDERED_ACCESS_VIEW_DESC*,
                                              ID3D11UnorderedAccessView** view) {
    const HRESULT result = Call("CreateUnorderedAccessView", resource);
    return Make<FakeView<ID3D11UnorderedAccessView>>(result, view, "UnorderedAccessView", resource);
}

HRESULT FakeDevice::CreateRenderTargetView(ID3D11Resource* resource, const D3D11_RENDER_TARGET_VIEW_DESC*,
                                           ID3D11RenderTargetView** view) {
    const HRESULT result = Call("CreateRenderTargetView", resource);
    return Make<FakeView<ID3D11RenderTargetView>>(result, view, "RenderTargetView", resource);
}

HRESULT FakeDevice::CreateInputLayout(const D3D11_INPUT_ELEMENT_DESC*, UINT count, const void*, SIZE_T,
                                      ID3D11InputLayout** layout) {
    return Make<FakeState<ID3D11InputLayout>>(Call("CreateInputLayout", count), layout, "InputLayout");
}

HRESULT FakeDevice::CreateVertexShader(const void*, SIZE_T, ID3D11ClassLinkage*, ID3D11VertexShader** shader) {
    return Make<FakeState<ID3D11VertexShader>>(Call("CreateVertexShader"), shader, "VertexShader");
}

HRESULT FakeDevice::CreatePixelShader(const void*, SIZE_T, ID3D11ClassLinkage*, ID3D11PixelShader** shader) {
    return Make<FakeState<ID3D11PixelShader>>(Call("CreatePixelShader"), shader, "PixelShader");
}

HRESULT FakeDevice::CreateComputeShader(const void*, SIZE_T, ID3D11ClassLinkage*, ID3D11ComputeShader** shader) {
    return Make<FakeState<ID3D11ComputeShader>>(Call("CreateComputeShader"), shader, "ComputeShader");
}

HRESULT FakeDevice::CreateBlendState(const D3D11_BLEND_DESC* description, ID3D11BlendState** state) {
    const D3D11_RENDER_TARGET_BLEND_DESC& d = description->RenderTarget[0];
    const HRESULT result = Call("CreateBlendState", d.BlendEnable, d.SrcBlend, d.DestBlend, d.BlendOp, d.SrcBlendAlpha,
                                d.DestBlendAlpha, d.BlendOpAlpha, Hex{d.RenderTargetWriteMask});
    return Make<FakeState<ID3D11BlendState>>(result, state, "BlendState");
}

HRESULT FakeDevice::CreateDepthStencilState(const D3D11_DEPTH_STENCIL_DESC* d, ID3D11DepthStencilState** state) {
    const HRESULT result =
        Call("CreateDepthStencilState", d->DepthEnable, d->DepthWriteMask, d->DepthFunc, d->StencilEnable);
    return Make<FakeState<ID3D11DepthStencilState>>(result, state, "DepthStencilState");
}

HRESULT FakeDevice::CreateRasterizerState(const D3D11_RASTERIZER_DESC* d, ID3D11RasterizerState** state) {
    const HRESULT result =
        Call("CreateRasterizerState", d->FillMode, d->CullMode, d->DepthClipEnable, d->ScissorEnable);
    return Make<FakeState<ID3D11RasterizerState>>(result, state, "RasterizerState");
}

HRESULT FakeDevice::CreateSamplerState(const D3D11_SAMPLER_DESC* d, ID3D11SamplerState** state) {
    const HRESULT result = Call("CreateSamplerState", Hex{d->Filter}, d->AddressU, d->AddressV, d->AddressW);
    return Make<FakeState<ID3D11SamplerState>>(result, state, "SamplerState");
}

HRESULT FakeDevice::CreateDeferredContext(UINT flags, ID3D11DeviceContext** context) {
    return Make<FakeContext>(Call("CreateDeferredContext", flags), context, D3D11_DEVICE_CONTEXT_DEFERRED);
}

}  // namespace Fakes

FAKE_FUNCTION HRESULT WINAPI D3D11CreateDevice(IDXGIAdapter* adapter, D3D_DRIVER_TYPE driver, HMODULE software,
                                               UINT flags, const D3D_FEATURE_LEVEL* levels, UINT count, UINT version,
                                               ID3D11Device** device, D3D_FEATURE_LEVEL* level,
                                               ID3D11DeviceContext** context) noexcept {
    std::string list;
    for (const D3D_FEATURE_LEVEL each : std::span(levels, count))
        list += (list.empty() ? "" : " ") + Fakes::Text(Fakes::Hex{each});
    const HRESULT result = Fakes::FreeCall("D3D11CreateDevice", adapter, driver, std::string(software ? "?" : "null"),
                                           Fakes::Hex{flags}, list, version);
    if (context) *context = nullptr;
    Fakes::Make<Fakes::FakeDevice>(result, device);
    if (FAILED(result)) return result;
    if (context) (*device)->GetImmediateContext(context);
    if (level) *level = D3D_FEATURE_LEVEL_11_1;
    return result;
}
