#include "Platform/Linux/Base/Errors.h"
#include "Platform/Text/Unicode.h"

#include <windows.h>

#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <new>
#include <string>
#include <string_view>

namespace {

/// Path of the running program; empty, with errno set, when it can't be told.
std::string ProgramPath() {
    for (std::string path(256, '\0');; path.resize(path.size() * 2)) {
        const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
        if (length < 0) return {};
        if (static_cast<std::size_t>(length) == path.size()) continue;
        path.resize(static_cast<std::size_t>(length));
        // The kernel's mark for a program file that was replaced while it ran (proc(5)); its folder is still the right
        // one.
        static constexpr std::string_view mark = " (deleted)";
        if (path.ends_with(mark) && access(path.c_str(), F_OK) != 0) path.resize(path.size() - mark.size());
        return path;
    }
}

}  // namespace

ULONGLONG GetTickCount64() noexcept {
    timespec now{};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return static_cast<ULONGLONG>(now.tv_sec) * 1000 + static_cast<ULONGLONG>(now.tv_nsec) / 1'000'000;
}

DWORD GetModuleFileNameW(HMODULE module, LPWSTR buffer, DWORD size) noexcept try {
    if (module || !buffer || size == 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const std::wstring path = Platform::WideFromNative(ProgramPath());
    if (path.empty()) {
        Platform::SetLastErrorFromErrno();
        return 0;
    }
    const std::size_t length = std::min<std::size_t>(path.size(), size - 1);
    buffer[path.copy(buffer, length)] = L'\0';
    if (length == path.size()) return static_cast<DWORD>(length);
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return size;
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return 0;
}
