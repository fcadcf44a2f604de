// Plain measures of a window, without behaviour. Units are device-independent unless a name or comment says pixels.
#pragma once

#include <cstdint>

namespace Tamborel {

/// No caption zone.
inline constexpr std::int32_t NoZone = -1;

/// Where a window and its client area stand, in physical pixels.
struct WindowGeometry {
    std::int32_t clientWidth = 0;
    std::int32_t clientHeight = 0;
    std::int32_t clientOffsetX = 0;  ///< Client area's left minus the window's left.
    std::int32_t clientOffsetY = 0;  ///< Client area's top minus the window's top.
    std::int32_t windowWidth = 0;
    std::int32_t windowHeight = 0;

    friend bool operator==(const WindowGeometry&, const WindowGeometry&) = default;
};

/// What the hit-test needs of the chrome. Widths and heights already carry the chrome's scale, as told at each field;
/// the monitor's scale comes on top.
struct HitTestMetrics {
    float frameWidth = 8.0F;    ///< Width of the resize band. 0 means no band.
    float titleHeight = 42.0F;  ///< Scaled.
    float buttonWidth = 60.0F;  ///< Scaled.
    float reservedSlotWidth = 60.0F;
    float reservedSlotCount = 2.0F;
    float scale = 1.0F;
    bool hasIcon = true;

    friend bool operator==(const HitTestMetrics&, const HitTestMetrics&) = default;
};

/// The numbers of a theme with every default and lower limit applied. Widths and heights are as in the theme, not
/// scaled.
struct ThemeMetrics {
    float frameWidth = 8.0F;
    float titleHeight = 42.0F;
    float buttonWidth = 60.0F;
    float scale = 1.0F;
    float clientExtensionLeft = 0.0F;
    float clientExtensionTop = 0.0F;
    float clientExtensionRight = 0.0F;
    float clientExtensionBottom = 0.0F;
    std::int32_t maximizedChromePolicy = 0;
    bool hasIcon = true;

    friend bool operator==(const ThemeMetrics&, const ThemeMetrics&) = default;
};

}  // namespace Tamborel
