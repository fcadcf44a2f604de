#include "tests/fakes/FakeDirect3D.h"

#include <span>

namespace Fakes {

namespace {

/// "slot, count, first, second" with the names of the objects.
template <class Interface>
std::string Slots(UINT slot, UINT count, Interface* const* objects) {
    std::string text = std::to_string(slot) + ", " + std::to_string(count);
    for (UINT i = 0; i < count; ++i) text += ", " + Text(objects ? objects[i] : nullptr);
    return text;
}

class FakeCommandList final : public FakeChild<ID3D11CommandList> {
public:
    FakeCommandList() : FakeChild("CommandList") {}
};

}  // namespace

FakeContext::FakeContext(D3D11_DEVICE_CONTEXT_TYPE type)
    : FakeChild(type == D3D11_DEVICE_CONTEXT_IMMEDIATE ? "ImmediateContext" : "DeferredContext"), type_(type) {}

void* FakeContext::Face(REFIID iid) {
    return iid == __uuidof(ID3D11Multithread) ? &multithread_ : nullptr;
}

BOOL FakeContext::Multithread::SetMultithreadProtected(BOOL protect) {
    owner_.Call("SetMultithreadProtected", protect);
    return std::exchange(protect_, protect);
}

void FakeContext::VSSetConstantBuffers(UINT slot, UINT count, ID3D11Buffer* const* buffers) {
    Call("VSSetConstantBuffers", Slots(slot, count, buffers));
}
void FakeContext::PSSetShaderResources(UINT slot, UINT count, ID3D11ShaderResourceView* const* views) {
    Call("PSSetShaderResources", Slots(slot, count, views));
}
void FakeContext::PSSetShader(ID3D11PixelShader* shader, ID3D11ClassInstance* const*, UINT) {
    Call("PSSetShader", shader);
}
void FakeContext::PSSetSamplers(UINT slot, UINT count, ID3D11SamplerState* const* samplers) {
    Call("PSSetSamplers", Slots(slot, count, samplers));
}
void FakeContext::VSSetShader(ID3D11VertexShader* shader, ID3D11ClassInstance* const*, UINT) {
    Call("VSSetShader", shader);
}
void FakeContext::Draw(UINT count, UINT start) {
    Call("Draw", count, start);
}

HRESULT FakeContext::Map(ID3D11Resource* resource, UINT index, D3D11_MAP type, UINT flags,
                         D3D11_MAPPED_SUBRESOURCE* mapped) {
    const HRESULT result = Call("Map", resource, index, type, Hex{flags});
    *mapped = {};
    if (FAILED(result)) return result;
    D3D11_RESOURCE_DIMENSION dimension{};
    resource->GetType(&dimension);
    if (dimension == D3D11_RESOURCE_DIMENSION_BUFFER) {
        auto& memory = static_cast<FakeBuffer*>(resource)->memory;
        *mapped = {memory.data(), static_cast<UINT>(memory.size()), static_cast<UINT>(memory.size())};
    } else {
        auto& texture = *static_cast<FakeTexture*>(resource);
        *mapped = {texture.memory.data(), texture.Pitch(), static_cast<UINT>(texture.memory.size())};
    }
    return S_OK;
}

void FakeContext::Unmap(ID3D11Resource* resource, UINT index) {
    Call("Unmap", resource, index);
}
void FakeContext::PSSetConstantBuffers(UINT slot, UINT count, ID3D11Buffer* const* buffers) {
    Call("PSSetConstantBuffers", Slots(slot, count, buffers));
}
void FakeContext::IASetInputLayout(ID3D11InputLayout* layout) {
    Call("IASetInputLayout", layout);
}
void FakeContext::IASetVertexBuffers(UINT slot, UINT count, ID3D11Buffer* const* buffers, const UINT*, const UINT*) {
    Call("IASetVertexBuffers", Slots(slot, count, buffers));
}
void FakeContext::IASetPrimitiveTopology(D3D11_PRIMITIVE_TOPOLOGY topology) {
    Call("IASetPrimitiveTopology", topology);
}
void FakeContext::OMSetRenderTargets(UINT count, ID3D11RenderTargetView* const* views, ID3D11DepthStencilView* depth) {
    std::string targets;
    for (UINT i = 0; i < count; ++i) targets += ", " + Text(views ? views[i] : nullptr);
    Call("OMSetRenderTargets", std::to_string(count) + targets, depth);
}
void FakeContext::OMSetBlendState(ID3D11BlendState* state, const FLOAT factor[4], UINT mask) {
    Call("OMSetBlendState", state, factor ? "{" + Joined(factor[0], factor[1], factor[2], factor[3]) + "}" : "null",
         Hex{mask});
}
void FakeContext::OMSetDepthStencilState(ID3D11DepthStencilState* state, UINT reference) {
    Call("OMSetDepthStencilState", state, reference);
}
void FakeContext::Dispatch(UINT x, UINT y, UINT z) {
    Call("Dispatch", x, y, z);
}
void FakeContext::RSSetState(ID3D11RasterizerState* state) {
    Call("RSSetState", state);
}
void FakeContext::RSSetViewports(UINT count, const D3D11_VIEWPORT* viewports) {
    std::string list;
    for (const D3D11_VIEWPORT& v : std::span(viewports, count))
        list += ", {" + Joined(v.TopLeftX, v.TopLeftY, v.Width, v.Height, v.MinDepth, v.MaxDepth) + "}";
    Call("RSSetViewports", std::to_string(count) + list);
}
void FakeContext::CopySubresourceRegion(ID3D11Resource* to, UINT toIndex, UINT x, UINT y, UINT z, ID3D11Resource* from,
                                        UINT fromIndex, const D3D11_BOX* box) {
    Call("CopySubresourceRegion", to, toIndex, x, y, z, from, fromIndex,
         box ? "{" + Joined(box->left, box->top, box->front, box->right, box->bottom, box->back) + "}" : "null");
}
void FakeContext::CopyResource(ID3D11Resource* to, ID3D11Resource* from) {
    Call("CopyResource", to, from);
}
void FakeContext::ClearRenderTargetView(ID3D11RenderTargetView* view, const FLOAT color[4]) {
    Call("ClearRenderTargetView", view, "{" + Joined(color[0], color[1], color[2], color[3]) + "}");
}
void FakeContext::ExecuteCommandList(ID3D11CommandList* list, BOOL restore) {
    Call("ExecuteCommandList", list, restore);
}
void FakeContext::CSSetShaderResources(UINT slot, UINT count, ID3D11ShaderResourceView* const* views) {
    Call("CSSetShaderResources", Slots(slot, count, views));
}
void FakeContext::CSSetUnorderedAccessViews(UINT slot, UINT count, ID3D11UnorderedAccessView* const* views,
                                            const UINT*) {
    Call("CSSetUnorderedAccessViews", Slots(slot, count, views));
}
void FakeContext::CSSetShader(ID3D11ComputeShader* shader, ID3D11ClassInstance* const*, UINT) {
    Call("CSSetShader", shader);
}
void FakeContext::CSSetSamplers(UINT slot, UINT count, ID3D11SamplerState* const* samplers) {
    Call("CSSetSamplers", Slots(slot, count, samplers));
}
void FakeContext::CSSetConstantBuffers(UINT slot, UINT count, ID3D11Buffer* const* buffers) {
    Call("CSSetConstantBuffers", Slots(slot, count, buffers));
}
void FakeContext::ClearState() {
    Call("ClearState");
}
void FakeContext::Flush() {
    Call("Flush");
}

HRESULT FakeContext::FinishCommandList(BOOL restore, ID3D11CommandList** list) {
    HRESULT result = Call("FinishCommandList", restore);
    if (type_ == D3D11_DEVICE_CONTEXT_IMMEDIATE) result = DXGI_ERROR_INVALID_CALL;
    return Make<FakeCommandList>(result, list);
}

}  // namespace Fakes
