// The clock for short times. Implemented in Platform/Linux/Base.
#pragma once

#include <minwinbase.h>

/// Counts since shortly before the program's first call, never backwards. Any thread.
BOOL QueryPerformanceCounter(LARGE_INTEGER* count) noexcept;

/// Counts in a second; constant.
BOOL QueryPerformanceFrequency(LARGE_INTEGER* frequency) noexcept;
