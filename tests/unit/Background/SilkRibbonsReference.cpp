#include "KindReference.h"

namespace KindReference {

namespace {

double Profile(double v) {
    if (v < 0.0) return 0.0;
    if (v <= 0.86) return 0.1162791 * v;
    if (v <= 0.955) return 0.1 + 3.157896 * (v - 0.86);
    if (v <= 0.99) return 0.4 + 17.14285 * (v - 0.955);
    if (v <= 1.0) return 1.0 - 100.0001 * (v - 0.99);
    return 0.0;
}

struct Wave {
    double frequency, rate, offset;
    double At(double x, double time) const { return std::sin(frequency * (x + rate * time + offset)); }
};

}  // namespace

Vector SilkRibbons(const Place& place) {
    const double u = place.x / place.width;
    const double v = place.y / place.height;
    struct Ribbon {
        double base;
        Wave large, small;
    };
    const std::array<Ribbon, 4> ribbons = {{
        {v - 0.25, {8.0, 0.03, 0.0}, {3.7, 0.06, 0.02}},
        {v - 0.25, {6.7, 0.04, 0.16}, {2.89, 0.07, -0.37}},
        {0.75 - v, {7.4, 0.035, -0.09}, {2.51, 0.055, 0.27}},
        {0.75 - v, {6.5, 0.032, 0.08}, {3.89, 0.09, -0.22}},
    }};
    double sum = 0.0;
    for (const Ribbon& each : ribbons) {
        sum += Profile(each.base / (0.5 + 0.06 * each.large.At(u, place.time) + 0.05 * each.small.At(u, place.time)));
    }
    const double light = 0.27 * sum;
    return Vector{light, light, light} + Vector{0.0275, 0.33, 0.3025} * (u - v + 1.0) + Vector{0.05, 0.05, 0.3};
}

}  // namespace KindReference
