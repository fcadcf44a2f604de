#include "tests/support/CurrentVariable.h"

#include <windows.h>

std::optional<std::wstring> CurrentVariable(const std::wstring& name) {
    std::wstring value(32767, L'\0');
    const DWORD length = GetEnvironmentVariableW(name.c_str(), value.data(), static_cast<DWORD>(value.size()));
    if (length == 0 && GetLastError() == ERROR_ENVVAR_NOT_FOUND) return std::nullopt;
    value.resize(length);
    return value;
}
