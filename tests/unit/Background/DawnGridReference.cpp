#include "KindReference.h"

namespace KindReference {

Vector DawnGrid(const Place& place) {
    const double qx = (2.0 * place.x / place.width - 1.0) * (place.width / place.height);
    const double qy = 2.0 * place.y / place.height - 1.0;
    const Vector r = {qx, qy, 2.0};
    const Vector d = Normalized({Dot({0.62161, -0.5014737, -0.6017684}, r), Dot({0.0, 0.7682214, -0.6401843}, r),
                                 Dot({-0.7833269, -0.397945, -0.477534}, r)});
    const double w = 0.4 * d.y + 0.4;
    const auto wave = [&](double rate, double offset) { return std::cos(6.28318 * (w * rate + offset)); };
    Vector c = {wave(0.9, 0.03) * 0.6 + 0.65, wave(0.6, 0.15) * 0.6 + 0.55, wave(0.45, 0.25) * 0.5 + 0.65};
    const double tau = -13.0 / d.y;
    if (tau > 0.0) {
        const double gx = (d.x * tau + 4.699962 + 0.113 * place.time) * 1.25;
        const double gz = (d.z * tau + 3.72966 - 0.3 * place.time) * 1.25;
        const double line = 1.0 - std::pow(std::abs(std::sin(gx) * std::cos(gz)), 0.06125);
        c = c + Vector{0.09, 0.45, 0.342} * (line * std::exp(-std::pow(0.04 * tau, 2.0)));
    }
    c.x = Smooth(std::min(0.9803922 * c.x, 1.0));
    c.y = Smooth(std::min(0.8403361 * (c.y + 0.09), 1.0));
    c.z += 0.015;
    const double v = 0.05 * (qx * qx + qy * qy);
    return c - Vector{0.5, 0.3, 0.6} * v + Vector{0.003, -0.03, 0.063} * (0.5 * qy + 0.5);
}

}  // namespace KindReference
