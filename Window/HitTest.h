// Which part of the caption a point belongs to: pure functions of sizes, without a window.
#pragma once

#include "Window/Metrics.h"

#include <windows.h>

#include <cstdint>

namespace Tamborel {

/// The caption zones that take a press. Other numbers, NoZone among them, are no zone.
namespace CaptionZone {
inline constexpr std::int32_t Minimize = 0;
inline constexpr std::int32_t Maximize = 1;
inline constexpr std::int32_t Close = 2;
inline constexpr std::int32_t ReservedFirst = 3;  ///< Reserved slots have zones, but HitTestCaption never answers them.
inline constexpr std::int32_t ReservedSecond = 4;  ///< As ReservedFirst.
}  // namespace CaptionZone

/// The hit-test code of the second reserved slot: one of our own, outside the system's.
inline constexpr int HitReservedSecond = 0x1A0;

/// A point and the window it is in, in physical pixels.
struct CaptionPoint {
    std::int32_t x;  ///< From the window's left edge.
    std::int32_t y;  ///< From the window's top edge.
    std::int32_t windowWidth;
    std::int32_t windowHeight;
};

/// The hit-test code of a point. Corners go before edges and edges before the caption, so the outermost pixels of the
/// close button resize. `dpiScale` is the monitor's, 1 at 96 DPI.
[[nodiscard]] int HitTestCaption(const HitTestMetrics& metrics, const CaptionPoint& point, float dpiScale);

/// The caption zone of a hit-test code, NoZone for codes without one.
[[nodiscard]] std::int32_t ZoneFromHit(WPARAM code);

/// The system command that a zone gives when released, 0 for none. `zoomed`: the window is maximised.
[[nodiscard]] WPARAM SysCommandForZone(std::int32_t zone, bool zoomed);

/// Smallest window, in physical pixels.
struct MinimumSize {
    std::int32_t width;
    std::int32_t height;
};

/// The smallest window that shows its icon, three buttons and one title bar.
[[nodiscard]] MinimumSize MinimumWindowSize(const ThemeMetrics& theme, float dpiScale);

}  // namespace Tamborel
