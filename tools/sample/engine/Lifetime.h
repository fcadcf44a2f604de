// How long the stand-in lives and how it ends, as stand-in.ini in the working directory tells.
#pragma once

#include <windows.h>

typedef struct Lifetime {
    DWORD milliseconds;  // INFINITE: until the window is closed
    DWORD exitCode;
} Lifetime;

/// Reads stand-in.ini; what it doesn't tell follows from the command line and from whether there is a window.
Lifetime ReadLifetime(const wchar_t* workingDirectory, const wchar_t* commandLine, BOOL hasWindow);
