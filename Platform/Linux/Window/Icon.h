// Icons of windows.
#pragma once

#include "Platform/Linux/Window/Window.h"

namespace Platform {

/// Puts the window's small and big icon, of those that are set, where the desktop looks for them.
void PublishIcons(const Window& window);

}  // namespace Platform
