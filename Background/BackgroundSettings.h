// What a caller can turn about a background.
#pragma once

#include <cstdint>

namespace Tamborel {

/// The colours of one kind. The defaults are neutral: they change nothing.
struct ColorGrade {
    float hue = 0.0F;         ///< Degrees, -180 to 180.
    float saturation = 1.0F;  ///< 0 to 2.
    float brightness = 0.0F;  ///< -1 to 1.
    float contrast = 1.0F;    ///< 0 to 2.

    bool operator==(const ColorGrade&) const = default;
};

/// The values of the metal surface.
struct BackgroundTuning {
    float timeScale = 1.0F;          ///< Rate of the surface's clock, 0 to 16.
    float emberStrength = 0.85F;     ///< Weight of the warm light, 0 to 16.
    float pointerStrength = 1.3F;    ///< Weight of the light that follows the pointer, 0 to 16.
    float viewScale = 2.0F;          ///< Zoom, 0.1 to 10.
    float fineDetail = 5.0F;         ///< Weight of the two fine noise octaves, 0 to 10.
    std::int32_t sampleSpacing = 2;  ///< Pixels per grid cell: 2 or 4, nothing else.

    bool operator==(const BackgroundTuning&) const = default;
};

/// Where the pointer is over the metal surface, as its programs read it: 0 to 1 on both axes, v upward.
struct BackgroundPointer {
    float u = 0.5F;
    float v = 0.5F;
    float active = 0.0F;  ///< 1 while there is a pointer.
    float unused = 0.0F;

    bool operator==(const BackgroundPointer&) const = default;
};

}  // namespace Tamborel
