// Makers of Direct2D's records.
#pragma once

#include <d2d1.h>

namespace D2D1 {

constexpr D2D1_POINT_2F Point2F(FLOAT x = 0.0F, FLOAT y = 0.0F) {
    return {x, y};
}
constexpr D2D1_SIZE_F SizeF(FLOAT width = 0.0F, FLOAT height = 0.0F) {
    return {width, height};
}
constexpr D2D1_SIZE_U SizeU(UINT32 width = 0, UINT32 height = 0) {
    return {width, height};
}
constexpr D2D1_RECT_F RectF(FLOAT left = 0.0F, FLOAT top = 0.0F, FLOAT right = 0.0F, FLOAT bottom = 0.0F) {
    return {left, top, right, bottom};
}
constexpr D2D1_ROUNDED_RECT RoundedRect(const D2D1_RECT_F& rect, FLOAT radiusX, FLOAT radiusY) {
    return {rect, radiusX, radiusY};
}
constexpr D2D1_ELLIPSE Ellipse(const D2D1_POINT_2F& center, FLOAT radiusX, FLOAT radiusY) {
    return {center, radiusX, radiusY};
}
constexpr D2D1_PIXEL_FORMAT PixelFormat(DXGI_FORMAT format = DXGI_FORMAT_UNKNOWN,
                                        D2D1_ALPHA_MODE alphaMode = D2D1_ALPHA_MODE_UNKNOWN) {
    return {format, alphaMode};
}
constexpr D2D1_BITMAP_PROPERTIES BitmapProperties(const D2D1_PIXEL_FORMAT& format = PixelFormat(), FLOAT dpiX = 96.0F,
                                                  FLOAT dpiY = 96.0F) {
    return {format, dpiX, dpiY};
}

class ColorF : public D2D1_COLOR_F {
public:
    constexpr ColorF(FLOAT red, FLOAT green, FLOAT blue, FLOAT alpha = 1.0F) : D2D1_COLOR_F{red, green, blue, alpha} {}
};

/// A matrix with its operations; `a * b` applies a first.
class Matrix3x2F : public D2D1_MATRIX_3X2_F {
public:
    Matrix3x2F() = default;
    Matrix3x2F(FLOAT a11, FLOAT a12, FLOAT a21, FLOAT a22, FLOAT a31, FLOAT a32)
        : D2D1_MATRIX_3X2_F{{{a11, a12, a21, a22, a31, a32}}} {}

    static Matrix3x2F Identity() { return {1.0F, 0.0F, 0.0F, 1.0F, 0.0F, 0.0F}; }
    static Matrix3x2F Translation(FLOAT x, FLOAT y) { return {1.0F, 0.0F, 0.0F, 1.0F, x, y}; }
    static Matrix3x2F Scale(FLOAT x, FLOAT y, D2D1_POINT_2F center = Point2F()) {
        return {x, 0.0F, 0.0F, y, center.x - x * center.x, center.y - y * center.y};
    }

    FLOAT Determinant() const { return _11 * _22 - _12 * _21; }
    bool Invert() { return D2D1InvertMatrix(this) != FALSE; }
    bool IsInvertible() const { return D2D1IsMatrixInvertible(this) != FALSE; }
    bool IsIdentity() const {
        return _11 == 1.0F && _12 == 0.0F && _21 == 0.0F && _22 == 1.0F && _31 == 0.0F && _32 == 0.0F;
    }
    D2D1_POINT_2F TransformPoint(D2D1_POINT_2F point) const {
        return {point.x * _11 + point.y * _21 + _31, point.x * _12 + point.y * _22 + _32};
    }
    Matrix3x2F operator*(const Matrix3x2F& other) const {
        return {_11 * other._11 + _12 * other._21,
                _11 * other._12 + _12 * other._22,
                _21 * other._11 + _22 * other._21,
                _21 * other._12 + _22 * other._22,
                _31 * other._11 + _32 * other._21 + other._31,
                _31 * other._12 + _32 * other._22 + other._32};
    }
};

inline Matrix3x2F IdentityMatrix() {
    return Matrix3x2F::Identity();
}

}  // namespace D2D1

inline D2D1_MATRIX_3X2_F operator*(const D2D1_MATRIX_3X2_F& first, const D2D1_MATRIX_3X2_F& second) {
    return static_cast<const D2D1::Matrix3x2F&>(first) * static_cast<const D2D1::Matrix3x2F&>(second);
}
