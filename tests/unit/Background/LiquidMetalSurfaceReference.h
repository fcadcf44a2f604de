// The metal surface's arithmetic once more, as KindReference.h has it for the other kinds.
#pragma once

#include "Background/LiquidMetalSurface.h"
#include "KindReference.h"

#include <vector>

namespace KindReference {

/// The height field at a point of the domain's space, x not yet scaled.
double SurfaceHeight(Vector point, double time, double fineDetail);

/// The vignette's v and w for a place in the picture, 0 to 1 on both axes.
struct Vignette {
    double v;
    double w;
};
Vignette VignetteAt(double x, double y);

/// The finished colour of a grid's texel.
Vector SurfaceTexel(const Tamborel::LiquidMetalConstants& constants, double column, double row);

/// A picture's pixel, `x` and `y` whole-numbered and y from the upper edge, from the sixteen texels around it.
/// `texels`: the grid, row by row.
Vector SurfacePixel(const Tamborel::LiquidMetalConstants& constants, const std::vector<Vector>& texels, int x, int y);

}  // namespace KindReference
