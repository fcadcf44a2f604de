// The middle of what was measured.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

/// Of an even number of values the mean of the two in the middle. At least one value.
inline double Median(std::vector<double> values) {
    std::ranges::sort(values);
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}
