// Which window of the thread has the pointer to itself.
#include "Platform/Linux/Window/UiThread.h"

#include <utility>

namespace Platform {

namespace {

/// Asks the server for the pointer. While a button is down it is ours anyway, and this keeps it so.
void Grab(const Window& window) {
    const Connection& x = window.x->Input();
    constexpr std::uint16_t events =
        XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION;
    const auto cookie = xcb_grab_pointer(x.Get(), 0, window.x->Id(), events, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                                         XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
    xcb_discard_reply(x.Get(), cookie.sequence);
    x.Flush();
}

void Ungrab(const Window& window) {
    const Connection& x = window.x->Input();
    xcb_ungrab_pointer(x.Get(), XCB_CURRENT_TIME);
    x.Flush();
}

}  // namespace

}  // namespace Platform

HWND SetCapture(HWND handle) noexcept {
    using namespace Platform;
    const auto window = FindOwnWindow(handle);
    if (!window) return nullptr;
    UiThread& thread = UiThread::OfThisThread();
    const HWND before = std::exchange(thread.capture, handle);
    if (before != handle) {
        Grab(*window);
        if (before) CallProcedure(before, WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(handle));
    }
    return before;
}

HWND GetCapture() noexcept {
    const Platform::UiThread* thread = Platform::UiThread::OfThisThreadIfAny();
    return thread ? thread->capture : nullptr;
}

BOOL ReleaseCapture() noexcept {
    using namespace Platform;
    UiThread* thread = UiThread::OfThisThreadIfAny();
    if (!thread || !thread->capture) return TRUE;
    const HWND before = std::exchange(thread->capture, nullptr);
    if (const auto window = FindOwnWindow(before)) Ungrab(*window);
    CallProcedure(before, WM_CAPTURECHANGED, 0, 0);
    return TRUE;
}
