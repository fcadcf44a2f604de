#include "Platform/Linux/Direct3D/Context.h"

namespace Platform::Direct3D {

namespace {

/// Sets the slots that exist; a null array empties them. Registers beyond are not for use here, so that only emptying
/// them is in order.
template <class Object, class Interface, std::size_t count>
void SetSlots(std::array<ComPtr<Object>, count>& slots, UINT first, UINT number, Interface* const* objects,
              const char* name) {
    for (UINT i = 0; i < number; ++i) {
        Interface* const object = objects ? objects[i] : nullptr;
        if (first + i < count) {
            slots[first + i] = static_cast<Object*>(object);
        } else if (object) {
            NotImplemented(name);
        }
    }
}

D3D11_RESOURCE_DIMENSION DimensionOf(ID3D11Resource* resource) {
    D3D11_RESOURCE_DIMENSION dimension = D3D11_RESOURCE_DIMENSION_UNKNOWN;
    if (resource) resource->GetType(&dimension);
    return dimension;
}

}  // namespace

GraphicsState& Context::Change() {
    snapshot_.reset();
    return state_;
}

const std::shared_ptr<const GraphicsState>& Context::Snapshot() {
    if (!snapshot_) snapshot_ = std::make_shared<const GraphicsState>(state_);
    return snapshot_;
}

void Context::GetDevice(ID3D11Device** device) {
    *device = owner_.AsDirect3D();
    (*device)->AddRef();
}

void Context::VSSetConstantBuffers(UINT first, UINT count, ID3D11Buffer* const* buffers) {
    SetSlots(Change().vertexConstants, first, count, buffers, "VSSetConstantBuffers beyond slot 3");
}

void Context::PSSetShaderResources(UINT first, UINT count, ID3D11ShaderResourceView* const* views) {
    SetSlots(Change().pixel.textures, first, count, views, "PSSetShaderResources beyond slot 7");
}

void Context::PSSetShader(ID3D11PixelShader* shader, ID3D11ClassInstance* const*, UINT) {
    Change().pixelShader = static_cast<PixelShader*>(shader);
}

void Context::PSSetSamplers(UINT first, UINT count, ID3D11SamplerState* const* samplers) {
    SetSlots(Change().pixel.samplers, first, count, samplers, "PSSetSamplers beyond slot 3");
}

void Context::VSSetShader(ID3D11VertexShader* shader, ID3D11ClassInstance* const*, UINT) {
    Change().vertexShader = static_cast<VertexShader*>(shader);
}

void Context::PSSetConstantBuffers(UINT first, UINT count, ID3D11Buffer* const* buffers) {
    SetSlots(Change().pixel.constants, first, count, buffers, "PSSetConstantBuffers beyond slot 3");
}

void Context::IASetInputLayout(ID3D11InputLayout* layout) {
    Change().layout = static_cast<InputLayout*>(layout);
}

void Context::IASetVertexBuffers(UINT first, UINT count, ID3D11Buffer* const* buffers, const UINT* strides,
                                 const UINT* offsets) {
    GraphicsState& state = Change();
    for (UINT i = 0; i < count; ++i) {
        ID3D11Buffer* const buffer = buffers ? buffers[i] : nullptr;
        if (first + i < vertexSlots) {
            state.streams[first + i] = {static_cast<Buffer*>(buffer), strides ? strides[i] : 0,
                                        offsets ? offsets[i] : 0};
        } else if (buffer) {
            NotImplemented("IASetVertexBuffers beyond slot 3");
        }
    }
}

void Context::IASetPrimitiveTopology(D3D11_PRIMITIVE_TOPOLOGY topology) {
    Change().topology = topology;
}

void Context::OMSetRenderTargets(UINT count, ID3D11RenderTargetView* const* views, ID3D11DepthStencilView*) {
    ID3D11RenderTargetView* const first = count > 0 && views ? views[0] : nullptr;
    for (UINT i = 1; views && i < count; ++i) {
        if (views[i]) NotImplemented("OMSetRenderTargets with several targets");
    }
    Change().target = static_cast<RenderTargetView*>(first);
}

void Context::OMSetBlendState(ID3D11BlendState* state, const FLOAT*, UINT) {
    Change().blend = static_cast<BlendState*>(state);
}

void Context::OMSetDepthStencilState(ID3D11DepthStencilState* state, UINT) {
    Change().depthStencil = static_cast<DepthStencilState*>(state);
}

void Context::RSSetState(ID3D11RasterizerState* state) {
    Change().rasterizer = static_cast<RasterizerState*>(state);
}

void Context::RSSetViewports(UINT count, const D3D11_VIEWPORT* viewports) {
    Change().viewport = count > 0 && viewports ? viewports[0] : D3D11_VIEWPORT{};
}

void Context::CSSetShaderResources(UINT first, UINT count, ID3D11ShaderResourceView* const* views) {
    SetSlots(Change().compute.textures, first, count, views, "CSSetShaderResources beyond slot 7");
}

void Context::CSSetUnorderedAccessViews(UINT first, UINT count, ID3D11UnorderedAccessView* const* views, const UINT*) {
    SetSlots(Change().storage, first, count, views, "CSSetUnorderedAccessViews beyond slot 3");
}

void Context::CSSetShader(ID3D11ComputeShader* shader, ID3D11ClassInstance* const*, UINT) {
    Change().computeShader = static_cast<ComputeShader*>(shader);
}

void Context::CSSetSamplers(UINT first, UINT count, ID3D11SamplerState* const* samplers) {
    SetSlots(Change().compute.samplers, first, count, samplers, "CSSetSamplers beyond slot 3");
}

void Context::CSSetConstantBuffers(UINT first, UINT count, ID3D11Buffer* const* buffers) {
    SetSlots(Change().compute.constants, first, count, buffers, "CSSetConstantBuffers beyond slot 3");
}

void Context::ClearState() {
    Change() = GraphicsState{};
}

void Context::Draw(UINT vertexCount, UINT firstVertex) {
    Take(DrawCommand{Snapshot(), vertexCount, firstVertex});
}

void Context::Dispatch(UINT x, UINT y, UINT z) {
    if (x == 0 || y == 0 || z == 0) return;
    Take(DispatchCommand{Snapshot(), x, y, z});
}

void Context::ClearRenderTargetView(ID3D11RenderTargetView* view, const FLOAT color[4]) {
    if (!view) return;
    Take(ClearCommand{static_cast<RenderTargetView*>(view), {color[0], color[1], color[2], color[3]}});
}

void Context::CopySubresourceRegion(ID3D11Resource* target, UINT targetSubresource, UINT x, UINT y, UINT z,
                                    ID3D11Resource* source, UINT sourceSubresource, const D3D11_BOX* box) {
    if (DimensionOf(target) != D3D11_RESOURCE_DIMENSION_TEXTURE2D || DimensionOf(source) != DimensionOf(target)) {
        NotImplemented("CopySubresourceRegion of buffers");
        return;
    }
    if (targetSubresource != 0 || sourceSubresource != 0 || z != 0 || target == source) return;
    auto* const to = static_cast<Texture2D*>(target);
    auto* const from = static_cast<Texture2D*>(source);
    const D3D11_TEXTURE2D_DESC& toDesc = to->Desc();
    const D3D11_TEXTURE2D_DESC& fromDesc = from->Desc();
    const D3D11_BOX whole{0, 0, 0, fromDesc.Width, fromDesc.Height, 1};
    const D3D11_BOX& part = box ? *box : whole;
    // An empty box copies nothing; one that reaches beyond a texture is an error, and the call has no way to say so.
    if (part.left >= part.right || part.top >= part.bottom || part.front != 0 || part.back != 1) return;
    const PixelRect rect{part.left, part.top, part.right - part.left, part.bottom - part.top};
    if (part.right > fromDesc.Width || part.bottom > fromDesc.Height || x > toDesc.Width || y > toDesc.Height ||
        rect.width > toDesc.Width - x || rect.height > toDesc.Height - y || toDesc.Format != fromDesc.Format)
        return;
    if (to->Staging() && from->Staging()) {
        NotImplemented("CopySubresourceRegion between staging textures");
        return;
    }
    Take(CopyCommand{to, x, y, from, rect});
}

void Context::CopyResource(ID3D11Resource* target, ID3D11Resource* source) {
    if (DimensionOf(target) == D3D11_RESOURCE_DIMENSION_BUFFER && DimensionOf(source) == DimensionOf(target)) {
        auto* const to = static_cast<Buffer*>(target);
        auto* const from = static_cast<Buffer*>(source);
        if (to != from && to->Size() == from->Size()) Take(CopyBufferCommand{to, from});
        return;
    }
    if (DimensionOf(target) != D3D11_RESOURCE_DIMENSION_TEXTURE2D || DimensionOf(source) != DimensionOf(target)) return;
    const D3D11_TEXTURE2D_DESC& to = static_cast<Texture2D*>(target)->Desc();
    const D3D11_TEXTURE2D_DESC& from = static_cast<Texture2D*>(source)->Desc();
    if (to.Width == from.Width && to.Height == from.Height)
        CopySubresourceRegion(target, 0, 0, 0, 0, source, 0, nullptr);
}

}  // namespace Platform::Direct3D
