// Windows on the screen, their messages and their input. Implemented in Platform/Linux/Window over X11.
//
// A window belongs to the thread that made it: its window procedure runs there, inside GetMessageW, DispatchMessageW,
// SendMessageW or the call that changed the window. Unless a function says "any thread", call it there. Coordinates are
// physical pixels; screen coordinates start at the top left of the X screen.
#pragma once

#include <windef.h>
#include <winusercodes.h>

using WNDPROC = LRESULT(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);

struct WNDCLASSEXW {
    UINT cbSize;
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra;
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground;
    LPCWSTR lpszMenuName;
    LPCWSTR lpszClassName;
    HICON hIconSm;
};

struct MSG {
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;
    POINT pt;
};
using LPMSG = MSG*;

struct CREATESTRUCTW {
    LPVOID lpCreateParams;
    HINSTANCE hInstance;
    HMENU hMenu;
    HWND hwndParent;
    int cy;
    int cx;
    int y;
    int x;
    LONG style;
    LPCWSTR lpszName;
    LPCWSTR lpszClass;
    DWORD dwExStyle;
};
using LPCREATESTRUCTW = CREATESTRUCTW*;

struct WINDOWPOS {
    HWND hwnd;
    HWND hwndInsertAfter;
    int x;
    int y;
    int cx;
    int cy;
    UINT flags;
};
using PWINDOWPOS = WINDOWPOS*;

struct NCCALCSIZE_PARAMS {
    RECT rgrc[3];
    PWINDOWPOS lppos;
};
using LPNCCALCSIZE_PARAMS = NCCALCSIZE_PARAMS*;

struct MINMAXINFO {
    POINT ptReserved;
    POINT ptMaxSize;
    POINT ptMaxPosition;
    POINT ptMinTrackSize;
    POINT ptMaxTrackSize;
};
using LPMINMAXINFO = MINMAXINFO*;

struct TRACKMOUSEEVENT {
    DWORD cbSize;
    DWORD dwFlags;
    HWND hwndTrack;
    DWORD dwHoverTime;
};
using LPTRACKMOUSEEVENT = TRACKMOUSEEVENT*;

struct PAINTSTRUCT {
    HDC hdc;
    BOOL fErase;
    RECT rcPaint;
    BOOL fRestore;
    BOOL fIncUpdate;
    BYTE rgbReserved[32];
};
using LPPAINTSTRUCT = PAINTSTRUCT*;

struct MONITORINFO {
    DWORD cbSize;
    RECT rcMonitor;
    RECT rcWork;
    DWORD dwFlags;
};
using LPMONITORINFO = MONITORINFO*;

#define HWND_TOP (static_cast<HWND>(nullptr))

#define MAKEINTRESOURCEW(number) (reinterpret_cast<LPWSTR>(static_cast<ULONG_PTR>(static_cast<WORD>(number))))
#define IDC_ARROW MAKEINTRESOURCEW(32512)
#define IDC_IBEAM MAKEINTRESOURCEW(32513)
#define IDC_WAIT MAKEINTRESOURCEW(32514)
#define IDC_CROSS MAKEINTRESOURCEW(32515)
#define IDC_SIZENWSE MAKEINTRESOURCEW(32642)
#define IDC_SIZENESW MAKEINTRESOURCEW(32643)
#define IDC_SIZEWE MAKEINTRESOURCEW(32644)
#define IDC_SIZENS MAKEINTRESOURCEW(32645)
#define IDC_SIZEALL MAKEINTRESOURCEW(32646)
#define IDC_HAND MAKEINTRESOURCEW(32649)

// Classes and windows.

/// 0 and ERROR_CLASS_ALREADY_EXISTS for a name that is taken. Any thread.
ATOM RegisterClassExW(const WNDCLASSEXW* windowClass) noexcept;
BOOL UnregisterClassW(LPCWSTR className, HINSTANCE instance) noexcept;

/// Makes a top-level window without a frame of the server's. Sends WM_GETMINMAXINFO, WM_NCCREATE, WM_NCCALCSIZE and
/// WM_CREATE. Null, with the last error set, when there is no such class, no X server, or the procedure declines.
HWND CreateWindowExW(DWORD extendedStyle, LPCWSTR className, LPCWSTR windowName, DWORD style, int x, int y, int width,
                     int height, HWND parent, HMENU menu, HINSTANCE instance, LPVOID parameter) noexcept;
/// Sends WM_DESTROY and WM_NCDESTROY. FALSE on another thread than the window's.
BOOL DestroyWindow(HWND window) noexcept;
LRESULT DefWindowProcW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

/// Whether the handle names a window that exists: one of this process, or the desktop. Any thread.
BOOL IsWindow(HWND window) noexcept;

/// The desktop as an owner for dialogs of programs that have no window of their own. Any thread.
HWND GetDesktopWindow() noexcept;

/// Whether the window was visible before.
BOOL ShowWindow(HWND window, int command) noexcept;
BOOL SetWindowPos(HWND window, HWND insertAfter, int x, int y, int width, int height, UINT flags) noexcept;
/// Any thread.
BOOL SetWindowTextW(HWND window, LPCWSTR text) noexcept;

/// Any thread, as for all of these.
BOOL IsZoomed(HWND window) noexcept;
BOOL IsIconic(HWND window) noexcept;
BOOL IsWindowVisible(HWND window) noexcept;
BOOL GetWindowRect(HWND window, LPRECT rectangle) noexcept;
BOOL GetClientRect(HWND window, LPRECT rectangle) noexcept;
BOOL ClientToScreen(HWND window, LPPOINT point) noexcept;
BOOL ScreenToClient(HWND window, LPPOINT point) noexcept;
LONG_PTR SetWindowLongPtrW(HWND window, int index, LONG_PTR value) noexcept;
LONG_PTR GetWindowLongPtrW(HWND window, int index) noexcept;

/// Painting goes through presents: these only end the need to paint.
HDC BeginPaint(HWND window, LPPAINTSTRUCT paint) noexcept;
BOOL EndPaint(HWND window, const PAINTSTRUCT* paint) noexcept;

// Messages.

/// Waits for the thread's next message. 0 for WM_QUIT, -1 on failure. `window` must be null and the filters 0.
BOOL GetMessageW(LPMSG message, HWND window, UINT filterMin, UINT filterMax) noexcept;
/// Posts the characters of a key that went down.
BOOL TranslateMessage(const MSG* message) noexcept;
LRESULT DispatchMessageW(const MSG* message) noexcept;
/// Any thread. FALSE for a window, or a thread, that is gone or never had a queue.
BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
BOOL PostThreadMessageW(DWORD thread, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
/// Any thread; from another than the window's it waits until that one has handled the message in GetMessageW.
LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
void PostQuitMessage(int exitCode) noexcept;

// Input.

/// The window of this thread that gets all pointer messages, with client coordinates, wherever the pointer is.
HWND SetCapture(HWND window) noexcept;
HWND GetCapture() noexcept;
BOOL ReleaseCapture() noexcept;
/// Asks for one WM_MOUSELEAVE, or WM_NCMOUSELEAVE with TME_NONCLIENT.
BOOL TrackMouseEvent(LPTRACKMOUSEEVENT track) noexcept;
/// The high bit tells that the key was down when the thread took its last message, the low one that a lock is on.
SHORT GetKeyState(int virtualKey) noexcept;
/// One of the IDC_ cursors; `instance` must be null. Any thread.
HCURSOR LoadCursorW(HINSTANCE instance, LPCWSTR name) noexcept;
/// A 32-bit icon: rows of B, G, R, A bytes from the top, in `colorBits`; planes must be 1 and `maskBits` is unused.
HICON CreateIcon(HINSTANCE instance, int width, int height, BYTE planes, BYTE bitsPerPixel, const BYTE* maskBits,
                 const BYTE* colorBits) noexcept;
BOOL DestroyIcon(HICON icon) noexcept;

// Scale and screens. Any thread.

BOOL SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT context) noexcept;
/// Dots per inch of the window's screen, 96 at a scale of 1; 0 for no window.
UINT GetDpiForWindow(HWND window) noexcept;
UINT GetDpiForSystem() noexcept;
int GetSystemMetricsForDpi(int index, UINT dpi) noexcept;
HMONITOR MonitorFromPoint(POINT point, DWORD flags) noexcept;
HMONITOR MonitorFromWindow(HWND window, DWORD flags) noexcept;
BOOL GetMonitorInfoW(HMONITOR monitor, LPMONITORINFO info) noexcept;
