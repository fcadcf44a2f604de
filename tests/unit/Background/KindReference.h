// The backgrounds' arithmetic once more, on the processor and in double precision, written apart from the programs:
// what the device's pictures are compared with. One file for each kind.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>

namespace KindReference {

/// A vector of three numbers; two-dimensional ones leave z at 0.
struct Vector {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline Vector operator+(Vector a, Vector b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vector operator-(Vector a, Vector b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Vector operator*(Vector a, Vector b) {
    return {a.x * b.x, a.y * b.y, a.z * b.z};
}
inline Vector operator*(Vector a, double s) {
    return {a.x * s, a.y * s, a.z * s};
}
inline Vector operator*(double s, Vector a) {
    return a * s;
}
inline double Dot(Vector a, Vector b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline double Length(Vector a) {
    return std::sqrt(Dot(a, a));
}
inline Vector Normalized(Vector a) {
    return a * (1.0 / Length(a));
}
/// As shading languages reflect: `a` points to the surface.
inline Vector Reflected(Vector a, Vector normal) {
    return a - normal * (2.0 * Dot(normal, a));
}
inline double Saturated(double x) {
    return std::clamp(x, 0.0, 1.0);
}
inline double Smooth(double x) {
    return x * x * (3.0 - 2.0 * x);
}
inline double Fraction(double x) {
    return x - std::floor(x);
}
template <class Function>
Vector Each(Vector a, Function function) {
    return {function(a.x), function(a.y), function(a.z)};
}

/// The picture's size in pixels, the time in seconds, and the middle of the pixel, y running upward from the lower
/// edge.
struct Place {
    double width;
    double height;
    double time;
    double x;
    double y;
};

Vector LiquidMetal(const Place& place);
Vector MagicCurtain(const Place& place);
Vector CloudDiving(const Place& place);
Vector CloudHorizon(const Place& place);
Vector SilkRibbons(const Place& place);
Vector DawnGrid(const Place& place);

/// The two pans of kind 0.
std::array<double, 4> LiquidMetalPans(double time);

}  // namespace KindReference
