#include "Platform/Linux/Direct2D/Rasterizer.h"

#include "Platform/Linux/Direct2D/TextPainter.h"
#include "Platform/Linux/Direct2D/Transform.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <numbers>

namespace Platform::Direct2D {

namespace {

// How far the handles of a curve lie from the ends of the quarter of a circle that it stands for, in radii:
// 4/3 (sqrt(2) - 1), for which the middle of the curve lies on the circle.
constexpr double quarterHandle = 0.5522847498307936;

void AddRect(cairo_t* cairo, const D2D1_RECT_F& rect) {
    cairo_rectangle(cairo, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top);
}

void AddRoundedRect(cairo_t* cairo, const D2D1_ROUNDED_RECT& rounded) {
    const D2D1_RECT_F& rect = rounded.rect;
    const double left = std::min(rect.left, rect.right);
    const double top = std::min(rect.top, rect.bottom);
    const double right = std::max(rect.left, rect.right);
    const double bottom = std::max(rect.top, rect.bottom);
    const double rx = std::min<double>(std::abs(rounded.radiusX), (right - left) / 2);
    const double ry = std::min<double>(std::abs(rounded.radiusY), (bottom - top) / 2);
    if (rx <= 0 || ry <= 0) {
        AddRect(cairo, rect);
        return;
    }
    const double hx = rx * (1 - quarterHandle);
    const double hy = ry * (1 - quarterHandle);
    cairo_move_to(cairo, left + rx, top);
    cairo_line_to(cairo, right - rx, top);
    cairo_curve_to(cairo, right - hx, top, right, top + hy, right, top + ry);
    cairo_line_to(cairo, right, bottom - ry);
    cairo_curve_to(cairo, right, bottom - hy, right - hx, bottom, right - rx, bottom);
    cairo_line_to(cairo, left + rx, bottom);
    cairo_curve_to(cairo, left + hx, bottom, left, bottom - hy, left, bottom - ry);
    cairo_line_to(cairo, left, top + ry);
    cairo_curve_to(cairo, left, top + hy, left + hx, top, left + rx, top);
    cairo_close_path(cairo);
}

void AddEllipse(cairo_t* cairo, const D2D1_ELLIPSE& ellipse) {
    const double rx = std::abs(ellipse.radiusX);
    const double ry = std::abs(ellipse.radiusY);
    if (rx <= 0 || ry <= 0) return;
    cairo_matrix_t matrix;
    cairo_get_matrix(cairo, &matrix);
    cairo_translate(cairo, ellipse.point.x, ellipse.point.y);
    cairo_scale(cairo, rx, ry);
    cairo_new_sub_path(cairo);
    cairo_arc(cairo, 0, 0, 1, 0, 2 * std::numbers::pi);
    cairo_close_path(cairo);
    cairo_set_matrix(cairo, &matrix);  // The pen of a stroke is not to be stretched.
}

void AddPath(cairo_t* cairo, const Path& path) {
    const D2D1_POINT_2F* point = path.points.data();
    for (const Path::Step step : path.steps) {
        switch (step) {
            case Path::Step::Move:
                cairo_move_to(cairo, point->x, point->y);
                ++point;
                break;
            case Path::Step::Line:
                cairo_line_to(cairo, point->x, point->y);
                ++point;
                break;
            case Path::Step::Curve:
                cairo_curve_to(cairo, point[0].x, point[0].y, point[1].x, point[1].y, point[2].x, point[2].y);
                point += 3;
                break;
            case Path::Step::Close:
                cairo_close_path(cairo);
                break;
        }
    }
}

cairo_filter_t FilterOf(Sampling sampling) {
    switch (sampling) {
        case Sampling::Nearest:
            return CAIRO_FILTER_NEAREST;
        case Sampling::Linear:
            return CAIRO_FILTER_BILINEAR;
        case Sampling::Smooth:
            return CAIRO_FILTER_GOOD;  // The best one shows the pixels of an enlarged picture as squares.
    }
    return CAIRO_FILTER_BILINEAR;
}

void PaintImage(cairo_t* cairo, const ImageShape& shape, float opacity) {
    const double sourceWidth = shape.source.right - shape.source.left;
    const double sourceHeight = shape.source.bottom - shape.source.top;
    if (sourceWidth == 0 || sourceHeight == 0) return;
    const double scaleX = (shape.destination.right - shape.destination.left) / sourceWidth;
    const double scaleY = (shape.destination.bottom - shape.destination.top) / sourceHeight;
    if (scaleX == 0 || scaleY == 0) return;
    // The surface only reads; the interface has no word for that.
    auto* const bits = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(shape.image->pixels.data()));
    cairo_surface_t* const surface = cairo_image_surface_create_for_data(bits, CAIRO_FORMAT_ARGB32, shape.image->width,
                                                                         shape.image->height, shape.image->width * 4);
    AddRect(cairo, shape.destination);
    cairo_clip(cairo);
    cairo_translate(cairo, shape.destination.left, shape.destination.top);
    cairo_scale(cairo, scaleX, scaleY);
    cairo_set_source_surface(cairo, surface, -shape.source.left, -shape.source.top);
    cairo_pattern_set_filter(cairo_get_source(cairo), FilterOf(shape.sampling));
    cairo_pattern_set_extend(cairo_get_source(cairo), CAIRO_EXTEND_PAD);  // No dark rim where the filter looks out.
    cairo_paint_with_alpha(cairo, opacity);
    cairo_set_source_rgba(cairo, 0, 0, 0, 0);  // Lets go of the surface, whose pixels are not ours.
    cairo_surface_destroy(surface);
}

struct AddShape {
    cairo_t* cairo;
    void operator()(const RectShape& shape) const { AddRect(cairo, shape.rect); }
    void operator()(const RoundedRectShape& shape) const { AddRoundedRect(cairo, shape.rect); }
    void operator()(const EllipseShape& shape) const { AddEllipse(cairo, shape.ellipse); }
    void operator()(const LineShape& shape) const {
        cairo_move_to(cairo, shape.from.x, shape.from.y);
        cairo_line_to(cairo, shape.to.x, shape.to.y);
    }
    void operator()(const PathShape& shape) const {
        cairo_set_fill_rule(
            cairo, shape.path->fillMode == D2D1_FILL_MODE_WINDING ? CAIRO_FILL_RULE_WINDING : CAIRO_FILL_RULE_EVEN_ODD);
        AddPath(cairo, *shape.path);
    }
    void operator()(const ImageShape&) const {}
    void operator()(const TextShape&) const {}
};

}  // namespace

Rasterizer::Rasterizer(int width, int height)
    : width_(width),
      height_(height),
      surface_(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height)),
      cairo_(cairo_create(surface_)) {
    if (cairo_status(cairo_) != CAIRO_STATUS_SUCCESS) {
        cairo_destroy(cairo_);
        cairo_surface_destroy(surface_);
        throw std::bad_alloc();
    }
}

Rasterizer::~Rasterizer() {
    cairo_destroy(cairo_);
    cairo_surface_destroy(surface_);
}

std::size_t Rasterizer::Repaint(const PixelRect& rect, std::span<const DrawCommand> commands) {
    cairo_save(cairo_);
    cairo_rectangle(cairo_, rect.left, rect.top, rect.Width(), rect.Height());
    cairo_clip(cairo_);
    // A new surface is clear already, and what nobody has written to takes no memory.
    if (Overlap(touched_, rect)) {
        cairo_set_operator(cairo_, CAIRO_OPERATOR_CLEAR);
        cairo_paint(cairo_);
        cairo_set_operator(cairo_, CAIRO_OPERATOR_OVER);
    }
    touched_ = Unite(touched_, rect);
    std::size_t painted = 0;
    for (const DrawCommand& command : commands) {
        if (!Overlap(command.bounds, rect)) continue;
        Paint(command, Intersect(command.bounds, rect));
        ++painted;
    }
    cairo_restore(cairo_);
    cairo_surface_flush(surface_);
    return painted;
}

D2D1_RECT_F Rasterizer::Held(const D2D1_RECT_F& rect) const noexcept {
    const D2D1_RECT_F room{-1.0F, -1.0F, static_cast<float>(width_) + 1, static_cast<float>(height_) + 1};
    return Intersect(rect, room);
}

void Rasterizer::Paint(const DrawCommand& command, const PixelRect& area) {
    cairo_save(cairo_);
    if (command.clip) {
        AddRect(cairo_, Held(*command.clip));
        cairo_clip(cairo_);
    }
    cairo_set_antialias(cairo_, command.antialiased ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
    cairo_set_source_rgba(cairo_, command.color.r, command.color.g, command.color.b, command.color.a);
    const D2D1_MATRIX_3X2_F& m = command.transform;
    if (const auto* const text = std::get_if<TextShape>(&command.shape)) {
        PaintText(cairo_, *text, m, area);
        cairo_restore(cairo_);
        return;
    }
    const auto* const rect = std::get_if<RectShape>(&command.shape);
    if (rect && !command.strokeWidth && m._12 == 0.0F && m._21 == 0.0F) {
        AddRect(cairo_, Held(Bounds(m, rect->rect)));
        cairo_fill(cairo_);
        cairo_restore(cairo_);
        return;
    }
    cairo_matrix_t matrix;
    cairo_matrix_init(&matrix, m._11, m._12, m._21, m._22, m._31, m._32);
    cairo_set_matrix(cairo_, &matrix);
    if (const auto* const image = std::get_if<ImageShape>(&command.shape)) {
        PaintImage(cairo_, *image, command.color.a);
    } else {
        std::visit(AddShape{cairo_}, command.shape);
        if (command.strokeWidth) {
            cairo_set_line_width(cairo_, *command.strokeWidth);
            cairo_stroke(cairo_);
        } else {
            cairo_fill(cairo_);
        }
    }
    cairo_restore(cairo_);
    cairo_new_path(cairo_);
}

const std::uint8_t* Rasterizer::Pixels() const noexcept {
    return cairo_image_surface_get_data(surface_);
}

std::size_t Rasterizer::Stride() const noexcept {
    return static_cast<std::size_t>(cairo_image_surface_get_stride(surface_));
}

}  // namespace Platform::Direct2D
