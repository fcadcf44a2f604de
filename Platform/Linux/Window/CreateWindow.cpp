// Windows come and go.
#include "Platform/Linux/Base/Errors.h"
#include "Platform/Linux/Window/Display.h"
#include "Platform/Linux/Window/Icon.h"
#include "Platform/Linux/Window/Manager.h"
#include "Platform/Linux/Window/Placement.h"
#include "Platform/Linux/Window/UiThread.h"

#include <algorithm>
#include <cstdio>
#include <new>
#include <system_error>

namespace Platform {

namespace {

constexpr std::uint32_t kEvents =
    XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_BUTTON_PRESS |
    XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW |
    XCB_EVENT_MASK_POINTER_MOTION | XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_VISIBILITY_CHANGE |
    XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_PROPERTY_CHANGE;

/// Where a window goes that leaves its place or its size to us: three quarters of the work area, in its middle.
RECT InitialRectangle(const CREATESTRUCTW& wish) {
    RECT area{0, 0, 800, 600};
    MONITORINFO info{sizeof(MONITORINFO), {}, {}, 0};
    if (GetMonitorInfoW(MonitorFromPoint({0, 0}, MONITOR_DEFAULTTOPRIMARY), &info)) area = info.rcWork;
    const LONG freeWidth = area.right - area.left;
    const LONG freeHeight = area.bottom - area.top;
    const LONG width = std::max<LONG>(1, wish.cx == CW_USEDEFAULT ? freeWidth * 3 / 4 : wish.cx);
    const LONG height = std::max<LONG>(1, wish.cx == CW_USEDEFAULT ? freeHeight * 3 / 4 : wish.cy);
    const bool free = wish.x == CW_USEDEFAULT;
    const LONG left = free ? area.left + std::max<LONG>(0, (freeWidth - width) / 2) : wish.x;
    const LONG top = free ? area.top + std::max<LONG>(0, (freeHeight - height) / 2) : wish.y;
    return {left, top, left + width, top + height};
}

std::shared_ptr<XWindow> MakeXWindow(UiThread& thread, const RECT& place) {
    auto rendering = std::shared_ptr<xcb_connection_t>(xcb_connect(nullptr, nullptr), xcb_disconnect);
    if (xcb_connection_has_error(rendering.get()) != 0) return nullptr;
    xcb_connection_t* input = thread.connection->Get();
    const xcb_screen_t& screen = thread.connection->Screen();
    const xcb_window_t id = xcb_generate_id(input);
    // No background: what was drawn last stays until the next frame. Changes of the place come from the root window's
    // properties, among them the scale.
    const std::array<std::uint32_t, 3> values{XCB_BACK_PIXMAP_NONE, XCB_GRAVITY_NORTH_WEST, kEvents};
    const auto request = xcb_create_window_checked(
        input, XCB_COPY_FROM_PARENT, id, screen.root, static_cast<std::int16_t>(place.left),
        static_cast<std::int16_t>(place.top), static_cast<std::uint16_t>(place.right - place.left),
        static_cast<std::uint16_t>(place.bottom - place.top), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
        XCB_CW_BACK_PIXMAP | XCB_CW_BIT_GRAVITY | XCB_CW_EVENT_MASK, values.data());
    const XOwned<xcb_generic_error_t> error(xcb_request_check(input, request));
    if (error) return nullptr;
    const std::uint32_t rootEvents = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(input, screen.root, XCB_CW_EVENT_MASK, &rootEvents);
    return std::make_shared<XWindow>(thread.connection, std::move(rendering), id);
}

void Forget(UiThread& thread, const Window& window) {
    std::erase_if(thread.windows, [&](const auto& each) { return each.get() == &window; });
    if (thread.sizeMove && thread.sizeMove->window.get() == &window) thread.sizeMove.reset();
    if (thread.tracking.window == window.handle) thread.tracking = {};
    if (thread.capture == window.handle) thread.capture = nullptr;
    RemoveWindow(window.handle);
}

/// The messages of a window's making. False when the procedure declines.
bool Introduce(Window& window, CREATESTRUCTW& wish) {
    const auto parameter = reinterpret_cast<LPARAM>(&wish);
    if (!CallProcedure(window.handle, WM_NCCREATE, 0, parameter)) return false;
    RECT place = window.View().window;
    if (window.Resizable()) {
        const SIZE least = MinimumSize(window);
        place.right = std::max(place.right, place.left + least.cx);
        place.bottom = std::max(place.bottom, place.top + least.cy);
    }
    RECT client = place;
    CallProcedure(window.handle, WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&client));
    window.Change([&](WindowView& view) { view.client = client; });
    MoveWindowTo(window, place);
    return CallProcedure(window.handle, WM_CREATE, 0, parameter) != -1;
}

HWND Create(CREATESTRUCTW& wish) {
    const auto windowClass = wish.lpszClass ? FindWindowClass(wish.lpszClass) : std::nullopt;
    if (!windowClass) {
        SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
        return nullptr;
    }
    UiThread& thread = UiThread::OfThisThread();
    const RECT place = InitialRectangle(wish);
    const auto x = thread.Connect() ? MakeXWindow(thread, place) : nullptr;
    if (!x) {
        if (!thread.connection)
            std::fputs("The X display could not be opened: DISPLAY names none that runs.\n", stderr);
        SetLastError(ERROR_GEN_FAILURE);
        return nullptr;
    }
    const auto window =
        std::make_shared<Window>(x, thread.queue, *windowClass, static_cast<DWORD>(wish.style), wish.dwExStyle);
    window->SetLong(GWLP_HINSTANCE, reinterpret_cast<LONG_PTR>(wish.hInstance));
    window->placed = wish.x != CW_USEDEFAULT;
    const UINT dpi = ReadDpi(x->Input());
    window->Change([&](WindowView& view) {
        view.window = view.client = place;
        view.dpi = dpi;
    });
    AddWindow(window);
    thread.windows.push_back(window);
    PublishConstants(*window);
    PublishIcons(*window);
    PublishTitle(*window, wish.lpszName ? wish.lpszName : L"");
    if (!Introduce(*window, wish)) {
        if (IsWindow(window->handle)) DestroyWindow(window->handle);
        return nullptr;
    }
    PublishSizeLimits(*window);
    return window->handle;
}

}  // namespace

}  // namespace Platform

HWND CreateWindowExW(DWORD extendedStyle, LPCWSTR className, LPCWSTR windowName, DWORD style, int x, int y, int width,
                     int height, HWND parent, HMENU menu, HINSTANCE instance, LPVOID parameter) noexcept try {
    CREATESTRUCTW wish{parameter,  instance,  menu,         parent, height, width, y, x, static_cast<LONG>(style),
                       windowName, className, extendedStyle};
    const HWND window = Platform::Create(wish);
    if (window && (style & WS_VISIBLE)) ShowWindow(window, SW_SHOW);
    return window;
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
} catch (const std::system_error&) {
    SetLastError(ERROR_TOO_MANY_OPEN_FILES);
    return nullptr;
}

BOOL DestroyWindow(HWND handle) noexcept {
    const auto window = Platform::FindOwnWindow(handle);
    if (!window || window->destroying) return FALSE;
    window->destroying = true;
    if (GetCapture() == handle) ReleaseCapture();
    window->Change([](Platform::WindowView& view) { view.visible = false; });
    const Platform::Connection& x = window->x->Input();
    xcb_unmap_window(x.Get(), window->x->Id());
    x.Flush();
    Platform::CallProcedure(handle, WM_DESTROY, 0, 0);
    Platform::CallProcedure(handle, WM_NCDESTROY, 0, 0);
    Platform::Forget(Platform::UiThread::OfThisThread(), *window);
    return TRUE;
}
