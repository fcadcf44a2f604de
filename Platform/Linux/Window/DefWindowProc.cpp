// What a window does that its procedure leaves to the system.
#include "Platform/Linux/Window/Icon.h"
#include "Platform/Linux/Window/Manager.h"
#include "Platform/Linux/Window/Placement.h"
#include "Platform/Linux/Window/SizeMove.h"

#include <windowsx.h>

#include <algorithm>
#include <utility>

namespace Platform {

namespace {

constexpr WPARAM kCommandBits = 0xFFF0;  // of WM_SYSCOMMAND's parameter; the others tell the grip
constexpr int kSizeGripBase = HTLEFT - 1;

/// The default frame is a caption band. There is nothing at the other sides, since a maximised window here ends with
/// the screen and doesn't hang over it.
LRESULT CalculateClient(const Window& window, LPARAM lParam) {
    // With either value of wParam a rectangle comes first.
    RECT& rectangle = *reinterpret_cast<RECT*>(lParam);
    if ((window.Style() & WS_CAPTION) == WS_CAPTION) {
        const LONG caption = GetSystemMetricsForDpi(SM_CYCAPTION, window.View().dpi);
        rectangle.top = std::min(rectangle.bottom, rectangle.top + caption);
    }
    return 0;
}

LRESULT HitTest(const Window& window, LPARAM lParam) {
    const RECT client = window.View().client;
    const POINT place{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    if (place.y < client.top) return HTCAPTION;
    const bool inside = place.x >= client.left && place.x < client.right && place.y < client.bottom;
    return inside ? HTCLIENT : HTBORDER;
}

LRESULT SetCursorShape(Window& window, int hit) {
    const bool sizes = window.Resizable() && !window.View().zoomed;
    const char* name = CursorName(window.windowClass.cursor);
    if (hit != HTCLIENT) name = CursorName(nullptr);
    if (sizes) {
        if (hit == HTLEFT || hit == HTRIGHT) name = CursorName(LoadCursorW(nullptr, IDC_SIZEWE));
        if (hit == HTTOP || hit == HTBOTTOM) name = CursorName(LoadCursorW(nullptr, IDC_SIZENS));
        if (hit == HTTOPLEFT || hit == HTBOTTOMRIGHT) name = CursorName(LoadCursorW(nullptr, IDC_SIZENWSE));
        if (hit == HTTOPRIGHT || hit == HTBOTTOMLEFT) name = CursorName(LoadCursorW(nullptr, IDC_SIZENESW));
    }
    if (window.cursorName == name) return TRUE;
    window.cursorName = name;
    const xcb_cursor_t cursor = UiThread::OfThisThread().cursors->Load(name);
    const Connection& x = window.x->Input();
    xcb_change_window_attributes(x.Get(), window.x->Id(), XCB_CW_CURSOR, &cursor);
    x.Flush();
    return TRUE;
}

LRESULT RunCommand(const std::shared_ptr<Window>& window, WPARAM wParam) {
    const int grip = static_cast<int>(wParam & ~kCommandBits);
    switch (static_cast<int>(wParam & kCommandBits)) {
        case SC_CLOSE:
            CallProcedure(window->handle, WM_CLOSE, 0, 0);
            break;
        case SC_MINIMIZE:
            // Without a manager nothing would bring the window back.
            if (window->x->Input().HasManager()) ShowWindow(window->handle, SW_MINIMIZE);
            break;
        case SC_MAXIMIZE:
            if (window->Style() & WS_MAXIMIZEBOX) ShowWindow(window->handle, SW_MAXIMIZE);
            break;
        case SC_RESTORE:
            ShowWindow(window->handle, SW_RESTORE);
            break;
        case SC_MOVE:
            BeginSizeMove(UiThread::OfThisThread(), window, HTCAPTION);
            break;
        case SC_SIZE:
            if (grip != 0) BeginSizeMove(UiThread::OfThisThread(), window, kSizeGripBase + grip);
            break;
        default:
            break;
    }
    return 0;
}

LRESULT PressFrame(const Window& window, int hit) {
    if (hit == HTCAPTION) CallProcedure(window.handle, WM_SYSCOMMAND, SC_MOVE | HTCAPTION, 0);
    if (hit >= HTLEFT && hit <= HTBOTTOMRIGHT) {
        CallProcedure(window.handle, WM_SYSCOMMAND, static_cast<WPARAM>(SC_SIZE | (hit - kSizeGripBase)), 0);
    }
    return 0;
}

LRESULT DoublePressFrame(const Window& window, int hit) {
    if (hit != HTCAPTION) return PressFrame(window, hit);
    const int command = window.View().zoomed ? SC_RESTORE : SC_MAXIMIZE;
    CallProcedure(window.handle, WM_SYSCOMMAND, static_cast<WPARAM>(command), 0);
    return 0;
}

LRESULT SetIcon(Window& window, WPARAM which, LPARAM icon) {
    if (which >= window.icons.size()) return 0;
    const HICON before = std::exchange(window.icons.at(which), reinterpret_cast<HICON>(icon));
    PublishIcons(window);
    return reinterpret_cast<LRESULT>(before);
}

}  // namespace

}  // namespace Platform

LRESULT DefWindowProcW(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    using namespace Platform;
    const std::shared_ptr<Window> window = FindOwnWindow(handle);
    if (!window) return 0;
    switch (message) {
        case WM_NCCREATE:
            return TRUE;
        case WM_NCCALCSIZE:
            return CalculateClient(*window, lParam);
        case WM_NCHITTEST:
            return HitTest(*window, lParam);
        case WM_SETCURSOR:
            return SetCursorShape(*window, static_cast<SHORT>(LOWORD(lParam)));
        case WM_SYSCOMMAND:
            return RunCommand(window, wParam);
        case WM_NCLBUTTONDOWN:
            return PressFrame(*window, static_cast<int>(wParam));
        case WM_NCLBUTTONDBLCLK:
            return DoublePressFrame(*window, static_cast<int>(wParam));
        case WM_SYSKEYDOWN:
            if (wParam == static_cast<WPARAM>(VK_F4)) PostMessageW(handle, WM_SYSCOMMAND, SC_CLOSE, 0);
            return 0;
        case WM_CLOSE:
            DestroyWindow(handle);
            return 0;
        case WM_PAINT: {
            PAINTSTRUCT paint{};
            BeginPaint(handle, &paint);
            EndPaint(handle, &paint);
            return 0;
        }
        case WM_SETICON:
            return SetIcon(*window, wParam, lParam);
        case WM_GETICON:
            return wParam < window->icons.size() ? reinterpret_cast<LRESULT>(window->icons.at(wParam)) : 0;
        case WM_SETTEXT:
            return SetWindowTextW(handle, reinterpret_cast<LPCWSTR>(lParam));
        default:
            return 0;
    }
}
