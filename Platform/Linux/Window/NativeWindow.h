// What rendering needs to know of a window beyond the window system's own interface. Any thread, all of it.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

struct xcb_connection_t;

namespace Platform {

/// The X11 side of a window. As long as a copy lives the X11 window stays, unseen once the window is destroyed, so that
/// a renderer on another thread can end its work in peace.
struct NativeWindowView {
    /// A connection for rendering into the window, apart from the one that the window's thread reads its input from:
    /// the renderer may wait for replies and take all events of it.
    std::shared_ptr<xcb_connection_t> connection;
    std::uint32_t window = 0;
    std::uint32_t root = 0;
    std::uint32_t visual = 0;
    std::uint8_t depth = 0;
};

/// Nothing for a handle that names no window, or none of X11's.
std::optional<NativeWindowView> ViewNativeWindow(HWND window);

/// Size of the whole window in pixels; 0, 0 for no window. A size that the window's procedure is being asked about
/// (WM_NCCALCSIZE) counts already: whoever draws while it waits there draws for that.
SIZE NativeWindowSize(HWND window);

/// Whether any of the window may be seen: it is shown, not minimised, and not known to be covered fully.
bool IsWindowSeen(HWND window);

/// Calls the listener with IsWindowSeen's answer whenever that changes, on the window's thread and with no lock held,
/// until the window ends or the listener is removed. An identifier for RemoveSeenListener; 0 for no window. A call that
/// is under way may still end after the removal.
std::uint64_t AddSeenListener(HWND window, std::function<void(bool seen)> listener);
void RemoveSeenListener(HWND window, std::uint64_t identifier);

/// Calls the listener whenever a part of the window has come into sight whose pixels the server didn't keep, on the
/// same terms as above: the renderer shows its last picture again.
std::uint64_t AddExposedListener(HWND window, std::function<void()> listener);
void RemoveExposedListener(HWND window, std::uint64_t identifier);

/// Calls the listener whenever the window's procedure has handled a message of the pointer's or the keyboard's, on the
/// same terms: the renderer doesn't put off the frames that answer it.
std::uint64_t AddInputListener(HWND window, std::function<void()> listener);
void RemoveInputListener(HWND window, std::uint64_t identifier);

/// Says that a frame has been presented to the window over the view's connection. If the window manager waits for the
/// frame of a new size, it may go on. `size` is the frame's; a frame that is known to be of another size than the
/// window keeps it waiting. 0, 0 when unknown.
void FrameShown(HWND window, SIZE size = {});

}  // namespace Platform
