#include "Core/Log.h"

#include "Core/LogStream.h"

#include <windows.h>

#include <array>
#include <cstdarg>
#include <cstdio>

namespace Tamborel {

std::FILE* logStream = nullptr;

void Log(const char* text) noexcept {
    OutputDebugStringA(text);
    if (!logStream) return;
    std::fputs(text, logStream);
    std::fflush(logStream);
}

void Logf(const char* format, ...) noexcept {
    std::array<char, 1024> line{};
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(line.data(), line.size(), format, arguments);
    va_end(arguments);
    Log(line.data());
}

}  // namespace Tamborel
