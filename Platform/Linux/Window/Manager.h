// What a window tells the window manager and asks of it: the properties of ICCCM and EWMH.
#pragma once

#include "Platform/Linux/Window/Window.h"

#include <string>

namespace Platform {

/// The title, over the rendering connection. Any thread.
void PublishTitle(const Window& window, const std::wstring& title);

/// Everything that stays the same for the window's life.
void PublishConstants(const Window& window);

/// Size limits, and the place if it was given, from the window's own WM_GETMINMAXINFO. Window's thread.
void PublishSizeLimits(const Window& window);

/// The smallest size that the window wants to have. Window's thread.
SIZE MinimumSize(const Window& window);

/// Whether the window is maximised and whether it is minimised, as the window manager says.
struct ManagedState {
    bool zoomed = false;
    bool iconic = false;
};
ManagedState ReadManagedState(const Window& window);

enum class Zoom : bool { No, Yes };

/// Asks for the state of a shown window, or sets that of one to be shown.
void RequestZoom(const Window& window, Zoom zoom);
void PublishInitialState(const Window& window, Zoom zoom, bool iconic);
void RequestIconify(const Window& window);
void RequestActivation(const Window& window, xcb_timestamp_t time);

}  // namespace Platform
