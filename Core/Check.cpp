#include "Core/Check.h"

#include "Core/Log.h"

#include <array>
#include <cstdio>
#include <string>

namespace Tamborel {

namespace {

/// The system's text for a code, without the line end that it comes with.
std::string SystemText(HRESULT code) {
    std::array<char, 512> text{};
    DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                  static_cast<DWORD>(code), MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT), text.data(),
                                  static_cast<DWORD>(text.size()), nullptr);
    if (length == 0) return "Unknown HRESULT";
    while (length > 0 && (text[length - 1] == '\n' || text[length - 1] == '\r')) text[--length] = '\0';
    return text.data();
}

}  // namespace

void ReportFailure(HRESULT code, const char* expression, const char* file, int line) noexcept {
    Logf("[Tamborel] FAILED 0x%08X (%s)\n  expr : %s\n  at   : %s:%d\n", static_cast<unsigned>(code),
         SystemText(code).c_str(), expression, file, line);
}

}  // namespace Tamborel
