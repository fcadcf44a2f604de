// From the C library's error numbers to the system error codes that callers see.
#pragma once

#include <windows.h>

#include <cerrno>

namespace Platform {

/// The system error code for an errno value; ERROR_GEN_FAILURE for one without a counterpart.
DWORD ErrorFromErrno(int number) noexcept;

/// Makes the calling thread's last error that of an errno value.
inline void SetLastErrorFromErrno(int number = errno) noexcept {
    SetLastError(ErrorFromErrno(number));
}

/// The same, as the result of a BOOL function that fails.
inline BOOL FailFromErrno(int number = errno) noexcept {
    SetLastErrorFromErrno(number);
    return FALSE;
}

/// Sets the last error, as the result of a BOOL function that fails.
inline BOOL Fail(DWORD code) noexcept {
    SetLastError(code);
    return FALSE;
}

}  // namespace Platform
