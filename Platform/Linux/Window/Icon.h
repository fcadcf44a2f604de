// Icons of windows.
#pragma once

#include "Platform/Linux/Window/Window.h"

namespace Platform {

/// Puts the window's small and big icon, of those that are set, where the desktop looks for them. Neither is set: the
/// program's own, its resource APPICON of the type ARGB, which holds what _NET_WM_ICON does; without one, none.
void PublishIcons(const Window& window);

}  // namespace Platform
