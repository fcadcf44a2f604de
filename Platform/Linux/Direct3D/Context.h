#pragma once

#include "Platform/Linux/Direct3D/Commands.h"

namespace Platform::Direct3D {

/// What the immediate and the deferred contexts have in common: the state, and the making of commands from it.
/// For one thread at a time.
class Context : public ID3D11DeviceContext4 {
public:
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;

    void GetDevice(ID3D11Device** device) override;
    void VSSetConstantBuffers(UINT first, UINT count, ID3D11Buffer* const* buffers) override;
    void PSSetShaderResources(UINT first, UINT count, ID3D11ShaderResourceView* const* views) override;
    void PSSetShader(ID3D11PixelShader* shader, ID3D11ClassInstance* const*, UINT) override;
    void PSSetSamplers(UINT first, UINT count, ID3D11SamplerState* const* samplers) override;
    void VSSetShader(ID3D11VertexShader* shader, ID3D11ClassInstance* const*, UINT) override;
    void Draw(UINT vertexCount, UINT firstVertex) override;
    void PSSetConstantBuffers(UINT first, UINT count, ID3D11Buffer* const* buffers) override;
    void IASetInputLayout(ID3D11InputLayout* layout) override;
    void IASetVertexBuffers(UINT first, UINT count, ID3D11Buffer* const* buffers, const UINT* strides,
                            const UINT* offsets) override;
    void IASetPrimitiveTopology(D3D11_PRIMITIVE_TOPOLOGY topology) override;
    void OMSetRenderTargets(UINT count, ID3D11RenderTargetView* const* views, ID3D11DepthStencilView*) override;
    void OMSetBlendState(ID3D11BlendState* state, const FLOAT*, UINT) override;
    void OMSetDepthStencilState(ID3D11DepthStencilState* state, UINT) override;
    void Dispatch(UINT x, UINT y, UINT z) override;
    void RSSetState(ID3D11RasterizerState* state) override;
    void RSSetViewports(UINT count, const D3D11_VIEWPORT* viewports) override;
    void CopySubresourceRegion(ID3D11Resource* target, UINT targetSubresource, UINT x, UINT y, UINT z,
                               ID3D11Resource* source, UINT sourceSubresource, const D3D11_BOX* box) override;
    void CopyResource(ID3D11Resource* target, ID3D11Resource* source) override;
    void ClearRenderTargetView(ID3D11RenderTargetView* view, const FLOAT color[4]) override;
    void CSSetShaderResources(UINT first, UINT count, ID3D11ShaderResourceView* const* views) override;
    void CSSetUnorderedAccessViews(UINT first, UINT count, ID3D11UnorderedAccessView* const* views,
                                   const UINT*) override;
    void CSSetShader(ID3D11ComputeShader* shader, ID3D11ClassInstance* const*, UINT) override;
    void CSSetSamplers(UINT first, UINT count, ID3D11SamplerState* const* samplers) override;
    void CSSetConstantBuffers(UINT first, UINT count, ID3D11Buffer* const* buffers) override;
    void ClearState() override;

protected:
    explicit Context(IGraphicsObject& owner) : owner_(owner) {}
    virtual ~Context() = default;

    virtual void Take(Command command) = 0;
    IGraphicsObject& Owner() const { return owner_; }

private:
    GraphicsState& Change();
    const std::shared_ptr<const GraphicsState>& Snapshot();

    IGraphicsObject& owner_;  ///< Kept alive by the derived class.
    GraphicsState state_;
    std::shared_ptr<const GraphicsState> snapshot_;  ///< A copy of `state_`, null when it changed since.
};

}  // namespace Platform::Direct3D
