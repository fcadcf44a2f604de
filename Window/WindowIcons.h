#pragma once

#include "Window/ChromeTheme.h"

#include <windows.h>

namespace Tamborel {

/// Sends the window the icons that the theme has; an absent one is not sent. A null window does nothing. Any thread.
void SendIcons(HWND window, const ChromeTheme& theme);

}  // namespace Tamborel
