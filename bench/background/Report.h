// What is printed.
#pragma once

#include "Scenario.h"
#include "Timing.h"

#include <vector>

namespace BackgroundBench {

struct KindResult {
    Scenario scenario;
    Timing stage;      ///< The background alone, bare.
    Timing blit;       ///< The blit alone, bare.
    Timing bareFrame;  ///< Both, bare.
    Timing frame;      ///< Both through the toolkit.
    Timing copy;       ///< The yardstick.
};

struct SizeResult {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::vector<KindResult> kinds;

    /// Median of the kinds' medians: one number for the size.
    double CopyMilliseconds() const;
};

/// One kind in words.
void PrintLine(const KindResult& result);

/// Everything, medians only, as one line of JSON.
void PrintJson(const std::vector<SizeResult>& results);

}  // namespace BackgroundBench
