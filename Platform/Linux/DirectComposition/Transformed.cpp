#include "Platform/Linux/DirectComposition/Transformed.h"

#include <cairo.h>

#include <cmath>
#include <memory>

namespace Platform::DirectComposition {

namespace {

struct DestroySurface {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using Surface = std::unique_ptr<cairo_surface_t, DestroySurface>;

Surface SurfaceOf(const Pixels& pixels, cairo_format_t format) {
    return Surface(cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels.data), format,
                                                       pixels.width, pixels.height,
                                                       static_cast<int>(pixels.stride * sizeof(std::uint32_t))));
}

}  // namespace

void PaintTransformed(const Pixels& target, const Pixels& source, const D2D_MATRIX_3X2_F& placement, bool isOpaque) {
    cairo_matrix_t matrix;
    cairo_matrix_init(&matrix, placement.m11, placement.m12, placement.m21, placement.m22, placement.dx, placement.dy);
    // A placement that flattens the picture shows nothing of it.
    const double determinant = matrix.xx * matrix.yy - matrix.xy * matrix.yx;
    if (!std::isfinite(determinant) || determinant == 0) return;

    const Surface to = SurfaceOf(target, CAIRO_FORMAT_ARGB32);
    const Surface from = SurfaceOf(source, isOpaque ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32);
    cairo_t* const context = cairo_create(to.get());
    cairo_set_matrix(context, &matrix);
    cairo_set_source_surface(context, from.get(), 0, 0);
    cairo_paint(context);
    cairo_destroy(context);
    cairo_surface_finish(to.get());
}

}  // namespace Platform::DirectComposition
