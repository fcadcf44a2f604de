// Small pictures in the formats that programs meet, made by the formats' own libraries.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace Pictures {

using Bytes = std::vector<std::uint8_t>;

/// A pixel is 0xAARRGGBB with straight alpha; rows have no gaps.
struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> values;
};

/// One colour all over.
Pixels Plain(int width, int height, std::uint32_t color);
/// Something to look at: colours that change slowly to the right and downwards, opaque.
Pixels Gradient(int width, int height);

Bytes Png(const Pixels& pixels);
/// One byte of brightness a pixel, which is the pixel's blue.
Bytes GreyPng(const Pixels& pixels);
/// A file of a few bytes whose header claims any size.
Bytes PngThatClaims(std::uint32_t width, std::uint32_t height);
/// Without transparency, and not exact.
Bytes Jpeg(const Pixels& pixels);
Bytes ProgressiveJpeg(const Pixels& pixels);
/// A file with four inks, as printers have them.
Bytes JpegOfInks(const Pixels& pixels);
/// Exact.
Bytes Webp(const Pixels& pixels);

Bytes FromText(std::string_view text);

}  // namespace Pictures
