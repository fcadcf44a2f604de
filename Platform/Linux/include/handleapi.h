// Handles: opaque owners of a system object. Implemented in Platform/Linux/Base.
#pragma once

#include <minwindef.h>

#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(-1)))

/// Closes a handle; the object behind it goes with its last handle. FALSE and ERROR_INVALID_HANDLE for a value that is
/// no open handle. Any thread.
BOOL CloseHandle(HANDLE object) noexcept;
