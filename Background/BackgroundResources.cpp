// BackgroundRenderer: its Direct3D objects, from Initialize to release.
#include "Background/BackgroundRenderer.h"
#include "Background/ShaderConstants.h"
#include "Background/ShaderPrograms.h"

#include "Core/Log.h"

#include <cstddef>

namespace Tamborel {

namespace {

/// What is logged when a kind's program can't be made. The last kind fails without a word.
constexpr std::array<const char*, kPixelProgramCount> kPixelShaderFailures = {
    "[BackgroundRenderer] CreatePixelShader (LiquidMetal) failed\n",
    "[BackgroundRenderer] CreatePixelShader (MagicCurtain) failed\n",
    "[BackgroundRenderer] CreatePixelShader (CloudDiving) failed\n",
    "[BackgroundRenderer] CreatePixelShader (CloudHorizon) failed\n",
    "[BackgroundRenderer] CreatePixelShader (SilkRibbons) failed\n",
    "[BackgroundRenderer] CreatePixelShader (DawnGrid) failed\n",
    "[BackgroundRenderer] CreatePixelShader (Cyberspace) failed\n",
    nullptr,
};

HRESULT LogIfFailed(HRESULT result, const char* text) {
    if (FAILED(result) && text) Log(text);
    return result;
}

HRESULT CreatePixelShader(ID3D11Device& device, const ShaderBytecode& code,
                          Microsoft::WRL::ComPtr<ID3D11PixelShader>& shader) {
    return device.CreatePixelShader(code.data, code.size, nullptr, shader.ReleaseAndGetAddressOf());
}

/// A constant buffer that the processor writes anew each frame.
HRESULT CreateConstantBuffer(ID3D11Device& device, UINT size, Microsoft::WRL::ComPtr<ID3D11Buffer>& buffer) {
    D3D11_BUFFER_DESC description{};
    description.ByteWidth = size;
    description.Usage = D3D11_USAGE_DYNAMIC;
    description.BindFlags = D3D11_BIND_CONSTANT_BUFFER;
    description.CPUAccessFlags = D3D11_CPU_ACCESS_WRITE;
    return device.CreateBuffer(&description, nullptr, buffer.ReleaseAndGetAddressOf());
}

}  // namespace

BackgroundRenderer::~BackgroundRenderer() {
    ReleaseResources();
}

HRESULT BackgroundRenderer::InitializeOn(ID3D11Device* device) {
    ReleaseResources();
    if (!device) return E_INVALIDARG;
    if (const HRESULT result = CreateResources(*device); FAILED(result)) {
        ReleaseResources();
        return result;
    }
    device_ = device;
    initialized_ = true;
    Log("[BackgroundRenderer] Initialize succeeded\n");
    return S_OK;
}

HRESULT BackgroundRenderer::CreateResources(ID3D11Device& device) {
    const ShaderBytecode vertex = BackgroundVertexProgram();
    HRESULT result = LogIfFailed(
        device.CreateVertexShader(vertex.data, vertex.size, nullptr, vertexShader_.ReleaseAndGetAddressOf()),
        "[BackgroundRenderer] CreateVertexShader failed\n");
    if (FAILED(result)) return result;

    result = CreatePixelShaders(device);
    if (FAILED(result)) return result;

    // The order of the elements is that of the vertex program's inputs.
    static constexpr std::array<D3D11_INPUT_ELEMENT_DESC, 3> elements = {{
        {"COLOR", 0, DXGI_FORMAT_R32G32B32A32_FLOAT, 0, offsetof(BackgroundVertex, color), D3D11_INPUT_PER_VERTEX_DATA,
         0},
        {"POSITION", 0, DXGI_FORMAT_R32G32_FLOAT, 0, offsetof(BackgroundVertex, position), D3D11_INPUT_PER_VERTEX_DATA,
         0},
        {"TEXCOORD", 0, DXGI_FORMAT_R32G32_FLOAT, 0, offsetof(BackgroundVertex, textureCoordinate),
         D3D11_INPUT_PER_VERTEX_DATA, 0},
    }};
    result = LogIfFailed(device.CreateInputLayout(elements.data(), static_cast<UINT>(elements.size()), vertex.data,
                                                  vertex.size, inputLayout_.ReleaseAndGetAddressOf()),
                         "[BackgroundRenderer] CreateInputLayout failed\n");
    if (FAILED(result)) return result;

    result = CreateBuffers(device);
    return FAILED(result) ? result : CreateStates(device);
}

HRESULT BackgroundRenderer::CreatePixelShaders(ID3D11Device& device) {
    const auto& programs = BackgroundPixelPrograms();
    for (std::size_t kind = 0; kind < kPixelProgramCount; ++kind) {
        const HRESULT result =
            LogIfFailed(CreatePixelShader(device, programs[kind], pixelShaders_[kind]), kPixelShaderFailures[kind]);
        if (FAILED(result)) return result;
    }
    ActivatePixelShader();
    return LogIfFailed(CreatePixelShader(device, BlitPixelProgram(), blitPixelShader_),
                       "[BackgroundRenderer] CreatePixelShader (Blit) failed\n");
}

HRESULT BackgroundRenderer::CreateBuffers(ID3D11Device& device) {
    D3D11_BUFFER_DESC description{};
    description.ByteWidth = sizeof(kStrip);
    description.Usage = D3D11_USAGE_IMMUTABLE;
    description.BindFlags = D3D11_BIND_VERTEX_BUFFER;
    D3D11_SUBRESOURCE_DATA strip{};
    strip.pSysMem = kStrip.data();
    HRESULT result = LogIfFailed(device.CreateBuffer(&description, &strip, vertexBuffer_.ReleaseAndGetAddressOf()),
                                 "[BackgroundRenderer] CreateBuffer (vertex) failed\n");
    if (FAILED(result)) return result;

    result = LogIfFailed(CreateConstantBuffer(device, sizeof(Constants), constants_),
                         "[BackgroundRenderer] CreateBuffer (cbuffer) failed\n");
    if (FAILED(result)) return result;
    return LogIfFailed(CreateConstantBuffer(device, sizeof(BlitConstants), blitConstants_),
                       "[BackgroundRenderer] CreateBuffer (blit cbuffer) failed\n");
}

HRESULT BackgroundRenderer::CreateStates(ID3D11Device& device) {
    D3D11_SAMPLER_DESC sampler{};
    sampler.Filter = D3D11_FILTER_MIN_MAG_MIP_LINEAR;
    sampler.AddressU = D3D11_TEXTURE_ADDRESS_CLAMP;
    sampler.AddressV = D3D11_TEXTURE_ADDRESS_CLAMP;
    sampler.AddressW = D3D11_TEXTURE_ADDRESS_CLAMP;
    sampler.ComparisonFunc = D3D11_COMPARISON_NEVER;
    sampler.MaxLOD = D3D11_FLOAT32_MAX;
    HRESULT result = LogIfFailed(device.CreateSamplerState(&sampler, sampler_.ReleaseAndGetAddressOf()),
                                 "[BackgroundRenderer] CreateSamplerState failed\n");
    if (FAILED(result)) return result;

    D3D11_RASTERIZER_DESC rasterizer{};
    rasterizer.FillMode = D3D11_FILL_SOLID;
    rasterizer.CullMode = D3D11_CULL_NONE;
    rasterizer.DepthClipEnable = FALSE;
    result = LogIfFailed(device.CreateRasterizerState(&rasterizer, rasterizerState_.ReleaseAndGetAddressOf()),
                         "[BackgroundRenderer] CreateRasterizerState failed\n");
    if (FAILED(result)) return result;

    D3D11_BLEND_DESC blend{};
    // What a disabled target says of its factors is still checked by Direct3D: they are the documented defaults.
    D3D11_RENDER_TARGET_BLEND_DESC& target = blend.RenderTarget[0];
    target.SrcBlend = D3D11_BLEND_ONE;
    target.DestBlend = D3D11_BLEND_ZERO;
    target.BlendOp = D3D11_BLEND_OP_ADD;
    target.SrcBlendAlpha = D3D11_BLEND_ONE;
    target.DestBlendAlpha = D3D11_BLEND_ZERO;
    target.BlendOpAlpha = D3D11_BLEND_OP_ADD;
    target.RenderTargetWriteMask = D3D11_COLOR_WRITE_ENABLE_ALL;
    result = LogIfFailed(device.CreateBlendState(&blend, blendState_.ReleaseAndGetAddressOf()),
                         "[BackgroundRenderer] CreateBlendState failed\n");
    if (FAILED(result)) return result;

    D3D11_DEPTH_STENCIL_DESC depthStencil{};
    depthStencil.DepthWriteMask = D3D11_DEPTH_WRITE_MASK_ZERO;
    depthStencil.DepthFunc = D3D11_COMPARISON_ALWAYS;
    const D3D11_DEPTH_STENCILOP_DESC keep{D3D11_STENCIL_OP_KEEP, D3D11_STENCIL_OP_KEEP, D3D11_STENCIL_OP_KEEP,
                                          D3D11_COMPARISON_ALWAYS};
    depthStencil.FrontFace = keep;
    depthStencil.BackFace = keep;
    return LogIfFailed(device.CreateDepthStencilState(&depthStencil, depthStencilState_.ReleaseAndGetAddressOf()),
                       "[BackgroundRenderer] CreateDepthStencilState failed\n");
}

void BackgroundRenderer::ActivatePixelShader() {
    if (kind_ == BackgroundKind::LiquidMetalSurface) {
        activePixelShader_.Reset();
        return;
    }
    const auto index = static_cast<std::size_t>(kind_);
    activePixelShader_ = pixelShaders_[index < kPixelProgramCount ? index : 0];
}

HRESULT BackgroundRenderer::EnsureOffscreen(const SurfaceTarget& surface) {
    const OffscreenSize size = OffscreenSizeFor(kind_, surface.width, surface.height);
    if (size == offscreenSize_ && offscreenRtv_ && offscreenSrv_) return S_OK;
    ReleaseOffscreen();
    const HRESULT result = CreateOffscreen(size);
    if (FAILED(result)) {
        ReleaseOffscreen();
        return result;
    }
    offscreenSize_ = size;
    return S_OK;
}

HRESULT BackgroundRenderer::CreateOffscreen(OffscreenSize size) {
    D3D11_TEXTURE2D_DESC description{};
    description.Width = size.width;
    description.Height = size.height;
    description.MipLevels = 1;
    description.ArraySize = 1;
    description.Format = DXGI_FORMAT_R16G16B16A16_FLOAT;
    description.SampleDesc.Count = 1;
    description.Usage = D3D11_USAGE_DEFAULT;
    description.BindFlags = D3D11_BIND_RENDER_TARGET | D3D11_BIND_SHADER_RESOURCE;
    HRESULT result = device_->CreateTexture2D(&description, nullptr, offscreenTexture_.ReleaseAndGetAddressOf());
    if (FAILED(result)) return result;
    result = device_->CreateRenderTargetView(offscreenTexture_.Get(), nullptr, offscreenRtv_.ReleaseAndGetAddressOf());
    if (FAILED(result)) return result;
    return device_->CreateShaderResourceView(offscreenTexture_.Get(), nullptr, offscreenSrv_.ReleaseAndGetAddressOf());
}

void BackgroundRenderer::ReleaseOffscreen() {
    offscreenSrv_.Reset();
    offscreenRtv_.Reset();
    offscreenTexture_.Reset();
}

void BackgroundRenderer::ReleaseSurfaceResources() {
    surface_.Release();
}

void BackgroundRenderer::ReleaseResources() {
    initialized_ = false;
    ReleaseSurfaceResources();
    ReleaseOffscreen();
    offscreenSize_ = {};
    depthStencilState_.Reset();
    blendState_.Reset();
    rasterizerState_.Reset();
    sampler_.Reset();
    blitConstants_.Reset();
    constants_.Reset();
    vertexBuffer_.Reset();
    inputLayout_.Reset();
    blitPixelShader_.Reset();
    for (auto& shader : pixelShaders_) shader.Reset();
    activePixelShader_.Reset();
    vertexShader_.Reset();
    device_ = nullptr;
}

}  // namespace Tamborel
