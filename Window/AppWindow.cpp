#include "Window/AppWindow.h"

namespace Tamborel {

namespace {

constexpr wchar_t className[] = L"TamborelWindow";

constexpr DWORD fixedSizeStyle = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;

}  // namespace

AppWindow::~AppWindow() {
    if (const HWND window = Handle()) DestroyWindow(window);
}

bool AppWindow::CreateNativeWindow(HINSTANCE instance, int showCommand, const WindowConfig& config) {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof(windowClass);
    windowClass.lpfnWndProc = &AppWindow::WindowProcedure;
    windowClass.hInstance = instance;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = className;
    // The second window of a process finds the class registered already; creation decides whether that will do.
    RegisterClassExW(&windowClass);

    const DWORD style = config.resizable ? WS_OVERLAPPEDWINDOW : fixedSizeStyle;
    const HWND window = CreateWindowExW(WS_EX_NOREDIRECTIONBITMAP, className, config.title.c_str(), style, config.x,
                                        config.y, config.width, config.height, nullptr, nullptr, instance, this);
    if (!window) return false;
    // The frame was measured before this object could answer for it: have it measured anew.
    SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_FRAMECHANGED);
    ShowWindow(window, showCommand);
    return true;
}

LRESULT CALLBACK AppWindow::WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    AppWindow* self = nullptr;
    if (message == WM_NCCREATE) {
        self = static_cast<AppWindow*>(reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
        if (self) self->window_.store(window, std::memory_order_release);
    } else {
        self = reinterpret_cast<AppWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    }
    // Some messages come ahead of the creation parameter.
    if (!self) return DefWindowProcW(window, message, wParam, lParam);
    return self->HandleMessage(message, wParam, lParam);
}

LRESULT AppWindow::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT: {
            // Only tells the system that the invalid region is dealt with.
            PAINTSTRUCT paint{};
            BeginPaint(Handle(), &paint);
            EndPaint(Handle(), &paint);
            return 0;
        }
        case WM_ERASEBKGND:
            return 1;
        default:
            return DefWindowProcW(Handle(), message, wParam, lParam);
    }
}

}  // namespace Tamborel
