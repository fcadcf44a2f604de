#pragma once

#include "Platform/Linux/Direct3D/Bindings.h"
#include "Platform/Linux/Direct3D/Buffer.h"
#include "Platform/Linux/Direct3D/Shader.h"
#include "Platform/Linux/Direct3D/States.h"
#include "Platform/Linux/Direct3D/Texture2D.h"

#include <array>

namespace Platform::Direct3D {

/// The resources that a stage's program reads, by register.
struct StageResources {
    std::array<ComPtr<Buffer>, constantSlots> constants;
    std::array<ComPtr<ShaderResourceView>, textureSlots> textures;
    std::array<ComPtr<SamplerState>, samplerSlots> samplers;
};

struct VertexStream {
    ComPtr<Buffer> buffer;
    UINT stride = 0;
    UINT offset = 0;
};

/// All that is set on a context: what a draw or dispatch needs to know. A new one is Direct3D's default state.
///
/// Both stages of a drawing see one set of registers. A pixel program's constants come first; a vertex program's fill
/// the registers that are left.
struct GraphicsState {
    ComPtr<InputLayout> layout;
    std::array<VertexStream, vertexSlots> streams;
    D3D11_PRIMITIVE_TOPOLOGY topology = D3D11_PRIMITIVE_TOPOLOGY_UNDEFINED;
    ComPtr<VertexShader> vertexShader;
    std::array<ComPtr<Buffer>, constantSlots> vertexConstants;
    ComPtr<PixelShader> pixelShader;
    StageResources pixel;
    ComPtr<ComputeShader> computeShader;
    StageResources compute;
    std::array<ComPtr<UnorderedAccessView>, storageSlots> storage;
    ComPtr<RasterizerState> rasterizer;
    ComPtr<BlendState> blend;
    ComPtr<DepthStencilState> depthStencil;
    ComPtr<RenderTargetView> target;
    D3D11_VIEWPORT viewport{};
};

}  // namespace Platform::Direct3D
