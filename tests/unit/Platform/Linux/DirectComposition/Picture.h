// Pictures to show, and what a display shows of them.
#pragma once

#include "Platform/Linux/Pixels/Blend.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <iosfwd>
#include <vector>

/// Pixels with their memory: premultiplied 0xAARRGGBB, first row on top.
struct Picture {
    Picture(int pictureWidth, int pictureHeight, std::uint32_t pixel = 0);

    /// Different from pixel to pixel and the same in each run. Opaque ones have bytes of any value where alpha would
    /// be.
    static Picture Noise(int width, int height, unsigned seed);
    /// As Noise, premultiplied, with transparent and opaque pixels among the others.
    static Picture TranslucentNoise(int width, int height, unsigned seed);
    /// What a drawable of the display holds, with zero for alpha. The rectangle lies on the screen.
    static Picture Of(xcb_connection_t* connection, xcb_drawable_t drawable, int x, int y, int width, int height);

    std::uint32_t& At(int x, int y) { return pixels[static_cast<std::size_t>(y * width + x)]; }
    std::uint32_t At(int x, int y) const { return pixels[static_cast<std::size_t>(y * width + x)]; }
    Platform::Pixels View();

    /// Lays `upper` over this one, each channel by itself, by the formula and in floating point.
    void Lay(const Picture& upper, int x, int y);
    /// The same with an opaque picture.
    void Put(const Picture& upper, int x, int y);
    /// As a display gives it back.
    Picture WithoutAlpha() const;

    bool operator==(const Picture&) const = default;

    int width;
    int height;
    std::vector<std::uint32_t> pixels;
};

/// For a failing comparison: the size and the first pixels say enough.
void PrintTo(const Picture& picture, std::ostream* stream);
