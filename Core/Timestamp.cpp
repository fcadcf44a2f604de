#include "Core/Timestamp.h"

#include <windows.h>

namespace Tamborel {

std::int64_t MicrosecondsOf(std::int64_t counter, std::int64_t frequency) {
    constexpr std::int64_t million = 1'000'000;
    // Whole seconds apart from the rest: counter × 1,000,000 passes the end of 64 bits after two and a half hours of a
    // nanosecond clock.
    return counter / frequency * million + counter % frequency * million / frequency;
}

std::int64_t TimestampMicroseconds() {
    LARGE_INTEGER counter{};
    LARGE_INTEGER frequency{};
    QueryPerformanceCounter(&counter);
    QueryPerformanceFrequency(&frequency);
    return MicrosecondsOf(counter.QuadPart, frequency.QuadPart);
}

}  // namespace Tamborel
