#include "ProgramBench.h"

#include <array>
#include <cstring>
#include <stdexcept>

namespace {

void Require(HRESULT result, const char* call) {
    if (FAILED(result)) throw std::runtime_error(call);
}

}  // namespace

ProgramBench::ProgramBench() {
    Require(D3D11CreateDevice(nullptr, D3D_DRIVER_TYPE_HARDWARE, nullptr, 0, nullptr, 0, D3D11_SDK_VERSION,
                              device_.GetAddressOf(), nullptr, immediate_.GetAddressOf()),
            "D3D11CreateDevice");
    const auto vertex = Tamborel::BackgroundVertexProgram();
    Require(device_->CreateVertexShader(vertex.data, vertex.size, nullptr, vertexShader_.GetAddressOf()),
            "CreateVertexShader");
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
        sizeof(Tamborel::Constants), D3D11_USAGE_DYNAMIC, D3D11_BIND_CONSTANT_BUFFER, D3D11_CPU_ACCESS_WRITE, 0, 0};
    Require(device_->CreateBuffer(&buffer, nullptr, constants_.GetAddressOf()), "CreateBuffer");
    D3D11_RASTERIZER_DESC rasterizer{};
    rasterizer.FillMode = D3D11_FILL_SOLID;
    rasterizer.CullMode = D3D11_CULL_NONE;
    Require(device_->CreateRasterizerState(&rasterizer, rasterizer_.GetAddressOf()), "CreateRasterizerState");
}

ProgramBench::ComPtr<ID3D11Texture2D> ProgramBench::MakeTexture(UINT width, UINT height, D3D11_USAGE usage, UINT bind,
                                                                UINT access) {
    D3D11_TEXTURE2D_DESC description{};
    description.Width = width;
    description.Height = height;
    description.MipLevels = 1;
    description.ArraySize = 1;
    description.Format = DXGI_FORMAT_R32G32B32A32_FLOAT;
    description.SampleDesc.Count = 1;
    description.Usage = usage;
    description.BindFlags = bind;
    description.CPUAccessFlags = access;
    ComPtr<ID3D11Texture2D> texture;
    Require(device_->CreateTexture2D(&description, nullptr, texture.GetAddressOf()), "CreateTexture2D");
    return texture;
}

FloatPicture ProgramBench::Draw(Tamborel::ShaderBytecode program, const Tamborel::Constants& constants) {
    const auto width = static_cast<UINT>(constants.iResolution[0]);
    const auto height = static_cast<UINT>(constants.iResolution[1]);
    const auto target = MakeTexture(width, height, D3D11_USAGE_DEFAULT, D3D11_BIND_RENDER_TARGET, 0);
    ComPtr<ID3D11RenderTargetView> view;
    Require(device_->CreateRenderTargetView(target.Get(), nullptr, view.GetAddressOf()), "CreateRenderTargetView");
    ComPtr<ID3D11PixelShader> pixelShader;
    Require(device_->CreatePixelShader(program.data, program.size, nullptr, pixelShader.GetAddressOf()),
            "CreatePixelShader");

    ComPtr<ID3D11DeviceContext> context;
    Require(device_->CreateDeferredContext(0, context.GetAddressOf()), "CreateDeferredContext");
    const UINT stride = sizeof(Tamborel::BackgroundVertex);
    const UINT offset = 0;
    context->IASetInputLayout(layout_.Get());
    context->IASetVertexBuffers(0, 1, vertices_.GetAddressOf(), &stride, &offset);
    context->IASetPrimitiveTopology(D3D11_PRIMITIVE_TOPOLOGY_TRIANGLESTRIP);
    context->VSSetShader(vertexShader_.Get(), nullptr, 0);
    context->RSSetState(rasterizer_.Get());
    context->OMSetRenderTargets(1, view.GetAddressOf(), nullptr);
    const D3D11_VIEWPORT viewport{0.0F, 0.0F, static_cast<float>(width), static_cast<float>(height), 0.0F, 1.0F};
    context->RSSetViewports(1, &viewport);
    D3D11_MAPPED_SUBRESOURCE mapped{};
    Require(context->Map(constants_.Get(), 0, D3D11_MAP_WRITE_DISCARD, 0, &mapped), "Map");
    std::memcpy(mapped.pData, &constants, sizeof(constants));
    context->Unmap(constants_.Get(), 0);
    context->PSSetConstantBuffers(0, 1, constants_.GetAddressOf());
    context->VSSetConstantBuffers(2, 1, constants_.GetAddressOf());
    context->PSSetShader(pixelShader.Get(), nullptr, 0);
    context->Draw(4, 0);
    ComPtr<ID3D11CommandList> list;
    Require(context->FinishCommandList(FALSE, list.GetAddressOf()), "FinishCommandList");
    immediate_->ExecuteCommandList(list.Get(), TRUE);

    const auto staging = MakeTexture(width, height, D3D11_USAGE_STAGING, 0, D3D11_CPU_ACCESS_READ);
    immediate_->CopyResource(staging.Get(), target.Get());
    Require(immediate_->Map(staging.Get(), 0, D3D11_MAP_READ, 0, &mapped), "Map");
    FloatPicture result{width, height, {}};
    result.texels.resize(std::size_t{width} * height);
    for (UINT y = 0; y < height; ++y) {
        std::memcpy(&result.texels[std::size_t{y} * width],
                    static_cast<const std::byte*>(mapped.pData) + std::size_t{y} * mapped.RowPitch,
                    std::size_t{width} * sizeof(result.texels[0]));
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
