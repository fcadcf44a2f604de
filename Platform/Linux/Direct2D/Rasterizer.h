// Turns commands into pixels.
#pragma once

#include "Platform/Linux/Direct2D/DrawCommand.h"

#include <cairo.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace Platform::Direct2D {

/// A picture in memory that commands are painted into: premultiplied BGRA, 32 bits a pixel. Starts transparent. One
/// thread at a time.
class Rasterizer {
public:
    /// Throws std::bad_alloc.
    Rasterizer(int width, int height);
    ~Rasterizer();
    Rasterizer(const Rasterizer&) = delete;
    Rasterizer& operator=(const Rasterizer&) = delete;

    /// Clears the rectangle and paints in it what the commands paint there. Returns how many of them did.
    std::size_t Repaint(const PixelRect& rect, std::span<const DrawCommand> commands);

    PixelRect Extent() const noexcept { return {0, 0, width_, height_}; }
    /// Rows of Stride() bytes. Valid until the next Repaint.
    const std::uint8_t* Pixels() const noexcept;
    std::size_t Stride() const noexcept;

private:
    /// `area` is the part that is asked for; more may be painted.
    void Paint(const DrawCommand& command, const PixelRect& area);
    /// The rectangle's part on and just around the picture: Cairo's coordinates wrap around beyond 2^23.
    D2D1_RECT_F Held(const D2D1_RECT_F& rect) const noexcept;

    int width_;
    int height_;
    cairo_surface_t* surface_;
    cairo_t* cairo_;
    PixelRect touched_;  ///< Outside it nothing has been painted yet.
};

}  // namespace Platform::Direct2D
