// Whether two pictures are the same to the eye.
#pragma once

#include "tools/picture/Picture.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace Pictures {

/// What two pictures may differ by and still be the same.
struct Tolerance {
    /// Largest difference of a component, 0 to 255, that is no difference: rounding of blends and coverage.
    int component = 2;
    /// Largest share of the pixels that may differ by more: 0 to 1.
    double share = 0.0;
};

struct Comparison {
    bool same = false;
    std::size_t pixels = 0;  ///< That differ by more than the tolerance's component.
    int largest = 0;         ///< Difference of a component.
    std::string reason;      ///< One sentence; empty when they are the same.
    /// The expected picture in pale grey with the pixels that differ in red, the more they differ the stronger; empty
    /// for pictures of two sizes.
    Picture difference;
};

Comparison Compare(const Picture& actual, const Picture& expected, const Tolerance& tolerance);

}  // namespace Pictures
