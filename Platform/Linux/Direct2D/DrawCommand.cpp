#include "Platform/Linux/Direct2D/DrawCommand.h"

#include "Platform/Linux/Direct2D/Transform.h"

#include <algorithm>
#include <cmath>

namespace Platform::Direct2D {

namespace {

// The limit of a pointed corner, in line widths; the same as the rasteriser's and as a null stroke style has.
constexpr float miterLimit = 10.0F;

bool operator==(const RectShape& a, const RectShape& b) {
    return Equal(a.rect, b.rect);
}
bool operator==(const RoundedRectShape& a, const RoundedRectShape& b) {
    return Equal(a.rect.rect, b.rect.rect) && a.rect.radiusX == b.rect.radiusX && a.rect.radiusY == b.rect.radiusY;
}
bool operator==(const EllipseShape& a, const EllipseShape& b) {
    return a.ellipse.point.x == b.ellipse.point.x && a.ellipse.point.y == b.ellipse.point.y &&
           a.ellipse.radiusX == b.ellipse.radiusX && a.ellipse.radiusY == b.ellipse.radiusY;
}
bool operator==(const LineShape& a, const LineShape& b) {
    return a.from.x == b.from.x && a.from.y == b.from.y && a.to.x == b.to.x && a.to.y == b.to.y;
}
bool operator==(const PathShape& a, const PathShape& b) {
    // Paths and images never change, so the same object is the same content; an outline made anew may be, too.
    return a.path == b.path || *a.path == *b.path;
}
bool operator==(const ImageShape& a, const ImageShape& b) {
    return a.image == b.image && Equal(a.source, b.source) && Equal(a.destination, b.destination) &&
           a.sampling == b.sampling;
}
bool operator==(const TextShape& a, const TextShape& b) {
    // Text that is set anew and comes out the same is the same picture.
    return a.origin.x == b.origin.x && a.origin.y == b.origin.y &&
           (a.content == b.content || DirectWrite::SameInk(*a.content, *b.content));
}

bool SameShape(const Shape& a, const Shape& b) {
    if (a.index() != b.index()) return false;
    return std::visit([&b](const auto& left) { return left == std::get<std::remove_cvref_t<decltype(left)>>(b); }, a);
}

D2D1_RECT_F Ordered(const D2D1_RECT_F& rect) {
    return {std::min(rect.left, rect.right), std::min(rect.top, rect.bottom), std::max(rect.left, rect.right),
            std::max(rect.top, rect.bottom)};
}

// The box around a shape in its own units, its stroke included.
struct OwnBounds {
    float stroke;  // Width; 0 for a fill.

    D2D1_RECT_F operator()(const RectShape& shape) const { return Inflate(Ordered(shape.rect), stroke / 2); }
    D2D1_RECT_F operator()(const RoundedRectShape& shape) const {
        return Inflate(Ordered(shape.rect.rect), stroke / 2);
    }
    D2D1_RECT_F operator()(const EllipseShape& shape) const {
        const D2D1_ELLIPSE& e = shape.ellipse;
        const float x = std::abs(e.radiusX) + stroke / 2;
        const float y = std::abs(e.radiusY) + stroke / 2;
        return {e.point.x - x, e.point.y - y, e.point.x + x, e.point.y + y};
    }
    D2D1_RECT_F operator()(const LineShape& shape) const {
        return Inflate(Ordered({shape.from.x, shape.from.y, shape.to.x, shape.to.y}), stroke / 2);
    }
    D2D1_RECT_F operator()(const PathShape& shape) const {
        return Inflate(shape.path->Bounds(), stroke / 2 * miterLimit);
    }
    D2D1_RECT_F operator()(const ImageShape& shape) const { return Ordered(shape.destination); }
    D2D1_RECT_F operator()(const TextShape& shape) const {
        const D2D1_RECT_F& ink = shape.content->ink;
        const D2D1_POINT_2F& at = shape.origin;
        return {ink.left + at.x, ink.top + at.y, ink.right + at.x, ink.bottom + at.y};
    }
};

}  // namespace

// NOLINTNEXTLINE(bugprone-exception-escape)
bool operator==(const DrawCommand& a, const DrawCommand& b) noexcept {
    const bool sameClip = a.clip.has_value() == b.clip.has_value() && (!a.clip || Equal(*a.clip, *b.clip));
    return sameClip && a.strokeWidth == b.strokeWidth && a.antialiased == b.antialiased && a.bounds == b.bounds &&
           Equal(a.color, b.color) && Equal(a.transform, b.transform) && SameShape(a.shape, b.shape);
}

// NOLINTNEXTLINE(bugprone-exception-escape)
PixelRect BoundsOf(const DrawCommand& command, const PixelRect& target) noexcept {
    // A transform that flattens the plane leaves no area, and the rasteriser can't take it.
    if (!IsFinite(command.transform) || D2D1IsMatrixInvertible(&command.transform) == FALSE) return {};
    if (!(command.color.a > 0.0F)) return {};
    if (command.strokeWidth && !(*command.strokeWidth > 0.0F)) return {};
    const D2D1_RECT_F own = std::visit(OwnBounds{command.strokeWidth.value_or(0.0F)}, command.shape);
    D2D1_RECT_F bounds = Bounds(command.transform, own);
    // Glyphs and bars move by up to half a pixel onto the grid.
    if (std::holds_alternative<TextShape>(command.shape)) bounds = Inflate(bounds, 1.0F);
    if (command.clip) {
        if (bounds.left > command.clip->right || bounds.top > command.clip->bottom ||
            bounds.right < command.clip->left || bounds.bottom < command.clip->top) {
            return {};
        }
        bounds = Intersect(bounds, *command.clip);
    }
    return Intersect(Touched(bounds), target);
}

}  // namespace Platform::Direct2D
