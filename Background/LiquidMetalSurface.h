// The metal surface's compute stage: a grid of finished colours, a few pixels apart.
#pragma once

#include "Background/BackgroundSettings.h"

#include <d3d11_4.h>
#include <wrl/client.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace Tamborel {

/// Register b0 of both programs.
struct LiquidMetalConstants {
    std::array<float, 2> iResolution{};     ///< Pixels.
    std::array<float, 2> gridDimensions{};  ///< Texels.
    BackgroundPointer pointerPositionUV;
    float iTime = 0.0F;  ///< Seconds on the surface's own clock.
    float emberStrength = 0.0F;
    float pointerStrength = 0.0F;
    float viewScale = 0.0F;
    float fineDetail = 0.0F;
    float sampleSpacing = 0.0F;  ///< Pixels.
    std::array<float, 2> reserved{};
};
static_assert(sizeof(LiquidMetalConstants) == 64);
static_assert(offsetof(LiquidMetalConstants, iResolution) == 0);
static_assert(offsetof(LiquidMetalConstants, gridDimensions) == 8);
static_assert(offsetof(LiquidMetalConstants, pointerPositionUV) == 16);
static_assert(offsetof(LiquidMetalConstants, iTime) == 32);
static_assert(offsetof(LiquidMetalConstants, emberStrength) == 36);
static_assert(offsetof(LiquidMetalConstants, pointerStrength) == 40);
static_assert(offsetof(LiquidMetalConstants, viewScale) == 44);
static_assert(offsetof(LiquidMetalConstants, fineDetail) == 48);
static_assert(offsetof(LiquidMetalConstants, sampleSpacing) == 52);
static_assert(offsetof(LiquidMetalConstants, reserved) == 56);

/// How large the grid of a picture is, in texels and in the compute program's groups of 8 by 8.
struct SurfaceGridSize {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t groupsX = 0;
    std::uint32_t groupsY = 0;
};

/// `width` and `height` in pixels, `spacing` in pixels per cell, at least 1. One texel lies before the picture and two
/// behind it, on both axes, for the filter that reads the grid.
SurfaceGridSize SurfaceGridSizeFor(std::uint32_t width, std::uint32_t height, std::uint32_t spacing);

/// The surface's programs, constants and grid, made when first needed. On the render thread.
class LiquidMetalSurface {
public:
    /// Records the compute stage for a picture of `width` by `height` pixels, neither 0, and leaves the grid and the
    /// constants bound to the pixel stage. Returns the first failure, with the last good grid kept.
    HRESULT RecordGrid(ID3D11Device& device, ID3D11DeviceContext& context, std::uint32_t width, std::uint32_t height,
                       float seconds, const BackgroundTuning& tuning, const BackgroundPointer& pointer);

    /// The program that draws the picture from the grid; null before the first RecordGrid.
    ID3D11PixelShader* PixelShader() const { return pixelShader_.Get(); }

    void Release();

private:
    template <class Interface>
    using ComPtr = Microsoft::WRL::ComPtr<Interface>;

    HRESULT EnsurePrograms(ID3D11Device& device);
    HRESULT EnsureGrid(ID3D11Device& device, const SurfaceGridSize& size);

    ComPtr<ID3D11ComputeShader> computeShader_;
    ComPtr<ID3D11PixelShader> pixelShader_;
    ComPtr<ID3D11Buffer> constants_;
    ComPtr<ID3D11Texture2D> grid_;
    ComPtr<ID3D11UnorderedAccessView> gridUav_;
    ComPtr<ID3D11ShaderResourceView> gridSrv_;
    std::uint32_t gridWidth_ = 0;
    std::uint32_t gridHeight_ = 0;
};

}  // namespace Tamborel
