// Plain records of Direct2D and DirectComposition.
#pragma once

#include <minwindef.h>

#ifndef D3DCOLORVALUE_DEFINED
#define D3DCOLORVALUE_DEFINED
/// A colour with straight alpha; 0 to 1 in each component, more where a target can show it.
struct D3DCOLORVALUE {
    float r;
    float g;
    float b;
    float a;
};
#endif

using D2D_COLOR_F = D3DCOLORVALUE;

struct D2D_RECT_F {
    float left;
    float top;
    float right;
    float bottom;
};

struct D2D_SIZE_F {
    float width;
    float height;
};

struct D2D_POINT_2U {
    UINT32 x;
    UINT32 y;
};

struct D2D_RECT_U {
    UINT32 left;
    UINT32 top;
    UINT32 right;
    UINT32 bottom;
};
