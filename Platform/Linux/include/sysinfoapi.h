#pragma once

#include <minwindef.h>

/// Milliseconds since the system was started, time asleep included.
ULONGLONG GetTickCount64() noexcept;
