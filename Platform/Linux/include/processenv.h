// Environment variables and the command line. Implemented in Platform/Linux/Files.
#pragma once

#include <minwindef.h>

/// Copies a variable's value. Returns its length without the terminator when it fits into `size` characters, else the
/// size needed with it; 0 and ERROR_ENVVAR_NOT_FOUND when there is none.
///
/// "LOCALAPPDATA" is the variable as set; where it is unset or empty, the user's data folder stands in for it:
/// XDG_DATA_HOME if that is an absolute path, else .local/share below HOME.
DWORD GetEnvironmentVariableW(LPCWSTR name, LPWSTR buffer, DWORD size) noexcept;

/// Sets a variable of this process, or removes it when `value` is null.
BOOL SetEnvironmentVariableW(LPCWSTR name, LPCWSTR value) noexcept;

/// The process's command line, quoted as Windows quotes it. Belongs to the process; never changes.
LPWSTR GetCommandLineW() noexcept;
