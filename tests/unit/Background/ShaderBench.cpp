#include "ShaderBench.h"

#include <cstring>
#include <stdexcept>

namespace {

void Require(HRESULT result, const char* call) {
    if (FAILED(result)) throw std::runtime_error(call);
}

constexpr DXGI_FORMAT kFormat = DXGI_FORMAT_R32G32B32A32_FLOAT;

}  // namespace

ShaderBench::ShaderBench() {
    Require(D3D11CreateDevice(nullptr, D3D_DRIVER_TYPE_HARDWARE, nullptr, 0, nullptr, 0, D3D11_SDK_VERSION,
                              device_.GetAddressOf(), nullptr, immediate_.GetAddressOf()),
            "D3D11CreateDevice");
    const auto vertex = Tamborel::BackgroundVertexProgram();
    const auto pixel = Tamborel::BlitPixelProgram();
    Require(device_->CreateVertexShader(vertex.data, vertex.size, nullptr, vertexShader_.GetAddressOf()),
            "CreateVertexShader");
    Require(device_->CreatePixelShader(pixel.data, pixel.size, nullptr, pixelShader_.GetAddressOf()),
            "CreatePixelShader");
    const std::array<D3D11_INPUT_ELEMENT_DESC, 3> elements = {{
        {"COLOR", 0, DXGI_FORMAT_R32G32B32A32_FLOAT, 0, 0, D3D11_INPUT_PER_VERTEX_DATA, 0},
        {"POSITION", 0, DXGI_FORMAT_R32G32_FLOAT, 0, 16, D3D11_INPUT_PER_VERTEX_DATA, 0},
        {"TEXCOORD", 0, DXGI_FORMAT_R32G32_FLOAT, 0, 24, D3D11_INPUT_PER_VERTEX_DATA, 0},
    }};
    Require(device_->CreateInputLayout(elements.data(), 3, vertex.data, vertex.size, layout_.GetAddressOf()),
            "CreateInputLayout");
    D3D11_BUFFER_DESC buffer{sizeof(Tamborel::kStrip), D3D11_USAGE_IMMUTABLE, D3D11_BIND_VERTEX_BUFFER, 0, 0, 0};
    const D3D11_SUBRESOURCE_DATA strip{Tamborel::kStrip.data(), 0, 0};
    Require(device_->CreateBuffer(&buffer, &strip, vertices_.GetAddressOf()), "CreateBuffer");
    buffer = {
        sizeof(Tamborel::BlitConstants), D3D11_USAGE_DYNAMIC, D3D11_BIND_CONSTANT_BUFFER, D3D11_CPU_ACCESS_WRITE, 0, 0};
    Require(device_->CreateBuffer(&buffer, nullptr, constants_.GetAddressOf()), "CreateBuffer");
    buffer.ByteWidth = sizeof(Tamborel::Constants);
    Require(device_->CreateBuffer(&buffer, nullptr, kindConstants_.GetAddressOf()), "CreateBuffer");
    D3D11_SAMPLER_DESC sampler{};
    sampler.Filter = D3D11_FILTER_MIN_MAG_MIP_LINEAR;
    sampler.AddressU = sampler.AddressV = sampler.AddressW = D3D11_TEXTURE_ADDRESS_CLAMP;
    sampler.ComparisonFunc = D3D11_COMPARISON_NEVER;
    sampler.MaxLOD = D3D11_FLOAT32_MAX;
    Require(device_->CreateSamplerState(&sampler, sampler_.GetAddressOf()), "CreateSamplerState");
    D3D11_RASTERIZER_DESC rasterizer{};
    rasterizer.FillMode = D3D11_FILL_SOLID;
    rasterizer.CullMode = D3D11_CULL_NONE;
    Require(device_->CreateRasterizerState(&rasterizer, rasterizer_.GetAddressOf()), "CreateRasterizerState");
}

ShaderBench::ComPtr<ID3D11Texture2D> ShaderBench::MakeTexture(const FloatPicture& size, D3D11_USAGE usage, UINT bind,
                                                              UINT access, const void* texels) {
    D3D11_TEXTURE2D_DESC description{};
    description.Width = size.width;
    description.Height = size.height;
    description.MipLevels = 1;
    description.ArraySize = 1;
    description.Format = kFormat;
    description.SampleDesc.Count = 1;
    description.Usage = usage;
    description.BindFlags = bind;
    description.CPUAccessFlags = access;
    const D3D11_SUBRESOURCE_DATA data{texels, size.width * 16, 0};
    ComPtr<ID3D11Texture2D> texture;
    Require(device_->CreateTexture2D(&description, texels ? &data : nullptr, texture.GetAddressOf()),
            "CreateTexture2D");
    return texture;
}

FloatPicture ShaderBench::DrawStrip(ID3D11PixelShader* program, const void* constants, std::size_t bytes,
                                    ID3D11Buffer* buffer, ID3D11ShaderResourceView* source, const FloatPicture& size) {
    const auto target = MakeTexture(size, D3D11_USAGE_DEFAULT, D3D11_BIND_RENDER_TARGET, 0, nullptr);
    ComPtr<ID3D11RenderTargetView> targetView;
    Require(device_->CreateRenderTargetView(target.Get(), nullptr, targetView.GetAddressOf()),
            "CreateRenderTargetView");

    ComPtr<ID3D11DeviceContext> context;
    Require(device_->CreateDeferredContext(0, context.GetAddressOf()), "CreateDeferredContext");
    const UINT stride = sizeof(Tamborel::BackgroundVertex);
    const UINT offset = 0;
    context->IASetInputLayout(layout_.Get());
    context->IASetVertexBuffers(0, 1, vertices_.GetAddressOf(), &stride, &offset);
    context->IASetPrimitiveTopology(D3D11_PRIMITIVE_TOPOLOGY_TRIANGLESTRIP);
    context->VSSetShader(vertexShader_.Get(), nullptr, 0);
    context->RSSetState(rasterizer_.Get());
    context->PSSetSamplers(0, 1, sampler_.GetAddressOf());
    context->OMSetRenderTargets(1, targetView.GetAddressOf(), nullptr);
    const D3D11_VIEWPORT viewport{0.0F, 0.0F, static_cast<float>(size.width), static_cast<float>(size.height),
                                  0.0F, 1.0F};
    context->RSSetViewports(1, &viewport);
    context->PSSetShaderResources(0, 1, &source);
    D3D11_MAPPED_SUBRESOURCE mapped{};
    Require(context->Map(buffer, 0, D3D11_MAP_WRITE_DISCARD, 0, &mapped), "Map");
    std::memcpy(mapped.pData, constants, bytes);
    context->Unmap(buffer, 0);
    context->PSSetConstantBuffers(0, 1, &buffer);
    // Where the vertex program looks for the blit's and for a kind's; the other's terms then mean nothing.
    const UINT vertexSlot = bytes == sizeof(Tamborel::BlitConstants) ? 1 : 2;
    context->VSSetConstantBuffers(vertexSlot, 1, &buffer);
    context->PSSetShader(program, nullptr, 0);
    context->Draw(4, 0);
    ComPtr<ID3D11CommandList> list;
    Require(context->FinishCommandList(FALSE, list.GetAddressOf()), "FinishCommandList");
    immediate_->ExecuteCommandList(list.Get(), TRUE);
    return ReadBack(target.Get(), size);
}

FloatPicture ShaderBench::Draw(const Tamborel::BlitConstants& constants, const FloatPicture& source) {
    const auto picture = MakeTexture(source, D3D11_USAGE_DEFAULT, D3D11_BIND_SHADER_RESOURCE, 0, source.texels.data());
    ComPtr<ID3D11ShaderResourceView> view;
    Require(device_->CreateShaderResourceView(picture.Get(), nullptr, view.GetAddressOf()), "CreateShaderResourceView");
    return DrawStrip(pixelShader_.Get(), &constants, sizeof(constants), constants_.Get(), view.Get(), source);
}

FloatPicture ShaderBench::DrawProgram(Tamborel::ShaderBytecode code, const Tamborel::Constants& constants, UINT width,
                                      UINT height) {
    ComPtr<ID3D11PixelShader> program;
    Require(device_->CreatePixelShader(code.data, code.size, nullptr, program.GetAddressOf()), "CreatePixelShader");
    return DrawStrip(program.Get(), &constants, sizeof(constants), kindConstants_.Get(), nullptr, {width, height, {}});
}

FloatPicture ShaderBench::Draw(Tamborel::ShaderBytecode program, const Tamborel::Constants& constants) {
    return DrawProgram(program, constants, static_cast<UINT>(constants.iResolution[0]),
                       static_cast<UINT>(constants.iResolution[1]));
}

FloatPicture ShaderBench::DrawKind(Tamborel::BackgroundKind kind, const Tamborel::Constants& constants, UINT width,
                                   UINT height) {
    return DrawProgram(Tamborel::BackgroundPixelPrograms().at(static_cast<std::size_t>(kind)), constants, width,
                       height);
}

FloatPicture ShaderBench::Draw(Tamborel::BackgroundRenderer& renderer, const Tamborel::BlitFrameRecord& record,
                               UINT width, UINT height) {
    const FloatPicture size{width, height, {}};
    const auto target = MakeTexture(size, D3D11_USAGE_DEFAULT, D3D11_BIND_RENDER_TARGET, 0, nullptr);
    ComPtr<ID3D11RenderTargetView> view;
    Require(device_->CreateRenderTargetView(target.Get(), nullptr, view.GetAddressOf()), "CreateRenderTargetView");
    ComPtr<ID3D11DeviceContext> context;
    Require(device_->CreateDeferredContext(0, context.GetAddressOf()), "CreateDeferredContext");
    ComPtr<ID3D11CommandList> list;
    const Tamborel::SurfaceTarget surface{view.Get(), width, height};
    Require(renderer.RecordDraw(&surface, 0.0F, context.Get(), list.GetAddressOf(), record, 1.0F), "RecordDraw");
    if (!list) throw std::runtime_error("no command list");
    immediate_->ExecuteCommandList(list.Get(), TRUE);
    return ReadBack(target.Get(), size);
}

FloatPicture ShaderBench::ReadBack(ID3D11Texture2D* target, const FloatPicture& size) {
    const auto staging = MakeTexture(size, D3D11_USAGE_STAGING, 0, D3D11_CPU_ACCESS_READ, nullptr);
    immediate_->CopyResource(staging.Get(), target);
    D3D11_MAPPED_SUBRESOURCE mapped{};
    Require(immediate_->Map(staging.Get(), 0, D3D11_MAP_READ, 0, &mapped), "Map");
    FloatPicture result{size.width, size.height, {}};
    result.texels.resize(std::size_t{size.width} * size.height);
    for (UINT y = 0; y < size.height; ++y) {
        std::memcpy(&result.texels[std::size_t{y} * size.width],
                    static_cast<const std::byte*>(mapped.pData) + std::size_t{y} * mapped.RowPitch,
                    std::size_t{size.width} * sizeof(result.texels[0]));
    }
    immediate_->Unmap(staging.Get(), 0);
    return result;
}

Tamborel::Constants ConstantsFor(UINT width, UINT height, float seconds, std::int32_t frame, float glow) {
    Tamborel::Constants constants;
    constants.iResolution = {static_cast<float>(width), static_cast<float>(height), 0.0F, 0.0F};
    constants.iTime = seconds;
    constants.iFrame = frame;
    constants.sunriseGlow = glow;
    return constants;
}
