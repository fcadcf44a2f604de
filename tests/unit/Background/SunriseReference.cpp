#include "SunriseReference.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

using Color = std::array<double, 3>;

struct Wash {
    double x, y, sigmaX, sigmaY;
    Color color;
};

constexpr Wash kWashes[] = {
    {0.26, -0.08, 0.76, 0.47, {0.12, 0.19, 0.24}},  {0.29, -0.12, 0.32, 0.2, {0.22, 0.35, 0.44}},
    {0.63, -0.07, 0.26, 0.34, {0.43, 0.43, 0.41}},  {0.63, 0.27, 0.3, 0.37, {0.15, 0.14, 0.12}},
    {0.93, 0.35, 0.23, 0.29, {0.38, 0.235, 0.11}},  {0.84, 0.65, 0.23, 0.36, {0.065, 0.038, 0.012}},
    {0.61, -0.055, 0.18, 0.18, {0.13, 0.13, 0.12}}, {0.88, 0.35, 0.085, 0.21, {0.095, 0.08, 0.025}},
};

double Gaussian(double dx, double dy, double sigmaX, double sigmaY) {
    return std::exp(-(dx * dx) / (sigmaX * sigmaX) - (dy * dy) / (sigmaY * sigmaY));
}

/// Rodrigues' rotation about the unit vector with three equal components, as a matrix.
Color RotateAboutGrey(const Color& color, double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle) / std::numbers::sqrt3;
    const double third = (1.0 - c) / 3.0;
    return {
        (c + third) * color[0] + (third - s) * color[1] + (third + s) * color[2],
        (third + s) * color[0] + (c + third) * color[1] + (third - s) * color[2],
        (third - s) * color[0] + (third + s) * color[1] + (c + third) * color[2],
    };
}

double Edge(double y, double t) {
    return 0.48 + 0.175 * y - 0.26 * std::pow(y, 2) + 0.045 * std::sin(1.4 + 0.0522 * t) * std::sin(2.8 * y + 0.35) -
           0.067 - 0.014 * std::sin(3.2 * y + 1.0);
}

Color Sun(double x, double y, double t, double width) {
    const double sunY = 0.4 + 0.2 * std::sin(0.0216 * t);
    const double square = std::pow(x - Edge(sunY, t), 2) + std::pow(y - sunY, 2);
    const double dx = std::abs(x - Edge(y, t));
    const double e = std::exp(-std::pow((y - 0.43) * 1.176471, 4));
    const double g = std::exp(-std::pow((y - sunY) * 4.545455, 2));
    const double soft = std::exp(-dx / 0.014) * (0.3 + 0.7 * g) * e;
    const double sharp = std::exp(-dx / std::max(0.7 / width, 0.0012)) * (1.2 + 2.0 * g) * e;
    const double halo = std::exp(-125.0 * square);
    const double disc = std::exp(-1538.46 * square);
    return {
        soft + sharp + 1.8 * halo + 7.0 * disc,
        0.16 * soft + 0.48 * sharp + 0.54 * halo + 5.32 * disc,
        0.025 * soft + 0.13 * sharp + 0.081 * halo + 2.52 * disc,
    };
}

}  // namespace

std::array<double, 2> SunriseReference::Place(double px, double py) const {
    const double t = time;
    const double u = px / width;
    const double v = py / height;
    const double theta = 0.0144 * t + 0.4 * std::sin(0.0279 * t);
    const double scale = 1.1 + 0.12 * std::sin(0.0243 * t);
    double x = 0.6 + scale * ((u - 0.5) * std::cos(theta) - (0.5 - v) * std::sin(theta));
    double y = 0.48 + scale * ((u - 0.5) * std::sin(theta) + (0.5 - v) * std::cos(theta));
    x += 0.1 * std::sin(0.0306 * t);
    y += 0.09 * std::sin(0.0207 * t);
    x += 0.18 * std::sin(0.0342 * t) * std::sin(3.8 * y + 0.0252 * t);
    y += 0.08 * std::sin(0.027 * t) * std::sin(4.0 * x - 0.0153 * t);
    x += 0.025 * std::sin(0.09 * t) * std::sin(2.6 * (1.0 - v) + 0.3);
    y += 0.012 * std::sin(0.0657 * t);
    return {x, y};
}

std::array<double, 3> SunriseReference::At(double px, double py) const {
    const double t = time;
    const auto [x, y] = Place(px, py);
    Color color{0.016, 0.025, 0.03};
    for (const Wash& wash : kWashes) {
        const double weight = Gaussian(x - wash.x, y - wash.y, wash.sigmaX, wash.sigmaY);
        for (std::size_t i = 0; i < 3; ++i) color[i] += weight * wash.color[i];
    }
    const double blot = std::sin(0.1035 * t) * Gaussian(x - (0.88 + 0.025 * std::sin(0.09 * t)), y - 0.38, 0.17, 0.3);
    color = {color[0] + 0.055 * blot, color[1] + 0.038 * blot, color[2] + 0.012 * blot};
    const double turns = 0.0035 * t + 0.09 * std::sin(0.0198 * t) * std::sin(2.3 * y + x);
    color = RotateAboutGrey(color, 2.0 * std::numbers::pi * turns);
    const Color sun = Sun(x, y, t, width);
    for (std::size_t i = 0; i < 3; ++i) {
        color[i] = 1.0 - (1.0 - std::clamp(color[i], 0.0, 1.0)) * std::exp(-sun[i] * glow);
    }
    return color;
}
