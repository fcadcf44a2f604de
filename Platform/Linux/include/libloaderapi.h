#pragma once

#include <minwindef.h>

/// Full path of the running program (`module` must be null), cut to `size` characters. Its length; 0 on failure.
DWORD GetModuleFileNameW(HMODULE module, LPWSTR buffer, DWORD size) noexcept;
