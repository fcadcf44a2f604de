#include "Timing.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <vector>

namespace BackgroundBench {

namespace {

constexpr std::size_t kLeastRounds = 9;
constexpr std::size_t kWarmUps = 2;

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

double ProcessorMilliseconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
}

struct Series {
    std::vector<double> times;
    double cpu = 0.0;

    void Add(const std::function<void()>& work) {
        const double cpuBefore = ProcessorMilliseconds();
        const auto before = Clock::now();
        work();
        times.push_back(Milliseconds(Clock::now() - before).count());
        cpu += ProcessorMilliseconds() - cpuBefore;
    }

    Timing Summary() {
        std::ranges::sort(times);
        const std::size_t count = times.size();
        return {times[count / 2], times[(count * 95 + 99) / 100 - 1], cpu / static_cast<double>(count)};
    }
};

}  // namespace

std::vector<Timing> MeasureInTurn(double seconds, std::span<const std::function<void()>> works) {
    for (std::size_t i = 0; i < kWarmUps; ++i) {
        for (const auto& work : works) work();
    }
    std::vector<Series> series(works.size());
    const double limit = seconds * 1e3 * static_cast<double>(works.size());
    const auto begin = Clock::now();
    for (std::size_t round = 0; round < kLeastRounds || Milliseconds(Clock::now() - begin).count() < limit; ++round) {
        for (std::size_t i = 0; i < works.size(); ++i) series[i].Add(works[i]);
    }
    std::vector<Timing> timings;
    timings.reserve(series.size());
    for (Series& each : series) timings.push_back(each.Summary());
    return timings;
}

}  // namespace BackgroundBench
