// Repeating and timing.
#pragma once

#include <functional>
#include <span>
#include <vector>

namespace BackgroundBench {

/// Milliseconds per repetition.
struct Timing {
    double median = 0.0;
    double slow = 0.0;  ///< The 95th percentile.
    double cpu = 0.0;   ///< Mean processor time of the whole process, all threads.
};

/// Runs each of `works` in turn until about `seconds` have passed for each, at least nine times, after two rounds that
/// don't count; one timing for each. What else the machine does meanwhile then falls on all of them alike, so that
/// their ratios hold.
std::vector<Timing> MeasureInTurn(double seconds, std::span<const std::function<void()>> works);

}  // namespace BackgroundBench
