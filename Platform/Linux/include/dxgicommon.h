// What the DXGI headers share.
#pragma once

#include <windef.h>

struct DXGI_SAMPLE_DESC {
    UINT Count;
    UINT Quality;
};

enum DXGI_COLOR_SPACE_TYPE {
    DXGI_COLOR_SPACE_RGB_FULL_G22_NONE_P709 = 0,
    DXGI_COLOR_SPACE_RGB_FULL_G10_NONE_P709 = 1,
};
