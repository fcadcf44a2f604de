#include "Platform/Linux/Files/TextResult.h"
#include "Platform/Text/Unicode.h"

#include <windows.h>

#include <stdlib.h>

#include <mutex>
#include <new>
#include <optional>
#include <string>

namespace {

/// The C library's list of variables moves when one is set, so our readers and writers take turns.
std::mutex& EnvironmentMutex() {
    static std::mutex* const mutex = new std::mutex;
    return *mutex;
}

/// With the environment's mutex held.
std::optional<std::string> Variable(const char* name) {
    const char* const value = getenv(name);
    return value ? std::optional<std::string>(value) : std::nullopt;
}

/// Where a user's programs keep data here (XDG Base Directory Specification: a relative path counts as unset).
std::optional<std::string> UserDataFolder() {
    if (auto data = Variable("XDG_DATA_HOME"); data && data->starts_with('/')) return data;
    auto home = Variable("HOME");
    if (!home || home->empty()) return std::nullopt;
    if (!home->ends_with('/')) *home += '/';
    return *home + ".local/share";
}

}  // namespace

DWORD GetEnvironmentVariableW(LPCWSTR name, LPWSTR buffer, DWORD size) noexcept try {
    std::optional<std::string> value;
    if (name && *name) {
        const std::string nativeName = Platform::NativeFromWide(name);
        const std::lock_guard lock(EnvironmentMutex());
        value = Variable(nativeName.c_str());
        if (nativeName == "LOCALAPPDATA" && (!value || value->empty())) value = UserDataFolder();
    }
    if (!value) {
        SetLastError(ERROR_ENVVAR_NOT_FOUND);
        return 0;
    }
    SetLastError(ERROR_SUCCESS);  // tells a value of no characters from a missing one
    return Platform::CopyOrTellSize(Platform::WideFromNative(*value), buffer, size);
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return 0;
}

BOOL SetEnvironmentVariableW(LPCWSTR name, LPCWSTR value) noexcept try {
    const std::string nativeName = name ? Platform::NativeFromWide(name) : std::string();
    if (nativeName.empty() || nativeName.find('=') != std::string::npos) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const std::string nativeValue = value ? Platform::NativeFromWide(value) : std::string();
    const std::lock_guard lock(EnvironmentMutex());
    const int result = value ? setenv(nativeName.c_str(), nativeValue.c_str(), 1) : unsetenv(nativeName.c_str());
    if (result == 0) return TRUE;
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return FALSE;
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return FALSE;
}
