#pragma once

#include "Platform/Linux/Pixels/Blend.h"

#include <dcommon.h>

namespace Platform::DirectComposition {

/// Paints a premultiplied source, or an opaque one, over the target through any affine placement, filtered.
void PaintTransformed(const Pixels& target, const Pixels& source, const D2D_MATRIX_3X2_F& placement, bool isOpaque);

}  // namespace Platform::DirectComposition
