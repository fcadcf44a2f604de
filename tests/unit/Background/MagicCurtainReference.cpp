#include "KindReference.h"

namespace KindReference {

namespace {

double Field(Vector x, double theta) {
    const double c = std::cos(theta);
    const double s = std::sin(theta);
    const double a = c * x.x - s * x.y;
    const Vector y = {c * a - s * x.z, s * x.x - c * x.y, s * a - c * x.z};
    return Length(y + Vector{s, s, s}) +
           0.5 * std::sin(2.0 * y.x + theta + std::sin(2.0 * y.y + theta + std::sin(2.0 * y.z + theta)));
}

}  // namespace

Vector MagicCurtain(const Place& place) {
    const double u = place.x / place.width;
    const double v = place.y / place.height;
    const Vector d = Normalized({u - 1.0, v - 0.5, -1.0});
    const double theta = 0.01 * place.time;
    const double cap = 100.0 + 0.01 * place.time;
    double depth = 2.5;
    Vector a;
    for (int i = 0; i < 4; ++i) {
        const Vector x = d * depth + Vector{0.0, 0.0, 1.0};
        const double f = Field(x, theta);
        const double g = f - 2.0;
        const double g2 = Field(x + Vector{0.1, 0.1, 0.1}, theta) - 2.0;
        const double change = std::clamp((g - g2) * 0.5, -0.5, 1.0) * 3.2;
        const Vector c = Vector{change, change, change} + Vector{0.3738235, 0.3404902, 0.5640196};
        const double w = 0.4 * Smooth(Saturated((f - 7.0) * (-1.0 / 3.0)));
        a = a * c + c * w;
        depth += std::min(cap, g);
    }
    const double k = 0.75 + 0.25 * (std::sin(cap) + 1.0);
    const double t = place.time;
    double r =
        15.0 * std::cos(10.0 * u + 0.01 * std::sin(0.1 * t) + 0.1 * t) * (1.5 - v) * 0.4 + 10.0 * std::sin(u + 0.1 * t);
    r *= k * (1.0 - v);
    Vector c = a - Vector{1.0, 1.0, 1.0} * (0.004 * r + 0.125 * v);
    c.x -= 0.1 * k * (1.0 - v);
    return c * std::pow(15.0 * u * v * (1.0 - u) * (1.0 - v), 0.25);
}

}  // namespace KindReference
