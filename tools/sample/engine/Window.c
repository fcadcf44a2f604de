#include "Window.h"

#include <stdio.h>

static const wchar_t ClassName[] = L"QuakeStandIn";
static const wchar_t Title[] = L"Quake II (stand-in)";
static const COLORREF Background = RGB(0x24, 0x1C, 0x18);
static const COLORREF TextColor = RGB(0xE8, 0xD8, 0xC0);
enum { MaximumText = 34000 };

static void Paint(HWND window) {
    static wchar_t message[MaximumText];
    const WindowText* text = (const WindowText*)GetWindowLongPtrW(window, GWLP_USERDATA);
    PAINTSTRUCT paint;
    HDC context = BeginPaint(window, &paint);
    RECT area;
    GetClientRect(window, &area);
    HBRUSH brush = CreateSolidBrush(Background);
    FillRect(context, &area, brush);
    DeleteObject(brush);
    if (text) {
        swprintf(message, MaximumText,
                 L"This is a stand-in for Quake II.\n"
                 L"Press Escape or close the window to end it.\n\n"
                 L"Command line:\n%ls\n\nWorking directory:\n%ls",
                 text->commandLine, text->workingDirectory);
        const int margin = area.right / 20;
        InflateRect(&area, -margin, -margin);
        // Readable in the smallest mode, and not lost in the largest.
        const int height = area.right / 40 > 13 ? area.right / 40 : 13;
        HFONT font = CreateFontW(-height, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                                 CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH | FF_SWISS, L"Tahoma");
        HGDIOBJ before = SelectObject(context, font);
        SetTextColor(context, TextColor);
        SetBkMode(context, TRANSPARENT);
        DrawTextW(context, message, -1, &area, DT_LEFT | DT_NOPREFIX | DT_WORDBREAK);
        SelectObject(context, before);
        DeleteObject(font);
    }
    EndPaint(window, &paint);
}

static LRESULT CALLBACK HandleMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
    switch (message) {
        case WM_PAINT:
            Paint(window);
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case WM_KEYDOWN:
            if (first == VK_ESCAPE) DestroyWindow(window);
            return 0;
        case WM_TIMER:
            DestroyWindow(window);
            return 0;
        case WM_DESTROY:
            PostQuitMessage(0);
            return 0;
        default:
            return DefWindowProcW(window, message, first, second);
    }
}

HWND OpenGameWindow(HINSTANCE instance, int width, int height, int show, const WindowText* text) {
    WNDCLASSW windowClass = {0};
    windowClass.lpfnWndProc = HandleMessage;
    windowClass.hInstance = instance;
    windowClass.hCursor = LoadCursorW(NULL, (const wchar_t*)IDC_ARROW);
    windowClass.lpszClassName = ClassName;
    RegisterClassW(&windowClass);

    const DWORD style = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;
    RECT frame = {0, 0, width, height};
    AdjustWindowRect(&frame, style, FALSE);
    HWND window = CreateWindowExW(0, ClassName, Title, style, CW_USEDEFAULT, CW_USEDEFAULT, frame.right - frame.left,
                                  frame.bottom - frame.top, NULL, NULL, instance, NULL);
    if (!window) return NULL;
    SetWindowLongPtrW(window, GWLP_USERDATA, (LONG_PTR)text);
    ShowWindow(window, show);
    UpdateWindow(window);
    return window;
}

void RunGameWindow(HWND window, DWORD milliseconds) {
    if (milliseconds != INFINITE) {
        SetTimer(window, 1, milliseconds < USER_TIMER_MAXIMUM ? milliseconds : USER_TIMER_MAXIMUM, NULL);
    }
    MSG message;
    while (GetMessageW(&message, NULL, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}
