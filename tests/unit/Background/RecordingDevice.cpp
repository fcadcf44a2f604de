#include "RecordingDevice.h"

#include <sstream>
#include <utility>

namespace {

/// How a fake object is asked for its name: an interface of ours that only these objects have.
struct INamed {
    virtual const std::string& Name() const = 0;

protected:
    ~INamed() = default;
};

template <class Interface>
class Child : public Interface, public INamed {
public:
    Child(std::string name, int& alive) : name_(std::move(name)), alive_(alive) { ++alive_; }
    HRESULT QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG AddRef() override { return ++references_; }
    ULONG Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }
    void GetDevice(ID3D11Device** device) override { *device = nullptr; }
    const std::string& Name() const override { return name_; }

protected:
    virtual ~Child() { --alive_; }

private:
    std::string name_;
    int& alive_;
    ULONG references_ = 1;
};

class FakeBuffer final : public Child<ID3D11Buffer> {
public:
    using Child::Child;
    void GetType(D3D11_RESOURCE_DIMENSION* type) override { *type = D3D11_RESOURCE_DIMENSION_BUFFER; }
    void GetDesc(D3D11_BUFFER_DESC* description) override { *description = {}; }
};

class FakeTexture final : public Child<ID3D11Texture2D> {
public:
    using Child::Child;
    void GetType(D3D11_RESOURCE_DIMENSION* type) override { *type = D3D11_RESOURCE_DIMENSION_TEXTURE2D; }
    void GetDesc(D3D11_TEXTURE2D_DESC* description) override { *description = {}; }
};

template <class Interface>
class FakeView final : public Child<Interface> {
public:
    using Child<Interface>::Child;
    void GetResource(ID3D11Resource** resource) override { *resource = nullptr; }
};

}  // namespace

std::string NameOf(IUnknown* object) {
    if (!object) return "none";
    const auto* named = dynamic_cast<const INamed*>(object);
    return named ? named->Name() : "stranger";
}

HRESULT RecordingDevice::QueryInterface(REFIID, void** object) {
    *object = nullptr;
    return E_NOINTERFACE;
}

template <class Object, class Interface>
HRESULT RecordingDevice::Make(const char* kind, Interface** object) {
    const std::size_t index = created.size();
    created.push_back(kind + (" " + std::to_string(counts_[kind]++)));
    *object = nullptr;
    if (failAt == index) return failure;
    *object = new Object(created.back(), alive);
    return S_OK;
}

HRESULT RecordingDevice::CreateBuffer(const D3D11_BUFFER_DESC* description, const D3D11_SUBRESOURCE_DATA*,
                                      ID3D11Buffer** buffer) {
    buffers.push_back(*description);
    return Make<FakeBuffer>("Buffer", buffer);
}

HRESULT RecordingDevice::CreateTexture2D(const D3D11_TEXTURE2D_DESC* description, const D3D11_SUBRESOURCE_DATA*,
                                         ID3D11Texture2D** texture) {
    textures.push_back({description->Width, description->Height, description->Format, description->BindFlags});
    return Make<FakeTexture>("Texture", texture);
}

HRESULT RecordingDevice::CreateShaderResourceView(ID3D11Resource*, const D3D11_SHADER_RESOURCE_VIEW_DESC*,
                                                  ID3D11ShaderResourceView** view) {
    return Make<FakeView<ID3D11ShaderResourceView>>("ShaderResourceView", view);
}

HRESULT RecordingDevice::CreateUnorderedAccessView(ID3D11Resource*, const D3D11_UNORDERED_ACCESS_VIEW_DESC*,
                                                   ID3D11UnorderedAccessView** view) {
    return Make<FakeView<ID3D11UnorderedAccessView>>("UnorderedAccessView", view);
}

HRESULT RecordingDevice::CreateRenderTargetView(ID3D11Resource*, const D3D11_RENDER_TARGET_VIEW_DESC*,
                                                ID3D11RenderTargetView** view) {
    return Make<FakeView<ID3D11RenderTargetView>>("RenderTargetView", view);
}

HRESULT RecordingDevice::CreateInputLayout(const D3D11_INPUT_ELEMENT_DESC* descriptions, UINT count, const void*,
                                           SIZE_T, ID3D11InputLayout** layout) {
    elements.assign(descriptions, descriptions + count);
    return Make<Child<ID3D11InputLayout>>("InputLayout", layout);
}

HRESULT RecordingDevice::CreateVertexShader(const void*, SIZE_T, ID3D11ClassLinkage*, ID3D11VertexShader** shader) {
    return Make<Child<ID3D11VertexShader>>("VertexShader", shader);
}

HRESULT RecordingDevice::CreatePixelShader(const void*, SIZE_T, ID3D11ClassLinkage*, ID3D11PixelShader** shader) {
    return Make<Child<ID3D11PixelShader>>("PixelShader", shader);
}

HRESULT RecordingDevice::CreateComputeShader(const void*, SIZE_T, ID3D11ClassLinkage*, ID3D11ComputeShader** shader) {
    return Make<Child<ID3D11ComputeShader>>("ComputeShader", shader);
}

HRESULT RecordingDevice::CreateBlendState(const D3D11_BLEND_DESC* description, ID3D11BlendState** state) {
    blend = *description;
    return Make<Child<ID3D11BlendState>>("BlendState", state);
}

HRESULT RecordingDevice::CreateDepthStencilState(const D3D11_DEPTH_STENCIL_DESC* description,
                                                 ID3D11DepthStencilState** state) {
    depthStencil = *description;
    return Make<Child<ID3D11DepthStencilState>>("DepthStencilState", state);
}

HRESULT RecordingDevice::CreateRasterizerState(const D3D11_RASTERIZER_DESC* description,
                                               ID3D11RasterizerState** state) {
    rasterizer = *description;
    return Make<Child<ID3D11RasterizerState>>("RasterizerState", state);
}

HRESULT RecordingDevice::CreateSamplerState(const D3D11_SAMPLER_DESC* description, ID3D11SamplerState** state) {
    sampler = *description;
    return Make<Child<ID3D11SamplerState>>("SamplerState", state);
}

std::vector<std::string> RecordingDeferredContext::Take() {
    return std::exchange(calls, {});
}

HRESULT RecordingDeferredContext::QueryInterface(REFIID, void** object) {
    *object = nullptr;
    return E_NOINTERFACE;
}

template <class... Words>
void RecordingDeferredContext::Say(const Words&... words) {
    std::ostringstream line;
    const char* gap = "";
    ((line << std::exchange(gap, " ") << words), ...);
    calls.push_back(line.str());
}

namespace {

/// "0: Buffer 1, Buffer 2": the first slot and what goes into it and the next ones.
template <class Interface>
std::string Slots(UINT first, UINT count, Interface* const* objects) {
    std::string text = std::to_string(first) + ":";
    for (UINT i = 0; i < count; ++i) text += (i ? ", " : " ") + NameOf(objects[i]);
    return text;
}

}  // namespace

void RecordingDeferredContext::VSSetConstantBuffers(UINT first, UINT count, ID3D11Buffer* const* buffers) {
    Say("VSSetConstantBuffers", Slots(first, count, buffers));
}

void RecordingDeferredContext::PSSetShaderResources(UINT first, UINT count, ID3D11ShaderResourceView* const* views) {
    Say("PSSetShaderResources", Slots(first, count, views));
}

void RecordingDeferredContext::PSSetShader(ID3D11PixelShader* shader, ID3D11ClassInstance* const*, UINT) {
    Say("PSSetShader", NameOf(shader));
}

void RecordingDeferredContext::PSSetSamplers(UINT first, UINT count, ID3D11SamplerState* const* samplers) {
    Say("PSSetSamplers", Slots(first, count, samplers));
}

void RecordingDeferredContext::VSSetShader(ID3D11VertexShader* shader, ID3D11ClassInstance* const*, UINT) {
    Say("VSSetShader", NameOf(shader));
}

void RecordingDeferredContext::Draw(UINT vertices, UINT first) {
    Say("Draw", vertices, first);
}

HRESULT RecordingDeferredContext::Map(ID3D11Resource* resource, UINT, D3D11_MAP type, UINT,
                                      D3D11_MAPPED_SUBRESOURCE* mapped) {
    constexpr std::size_t kLargestBuffer = 256;
    Say("Map", NameOf(resource), type == D3D11_MAP_WRITE_DISCARD ? "discard" : "otherwise");
    if (FAILED(mapResult)) return mapResult;
    auto& bytes = written[NameOf(resource)];
    bytes.assign(kLargestBuffer, std::byte{0xCC});
    *mapped = {bytes.data(), static_cast<UINT>(bytes.size()), 0};
    return S_OK;
}

void RecordingDeferredContext::Unmap(ID3D11Resource* resource, UINT) {
    Say("Unmap", NameOf(resource));
}

void RecordingDeferredContext::PSSetConstantBuffers(UINT first, UINT count, ID3D11Buffer* const* buffers) {
    Say("PSSetConstantBuffers", Slots(first, count, buffers));
}

void RecordingDeferredContext::IASetInputLayout(ID3D11InputLayout* layout) {
    Say("IASetInputLayout", NameOf(layout));
}

void RecordingDeferredContext::IASetVertexBuffers(UINT first, UINT count, ID3D11Buffer* const* buffers,
                                                  const UINT* strides, const UINT* offsets) {
    Say("IASetVertexBuffers", Slots(first, count, buffers), "stride", strides[0], "offset", offsets[0]);
}

void RecordingDeferredContext::IASetPrimitiveTopology(D3D11_PRIMITIVE_TOPOLOGY topology) {
    Say("IASetPrimitiveTopology", topology == D3D11_PRIMITIVE_TOPOLOGY_TRIANGLESTRIP ? "strip" : "other");
}

void RecordingDeferredContext::OMSetRenderTargets(UINT count, ID3D11RenderTargetView* const* views,
                                                  ID3D11DepthStencilView*) {
    Say("OMSetRenderTargets", Slots(0, count, views));
}

void RecordingDeferredContext::OMSetBlendState(ID3D11BlendState* state, const FLOAT[4], UINT mask) {
    Say("OMSetBlendState", NameOf(state), "mask", mask);
}

void RecordingDeferredContext::OMSetDepthStencilState(ID3D11DepthStencilState* state, UINT) {
    Say("OMSetDepthStencilState", NameOf(state));
}

void RecordingDeferredContext::Dispatch(UINT x, UINT y, UINT z) {
    Say("Dispatch", x, y, z);
}

void RecordingDeferredContext::RSSetState(ID3D11RasterizerState* state) {
    Say("RSSetState", NameOf(state));
}

void RecordingDeferredContext::RSSetViewports(UINT, const D3D11_VIEWPORT* v) {
    Say("RSSetViewports", v->TopLeftX, v->TopLeftY, v->Width, v->Height, v->MinDepth, v->MaxDepth);
}

void RecordingDeferredContext::CopySubresourceRegion(ID3D11Resource*, UINT, UINT, UINT, UINT, ID3D11Resource*, UINT,
                                                     const D3D11_BOX*) {
    Say("CopySubresourceRegion");
}

void RecordingDeferredContext::CopyResource(ID3D11Resource*, ID3D11Resource*) {
    Say("CopyResource");
}

void RecordingDeferredContext::ClearRenderTargetView(ID3D11RenderTargetView* view, const FLOAT color[4]) {
    Say("ClearRenderTargetView", NameOf(view), color[0], color[1], color[2], color[3]);
}

void RecordingDeferredContext::ExecuteCommandList(ID3D11CommandList*, BOOL) {
    Say("ExecuteCommandList");
}

void RecordingDeferredContext::CSSetShaderResources(UINT first, UINT count, ID3D11ShaderResourceView* const* views) {
    Say("CSSetShaderResources", Slots(first, count, views));
}

void RecordingDeferredContext::CSSetUnorderedAccessViews(UINT first, UINT count,
                                                         ID3D11UnorderedAccessView* const* views, const UINT*) {
    Say("CSSetUnorderedAccessViews", Slots(first, count, views));
}

void RecordingDeferredContext::CSSetShader(ID3D11ComputeShader* shader, ID3D11ClassInstance* const*, UINT) {
    Say("CSSetShader", NameOf(shader));
}

void RecordingDeferredContext::CSSetSamplers(UINT first, UINT count, ID3D11SamplerState* const* samplers) {
    Say("CSSetSamplers", Slots(first, count, samplers));
}

void RecordingDeferredContext::CSSetConstantBuffers(UINT first, UINT count, ID3D11Buffer* const* buffers) {
    Say("CSSetConstantBuffers", Slots(first, count, buffers));
}

void RecordingDeferredContext::ClearState() {
    Say("ClearState");
}

void RecordingDeferredContext::Flush() {
    Say("Flush");
}

HRESULT RecordingDeferredContext::FinishCommandList(BOOL restore, ID3D11CommandList** list) {
    Say("FinishCommandList", restore ? "restore" : "reset");
    *list = nullptr;
    if (FAILED(finishResult)) return finishResult;
    *list = new Child<ID3D11CommandList>("CommandList", listsAlive);
    return S_OK;
}
