#pragma once

#include "Window/ChromeTheme.h"

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>

namespace Tamborel {

/// How a window is to be created. Position and size are those of the outer rectangle, in pixels.
struct WindowConfig {
    std::wstring title = L"Tamborel";
    std::int32_t x = CW_USEDEFAULT;
    std::int32_t y = CW_USEDEFAULT;
    std::int32_t width = 1280;
    std::int32_t height = 720;
    bool resizable = true;             ///< Whether it has a sizing border and a maximise button.
    std::optional<ChromeTheme> theme;  ///< Overlays the default theme for this window.
};

}  // namespace Tamborel
