// Where a finished layer goes: the seam between the rasteriser and what holds the target's pixels.
#pragma once

#include "Platform/Linux/Direct2D/PixelRect.h"

#include <d2d1.h>
#include <dxgi.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace Platform::Direct2D {

/// One frame's drawing as a picture of the target's size.
struct LayerFrame {
    const std::uint8_t* pixels;          ///< Premultiplied BGRA, 32 bits a pixel. Valid until LetGo.
    std::size_t stride;                  ///< Bytes from row to row.
    std::span<const PixelRect> painted;  ///< All pixels outside are transparent.
    std::span<const PixelRect> changed;  ///< All pixels outside are as in the last call. Rectangles don't overlap.
    std::optional<D2D1_COLOR_F> clear;   ///< Premultiplied: what the target is filled with first.
};

/// A target's pixels. What the layer adds to them is there when they are needed.
class LayerTarget {
public:
    virtual ~LayerTarget() = default;

    /// In pixels. Constant.
    virtual D2D1_SIZE_U Size() const noexcept = 0;

    /// Lays the layer over what the target holds at the moment, or over the clear colour. The target's content may have
    /// been replaced since the last call, so the whole layer is laid on each time.
    virtual HRESULT Compose(const LayerFrame& frame) noexcept = 0;

    /// The layer's pixels are about to change or to go: afterwards those of the last frame aren't read any more.
    virtual void LetGo() noexcept {}
};

/// The tie between drawing and the graphics device behind it. Any thread; lives as long as the factories that use it.
class LayerTargetMaker {
public:
    virtual ~LayerTargetMaker() = default;

    /// The target for a surface; null for one that can't be drawn on. Throws std::bad_alloc.
    virtual std::unique_ptr<LayerTarget> Make(IDXGISurface* surface) const = 0;

    /// What the targets of a device share, so that each new one is made quickly; null if there is nothing. Held as long
    /// as targets may be made.
    virtual std::shared_ptr<const void> KeepDeviceObjects(IDXGIDevice* dxgiDevice) const = 0;
};

}  // namespace Platform::Direct2D
