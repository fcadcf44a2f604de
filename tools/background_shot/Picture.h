// A picture of floats and the files it goes to.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace BackgroundShot {

/// RGBA, first row on top.
struct Picture {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::vector<std::array<float, 4>> texels;
};

/// Writes 8-bit RGBA, each component cut to 0 to 1 and rounded. Throws std::runtime_error.
void WritePng(const Picture& picture, const std::string& path);

/// Writes little-endian 32-bit floats without a header. Throws std::runtime_error.
void WriteRaw(const Picture& picture, const std::string& path);

}  // namespace BackgroundShot
