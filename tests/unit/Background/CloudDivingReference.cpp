#include "KindReference.h"

namespace KindReference {

namespace {

double Gyroid(Vector x, double time) {
    double sum = 0.0;
    double a = 0.5;
    for (int octave = 0; octave < 7; ++octave) {
        x = x + Vector{0.1 * sum, 0.1 * sum, 0.1 * sum};
        x.z += 0.0041625 * time;
        const Vector p = x * (1.0 / a);
        sum += std::abs(
            a * (std::cos(p.x) * std::sin(p.y) + std::cos(p.y) * std::sin(p.z) + std::cos(p.z) * std::sin(p.x)));
        a *= 0.5882353;
    }
    return sum;
}

}  // namespace

Vector CloudDiving(const Place& place) {
    const double aspect = place.width / place.height;
    const double qx = ((2.0 * place.x - place.width) / place.height - 0.5) * 0.25;
    const double qy = ((2.0 * place.y - place.height) / place.height - 0.5) * 0.25;
    const Vector d = Normalized({qx, qy, 0.3});
    const double f0 = Gyroid(d, place.time);
    const double f1 = Gyroid(d + Vector{0.1 * aspect, 0.0, 0.0}, place.time);
    const double f2 = Gyroid(d + Vector{0.0, 0.1 * aspect, 0.0}, place.time);
    const Vector n = Normalized({f0 - f1, f0 - f2, f0 - 1.0});
    const double shade = Smooth(Saturated((1.0 - n.z) * 0.5));
    return Vector{0.5 + 0.5 * std::cos(5.9 - n.x), 0.5 + 0.5 * std::cos(11.3 - n.x), 0.5 + 0.5 * std::cos(16.7 - n.x)} *
           shade;
}

}  // namespace KindReference
