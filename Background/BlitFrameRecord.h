// What the render loop tells the background about the window's frame.
#pragma once

#include <array>
#include <cstdint>

namespace Tamborel {

/// The frame of one picture. Sizes and places are pixels of the window; fills are RGBA, 0 to 1, alpha not multiplied
/// in.
struct BlitFrameRecord {
    std::uint8_t useThemeBackground = 0;      ///< 0: `flatInteriorFill` takes the background's place.
    std::uint8_t isMaximized = 0;             ///< Not 0: `maximizedChromePolicy` applies.
    std::uint8_t innerBorderEnabled = 0;      ///< Not 0: the inner border is drawn.
    std::uint32_t maximizedChromePolicy = 0;  ///< 0: no frame and border; 1: all kept; 2: nothing kept.
    std::array<float, 4> windowMetrics{};     ///< Window width and height, then the image's left and top in the window.
    std::array<float, 3> chromeMetrics{};     ///< Frame width, title height, inner border width.
    std::array<float, 4> clientFrameExtension{};  ///< Left, top, right, bottom.
    std::array<float, 4> titleBarFill{};
    std::array<float, 4> frameFill{};
    std::array<float, 4> innerBorderColor{};
    std::array<float, 4> flatInteriorFill{};
};

}  // namespace Tamborel
