#include "KindReference.h"

namespace KindReference {

Vector CloudHorizon(const Place& place) {
    const double t = place.time;
    const double qx = (2.0 * place.x - place.width) / place.height + 0.3 * std::cos(0.06 * t);
    const double qy = (2.0 * place.y - place.height) / place.height + 0.1 * std::cos(0.12 * t);
    const double k = 0.15 * t;
    const double h = std::max(std::abs(2.5 * qy + 1.0 - std::cos(0.5 * qx)), 0.02);
    const Vector band = Vector{0.2, 0.4, 0.8} * (1.0 / h);
    const double bend = 30.0 * std::cos(0.5 * qx);
    double s = 0.0;
    Vector light;
    for (int step = 0; step < 100; ++step) {
        const Vector x = {s * qx, s * qy, s + 1.5 * t};
        double v = 0.7 * x.y - bend + 40.0;
        double b = x.x + 0.1 * std::cos(0.35 * x.y + k);
        double c = 0.7 * x.y + 0.1 * std::cos(0.5 * x.z + k);
        double d = x.z + 0.1 * std::cos(0.5 * x.x + k);
        double f = 1.5;
        double g = 0.2;
        for (int round = 0; round < 4; ++round) {
            const double w = 0.05 * d + 0.15 * t;
            v -= g * std::abs(std::sin(f * b + w) + std::sin(f * c + w) + std::sin(f * d + w));
            const double b2 = b + 0.1 * std::cos(0.5 * c + k);
            const double c2 = c + 0.1 * std::cos(0.5 * d + k);
            const double d2 = d + 0.1 * std::cos(0.5 * b + k);
            b = b2;
            c = c2;
            d = d2;
            f /= 2.0;
            g *= 2.0;
        }
        const double distance = 0.2 + 0.2 * std::abs(v);
        s += distance;
        light = light + Vector{1.0, 1.0, 1.0} * (1.0 / distance) + band;
    }
    const double r = std::max(std::hypot(qx - 0.7, qy - 0.7), 0.02);
    return Each(light * (0.005 / r), [](double x) { return std::tanh(std::min(x, 16.0)); });
}

}  // namespace KindReference
