// Pictures of 8-bit RGBA and their PNG files.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Pictures {

/// Straight red, green, blue and alpha; first row on top.
struct Picture {
    using Texel = std::array<std::uint8_t, 4>;

    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::vector<Texel> texels;

    const Texel& At(std::uint32_t x, std::uint32_t y) const { return texels[std::size_t{y} * width + x]; }
};

/// Throws std::runtime_error: no such file, no PNG.
Picture ReadPng(const std::string& path);

/// Throws std::runtime_error.
void WritePng(const Picture& picture, const std::string& path);

}  // namespace Pictures
