#include "Platform/Linux/Window/WindowClass.h"

#include "Platform/Linux/Base/Errors.h"

#include <map>
#include <mutex>
#include <new>

namespace Platform {

namespace {

struct Classes {
    std::mutex mutex;
    std::map<std::wstring, WindowClass> byName;  // guarded by mutex
    ATOM next = 0xC000;                          // guarded by mutex; where string atoms begin
};

Classes& AllClasses() {
    static Classes classes;
    return classes;
}

}  // namespace

std::optional<WindowClass> FindWindowClass(const std::wstring& name) {
    const std::lock_guard lock(AllClasses().mutex);
    const auto found = AllClasses().byName.find(name);
    if (found == AllClasses().byName.end()) return std::nullopt;
    return found->second;
}

}  // namespace Platform

ATOM RegisterClassExW(const WNDCLASSEXW* given) noexcept try {
    if (!given || given->cbSize != sizeof(WNDCLASSEXW) || !given->lpfnWndProc || !given->lpszClassName) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    Platform::WindowClass added{given->lpszClassName, given->style, given->lpfnWndProc, given->hInstance,
                                given->hCursor};
    Platform::Classes& classes = Platform::AllClasses();
    const std::lock_guard lock(classes.mutex);
    if (!classes.byName.try_emplace(added.name, added).second) {
        SetLastError(ERROR_CLASS_ALREADY_EXISTS);
        return 0;
    }
    return classes.next++;
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return 0;
}

BOOL UnregisterClassW(LPCWSTR className, HINSTANCE) noexcept try {
    Platform::Classes& classes = Platform::AllClasses();
    const std::lock_guard lock(classes.mutex);
    if (className && classes.byName.erase(className) > 0) return TRUE;
    return Platform::Fail(ERROR_CLASS_DOES_NOT_EXIST);
} catch (const std::bad_alloc&) {
    return Platform::Fail(ERROR_NOT_ENOUGH_MEMORY);
}
