// Where a background is drawn to.
#pragma once

#include <d3d11_4.h>

namespace Tamborel {

/// A window's image, borrowed for the length of one call.
struct SurfaceTarget {
    ID3D11RenderTargetView* RTV = nullptr;
    UINT width = 0;   ///< Pixels.
    UINT height = 0;  ///< Pixels.
};

}  // namespace Tamborel
