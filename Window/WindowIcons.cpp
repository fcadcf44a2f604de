#include "Window/WindowIcons.h"

namespace Tamborel {

void SendIcons(HWND window, const ChromeTheme& theme) {
    if (!window) return;
    if (theme.SmallIcon) SendMessageW(window, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(*theme.SmallIcon));
    if (theme.LargeIcon) SendMessageW(window, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(*theme.LargeIcon));
}

}  // namespace Tamborel
