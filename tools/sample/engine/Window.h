// The stand-in's window: a note on what this is and how to end it.
#pragma once

#include <windows.h>

typedef struct WindowText {
    const wchar_t* commandLine;
    const wchar_t* workingDirectory;
} WindowText;

/// Opens the window with the given size inside its frame, shown as `show` (SW_...) asks. NULL where there is no
/// display. `text` must outlive the window.
HWND OpenGameWindow(HINSTANCE instance, int width, int height, int show, const WindowText* text);

/// Runs the message loop until the window is closed or the time (INFINITE: none) is over.
void RunGameWindow(HWND window, DWORD milliseconds);
