#include "CyberspaceReference.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kRow = 1.732051;

double Fraction(double x) {
    return x - std::floor(x);
}

double SmoothStep(double x) {
    return x * x * (3.0 - 2.0 * x);
}

double Noise(double x, double y) {
    const double i = std::floor(x);
    const double j = std::floor(y);
    const double across = SmoothStep(x - i);
    const double down = SmoothStep(y - j);
    const auto hash = &CyberspaceReference::Hash;
    return (1.0 - down) * ((1.0 - across) * hash(i, j) + across * hash(i + 1.0, j)) +
           down * ((1.0 - across) * hash(i, j + 1.0) + across * hash(i + 1.0, j + 1.0));
}

}  // namespace

double CyberspaceReference::Hash(double x, double y) {
    const float along = static_cast<float>(x) * 12.9898F;
    const float across = static_cast<float>(y) * 78.233F;
    const float sine = static_cast<float>(std::sin(static_cast<double>(along + across)));
    return Fraction(static_cast<double>(sine * 43758.55F));
}

double CyberspaceReference::BlockHeight(const Point& point, double m) const {
    const double x = point.tile[0];
    const double y = point.tile[1];
    const double shift = 0.15 * time * (0.75 + 0.15 * Hash(x, y));
    const double peak = std::pow(Noise(m * x * point.face + shift, m * y * point.face + shift), 8.0);
    const double drift = 0.075 * time * (0.5 + m * point.face);
    const double rolling = Noise(0.2 * x + drift, 0.2 * y + drift);
    const double disc = SmoothStep(std::clamp((6.0 - std::hypot(x - 4.5, y - 4.5)) / 4.0, 0.0, 1.0));
    return std::min((2.0 * peak + rolling - 0.1) * disc, 0.95);
}

CyberspaceReference::Point CyberspaceReference::At(double px, double py) const {
    Point point{};
    const double zoom = 0.8 + 0.25 * std::sin(0.045 * time);
    const double x = zoom * (2.0 * px - width) / -height;
    const double y = zoom * (2.0 * py - height) / -height;
    const double lens = 0.025 * std::pow(std::hypot(x, y), 2.5 - 0.5 * std::sin(0.045 * time));
    point.place[0] = x - lens * x - 0.03 * time;
    point.place[1] = y - lens * y - std::cos(0.03 * time);

    // The nearest of all centres around, by looking at each.
    double best = 1e9;
    double second = 1e9;
    const double row = std::round(point.place[1] / (0.5 * kRow));
    for (double j = row - 2.0; j <= row + 2.0; ++j) {
        const bool odd = std::fmod(std::abs(j), 2.0) == 1.0;
        for (double i = std::floor(point.place[0]) - 1.0; i <= std::floor(point.place[0]) + 2.0; ++i) {
            const double centerX = i + (odd ? 0.5 : 0.0);
            const double distance = std::hypot(point.place[0] - centerX, point.place[1] - 0.5 * j * kRow);
            if (distance < best) {
                second = best;
                best = distance;
                point.id[0] = centerX;
                point.id[1] = 0.5 * j;
            } else {
                second = std::min(second, distance);
            }
        }
    }
    const double left = point.place[0] - point.id[0];         // to the left on the screen
    const double down = point.place[1] - point.id[1] * kRow;  // downward on the screen
    const double roof = down + 0.57777 * std::abs(left);
    // Lengths on the faces, from the edge that the face looks to, in sides of the face.
    double a = 0.0;
    double b = 0.0;
    if (roof < 0.0) {
        point.face = 3;
        a = left + 1.72 * down;
        b = 1.72 * down - left;
    } else {
        point.face = left > 0.0 ? 1 : 2;
        a = -2.0 * std::abs(left);
        b = -1.73 * down - (left > 0.0 ? left : -left);
    }
    point.onFace[0] = Fraction(a);
    point.onFace[1] = Fraction(b);
    for (int i = 0; i < 2; ++i) point.tile[i] = std::floor(10.0 * point.onFace[i]);
    point.random = Hash(20.0 * point.id[0], 20.0 * point.id[1]);

    const double toLine =
        std::min({Fraction(10.0 * a), 1.0 - Fraction(10.0 * a), Fraction(10.0 * b), 1.0 - Fraction(10.0 * b)});
    point.clearance =
        std::min({toLine, 10.0 * (second - best), 10.0 * std::abs(roof), roof < 0.0 ? 1.0 : 20.0 * std::abs(left)});
    return point;
}
