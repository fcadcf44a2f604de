// Moving and resizing by the pointer: asked of the window manager, done by ourselves where none does it.
//
// WM_ENTERSIZEMOVE comes before the first change, WM_EXITSIZEMOVE after the last. The caption's move begins only when
// the pointer has left the place of the press, so that a double click is one.
#pragma once

#include "Platform/Linux/Window/UiThread.h"

namespace Platform {

/// The caption, an edge or a corner (`grip`, a hit-test code) has been pressed. Edges do nothing on a window that is
/// maximised or can't be resized.
void BeginSizeMove(UiThread& thread, const std::shared_ptr<Window>& window, int grip);

/// The pointer is at `place` with the button held. Whether a size-move took the motion.
bool DriveSizeMove(UiThread& thread, POINT place);

void EndSizeMove(UiThread& thread);

/// Ends what the window manager does once the button is up: it holds the pointer, so nothing else tells us.
void WatchSizeMove(UiThread& thread);

}  // namespace Platform
