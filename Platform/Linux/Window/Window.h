// A window, as the window system keeps it.
#pragma once

#include "Platform/Linux/Window/Connection.h"
#include "Platform/Linux/Window/Listeners.h"
#include "Platform/Linux/Window/MessageQueue.h"
#include "Platform/Linux/Window/ResizeCounter.h"
#include "Platform/Linux/Window/WindowClass.h"

#include <windows.h>

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace Platform {

/// The X11 window, destroyed when neither the window nor a renderer holds it any more.
class XWindow {
public:
    XWindow(std::shared_ptr<Connection> input, std::shared_ptr<xcb_connection_t> rendering, xcb_window_t id);
    ~XWindow();
    XWindow(const XWindow&) = delete;
    XWindow& operator=(const XWindow&) = delete;

    const Connection& Input() const { return *input_; }
    xcb_connection_t* Rendering() const { return rendering_.get(); }
    xcb_window_t Id() const { return id_; }

private:
    // The server destroys the window with the connection that made it, so that one has to stay open too.
    const std::shared_ptr<Connection> input_;
    const std::shared_ptr<xcb_connection_t> rendering_;
    const xcb_window_t id_;
};

/// What any thread may ask of a window. Rectangles are in screen coordinates.
struct WindowView {
    RECT window{};
    RECT client{};
    /// While the procedure answers for another size: the one that the X window has, or is about to have.
    std::optional<SIZE> arriving;
    bool visible = false;
    bool zoomed = false;
    bool iconic = false;
    bool covered = false;
    UINT dpi = USER_DEFAULT_SCREEN_DPI;

    bool Seen() const { return visible && !iconic && !covered; }
    /// What a picture of the window has to measure.
    SIZE PictureSize() const { return arriving.value_or(SIZE{window.right - window.left, window.bottom - window.top}); }
};

class Window {
public:
    Window(std::shared_ptr<XWindow> x, std::shared_ptr<MessageQueue> queue, WindowClass windowClass, DWORD style,
           DWORD extendedStyle);

    // Set at creation, constant afterwards.
    const std::shared_ptr<XWindow> x;
    const std::shared_ptr<MessageQueue> queue;
    const WindowClass windowClass;
    HWND handle = nullptr;

    /// Any thread.
    WindowView View() const;
    /// Changes the view, then tells the listeners if the window came into sight or went out of it. Window's thread.
    void Change(const std::function<void(WindowView&)>& change);

    // NativeWindow.h says when each is told. On the window's thread.
    Listeners<bool> seenListeners;
    Listeners<> exposedListeners;
    Listeners<> inputListeners;

    LONG_PTR Long(int index) const;
    LONG_PTR SetLong(int index, LONG_PTR value);
    DWORD Style() const { return static_cast<DWORD>(Long(GWL_STYLE)); }
    bool Resizable() const { return (Style() & WS_THICKFRAME) != 0; }

    /// The window manager's resize protocol. Window's thread, but for the frame.
    std::uint32_t ResizeCounterId() const { return resizeCounter_.Id(); }
    void AskForFrame(std::uint64_t value);
    void SizeArrived(bool changed);
    void FrameShown(SIZE frame);

    // Window's thread only.
    bool reparented = false;
    bool painting = false;  // a WM_PAINT is on its way
    bool destroying = false;
    bool placed = false;  // the position was given, not left to the window manager
    bool shownBefore = false;
    int sizeType = SIZE_RESTORED;     // of the last WM_SIZE
    std::uint32_t lastConfigure = 0;  // sequence number of our last request for a geometry
    RECT restored{};                  // where a window that we maximised ourselves goes back to
    std::string cursorName;
    std::array<HICON, 2> icons{};

private:
    mutable std::mutex mutex_;
    WindowView view_;  // guarded by mutex_, as all below
    std::map<int, LONG_PTR> longs_;
    ResizeCounter resizeCounter_;
};

/// Makes a handle known, or ends it. Any thread.
void AddWindow(const std::shared_ptr<Window>& window);
void RemoveWindow(HWND handle);

/// The window of a handle; null, and ERROR_INVALID_WINDOW_HANDLE as the last error, for any other value. Any thread.
std::shared_ptr<Window> FindWindowObject(HWND handle);

/// The same, and null for a window of another thread.
std::shared_ptr<Window> FindOwnWindow(HWND handle);

}  // namespace Platform
