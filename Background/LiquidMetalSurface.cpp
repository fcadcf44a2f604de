#include "Background/LiquidMetalSurface.h"

#include "Background/ShaderPrograms.h"

#include <cstring>

namespace Tamborel {

namespace {

constexpr std::uint32_t kBorder = 3;     // texels around the picture's cells: one before, two behind
constexpr std::uint32_t kGroupSide = 8;  // the compute program's

}  // namespace

SurfaceGridSize SurfaceGridSizeFor(std::uint32_t width, std::uint32_t height, std::uint32_t spacing) {
    const auto texels = [&](std::uint32_t pixels) { return (pixels + spacing - 1) / spacing + kBorder; };
    const auto groups = [](std::uint32_t count) { return (count + kGroupSide - 1) / kGroupSide; };
    const std::uint32_t columns = texels(width);
    const std::uint32_t rows = texels(height);
    return {columns, rows, groups(columns), groups(rows)};
}

HRESULT LiquidMetalSurface::EnsurePrograms(ID3D11Device& device) {
    if (!computeShader_) {
        const ShaderBytecode code = SurfaceComputeProgram();
        const HRESULT result =
            device.CreateComputeShader(code.data, code.size, nullptr, computeShader_.ReleaseAndGetAddressOf());
        if (FAILED(result)) return result;
    }
    if (!pixelShader_) {
        const ShaderBytecode code = SurfacePixelProgram();
        const HRESULT result =
            device.CreatePixelShader(code.data, code.size, nullptr, pixelShader_.ReleaseAndGetAddressOf());
        if (FAILED(result)) return result;
    }
    if (constants_) return S_OK;
    D3D11_BUFFER_DESC description{};
    description.ByteWidth = sizeof(LiquidMetalConstants);
    description.Usage = D3D11_USAGE_DYNAMIC;
    description.BindFlags = D3D11_BIND_CONSTANT_BUFFER;
    description.CPUAccessFlags = D3D11_CPU_ACCESS_WRITE;
    return device.CreateBuffer(&description, nullptr, constants_.ReleaseAndGetAddressOf());
}

HRESULT LiquidMetalSurface::EnsureGrid(ID3D11Device& device, const SurfaceGridSize& size) {
    if (gridWidth_ == size.width && gridHeight_ == size.height && gridUav_ && gridSrv_) return S_OK;
    D3D11_TEXTURE2D_DESC description{};
    description.Width = size.width;
    description.Height = size.height;
    description.MipLevels = 1;
    description.ArraySize = 1;
    description.Format = DXGI_FORMAT_R16G16B16A16_FLOAT;
    description.SampleDesc.Count = 1;
    description.Usage = D3D11_USAGE_DEFAULT;
    description.BindFlags = D3D11_BIND_UNORDERED_ACCESS | D3D11_BIND_SHADER_RESOURCE;
    ComPtr<ID3D11Texture2D> grid;
    HRESULT result = device.CreateTexture2D(&description, nullptr, grid.GetAddressOf());
    if (FAILED(result)) return result;
    ComPtr<ID3D11UnorderedAccessView> uav;
    result = device.CreateUnorderedAccessView(grid.Get(), nullptr, uav.GetAddressOf());
    if (FAILED(result)) return result;
    ComPtr<ID3D11ShaderResourceView> srv;
    result = device.CreateShaderResourceView(grid.Get(), nullptr, srv.GetAddressOf());
    if (FAILED(result)) return result;

    grid_ = grid;
    gridUav_ = uav;
    gridSrv_ = srv;
    gridWidth_ = size.width;
    gridHeight_ = size.height;
    return S_OK;
}

HRESULT LiquidMetalSurface::RecordGrid(ID3D11Device& device, ID3D11DeviceContext& context, std::uint32_t width,
                                       std::uint32_t height, float seconds, const BackgroundTuning& tuning,
                                       const BackgroundPointer& pointer) {
    HRESULT result = EnsurePrograms(device);
    if (FAILED(result)) return result;
    const SurfaceGridSize size = SurfaceGridSizeFor(width, height, static_cast<std::uint32_t>(tuning.sampleSpacing));
    result = EnsureGrid(device, size);
    if (FAILED(result)) return result;

    D3D11_MAPPED_SUBRESOURCE mapped{};
    result = context.Map(constants_.Get(), 0, D3D11_MAP_WRITE_DISCARD, 0, &mapped);
    if (FAILED(result)) return result;
    LiquidMetalConstants constants;
    constants.iResolution = {static_cast<float>(width), static_cast<float>(height)};
    constants.gridDimensions = {static_cast<float>(size.width), static_cast<float>(size.height)};
    constants.pointerPositionUV = pointer;
    constants.iTime = seconds;
    constants.emberStrength = tuning.emberStrength;
    constants.pointerStrength = tuning.pointerStrength;
    constants.viewScale = tuning.viewScale;
    constants.fineDetail = tuning.fineDetail;
    constants.sampleSpacing = static_cast<float>(tuning.sampleSpacing);
    std::memcpy(mapped.pData, &constants, sizeof(constants));
    context.Unmap(constants_.Get(), 0);

    context.CSSetConstantBuffers(0, 1, constants_.GetAddressOf());
    context.CSSetShader(computeShader_.Get(), nullptr, 0);
    context.CSSetUnorderedAccessViews(0, 1, gridUav_.GetAddressOf(), nullptr);
    context.Dispatch(size.groupsX, size.groupsY, 1);

    // A texture may not be bound for writing and for reading at once.
    ID3D11UnorderedAccessView* const noView = nullptr;
    context.CSSetUnorderedAccessViews(0, 1, &noView, nullptr);
    context.CSSetShader(nullptr, nullptr, 0);
    ID3D11Buffer* const noBuffer = nullptr;
    context.CSSetConstantBuffers(0, 1, &noBuffer);

    context.PSSetShaderResources(0, 1, gridSrv_.GetAddressOf());
    context.PSSetConstantBuffers(0, 1, constants_.GetAddressOf());
    return S_OK;
}

void LiquidMetalSurface::Release() {
    gridSrv_.Reset();
    gridUav_.Reset();
    grid_.Reset();
    constants_.Reset();
    pixelShader_.Reset();
    computeShader_.Reset();
    gridWidth_ = 0;
    gridHeight_ = 0;
}

}  // namespace Tamborel
