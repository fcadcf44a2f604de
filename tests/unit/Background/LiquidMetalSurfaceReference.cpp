#include "LiquidMetalSurfaceReference.h"

namespace KindReference {

namespace {

constexpr double kTurn = 6.283185307179586;
constexpr int kOctaves = 4;

using Tamborel::LiquidMetalConstants;

Vector Rotated(Vector u) {
    return {0.4472136 * u.x + 0.8944272 * u.z, -0.7807201 * u.x + 0.48795 * u.y + 0.39036 * u.z,
            -0.4364358 * u.x - 0.8728716 * u.y + 0.2182179 * u.z};
}

Vector Phase(double time, double frequency) {
    const Vector a = {0.1 * std::sin(-0.0875 * time), 0.021875 * time, 0.035 * time};
    return Each(a * frequency, [](double x) { return x - kTurn * std::floor(x / kTurn); });
}

Vector Bend(Vector w, double time, double frequency) {
    const Vector shifted = {w.z - 2.0, w.x - 2.0, w.y - 2.0};
    return Each(shifted * frequency + Phase(time, frequency), [](double x) { return std::sin(x); });
}

double Weight(int octave, double detail) {
    return octave < 2 ? 1.0 : detail;
}

double Distance(Vector v, double time, double detail) {
    return -1.6 * SurfaceHeight(v, time, detail) - v.z;
}

struct Dual {
    Vector value;
    std::array<Vector, 3> by;  // the derivative by each axis
};

Dual operator+(const Dual& a, const Dual& b) {
    return {a.value + b.value, {a.by[0] + b.by[0], a.by[1] + b.by[1], a.by[2] + b.by[2]}};
}

// A slope by every axis, taken along with the value: forward differentiation instead of the program's matrices.
Vector Gradient(Vector v, double time, double detail) {
    Dual w = {{0.6 * v.x, v.y, v.z}, {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}};
    std::array<double, 3> sum{};
    double amplitude = 1.0;
    double f = 1.4;
    for (int octave = 0; octave < kOctaves; ++octave) {
        const Vector phase = Phase(time, f);
        const auto bent = [&](Vector x, Vector along) {
            const Vector angle = Vector{x.z - 2.0, x.x - 2.0, x.y - 2.0} * f + phase;
            const Vector slope = Vector{along.z, along.x, along.y} * f;
            return Each(angle, [](double a) { return std::cos(a); }) * slope * 0.45;
        };
        const Dual bend = {Bend(w.value, time, f) * 0.45,
                           {bent(w.value, w.by[0]), bent(w.value, w.by[1]), bent(w.value, w.by[2])}};
        const Dual u = w + bend;
        const double p = u.value.x + u.value.z;
        const double q = 2.0 * u.value.y;
        const double outer = std::cos(std::sin(p) + 0.5 * std::sin(q));
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const Vector d = u.by[axis];
            sum[axis] += amplitude * Weight(octave, detail) * outer * (std::cos(p) * (d.x + d.z) + std::cos(q) * d.y);
        }
        w = {Rotated(u.value) * 1.4, {Rotated(u.by[0]) * 1.4, Rotated(u.by[1]) * 1.4, Rotated(u.by[2]) * 1.4}};
        f *= 1.25;
        amplitude *= 0.55;
    }
    return {sum[0], sum[1], sum[2]};
}

struct Lit {
    double diffuse;
    double specular;
};

Lit LitBy(Vector light, Vector hit, Vector n) {
    const Vector l = Normalized(light - hit);
    return {std::max(Dot(l, n), 0.0), std::max(-Reflected(l * -1.0, n).z, 0.0)};
}

Vector Lights(const LiquidMetalConstants& c, Vector hit, Vector n) {
    const Lit key = LitBy({-3.0, 2.5, -4.0}, hit, n);
    const Lit fill = LitBy({3.0, -2.0, -3.0}, hit, n);
    const Lit ember = LitBy({3.5, 3.0, -4.0}, hit, n);
    const bool active = c.pointerPositionUV.active > 0.0F;
    const double px = active ? Saturated(static_cast<double>(c.pointerPositionUV.u)) - 0.5 : 0.0;
    const double py = active ? Saturated(static_cast<double>(c.pointerPositionUV.v)) - 0.5 : 0.0;
    const double aspect = static_cast<double>(c.iResolution[0]) / static_cast<double>(c.iResolution[1]);
    const Lit pointer = LitBy({5.0 * aspect * px, 5.0 * py, -3.5}, hit, n);
    const auto power = [](double x, double y) { return std::pow(x, y); };
    return power(key.diffuse, 16) * Vector{0.6, 0.8, 1.0} + power(key.diffuse, 4) * Vector{0.06, 0.08, 0.1} +
           power(key.specular, 50) * Vector{0.7745967, 0.8944272, 1.0} +
           power(fill.diffuse, 8) * Vector{0.15, 0.1341641, 0.1161895} +
           power(fill.diffuse, 2) * Vector{0.015, 0.01341641, 0.01161895} +
           power(fill.specular, 25) * Vector{1.0, 0.9457416, 0.8801118} +
           ((0.55 * power(ember.diffuse, 10) + 0.045 * power(ember.diffuse, 3)) * Vector{1.0, 0.36, 0.085} +
            power(ember.specular, 24) * Vector{1.0, 0.56, 0.22} +
            power(ember.specular, 70) * Vector{0.65, 0.559, 0.403}) *
               static_cast<double>(c.emberStrength) +
           (0.025 * power(pointer.diffuse, 16) + 0.65 * power(pointer.specular, 80)) *
               static_cast<double>(c.pointerStrength) * Vector{1.0, 0.83, 0.64};
}

double Openness(Vector hit, Vector s, double reach, double scale, double time, double detail) {
    const double e = Distance(hit + s * reach, time, detail);
    return e > 1000000.0 ? 1.0 : Saturated(e * scale);
}

Vector Shaded(const LiquidMetalConstants& c, Vector hit) {
    const double time = static_cast<double>(c.iTime);
    const double detail = static_cast<double>(c.fineDetail);
    const Vector g = Gradient(hit, time, detail);
    const Vector n = Normalized({-0.24 * g.x, -0.4 * g.y, -1.0 - 0.4 * g.z});
    const Vector side = {-0.9539981, 0.2119996, -0.2119996};
    const Vector s = Normalized(n + (side - n) * 0.6);
    const double o = Openness(hit, s, 0.5, 2.0, time, detail) * Openness(hit, s, 0.2, 5.0, time, detail) *
                     Openness(hit, s, 0.04, 25.0, time, detail) * Openness(hit, s, 1.54, 0.6493506, time, detail);
    return Lights(c, hit, n) * (0.65 * o + 0.35) + Vector{0.006, 0.008, 0.011};
}

}  // namespace

double SurfaceHeight(Vector v, double time, double fineDetail) {
    Vector w = {0.6 * v.x, v.y, v.z};
    double sum = 0.0;
    double amplitude = 1.0;
    double f = 1.4;
    for (int octave = 0; octave < kOctaves; ++octave) {
        const Vector u = w + Bend(w, time, f) * 0.45;
        const double s = std::sin(std::sin(u.x + u.z) + 0.5 * std::sin(2.0 * u.y));
        sum += amplitude * s * Weight(octave, fineDetail);
        w = Rotated(u) * 1.4;
        f *= 1.25;
        amplitude *= 0.55;
    }
    return sum * 0.25 + 0.5;
}

Vignette VignetteAt(double x, double y) {
    const double v = std::max(19.0 * x * y * (1.0 - x) * (1.0 - y), 0.0);
    return {v, (0.5 * std::pow(v, 0.7) + 0.5) * 0.88};
}

Vector SurfaceTexel(const LiquidMetalConstants& c, double column, double row) {
    const double spacing = static_cast<double>(c.sampleSpacing);
    const double width = static_cast<double>(c.iResolution[0]);
    const double height = static_cast<double>(c.iResolution[1]);
    const double scale = static_cast<double>(c.viewScale);
    const double px = (column - 1.0) * spacing + 0.5;
    const double py = (row - 1.0) * spacing + 0.5;
    Vector point = {(px - width * 0.5) / height * scale, (py - height * 0.5) / height * scale, -1.608};
    Vector color;
    double d = 0.0;
    for (int step = 0; step < 250; ++step) {
        point.z += 0.4 * d;
        d = std::min(Distance(point, static_cast<double>(c.iTime), static_cast<double>(c.fineDetail)), 1000000.0);
        if (d < 0.0006) {
            color = Shaded(c, point);
            break;
        }
    }
    color = Each(color, [](double x) {
        const double t = std::pow(Saturated(x), 0.75);
        return 0.6 * t + 0.4 * t * t * (3.0 - 2.0 * t);
    });
    const double m = Dot(color, {0.33, 0.33, 0.33});
    color = Each(color, [&](double x) { return x - 0.4 * (m - x); });
    const double w = VignetteAt(px / width, py / height).w;
    return Each(color, [&](double x) { return Saturated(x * w); });
}

Vector SurfacePixel(const LiquidMetalConstants& c, const std::vector<Vector>& texels, int x, int y) {
    const double spacing = static_cast<double>(c.sampleSpacing);
    const auto columns = static_cast<int>(c.gridDimensions[0]);
    const auto rows = static_cast<int>(c.gridDimensions[1]);
    const double gx = x / spacing;
    const double gy = (static_cast<double>(c.iResolution[1]) - 1.0 - y) / spacing;
    const auto weights = [](double f) {
        return std::array<double, 4>{(1 - f) * (1 - f) * (1 - f) / 6, (3 * f * f * f - 6 * f * f + 4) / 6,
                                     (-3 * f * f * f + 3 * f * f + 3 * f + 1) / 6, f * f * f / 6};
    };
    const auto wx = weights(gx - std::floor(gx));
    const auto wy = weights(gy - std::floor(gy));
    Vector sum;
    for (int j = 0; j < 4; ++j) {
        for (int i = 0; i < 4; ++i) {
            const int column = std::clamp(static_cast<int>(std::floor(gx)) + i, 0, columns - 1);
            const int row = std::clamp(static_cast<int>(std::floor(gy)) + j, 0, rows - 1);
            sum = sum + texels[static_cast<std::size_t>(row * columns + column)] *
                            (wx[static_cast<std::size_t>(i)] * wy[static_cast<std::size_t>(j)]);
        }
    }
    return sum;
}

}  // namespace KindReference
