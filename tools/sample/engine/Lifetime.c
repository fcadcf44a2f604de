#include "Lifetime.h"

#include "Arguments.h"

#include <stdio.h>
#include <stdlib.h>

// Nobody can close an engine without a window.
static const DWORD WithoutWindow = 3000;
// One frame at `fixedtime 100`.
static const DWORD FrameTime = 100;

static DWORD ReadNumber(const wchar_t* file, const wchar_t* key, DWORD otherwise) {
    // Not GetPrivateProfileIntW: it stops at 2^31 on some systems, and exit codes have the full 32 bits.
    wchar_t text[32];
    if (GetPrivateProfileStringW(L"stand-in", key, L"", text, 32, file) == 0) return otherwise;
    return (DWORD)wcstoul(text, NULL, 10);
}

Lifetime ReadLifetime(const wchar_t* workingDirectory, const wchar_t* commandLine, BOOL hasWindow) {
    DWORD milliseconds = hasWindow ? INFINITE : WithoutWindow;
    if (ArgumentCount(commandLine, L"+quit") > 0) milliseconds = ArgumentCount(commandLine, L"+wait") * FrameTime;

    wchar_t file[MAX_PATH * 4];
    const int length = swprintf(file, MAX_PATH * 4, L"%ls\\stand-in.ini", workingDirectory);
    Lifetime lifetime = {milliseconds, 0};
    if (length < 0) return lifetime;
    lifetime.milliseconds = ReadNumber(file, L"lifetime_ms", milliseconds);
    lifetime.exitCode = ReadNumber(file, L"exit_code", 0);
    return lifetime;
}
