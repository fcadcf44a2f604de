// The functions of winuser.h and of the UI thread's apartment, over the system that the tests control.
#include "tests/fakes/WindowSystem.h"

#include <objbase.h>

namespace {

Fakes::WindowSystem& TheSystem() {
    return Fakes::WindowSystem::Get();
}

}  // namespace

ATOM RegisterClassExW(const WNDCLASSEXW* windowClass) noexcept {
    return TheSystem().Register(*windowClass);
}

HWND CreateWindowExW(DWORD extendedStyle, LPCWSTR className, LPCWSTR windowName, DWORD style, int x, int y, int width,
                     int height, HWND, HMENU, HINSTANCE instance, LPVOID parameter) noexcept {
    return TheSystem().Create({extendedStyle, className, windowName, style, x, y, width, height, instance, parameter});
}

BOOL DestroyWindow(HWND window) noexcept {
    return TheSystem().Destroy(window);
}

LRESULT DefWindowProcW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    return TheSystem().Default(window, message, wParam, lParam);
}

BOOL IsWindow(HWND window) noexcept {
    return TheSystem().Exists(window);
}

BOOL ShowWindow(HWND, int command) noexcept {
    TheSystem().Record("ShowWindow " + std::to_string(command));
    return FALSE;
}

BOOL SetWindowPos(HWND window, HWND, int x, int y, int width, int height, UINT flags) noexcept {
    return TheSystem().Place({window, x, y, width, height, flags});
}

BOOL SetWindowTextW(HWND window, LPCWSTR text) noexcept {
    TheSystem().SetTitle(window, text);
    return TRUE;
}

BOOL IsZoomed(HWND) noexcept {
    return TheSystem().Settings().zoomed;
}

BOOL GetWindowRect(HWND, LPRECT rectangle) noexcept {
    *rectangle = TheSystem().Settings().windowRect;
    return TRUE;
}

BOOL GetClientRect(HWND, LPRECT rectangle) noexcept {
    *rectangle = TheSystem().Settings().clientRect;
    return TRUE;
}

BOOL ClientToScreen(HWND, LPPOINT point) noexcept {
    const POINT origin = TheSystem().Settings().clientOrigin;
    point->x += origin.x;
    point->y += origin.y;
    return TRUE;
}

BOOL ScreenToClient(HWND, LPPOINT point) noexcept {
    const POINT origin = TheSystem().Settings().clientOrigin;
    point->x -= origin.x;
    point->y -= origin.y;
    return TRUE;
}

LONG_PTR SetWindowLongPtrW(HWND window, int index, LONG_PTR value) noexcept {
    return index == GWLP_USERDATA ? TheSystem().SetUserData(window, value) : 0;
}

LONG_PTR GetWindowLongPtrW(HWND window, int index) noexcept {
    return index == GWLP_USERDATA ? TheSystem().UserData(window) : 0;
}

HDC BeginPaint(HWND, LPPAINTSTRUCT) noexcept {
    TheSystem().Record("BeginPaint");
    return nullptr;
}

BOOL EndPaint(HWND, const PAINTSTRUCT*) noexcept {
    TheSystem().Record("EndPaint");
    return TRUE;
}

BOOL GetMessageW(LPMSG message, HWND, UINT, UINT) noexcept {
    return TheSystem().Next(*message);
}

BOOL TranslateMessage(const MSG*) noexcept {
    TheSystem().Record("TranslateMessage");
    return TRUE;
}

LRESULT DispatchMessageW(const MSG* message) noexcept {
    return TheSystem().Call(message->hwnd, message->message, message->wParam, message->lParam);
}

BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    return TheSystem().Post(window, message, wParam, lParam);
}

BOOL PostThreadMessageW(DWORD thread, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    return TheSystem().PostToThread(thread, message, wParam, lParam);
}

LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    return TheSystem().Send(window, message, wParam, lParam);
}

void PostQuitMessage(int) noexcept {
    TheSystem().PostQuit();
}

HWND SetCapture(HWND window) noexcept {
    return TheSystem().SetCapture(window);
}

HWND GetCapture() noexcept {
    return TheSystem().Capture();
}

BOOL ReleaseCapture() noexcept {
    TheSystem().SetCapture(nullptr);
    return TRUE;
}

BOOL TrackMouseEvent(LPTRACKMOUSEEVENT track) noexcept {
    TheSystem().Track(*track);
    return TRUE;
}

SHORT GetKeyState(int virtualKey) noexcept {
    // The low bit tells a lock that is on, which is no key held down.
    return TheSystem().Settings().keysDown.contains(virtualKey) ? SHORT{-128} : SHORT{1};
}

HCURSOR LoadCursorW(HINSTANCE, LPCWSTR name) noexcept {
    return name == IDC_ARROW ? reinterpret_cast<HCURSOR>(std::uintptr_t{1}) : nullptr;
}

UINT GetDpiForWindow(HWND) noexcept {
    return TheSystem().Settings().dpi;
}

int GetSystemMetricsForDpi(int index, UINT) noexcept {
    return index == SM_CYCAPTION ? TheSystem().Settings().captionHeight : 0;
}

HRESULT CoInitializeEx(LPVOID, DWORD model) noexcept {
    TheSystem().Record("CoInitializeEx " + std::to_string(model));
    return S_OK;
}

void CoUninitialize() noexcept {
    TheSystem().Record("CoUninitialize");
}
