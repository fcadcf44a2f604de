// "Quiet Gold Sunrise" without its fine lines and without its grain, calculated on the processor, in doubles.
#pragma once

#include <array>

struct SunriseReference {
    double width = 0.0;
    double height = 0.0;
    double time = 0.0;
    double glow = 0.0;

    /// The colour at a pixel's middle; y runs upward.
    std::array<double, 3> At(double x, double y) const;

    /// Where that point lies in the swaying plane.
    std::array<double, 2> Place(double x, double y) const;
};
