#include "Platform/Linux/Window/Placement.h"

#include "Platform/Linux/Window/Manager.h"

#include <algorithm>

namespace Platform {

namespace {

bool SameSize(const RECT& a, const RECT& b) {
    return a.right - a.left == b.right - b.left && a.bottom - a.top == b.bottom - b.top;
}

bool SamePlace(const RECT& a, const RECT& b) {
    return a.left == b.left && a.top == b.top;
}

LPARAM Pair(LONG low, LONG high) {
    return static_cast<LPARAM>(static_cast<DWORD>(MAKELONG(low, high)));
}

RECT AskForClient(Window& window, const WindowView& before, const RECT& rectangle) {
    WINDOWPOS position{window.handle,
                       nullptr,
                       rectangle.left,
                       rectangle.top,
                       rectangle.right - rectangle.left,
                       rectangle.bottom - rectangle.top,
                       SWP_NOZORDER | SWP_NOACTIVATE};
    NCCALCSIZE_PARAMS asked{{rectangle, before.window, before.client}, &position};
    CallProcedure(window.handle, WM_NCCALCSIZE, TRUE, reinterpret_cast<LPARAM>(&asked));
    RECT client = asked.rgrc[0];
    client.right = std::max(client.left, client.right);
    client.bottom = std::max(client.top, client.bottom);
    return client;
}

int SizeType(const WindowView& view) {
    if (view.iconic) return SIZE_MINIMIZED;
    return view.zoomed ? SIZE_MAXIMIZED : SIZE_RESTORED;
}

}  // namespace

void TellSize(Window& window) {
    const WindowView view = window.View();
    window.sizeType = SizeType(view);
    const bool minimized = window.sizeType == SIZE_MINIMIZED;
    const LONG width = minimized ? 0 : view.client.right - view.client.left;
    const LONG height = minimized ? 0 : view.client.bottom - view.client.top;
    CallProcedure(window.handle, WM_SIZE, static_cast<WPARAM>(window.sizeType), Pair(width, height));
}

void TakeRectangle(Window& window, const RECT& rectangle, Frame frame) {
    const WindowView before = window.View();
    RECT client = before.client;
    if (frame == Frame::Changed || !SameSize(rectangle, before.window)) {
        window.Change([&](WindowView& view) {
            view.arriving = SIZE{rectangle.right - rectangle.left, rectangle.bottom - rectangle.top};
        });
        client = AskForClient(window, before, rectangle);
    } else {
        const LONG right = rectangle.left - before.window.left;
        const LONG down = rectangle.top - before.window.top;
        client = {client.left + right, client.top + down, client.right + right, client.bottom + down};
    }
    window.Change([&](WindowView& view) {
        view.window = rectangle;
        view.client = client;
        view.arriving.reset();
    });
    if (!SamePlace(client, before.client)) CallProcedure(window.handle, WM_MOVE, 0, Pair(client.left, client.top));
    if (!SameSize(client, before.client) || SizeType(window.View()) != window.sizeType) TellSize(window);
}

void MoveWindowTo(Window& window, const RECT& rectangle, Frame frame) {
    const RECT before = window.View().window;
    TakeRectangle(window, rectangle, frame);
    if (SameSize(before, rectangle) && SamePlace(before, rectangle)) return;
    if (!window.Resizable()) PublishSizeLimits(window);
    const Connection& x = window.x->Input();
    const std::array<std::uint32_t, 4> values{static_cast<std::uint32_t>(rectangle.left),
                                              static_cast<std::uint32_t>(rectangle.top),
                                              static_cast<std::uint32_t>(rectangle.right - rectangle.left),
                                              static_cast<std::uint32_t>(rectangle.bottom - rectangle.top)};
    constexpr std::uint16_t all =
        XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT;
    window.lastConfigure = xcb_configure_window(x.Get(), window.x->Id(), all, values.data()).sequence;
    x.Flush();
}

void RectangleArrived(Window& window, const RECT& rectangle) {
    const RECT before = window.View().window;
    const bool resized = !SameSize(before, rectangle);
    // A window manager that maximises may send the size before the state: both are taken together.
    if (resized) RefreshState(window);
    window.SizeArrived(resized);
    TakeRectangle(window, rectangle);
}

void RefreshState(Window& window) {
    if (!window.x->Input().HasManager()) return;
    const ManagedState state = ReadManagedState(window);
    const WindowView before = window.View();
    if (state.zoomed == before.zoomed && state.iconic == before.iconic) return;
    window.Change([&](WindowView& view) {
        view.zoomed = state.zoomed;
        view.iconic = state.iconic;
    });
    if (state.zoomed != before.zoomed) {
        TakeRectangle(window, before.window, Frame::Changed);
    } else {
        TellSize(window);
    }
}

RECT WorkArea(const Window& window) {
    MONITORINFO info{sizeof(MONITORINFO), {}, {}, 0};
    if (GetMonitorInfoW(MonitorFromWindow(window.handle, MONITOR_DEFAULTTONEAREST), &info)) return info.rcWork;
    const xcb_screen_t& screen = window.x->Input().Screen();
    return {0, 0, screen.width_in_pixels, screen.height_in_pixels};
}

void SetZoomed(Window& window, bool zoomed) {
    const WindowView before = window.View();
    if (zoomed == before.zoomed) return;
    if (window.x->Input().ManagerSupports(Atom::NetWmStateMaximizedHorz)) {
        RequestZoom(window, zoomed ? Zoom::Yes : Zoom::No);
        return;
    }
    if (zoomed) window.restored = before.window;
    window.Change([&](WindowView& view) { view.zoomed = zoomed; });
    MoveWindowTo(window, zoomed ? WorkArea(window) : window.restored, Frame::Changed);
}

}  // namespace Platform

BOOL SetWindowPos(HWND handle, HWND, int x, int y, int width, int height, UINT flags) noexcept {
    const auto window = Platform::FindOwnWindow(handle);
    if (!window) return FALSE;
    RECT place = window->View().window;
    if ((flags & SWP_NOMOVE) == 0) {
        place = {x, y, x + place.right - place.left, y + place.bottom - place.top};
        window->placed = true;
    }
    if ((flags & SWP_NOSIZE) == 0) {
        const SIZE least = window->Resizable() ? Platform::MinimumSize(*window) : SIZE{1, 1};
        place.right = place.left + std::max<LONG>(least.cx, width);
        place.bottom = place.top + std::max<LONG>(least.cy, height);
    }
    const bool frameChanged = (flags & SWP_FRAMECHANGED) != 0;
    Platform::MoveWindowTo(*window, place, frameChanged ? Platform::Frame::Changed : Platform::Frame::Same);
    if (frameChanged) Platform::PublishSizeLimits(*window);
    if (flags & SWP_SHOWWINDOW) ShowWindow(handle, SW_SHOW);
    if (flags & SWP_HIDEWINDOW) ShowWindow(handle, SW_HIDE);
    return TRUE;
}
