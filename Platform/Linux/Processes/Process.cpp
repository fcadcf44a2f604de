// Processes by handle.

#include "Platform/Interface/Paths.h"
#include "Platform/Linux/Base/Errors.h"
#include "Platform/Linux/Base/Handle.h"
#include "Platform/Linux/Processes/ProcessObject.h"
#include "Platform/Linux/Processes/ProcFs.h"

#include <windows.h>

#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <exception>
#include <limits>
#include <new>

BOOL GetExitCodeProcess(HANDLE process, LPDWORD exitCode) noexcept {
    const auto object = Platform::FindHandle<Platform::ProcessObject>(process);
    if (!object) return FALSE;
    if (!exitCode) return Platform::Fail(ERROR_INVALID_PARAMETER);
    const std::optional<DWORD> code = object->ExitCode();
    if (!code) return Platform::Fail(ERROR_ACCESS_DENIED);
    *exitCode = *code;
    return TRUE;
}

HANDLE OpenProcess(DWORD access, BOOL inheritHandle, DWORD processId) noexcept try {
    constexpr DWORD knownAccess = SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION;
    if ((access & ~knownAccess) != 0 || inheritHandle != FALSE || processId == 0 ||
        processId > static_cast<DWORD>(std::numeric_limits<pid_t>::max())) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    const auto id = static_cast<pid_t>(processId);
    Platform::FileDescriptor descriptor(static_cast<int>(syscall(SYS_pidfd_open, id, 0)));
    if (!descriptor) {
        // No such process is a wrong parameter on Windows; so is here the identifier of a mere thread.
        if (errno == ESRCH || errno == EINVAL) {
            SetLastError(ERROR_INVALID_PARAMETER);
        } else {
            Platform::SetLastErrorFromErrno(errno);
        }
        return nullptr;
    }
    return Platform::AddHandle(std::make_shared<Platform::ProcessObject>(id, std::move(descriptor)));
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

BOOL QueryFullProcessImageNameW(HANDLE process, DWORD flags, LPWSTR buffer, LPDWORD size) noexcept try {
    const auto object = Platform::FindHandle<Platform::ProcessObject>(process);
    if (!object) return FALSE;
    if (!buffer || !size || flags != 0) return Platform::Fail(ERROR_INVALID_PARAMETER);
    const auto file = Platform::ProcFs().ProgramFile(object->Id());
    // Only if it still runs was it this process, and not a later one of the same identifier, that was read.
    if (object->Ended()) return Platform::Fail(ERROR_GEN_FAILURE);
    if (!file) return Platform::Fail(ERROR_ACCESS_DENIED);
    const std::wstring text = Platform::TextFromPath(*file);
    if (text.size() >= *size) return Platform::Fail(ERROR_INSUFFICIENT_BUFFER);
    buffer[text.copy(buffer, text.size())] = L'\0';
    *size = static_cast<DWORD>(text.size());
    return TRUE;
} catch (const std::bad_alloc&) {
    return Platform::Fail(ERROR_NOT_ENOUGH_MEMORY);
} catch (const std::exception&) {
    return Platform::Fail(ERROR_GEN_FAILURE);
}

DWORD GetCurrentProcessId() noexcept {
    return static_cast<DWORD>(getpid());
}

DWORD GetCurrentThreadId() noexcept {
    return static_cast<DWORD>(gettid());
}
