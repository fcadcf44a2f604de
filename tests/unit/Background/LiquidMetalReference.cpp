#include "KindReference.h"

namespace KindReference {

namespace {

constexpr double kPeriodY = 1.732051;
constexpr Vector kHalf = {0.5, 0.8660254, 0.0};

Vector CellRemainder(Vector z) {
    return {std::fmod(z.x, 1.0), std::fmod(z.y, kPeriodY), 0.0};
}

// The draw of a cell multiplies a sine by thousands, and its argument is in the thousands too. Every rounding shows, so
// this much is done in single precision, operation by operation, as the program does.
double Lot(double idX, double idY) {
    const float along = static_cast<float>(idX) * 12.9898F;
    const float across = static_cast<float>(idY) * 58.233F;
    const float angle = along + across;
    const float sine = static_cast<float>(std::sin(static_cast<double>(angle)));
    const float scaled = sine * 13758.54F;
    return std::floor(6.0F * (scaled - std::floor(scaled)));
}

double Tile(Vector z) {
    const Vector a = CellRemainder(z - kHalf) - kHalf;
    const Vector b = CellRemainder(z) - kHalf;
    const Vector local = Length(b) < Length(a) ? b : a;
    const double angle = Lot(std::nearbyint(10.0 * (local.x - z.x)), std::nearbyint(10.0 * (local.y - z.y))) * 1.047198;
    const Vector turned = {local.x * std::cos(angle) - local.y * std::sin(angle),
                           local.x * std::sin(angle) + local.y * std::cos(angle), 0.0};
    const double d = std::min({Length(turned - Vector{0.5, 0.2886751, 0.0}) - 0.2886751,
                               Length(turned - Vector{-0.5, 0.2886751, 0.0}) - 0.2886751,
                               Length(turned - Vector{0.0, -0.5773503, 0.0}) - 0.2886751});
    const double band = Saturated(8.0 * (0.0125 - (std::abs(d) - 0.125)));
    return band * band * band * (6.0 * band * band - 15.0 * band + 10.0);
}

double SoftAbsolute(double x) {
    return std::abs(x) >= 0.1 ? std::abs(x) : 5.0 * x * x + 0.05;
}

double PolynomialAtan(double y, double x) {
    const double ratio = std::min(x, y) / std::max(x, y);
    const double s = ratio * ratio;
    const double atan = ratio * (0.999866 + s * (-0.3302995 + s * (0.180141 + s * (-0.085133 + s * 0.0208351))));
    return y > x ? std::acos(0.0) - atan : atan;
}

double Height(Vector u, double fade, double time) {
    const auto pans = LiquidMetalPans(time);
    const Vector v = u + Vector{pans[0], pans[1], 0.0};
    const double a = fade * Tile(v * 0.3125);
    const double b = fade * Tile(v * 0.25 + Vector{pans[2], pans[3], 0.0});
    const double angle = 1.0 + 0.06 * time;
    const double first = a * std::cos(angle) + b * std::sin(angle);
    const double second = -a * std::sin(angle) + b * std::cos(angle);
    return 0.75 * (0.5 * std::tanh(PolynomialAtan(SoftAbsolute(second), SoftAbsolute(first))) + 0.5);
}

}  // namespace

std::array<double, 4> LiquidMetalPans(double t) {
    const double c = std::cos(0.0008 * t);
    const double s = std::sin(0.0008 * t);
    return {100.0 + 5.0 * std::cos(0.004 * t), 100.0 + 5.0 * std::sin(0.002828427 * t), 7.601398 * (c + s),
            7.601398 * (c - s)};
}

Vector LiquidMetal(const Place& place) {
    const double qx = 2.0 * place.x / place.width - 1.0;
    const double qy = 2.0 * place.y / place.height - 1.0;
    const Vector p = {place.width / place.height * qx, qy, 0.0};
    const double e = 2.0 / place.height;
    const double fade = 1.0 - 0.7071068 * std::hypot(qx, qy);
    const auto at = [&](double x, double y) { return Height(p + Vector{x, y, 0.0}, fade, place.time); };
    const double height = at(0.0, 0.0);
    const Vector n = Normalized({at(e, 0.0) - at(-e, 0.0), -4.0 / place.height, at(0.0, e) - at(0.0, -e)});
    const Vector surface = {p.x, height, qy};
    const Vector view = Normalized(Vector{0.0, -2.0, 0.0} - surface);
    const Vector l1 = Normalized(Vector{0.8, -0.75, 0.8} - surface);
    const Vector l2 = Normalized(Vector{0.0, -1.5, -1.0} - surface);
    const double d1 = std::max(Dot(l1, n), 0.0);
    const double d2 = std::max(Dot(l2, n), 0.0);
    const double s1 = std::max(Dot(Reflected(l1 * -1.0, n), view), 0.0);
    const double s2 = std::max(Dot(Reflected(l2 * -1.0, n), view), 0.0);
    Vector color = std::pow(d1, 16.0) * Vector{0.6, 0.8, 1.0} + std::pow(d1, 4.0) * Vector{0.06, 0.08, 0.1} +
                   std::pow(s1, 50.0) * Vector{0.7745967, 0.8944272, 1.0} +
                   std::pow(d2, 8.0) * Vector{0.15, 0.1341641, 0.1161895} +
                   std::pow(d2, 2.0) * Vector{0.015, 0.01341641, 0.01161895} +
                   std::pow(s2, 25.0) * Vector{1.0, 0.9457416, 0.8801118};
    color = Each(color, [](double x) { return std::min(x, 1.0); });
    const double s = Saturated((height + 0.1) * 6.666667);
    const double m = 1.0 - (1.0 - 0.5 * d1) * std::exp(-2.0 * Smooth(s));
    const Vector backdrop = {0.03, 0.04, 0.05};
    return backdrop + (color - backdrop) * m;
}

}  // namespace KindReference
