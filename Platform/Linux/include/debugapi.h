// The debug stream. Implemented in Platform/Linux/Base.
#pragma once

#include <minwindef.h>

/// Writes NUL-terminated text to standard error, whole. Failures are ignored. Any thread.
void OutputDebugStringA(LPCSTR text) noexcept;
