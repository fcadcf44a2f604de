#pragma once

#include <cstdint>

namespace Tamborel {

/// The high-resolution counter in microseconds: the clock of input and application events. Any thread.
[[nodiscard]] std::int64_t TimestampMicroseconds();

/// `counter` ticks of a clock with `frequency` ticks a second in microseconds, rounded down.
[[nodiscard]] std::int64_t MicrosecondsOf(std::int64_t counter, std::int64_t frequency);

}  // namespace Tamborel
