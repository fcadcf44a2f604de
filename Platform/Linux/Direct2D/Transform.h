// Arithmetic on Direct2D's matrices and rectangles.
#pragma once

#include "Platform/Linux/Direct2D/PixelRect.h"

#include <d2d1.h>

namespace Platform::Direct2D {

inline constexpr D2D1_MATRIX_3X2_F identity{{{1.0F, 0.0F, 0.0F, 1.0F, 0.0F, 0.0F}}};

bool Equal(const D2D1_MATRIX_3X2_F& a, const D2D1_MATRIX_3X2_F& b) noexcept;
inline bool Equal(const D2D1_RECT_F& a, const D2D1_RECT_F& b) noexcept {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}
inline bool Equal(const D2D1_COLOR_F& a, const D2D1_COLOR_F& b) noexcept {
    return a.r == b.r && a.g == b.g && a.b == b.b && a.a == b.a;
}

bool IsFinite(const D2D1_MATRIX_3X2_F& matrix) noexcept;

D2D1_POINT_2F Apply(const D2D1_MATRIX_3X2_F& matrix, D2D1_POINT_2F point) noexcept;

/// The bounding box of the rectangle taken through the matrix.
D2D1_RECT_F Bounds(const D2D1_MATRIX_3X2_F& matrix, const D2D1_RECT_F& rect) noexcept;

D2D1_RECT_F Inflate(const D2D1_RECT_F& rect, float by) noexcept;

/// What both have in common; a rectangle of no size at their borders if nothing.
D2D1_RECT_F Intersect(const D2D1_RECT_F& a, const D2D1_RECT_F& b) noexcept;

/// The pixels that the rectangle touches. Far values are held to a range that leaves room for arithmetic; a value that
/// is not a number makes the result empty.
PixelRect Touched(const D2D1_RECT_F& rect) noexcept;

}  // namespace Platform::Direct2D
