// Windows on the screen. Implemented in Platform/Linux/Dialog until the window back end exists.
#pragma once

#include <minwindef.h>

constexpr int SW_HIDE = 0;
constexpr int SW_SHOWNORMAL = 1;

/// Whether the handle names a window that exists: one of this process, or the desktop.
BOOL IsWindow(HWND window) noexcept;

/// The desktop as an owner for dialogs of programs that have no window of their own.
HWND GetDesktopWindow() noexcept;
