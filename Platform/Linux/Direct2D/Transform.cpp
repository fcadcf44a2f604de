#include "Platform/Linux/Direct2D/Transform.h"

#include <algorithm>
#include <cmath>

namespace Platform::Direct2D {

bool Equal(const D2D1_MATRIX_3X2_F& a, const D2D1_MATRIX_3X2_F& b) noexcept {
    return a._11 == b._11 && a._12 == b._12 && a._21 == b._21 && a._22 == b._22 && a._31 == b._31 && a._32 == b._32;
}

bool IsFinite(const D2D1_MATRIX_3X2_F& matrix) noexcept {
    return std::isfinite(matrix._11) && std::isfinite(matrix._12) && std::isfinite(matrix._21) &&
           std::isfinite(matrix._22) && std::isfinite(matrix._31) && std::isfinite(matrix._32);
}

D2D1_POINT_2F Apply(const D2D1_MATRIX_3X2_F& matrix, D2D1_POINT_2F point) noexcept {
    return {point.x * matrix._11 + point.y * matrix._21 + matrix._31,
            point.x * matrix._12 + point.y * matrix._22 + matrix._32};
}

D2D1_RECT_F Bounds(const D2D1_MATRIX_3X2_F& matrix, const D2D1_RECT_F& rect) noexcept {
    const D2D1_POINT_2F a = Apply(matrix, {rect.left, rect.top});
    const D2D1_POINT_2F b = Apply(matrix, {rect.right, rect.top});
    const D2D1_POINT_2F c = Apply(matrix, {rect.left, rect.bottom});
    const D2D1_POINT_2F d = Apply(matrix, {rect.right, rect.bottom});
    return {std::min({a.x, b.x, c.x, d.x}), std::min({a.y, b.y, c.y, d.y}), std::max({a.x, b.x, c.x, d.x}),
            std::max({a.y, b.y, c.y, d.y})};
}

D2D1_RECT_F Inflate(const D2D1_RECT_F& rect, float by) noexcept {
    return {rect.left - by, rect.top - by, rect.right + by, rect.bottom + by};
}

D2D1_RECT_F Intersect(const D2D1_RECT_F& a, const D2D1_RECT_F& b) noexcept {
    D2D1_RECT_F common{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                       std::min(a.bottom, b.bottom)};
    common.right = std::max(common.left, common.right);
    common.bottom = std::max(common.top, common.bottom);
    return common;
}

PixelRect Touched(const D2D1_RECT_F& rect) noexcept {
    if (std::isnan(rect.left) || std::isnan(rect.top) || std::isnan(rect.right) || std::isnan(rect.bottom)) return {};
    static constexpr float limit = 1 << 20;
    const auto whole = [](float value) { return static_cast<int>(std::clamp(value, -limit, limit)); };
    return {whole(std::floor(rect.left)), whole(std::floor(rect.top)), whole(std::ceil(rect.right)),
            whole(std::ceil(rect.bottom))};
}

}  // namespace Platform::Direct2D

BOOL WINAPI D2D1IsMatrixInvertible(const D2D1_MATRIX_3X2_F* matrix) noexcept {
    const float determinant = matrix->_11 * matrix->_22 - matrix->_12 * matrix->_21;
    return determinant != 0.0F && std::isfinite(determinant) ? TRUE : FALSE;
}

BOOL WINAPI D2D1InvertMatrix(D2D1_MATRIX_3X2_F* matrix) noexcept {
    if (D2D1IsMatrixInvertible(matrix) == FALSE) return FALSE;
    const D2D1_MATRIX_3X2_F m = *matrix;
    const float determinant = m._11 * m._22 - m._12 * m._21;
    matrix->_11 = m._22 / determinant;
    matrix->_12 = -m._12 / determinant;
    matrix->_21 = -m._21 / determinant;
    matrix->_22 = m._11 / determinant;
    matrix->_31 = (m._21 * m._32 - m._22 * m._31) / determinant;
    matrix->_32 = (m._12 * m._31 - m._11 * m._32) / determinant;
    return TRUE;
}
