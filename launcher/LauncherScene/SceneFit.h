// How the fixed canvas comes to lie in a window of any size.
#pragma once

#include "Scene/Records.h"

#include <windows.h>

/// What the fit depends on.
struct SceneSurroundings {
    UINT width = 0;       ///< Pixels of the whole window's surface.
    UINT height = 0;      ///< Pixels of the whole window's surface.
    UINT dpi = 96;        ///< Dots per inch of the window.
    bool zoomed = false;  ///< Maximised: no frame, no margin.
};

/// Width of the canvas in scene units.
inline constexpr float kCanvasWidth = 820.0F;

/// Height of the canvas in scene units.
constexpr float CanvasHeight(bool developerControls) {
    return developerControls ? 1048.0F : 770.0F;
}

/// The uniform scale and translation, scene units to device-independent units of the client area, that centres the
/// canvas with a small padding. A positive scale for every size.
Tamborel::Matrix3x2 FitScene(const SceneSurroundings& surroundings, float canvasHeight);
