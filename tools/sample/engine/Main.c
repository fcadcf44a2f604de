// The stand-in engine: a 32-bit Windows program that takes the game's command line, tells in the game's own log what it
// was given, and lives as long as it is asked to. README.md in the folder above is its manual.

#include <windows.h>

#include <stdlib.h>
#include <wchar.h>

#include "Arguments.h"
#include "Lifetime.h"
#include "Log.h"
#include "Window.h"

typedef struct Size {
    int width;
    int height;
} Size;

static const Size Modes[] = {{320, 240}, {400, 300},  {512, 384},  {640, 480},  {800, 600},
                             {960, 720}, {1024, 768}, {1152, 864}, {1280, 960}, {1600, 1200}};
enum { ModeCount = sizeof Modes / sizeof Modes[0], DefaultMode = 4, MaximumPath = 4096, MaximumValue = 260 };

static void LoadDriver(HANDLE log, const wchar_t* workingDirectory, const wchar_t* commandLine) {
    wchar_t name[MaximumValue];
    ArgumentValue(commandLine, L"gl_driver", name, MaximumValue);
    wchar_t path[MaximumPath + MaximumValue];
    // The full path, since the system looks into the folder of the program first, and that isn't the game's.
    wcscpy(path, workingDirectory);
    wcscat(path, L"\\");
    wcscat(path, name);
    const HMODULE library = name[0] ? LoadLibraryW(path) : NULL;
    if (!library) {
        LogLine(log, L"gl_driver: %ls, not loaded, error %lu", name, name[0] ? GetLastError() : 0UL);
        return;
    }
    typedef const char* (*NameFunction)(void);
    union {
        FARPROC address;
        NameFunction call;
    } function = {GetProcAddress(library, "StandInName")};
    LogLine(log, L"gl_driver: %ls, loaded, says \"%hs\"", name, function.address ? function.call() : "");
}

static unsigned long LogMode(HANDLE log, const wchar_t* commandLine) {
    wchar_t value[MaximumValue];
    ArgumentValue(commandLine, L"gl_mode", value, MaximumValue);
    unsigned long mode = wcstoul(value, NULL, 10);
    if (mode >= ModeCount || !value[0]) mode = DefaultMode;
    LogLine(log, L"gl_mode: %ls, %dx%d", value, Modes[mode].width, Modes[mode].height);
    ArgumentValue(commandLine, L"vid_fullscreen", value, MaximumValue);
    LogLine(log, L"vid_fullscreen: %ls", value);
    return mode;
}

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE previous, LPWSTR arguments, int show) {
    (void)previous;
    (void)arguments;
    static wchar_t workingDirectory[MaximumPath];
    if (GetCurrentDirectoryW(MaximumPath, workingDirectory) >= MaximumPath) workingDirectory[0] = L'\0';
    const wchar_t* commandLine = GetCommandLineW();

    HANDLE log = OpenLog();
    LogLine(log, L"Quake II (stand-in)");
    LogLine(log, L"command line: %ls", commandLine);
    LogLine(log, L"working directory: %ls", workingDirectory);
    LoadDriver(log, workingDirectory, commandLine);
    const unsigned long mode = LogMode(log, commandLine);

    const WindowText text = {commandLine, workingDirectory};
    const HWND window = OpenGameWindow(instance, Modes[mode].width, Modes[mode].height, show, &text);
    const Lifetime lifetime = ReadLifetime(workingDirectory, commandLine, window != NULL);
    LogLine(log, L"display: %ls", window ? L"yes" : L"no");
    LogLine(log, L"lifetime: %lu", lifetime.milliseconds);
    LogLine(log, L"exit code: %lu", lifetime.exitCode);
    if (log != INVALID_HANDLE_VALUE) CloseHandle(log);

    if (window) {
        RunGameWindow(window, lifetime.milliseconds);
    } else {
        Sleep(lifetime.milliseconds);
    }
    ExitProcess(lifetime.exitCode);
}
