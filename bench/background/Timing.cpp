#include "Timing.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <vector>

namespace BackgroundBench {

namespace {

constexpr std::size_t kLeastRuns = 9;
constexpr std::size_t kWarmUps = 2;

double ProcessorMilliseconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
}

}  // namespace

Timing Measure(double seconds, const std::function<void()>& once) {
    using Clock = std::chrono::steady_clock;
    using Milliseconds = std::chrono::duration<double, std::milli>;
    for (std::size_t i = 0; i < kWarmUps; ++i) once();
    std::vector<double> runs;
    const double cpuBefore = ProcessorMilliseconds();
    const auto begin = Clock::now();
    while (runs.size() < kLeastRuns || Milliseconds(Clock::now() - begin).count() < seconds * 1e3) {
        const auto before = Clock::now();
        once();
        runs.push_back(Milliseconds(Clock::now() - before).count());
    }
    Timing timing;
    timing.cpu = (ProcessorMilliseconds() - cpuBefore) / static_cast<double>(runs.size());
    std::ranges::sort(runs);
    timing.median = runs[runs.size() / 2];
    timing.slow = runs[(runs.size() * 95 + 99) / 100 - 1];
    return timing;
}

}  // namespace BackgroundBench
