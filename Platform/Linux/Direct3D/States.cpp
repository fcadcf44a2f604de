#include "Platform/Linux/Direct3D/States.h"

#include "Platform/Linux/Direct3D/Bindings.h"
#include "Platform/Linux/Direct3D/Formats.h"

#include <algorithm>

namespace Platform::Direct3D {

namespace {

template <class Value>
bool IsWithin(Value value, Value first, Value last) {
    return value >= first && value <= last;
}

bool IsKnownFilter(D3D11_FILTER filter) {
    return filter == D3D11_FILTER_MIN_MAG_MIP_POINT || filter == D3D11_FILTER_MIN_MAG_LINEAR_MIP_POINT ||
           filter == D3D11_FILTER_MIN_MAG_MIP_LINEAR;
}

bool IsKnownAddress(D3D11_TEXTURE_ADDRESS_MODE mode) {
    return IsWithin(mode, D3D11_TEXTURE_ADDRESS_WRAP, D3D11_TEXTURE_ADDRESS_BORDER);
}

VkSamplerAddressMode AddressOf(D3D11_TEXTURE_ADDRESS_MODE mode) {
    switch (mode) {
        case D3D11_TEXTURE_ADDRESS_WRAP:
            return VK_SAMPLER_ADDRESS_MODE_REPEAT;
        case D3D11_TEXTURE_ADDRESS_MIRROR:
            return VK_SAMPLER_ADDRESS_MODE_MIRRORED_REPEAT;
        case D3D11_TEXTURE_ADDRESS_BORDER:
            return VK_SAMPLER_ADDRESS_MODE_CLAMP_TO_BORDER;
        case D3D11_TEXTURE_ADDRESS_CLAMP:
            break;
    }
    return VK_SAMPLER_ADDRESS_MODE_CLAMP_TO_EDGE;
}

bool IsKnownTarget(const D3D11_RENDER_TARGET_BLEND_DESC& desc) {
    if (desc.RenderTargetWriteMask > D3D11_COLOR_WRITE_ENABLE_ALL) return false;
    const auto isKnown = [](D3D11_BLEND blend) {
        return IsWithin(blend, D3D11_BLEND_ZERO, D3D11_BLEND_INV_DEST_COLOR);
    };
    return isKnown(desc.SrcBlend) && isKnown(desc.DestBlend) && isKnown(desc.SrcBlendAlpha) &&
           isKnown(desc.DestBlendAlpha) && desc.BlendOp == D3D11_BLEND_OP_ADD &&
           desc.BlendOpAlpha == D3D11_BLEND_OP_ADD;
}

}  // namespace

std::vector<VertexElement> ElementsOf(const D3D11_INPUT_ELEMENT_DESC* elements, UINT count) {
    std::vector<VertexElement> result;
    UINT next[vertexSlots] = {};
    for (UINT i = 0; i < count; ++i) {
        const D3D11_INPUT_ELEMENT_DESC& each = elements[i];
        const auto format = FormatOf(each.Format);
        if (!format || !each.SemanticName || each.InputSlot >= vertexSlots) return {};
        if (each.InputSlotClass != D3D11_INPUT_PER_VERTEX_DATA) return {};
        const UINT offset =
            each.AlignedByteOffset == D3D11_APPEND_ALIGNED_ELEMENT ? next[each.InputSlot] : each.AlignedByteOffset;
        next[each.InputSlot] = offset + format->bytes;
        result.push_back({each.InputSlot, offset, format->format});
    }
    return result;
}

Sampler::Sampler(GraphicsDevice& device, const D3D11_SAMPLER_DESC& desc) : device_(device) {
    const bool isLinear = desc.Filter != D3D11_FILTER_MIN_MAG_MIP_POINT;
    auto info = Typed<VkSamplerCreateInfo>(VK_STRUCTURE_TYPE_SAMPLER_CREATE_INFO);
    info.magFilter = isLinear ? VK_FILTER_LINEAR : VK_FILTER_NEAREST;
    info.minFilter = info.magFilter;
    info.mipmapMode =
        desc.Filter == D3D11_FILTER_MIN_MAG_MIP_LINEAR ? VK_SAMPLER_MIPMAP_MODE_LINEAR : VK_SAMPLER_MIPMAP_MODE_NEAREST;
    info.addressModeU = AddressOf(desc.AddressU);
    info.addressModeV = AddressOf(desc.AddressV);
    info.addressModeW = AddressOf(desc.AddressW);
    info.mipLodBias =
        std::clamp(desc.MipLODBias, -device.Limits().maxSamplerLodBias, device.Limits().maxSamplerLodBias);
    info.minLod = desc.MinLOD;
    info.maxLod = std::max(desc.MinLOD, std::min(desc.MaxLOD, VK_LOD_CLAMP_NONE));
    info.borderColor = VK_BORDER_COLOR_FLOAT_TRANSPARENT_BLACK;
    Check(vkCreateSampler(device.Handle(), &info, nullptr, &sampler_));
}

Sampler::~Sampler() {
    vkDestroySampler(device_.Handle(), sampler_, nullptr);
}

HRESULT CheckSampler(const D3D11_SAMPLER_DESC* desc) {
    if (!desc || !IsKnownFilter(desc->Filter)) return E_INVALIDARG;
    if (!IsKnownAddress(desc->AddressU) || !IsKnownAddress(desc->AddressV) || !IsKnownAddress(desc->AddressW))
        return E_INVALIDARG;
    return desc->MinLOD >= 0 && desc->MaxLOD >= desc->MinLOD ? S_OK : E_INVALIDARG;
}

HRESULT CheckRasterizer(const D3D11_RASTERIZER_DESC* desc) {
    if (!desc || desc->FillMode != D3D11_FILL_SOLID) return E_INVALIDARG;
    return IsWithin(desc->CullMode, D3D11_CULL_NONE, D3D11_CULL_BACK) && !desc->ScissorEnable ? S_OK : E_INVALIDARG;
}

HRESULT CheckBlend(const D3D11_BLEND_DESC* desc) {
    if (!desc || desc->AlphaToCoverageEnable || desc->IndependentBlendEnable) return E_INVALIDARG;
    const D3D11_RENDER_TARGET_BLEND_DESC& target = desc->RenderTarget[0];
    if (!target.BlendEnable) return target.RenderTargetWriteMask <= D3D11_COLOR_WRITE_ENABLE_ALL ? S_OK : E_INVALIDARG;
    return IsKnownTarget(target) ? S_OK : E_INVALIDARG;
}

HRESULT CheckDepthStencil(const D3D11_DEPTH_STENCIL_DESC* desc) {
    return desc ? S_OK : E_INVALIDARG;
}

D3D11_SAMPLER_DESC DefaultSampler() {
    D3D11_SAMPLER_DESC desc{};
    desc.Filter = D3D11_FILTER_MIN_MAG_MIP_LINEAR;
    desc.AddressU = desc.AddressV = desc.AddressW = D3D11_TEXTURE_ADDRESS_CLAMP;
    desc.ComparisonFunc = D3D11_COMPARISON_NEVER;
    desc.MaxLOD = D3D11_FLOAT32_MAX;
    return desc;
}

D3D11_RASTERIZER_DESC DefaultRasterizer() {
    D3D11_RASTERIZER_DESC desc{};
    desc.FillMode = D3D11_FILL_SOLID;
    desc.CullMode = D3D11_CULL_BACK;
    desc.DepthClipEnable = TRUE;
    return desc;
}

D3D11_RENDER_TARGET_BLEND_DESC DefaultBlend() {
    D3D11_RENDER_TARGET_BLEND_DESC desc{};
    desc.RenderTargetWriteMask = D3D11_COLOR_WRITE_ENABLE_ALL;
    return desc;
}

}  // namespace Platform::Direct3D
