// Text as pixels.
#pragma once

#include "Platform/Linux/Direct2D/DrawCommand.h"

#include <cairo.h>

namespace Platform::Direct2D {

/// Paints text in the source's colour within `area`. Expects the identity as Cairo's matrix. Text that stands upright
/// has its baselines on whole pixels and its glyphs at quarters of a pixel; turned and very large text is painted as it
/// lies. Throws std::bad_alloc.
void PaintText(cairo_t* cairo, const TextShape& text, const D2D1_MATRIX_3X2_F& transform, const PixelRect& area);

}  // namespace Platform::Direct2D
