// The calling thread's last error code.
#pragma once

#include <minwindef.h>

DWORD GetLastError() noexcept;
void SetLastError(DWORD code) noexcept;
