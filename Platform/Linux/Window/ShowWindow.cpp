#include "Platform/Linux/Window/Manager.h"
#include "Platform/Linux/Window/Placement.h"
#include "Platform/Linux/Window/UiThread.h"

namespace Platform {

namespace {

void Hide(Window& window) {
    const Connection& x = window.x->Input();
    CallProcedure(window.handle, WM_SHOWWINDOW, FALSE, 0);
    window.Change([](WindowView& view) { view.visible = false; });
    xcb_unmap_window(x.Get(), window.x->Id());
    // A manager that had iconified the window learns of the withdrawal only so (ICCCM 4.1.4).
    xcb_unmap_notify_event_t unmapped{};
    unmapped.response_type = XCB_UNMAP_NOTIFY;
    unmapped.event = x.Screen().root;
    unmapped.window = window.x->Id();
    xcb_send_event(x.Get(), 0, x.Screen().root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&unmapped));
    x.Flush();
}

void Reveal(Window& window, Zoom zoom, bool iconic) {
    const Connection& x = window.x->Input();
    CallProcedure(window.handle, WM_SHOWWINDOW, TRUE, 0);
    PublishSizeLimits(window);
    PublishInitialState(window, zoom, iconic);
    window.Change([](WindowView& view) { view.visible = true; });
    xcb_map_window(x.Get(), window.x->Id());
    x.Flush();
    if (!window.shownBefore) {
        window.shownBefore = true;
        const RECT client = window.View().client;
        TellSize(window);
        CallProcedure(window.handle, WM_MOVE, 0, MAKELONG(client.left, client.top));
    }
    if (zoom == Zoom::Yes && !x.HasManager()) SetZoomed(window, true);
}

void ChangeShown(Window& window, int command, xcb_timestamp_t time) {
    switch (command) {
        case SW_SHOWMAXIMIZED:
            return SetZoomed(window, true);
        case SW_SHOWMINIMIZED:
        case SW_MINIMIZE:
            return RequestIconify(window);
        case SW_SHOWNORMAL:
        case SW_RESTORE:
            if (!window.View().iconic) return SetZoomed(window, false);
            xcb_map_window(window.x->Input().Get(), window.x->Id());
            [[fallthrough]];
        default:
            return RequestActivation(window, time);
    }
}

}  // namespace

}  // namespace Platform

BOOL ShowWindow(HWND handle, int command) noexcept {
    using namespace Platform;
    const auto window = FindOwnWindow(handle);
    if (!window) return FALSE;
    const bool visible = window->View().visible;
    if (command == SW_HIDE) {
        if (visible) Hide(*window);
    } else if (visible) {
        ChangeShown(*window, command, UiThread::OfThisThread().time);
    } else {
        const bool iconic = command == SW_SHOWMINIMIZED || command == SW_MINIMIZE;
        Reveal(*window, command == SW_SHOWMAXIMIZED ? Zoom::Yes : Zoom::No, iconic);
    }
    return visible ? TRUE : FALSE;
}
