// The arithmetic of a frame: what the window's frame measures in pixels and where the scene goes in it. Pure functions.
#pragma once

#include "Background/BlitFrameRecord.h"
#include "Scene/Records.h"
#include "Window/ChromeTheme.h"
#include "Window/Metrics.h"

#include <cstdint>

namespace Tamborel {

class FrameChrome;

/// What a frame looks like, whoever tells it: the chrome, or the theme while there is none. Lengths carry the chrome's
/// scale but not the monitor's, and are not below 0.
struct FrameLook {
    float frameWidth = 0;
    float titleHeight = 0;
    float innerBorderWidth = 0;
    Rect clientExtension;  ///< Lengths, one for each side.
    std::int32_t maximizedChromePolicy = 0;
    Color titleBarFill;
    Color frameFill;
    Color innerBorderColor;
};

/// The look of a window without chrome. `metrics` are those of `theme`.
[[nodiscard]] FrameLook FrameLookOf(const ChromeTheme& theme, const ThemeMetrics& metrics);

/// The look of a window with chrome. `metrics` are those of its theme, for what the chrome does not know.
[[nodiscard]] FrameLook FrameLookOf(const FrameChrome& chrome, const ThemeMetrics& metrics);

/// Where the window stands in this frame. Pixels.
struct FramePlacement {
    std::int32_t windowWidth = 0;
    std::int32_t windowHeight = 0;
    std::int32_t clientOffsetX = 0;
    std::int32_t clientOffsetY = 0;
    float dpiScale = 1.0F;
    bool maximized = false;
    bool innerBorder = false;
};

/// The record as the window stands, with the background on and before the policy of maximised windows.
[[nodiscard]] BlitFrameRecord BuildBlitFrameRecord(const FrameLook& look, const FramePlacement& placement);

/// Takes away from a maximised window's record what its policy says.
void ApplyMaximizedChromePolicy(BlitFrameRecord& record);

/// The client root's transform: the scene's units to pixels of the client surface.
[[nodiscard]] Matrix3x2 ClientRootTransform(const BlitFrameRecord& record, float dpiScale);

/// The part of the client surface, in its pixels, that the frame leaves to the scene. May be empty.
[[nodiscard]] Rect ClientClipBox(const BlitFrameRecord& record, std::int32_t surfaceWidth, std::int32_t surfaceHeight);

}  // namespace Tamborel
