// The fixed-function states: descriptions that pipelines are made from, and samplers.
#pragma once

#include "Platform/Linux/Direct3D/DeviceChild.h"

#include <vector>

namespace Platform::Direct3D {

/// A state that is nothing but its description.
template <class Interface, class Description>
class DescribedState final : public DeviceChild<Interface> {
public:
    DescribedState(const char* className, IGraphicsObject& owner, const Description& desc)
        : DeviceChild<Interface>(className, owner), desc_(desc) {}
    const Description& Desc() const { return desc_; }

private:
    const Description desc_;
};

using RasterizerState = DescribedState<ID3D11RasterizerState, D3D11_RASTERIZER_DESC>;
using BlendState = DescribedState<ID3D11BlendState, D3D11_BLEND_DESC>;
/// Without effect: there are no depth buffers here.
using DepthStencilState = DescribedState<ID3D11DepthStencilState, D3D11_DEPTH_STENCIL_DESC>;

struct VertexElement {
    UINT slot;
    UINT offset;
    VkFormat format;
    auto operator<=>(const VertexElement&) const = default;
};

/// The elements in the order of the vertex program's input locations.
using InputLayout = DescribedState<ID3D11InputLayout, std::vector<VertexElement>>;

/// The elements of an input layout; empty when one of them is not for use here.
std::vector<VertexElement> ElementsOf(const D3D11_INPUT_ELEMENT_DESC* elements, UINT count);

class Sampler {
public:
    Sampler(GraphicsDevice& device, const D3D11_SAMPLER_DESC& desc);
    ~Sampler();
    Sampler(const Sampler&) = delete;
    Sampler& operator=(const Sampler&) = delete;
    VkSampler Handle() const { return sampler_; }

private:
    GraphicsDevice& device_;
    VkSampler sampler_ = VK_NULL_HANDLE;
};

class SamplerState final : public DeviceChild<ID3D11SamplerState> {
public:
    SamplerState(IGraphicsObject& owner, const D3D11_SAMPLER_DESC& desc)
        : DeviceChild("ID3D11SamplerState", owner), sampler_(std::make_shared<Sampler>(Graphics(), desc)) {}
    const std::shared_ptr<Sampler>& Handle() const { return sampler_; }

private:
    std::shared_ptr<Sampler> sampler_;
};

/// S_OK for a description whose values are all known here.
HRESULT CheckSampler(const D3D11_SAMPLER_DESC* desc);
HRESULT CheckRasterizer(const D3D11_RASTERIZER_DESC* desc);
HRESULT CheckBlend(const D3D11_BLEND_DESC* desc);
HRESULT CheckDepthStencil(const D3D11_DEPTH_STENCIL_DESC* desc);

/// Bilinear, clamped: what a program samples with where no sampler is set.
D3D11_SAMPLER_DESC DefaultSampler();
/// What Direct3D draws with where no state is set.
D3D11_RASTERIZER_DESC DefaultRasterizer();
D3D11_RENDER_TARGET_BLEND_DESC DefaultBlend();

}  // namespace Platform::Direct3D
