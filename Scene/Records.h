// The small records that nodes, events and painters share. They are laid out like the Direct2D records of the same
// meaning, so that painting them copies nothing but their bytes (DrawContext.cpp checks that they are).
#pragma once

namespace Tamborel {

/// A position. The unit is that of the coordinate space it is told in: window pixels, or a node's local space.
struct Point {
    float x = 0;
    float y = 0;

    friend bool operator==(const Point&, const Point&) = default;
};

/// Edges of a rectangle, not origin and size.
struct Rect {
    float left = 0;
    float top = 0;
    float right = 0;
    float bottom = 0;

    friend bool operator==(const Rect&, const Rect&) = default;
};

/// Straight (not premultiplied) colour, each component normally from 0 to 1.
struct Color {
    float r = 0;
    float g = 0;
    float b = 0;
    float a = 0;

    friend bool operator==(const Color&, const Color&) = default;
};

/// Affine transform of row vectors: (x, y) becomes (x*m11 + y*m21 + dx, x*m12 + y*m22 + dy). A new one is the identity.
struct Matrix3x2 {
    float m11 = 1;
    float m12 = 0;
    float m21 = 0;
    float m22 = 1;
    float dx = 0;
    float dy = 0;

    /// Exact: a transform that rounding has changed is another one.
    friend bool operator==(const Matrix3x2&, const Matrix3x2&) = default;
};

/// Whether the rectangle holds nothing. Edges that are not numbers hold nothing either.
constexpr bool IsEmpty(const Rect& rect) {
    return !(rect.left < rect.right && rect.top < rect.bottom);
}

/// Whether a point lies in the rectangle. Edges on the left and top are inside, those on the right and bottom are not.
constexpr bool Contains(const Rect& rect, Point point) {
    return rect.left <= point.x && point.x < rect.right && rect.top <= point.y && point.y < rect.bottom;
}

/// The transform that applies `first`, then `second`.
constexpr Matrix3x2 Multiply(const Matrix3x2& first, const Matrix3x2& second) {
    return {first.m11 * second.m11 + first.m12 * second.m21,
            first.m11 * second.m12 + first.m12 * second.m22,
            first.m21 * second.m11 + first.m22 * second.m21,
            first.m21 * second.m12 + first.m22 * second.m22,
            first.dx * second.m11 + first.dy * second.m21 + second.dx,
            first.dx * second.m12 + first.dy * second.m22 + second.dy};
}

constexpr Point Transform(const Matrix3x2& matrix, Point point) {
    return {point.x * matrix.m11 + point.y * matrix.m21 + matrix.dx,
            point.x * matrix.m12 + point.y * matrix.m22 + matrix.dy};
}

}  // namespace Tamborel
