// Where a window is and how large: the order in which its procedure learns of it.
#pragma once

#include "Platform/Linux/Window/Window.h"

namespace Platform {

enum class Frame : bool { Same, Changed };

/// The window is at `rectangle` now. If its size or its frame changed the procedure says what of it is client area
/// (WM_NCCALCSIZE); then the view changes, and WM_MOVE and WM_SIZE tell what is different.
void TakeRectangle(Window& window, const RECT& rectangle, Frame frame = Frame::Same);

/// Takes the rectangle and asks the X server for it.
void MoveWindowTo(Window& window, const RECT& rectangle, Frame frame = Frame::Same);

/// WM_SIZE, with the state and the client size that the window has.
void TellSize(Window& window);

/// Maximised and minimised, as the window manager says now.
void RefreshState(Window& window);

/// Maximises or restores, by the window manager or without one.
void SetZoomed(Window& window, bool zoomed);

/// The X server says that the window is at `rectangle` now.
void RectangleArrived(Window& window, const RECT& rectangle);

/// The rectangle of the window's monitor that panels leave free.
RECT WorkArea(const Window& window);

}  // namespace Platform
