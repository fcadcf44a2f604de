#include "Platform/Text/Unicode.h"
#include "tests/support/CurrentVariable.h"

#include <cstdlib>

std::optional<std::wstring> CurrentVariable(const std::wstring& name) {
    const char* const value = std::getenv(Platform::NativeFromWide(name).c_str());
    if (!value) return std::nullopt;
    return Platform::WideFromNative(value);
}
