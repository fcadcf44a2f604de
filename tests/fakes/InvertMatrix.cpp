// The one platform call that nodes make, so that their tests need no graphics.
#include <d2d1.h>

BOOL WINAPI D2D1InvertMatrix(D2D1_MATRIX_3X2_F* matrix) noexcept {
    const D2D1_MATRIX_3X2_F m = *matrix;
    const float determinant = m._11 * m._22 - m._12 * m._21;
    if (determinant == 0) return FALSE;
    const float scale = 1 / determinant;
    *matrix = {};
    matrix->_11 = m._22 * scale;
    matrix->_12 = -m._12 * scale;
    matrix->_21 = -m._21 * scale;
    matrix->_22 = m._11 * scale;
    matrix->_31 = (m._21 * m._32 - m._22 * m._31) * scale;
    matrix->_32 = (m._12 * m._31 - m._11 * m._32) * scale;
    return TRUE;
}
