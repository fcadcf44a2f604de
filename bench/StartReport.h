// What the programs that start_bench starts tell it: one line of names and numbers.
#pragma once

#include <time.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace StartReport {

/// The variable with the moment at which start_bench started the program: CLOCK_MONOTONIC in nanoseconds.
inline constexpr const char* startVariable = "VELORINTH_START_NANOSECONDS";

inline std::int64_t Nanoseconds(clockid_t clock = CLOCK_MONOTONIC) {
    timespec now{};
    clock_gettime(clock, &now);
    return std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
}

/// Milliseconds since the program was started; since the first call where nobody said when that was.
inline double MillisecondsSinceStart() {
    static const std::int64_t start = [] {
        const char* const given = std::getenv(startVariable);
        return given ? std::strtoll(given, nullptr, 10) : Nanoseconds();
    }();
    return static_cast<double>(Nanoseconds() - start) / 1e6;
}

/// The most memory that the program has had resident so far, in MiB. Not getrusage's, which begins with what the parent
/// had when it forked.
inline double PeakMebibytes() {
    double kibibytes = 0;
    if (std::FILE* const file = std::fopen("/proc/self/status", "r")) {
        char line[256];
        while (std::fgets(line, sizeof line, file)) {
            if (std::strncmp(line, "VmHWM:", 6) == 0) kibibytes = std::strtod(line + 6, nullptr);
        }
        std::fclose(file);
    }
    return kibibytes / 1024;
}

/// Processor time of all threads so far, in milliseconds.
inline double ProcessorMilliseconds() {
    return static_cast<double>(Nanoseconds(CLOCK_PROCESS_CPUTIME_ID)) / 1e6;
}

/// The same of the calling thread alone.
inline double ThreadMilliseconds() {
    return static_cast<double>(Nanoseconds(CLOCK_THREAD_CPUTIME_ID)) / 1e6;
}

/// Returns at the end of the standard input, which start_bench closes when it has seen the picture.
inline void AwaitEnd() {
    std::fflush(stdout);
    while (std::getchar() != EOF) continue;
}

inline void Say(const char* name, double value) {
    std::printf("%s %.4f\n", name, value);
}

}  // namespace StartReport
