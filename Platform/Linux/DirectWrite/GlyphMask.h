#pragma once

#include <cstdint>
#include <vector>

namespace Platform::DirectWrite {

/// How much of each pixel a glyph covers. Never changes.
struct GlyphMask {
    int left = 0;  ///< Of the first column, against the pixel that the origin lies in.
    int top = 0;   ///< Of the first row; negative above the baseline.
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> coverage;  ///< Rows without gaps; 255 is all.
};

}  // namespace Platform::DirectWrite
