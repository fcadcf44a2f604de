#include "Log.h"

#include <stdarg.h>
#include <stdio.h>

// The longest command line that Windows knows, and some words before it.
enum { MaximumLine = 33000, BytesPerUnit = 3 };

HANDLE OpenLog(void) {
    return CreateFileW(L"baseq2\\qconsole.log", FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, NULL, OPEN_ALWAYS,
                       FILE_ATTRIBUTE_NORMAL, NULL);
}

void LogLine(HANDLE log, const wchar_t* format, ...) {
    static wchar_t line[MaximumLine];
    static char utf8[MaximumLine * BytesPerUnit];
    if (log == INVALID_HANDLE_VALUE) return;
    va_list arguments;
    va_start(arguments, format);
    const int length = vswprintf(line, MaximumLine, format, arguments);
    va_end(arguments);
    if (length < 0) return;
    int bytes = WideCharToMultiByte(CP_UTF8, 0, line, length, utf8, (int)sizeof utf8 - 1, NULL, NULL);
    utf8[bytes++] = '\n';
    DWORD written = 0;
    WriteFile(log, utf8, (DWORD)bytes, &written, NULL);
    FlushFileBuffers(log);
}
