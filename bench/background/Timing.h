// Repeating and timing.
#pragma once

#include <functional>

namespace BackgroundBench {

/// Milliseconds per repetition.
struct Timing {
    double median = 0.0;
    double slow = 0.0;  ///< The 95th percentile.
    double cpu = 0.0;   ///< Mean processor time of the whole process, all threads.
};

/// Runs `once` until about `seconds` have passed, at least nine times, after two runs that don't count.
Timing Measure(double seconds, const std::function<void()>& once);

}  // namespace BackgroundBench
