// What Direct2D and DirectWrite share.
#pragma once

#include <dxgiformat.h>
#include <minwindef.h>

enum DWRITE_MEASURING_MODE : int {
    DWRITE_MEASURING_MODE_NATURAL = 0,
    DWRITE_MEASURING_MODE_GDI_CLASSIC = 1,
    DWRITE_MEASURING_MODE_GDI_NATURAL = 2,
};

enum D2D1_ALPHA_MODE : UINT32 {
    D2D1_ALPHA_MODE_UNKNOWN = 0,
    D2D1_ALPHA_MODE_PREMULTIPLIED = 1,
    D2D1_ALPHA_MODE_STRAIGHT = 2,
    D2D1_ALPHA_MODE_IGNORE = 3,
};

struct D2D1_PIXEL_FORMAT {
    DXGI_FORMAT format;
    D2D1_ALPHA_MODE alphaMode;
};

struct D2D_POINT_2F {
    float x;
    float y;
};
using D2D1_POINT_2F = D2D_POINT_2F;

struct D2D_SIZE_U {
    UINT32 width;
    UINT32 height;
};
using D2D1_SIZE_U = D2D_SIZE_U;

/// Row vectors: (x, y, 1) times the matrix; the third row is the translation.
struct D2D_MATRIX_3X2_F {
    // The system's record has these names for the same six numbers.
    __extension__ union {
        __extension__ struct {
            float m11;
            float m12;
            float m21;
            float m22;
            float dx;
            float dy;
        };
        __extension__ struct {
            float _11;
            float _12;
            float _21;
            float _22;
            float _31;
            float _32;
        };
        float m[3][2];
    };
};

struct D2D_MATRIX_4X4_F {
    float m[4][4];
};
