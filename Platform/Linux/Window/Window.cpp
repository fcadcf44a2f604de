#include "Platform/Linux/Window/Window.h"

#include "Platform/Linux/Window/Registry/WindowRegistry.h"

#include <utility>

namespace Platform {

namespace {

struct Windows {
    std::mutex mutex;
    std::map<HWND, std::shared_ptr<Window>> byHandle;  // guarded by mutex
};

Windows& AllWindows() {
    static Windows* const windows = new Windows;  // never destroyed: threads may end after the statics
    return *windows;
}

}  // namespace

XWindow::XWindow(std::shared_ptr<Connection> input, std::shared_ptr<xcb_connection_t> rendering, xcb_window_t id)
    : input_(std::move(input)), rendering_(std::move(rendering)), id_(id) {}

XWindow::~XWindow() {
    xcb_destroy_window(rendering_.get(), id_);
    // Wait until the server has done it: a connection that is closed with events unread may take its last requests
    // along.
    const XOwned<xcb_get_input_focus_reply_t> done(
        xcb_get_input_focus_reply(rendering_.get(), xcb_get_input_focus(rendering_.get()), nullptr));
}

Window::Window(std::shared_ptr<XWindow> xWindow, std::shared_ptr<MessageQueue> ownQueue, WindowClass ownClass,
               DWORD style, DWORD extendedStyle)
    : x(std::move(xWindow)), queue(std::move(ownQueue)), windowClass(std::move(ownClass)), resizeCounter_(x->Input()) {
    longs_[GWL_STYLE] = static_cast<LONG>(style);
    longs_[GWL_EXSTYLE] = static_cast<LONG>(extendedStyle);
    longs_[GWLP_USERDATA] = 0;
}

WindowView Window::View() const {
    const std::lock_guard lock(mutex_);
    return view_;
}

void Window::Change(const std::function<void(WindowView&)>& change) {
    bool seen = false;
    {
        const std::lock_guard lock(mutex_);
        const bool before = view_.Seen();
        change(view_);
        seen = view_.Seen();
        if (seen == before) return;
    }
    seenListeners.Tell(seen);
}

LONG_PTR Window::Long(int index) const {
    const std::lock_guard lock(mutex_);
    const auto found = longs_.find(index);
    return found == longs_.end() ? 0 : found->second;
}

LONG_PTR Window::SetLong(int index, LONG_PTR value) {
    const std::lock_guard lock(mutex_);
    return std::exchange(longs_[index], value);
}

void Window::AskForFrame(std::uint64_t value) {
    const std::uint32_t clock = FrameClock(x->Input());
    const std::lock_guard lock(mutex_);
    resizeCounter_.Ask(value, clock);
}

void Window::SizeArrived(bool changed) {
    const std::lock_guard lock(mutex_);
    resizeCounter_.SizeArrived(changed, x->Rendering());
}

void Window::FrameShown(SIZE frame) {
    const std::lock_guard lock(mutex_);
    const bool known = frame.cx > 0 && frame.cy > 0;
    const SIZE own = view_.PictureSize();
    if (known && (frame.cx != own.cx || frame.cy != own.cy)) return;
    resizeCounter_.FrameShown(x->Rendering());
}

void AddWindow(const std::shared_ptr<Window>& window) {
    window->handle = RegisterNativeWindow(window->x->Id());
    const std::lock_guard lock(AllWindows().mutex);
    AllWindows().byHandle[window->handle] = window;
}

void RemoveWindow(HWND handle) {
    UnregisterNativeWindow(handle);
    std::shared_ptr<Window> last;  // ends after the lock
    const std::lock_guard lock(AllWindows().mutex);
    const auto found = AllWindows().byHandle.find(handle);
    if (found == AllWindows().byHandle.end()) return;
    last = std::move(found->second);
    AllWindows().byHandle.erase(found);
}

std::shared_ptr<Window> FindWindowObject(HWND handle) {
    {
        const std::lock_guard lock(AllWindows().mutex);
        const auto found = AllWindows().byHandle.find(handle);
        if (found != AllWindows().byHandle.end()) return found->second;
    }
    SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return nullptr;
}

std::shared_ptr<Window> FindOwnWindow(HWND handle) {
    std::shared_ptr<Window> window = FindWindowObject(handle);
    if (!window || window->queue->IsOfThisThread()) return window;
    SetLastError(ERROR_ACCESS_DENIED);
    return nullptr;
}

LRESULT CallProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    const std::shared_ptr<Window> window = FindOwnWindow(handle);
    return window ? window->windowClass.procedure(handle, message, wParam, lParam) : 0;
}

}  // namespace Platform
