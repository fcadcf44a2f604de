#include <windows.h>

#include <chrono>

namespace {

// A count times a million has to fit 63 bits, since callers scale it so: at this rate it does for a hundred days.
using Count = std::chrono::microseconds;

using Clock = std::chrono::steady_clock;

/// Just before the first call, so that no time is 0, which callers take for "not set".
Clock::time_point Origin() {
    static const Clock::time_point origin = Clock::now() - std::chrono::milliseconds(1);
    return origin;
}

}  // namespace

BOOL QueryPerformanceCounter(LARGE_INTEGER* count) noexcept {
    if (!count) return FALSE;
    const Clock::time_point origin = Origin();
    count->QuadPart = std::chrono::duration_cast<Count>(Clock::now() - origin).count();
    return TRUE;
}

BOOL QueryPerformanceFrequency(LARGE_INTEGER* frequency) noexcept {
    if (!frequency) return FALSE;
    frequency->QuadPart = Count::period::den;
    return TRUE;
}
