#include "Scene/DrawContext.h"

#include <bit>
#include <cstddef>

namespace Tamborel {
namespace {

// The records go to Direct2D byte by byte.
static_assert(sizeof(Point) == sizeof(D2D1_POINT_2F));
static_assert(offsetof(Point, x) == offsetof(D2D1_POINT_2F, x) && offsetof(Point, y) == offsetof(D2D1_POINT_2F, y));
static_assert(sizeof(Rect) == sizeof(D2D1_RECT_F));
static_assert(offsetof(Rect, left) == offsetof(D2D1_RECT_F, left) && offsetof(Rect, top) == offsetof(D2D1_RECT_F, top));
static_assert(offsetof(Rect, right) == offsetof(D2D1_RECT_F, right));
static_assert(offsetof(Rect, bottom) == offsetof(D2D1_RECT_F, bottom));
static_assert(sizeof(Color) == sizeof(D2D1_COLOR_F));
static_assert(offsetof(Color, r) == offsetof(D2D1_COLOR_F, r) && offsetof(Color, g) == offsetof(D2D1_COLOR_F, g));
static_assert(offsetof(Color, b) == offsetof(D2D1_COLOR_F, b) && offsetof(Color, a) == offsetof(D2D1_COLOR_F, a));
static_assert(sizeof(Matrix3x2) == sizeof(D2D1_MATRIX_3X2_F));
static_assert(offsetof(Matrix3x2, m11) == offsetof(D2D1_MATRIX_3X2_F, _11));
static_assert(offsetof(Matrix3x2, m12) == offsetof(D2D1_MATRIX_3X2_F, _12));
static_assert(offsetof(Matrix3x2, m21) == offsetof(D2D1_MATRIX_3X2_F, _21));
static_assert(offsetof(Matrix3x2, m22) == offsetof(D2D1_MATRIX_3X2_F, _22));
static_assert(offsetof(Matrix3x2, dx) == offsetof(D2D1_MATRIX_3X2_F, _31));
static_assert(offsetof(Matrix3x2, dy) == offsetof(D2D1_MATRIX_3X2_F, _32));

D2D1_POINT_2F Direct2D(Point point) {
    return std::bit_cast<D2D1_POINT_2F>(point);
}

D2D1_RECT_F Direct2D(const Rect& rect) {
    return std::bit_cast<D2D1_RECT_F>(rect);
}

D2D1_ROUNDED_RECT Rounded(const Rect& rect, float rx, float ry) {
    return {Direct2D(rect), rx, ry};
}

D2D1_ELLIPSE Ellipse(Point center, float rx, float ry) {
    return {Direct2D(center), rx, ry};
}

}  // namespace

DrawContext::DrawContext(ID2D1DeviceContext5* target, BrushCache* cache, float colorScale)
    : target_(target), cache_(cache), colorScale_(colorScale > 0.0F ? colorScale : 1.0F) {
    cache_->Adopt(target_);
    SetTransform(transforms_.back());
}

void DrawContext::SetTransform(const Matrix3x2& transform) {
    transforms_.back() = transform;
    if (!appliedValid_ || transform != appliedTransform_) Apply(transform);
}

Matrix3x2 DrawContext::CurrentTransform() const {
    return appliedValid_ ? appliedTransform_ : transforms_.back();
}

void DrawContext::Apply(const Matrix3x2& transform) {
    if (!target_) return;
    const auto matrix = std::bit_cast<D2D1_MATRIX_3X2_F>(transform);
    target_->SetTransform(&matrix);
    appliedTransform_ = transform;
    appliedValid_ = true;
}

void DrawContext::PushClip(const Rect& rect, D2D1_ANTIALIAS_MODE mode) {
    if (!target_) return;
    const D2D1_RECT_F clip = Direct2D(rect);
    target_->PushAxisAlignedClip(&clip, mode);
    ++clipDepth_;
}

void DrawContext::PopClip() {
    if (clipDepth_ <= 0) return;
    target_->PopAxisAlignedClip();
    --clipDepth_;
}

ID2D1SolidColorBrush* DrawContext::GetBrush(const Color& color) {
    return cache_->Get({color.r * colorScale_, color.g * colorScale_, color.b * colorScale_, color.a});
}

void DrawContext::FillRect(const Rect& rect, const Color& color) {
    FillRect(rect, GetBrush(color));
}

void DrawContext::FillRect(const Rect& rect, ID2D1Brush* brush) {
    if (!target_ || !brush) return;
    const D2D1_RECT_F area = Direct2D(rect);
    target_->FillRectangle(&area, brush);
}

void DrawContext::FillRoundedRect(const Rect& rect, float rx, float ry, const Color& color) {
    FillRoundedRect(rect, rx, ry, GetBrush(color));
}

void DrawContext::FillRoundedRect(const Rect& rect, float rx, float ry, ID2D1Brush* brush) {
    if (!target_ || !brush) return;
    const D2D1_ROUNDED_RECT rounded = Rounded(rect, rx, ry);
    target_->FillRoundedRectangle(&rounded, brush);
}

void DrawContext::StrokeRect(const Rect& rect, const Color& color, float width) {
    StrokeRect(rect, GetBrush(color), width);
}

void DrawContext::StrokeRect(const Rect& rect, ID2D1Brush* brush, float width) {
    if (!target_ || !brush) return;
    const D2D1_RECT_F outline = Direct2D(rect);
    target_->DrawRectangle(&outline, brush, width, nullptr);
}

void DrawContext::StrokeRoundedRect(const Rect& rect, float rx, float ry, const Color& color, float width) {
    StrokeRoundedRect(rect, rx, ry, GetBrush(color), width);
}

void DrawContext::StrokeRoundedRect(const Rect& rect, float rx, float ry, ID2D1Brush* brush, float width) {
    if (!target_ || !brush) return;
    const D2D1_ROUNDED_RECT rounded = Rounded(rect, rx, ry);
    target_->DrawRoundedRectangle(&rounded, brush, width, nullptr);
}

void DrawContext::FillEllipse(Point center, float rx, float ry, const Color& color) {
    FillEllipse(center, rx, ry, GetBrush(color));
}

void DrawContext::FillEllipse(Point center, float rx, float ry, ID2D1Brush* brush) {
    if (!target_ || !brush) return;
    const D2D1_ELLIPSE ellipse = Ellipse(center, rx, ry);
    target_->FillEllipse(&ellipse, brush);
}

void DrawContext::StrokeEllipse(Point center, float rx, float ry, const Color& color, float width) {
    StrokeEllipse(center, rx, ry, GetBrush(color), width);
}

void DrawContext::StrokeEllipse(Point center, float rx, float ry, ID2D1Brush* brush, float width) {
    if (!target_ || !brush) return;
    const D2D1_ELLIPSE ellipse = Ellipse(center, rx, ry);
    target_->DrawEllipse(&ellipse, brush, width, nullptr);
}

void DrawContext::DrawLine(Point from, Point to, const Color& color, float width) {
    DrawLine(from, to, GetBrush(color), width);
}

void DrawContext::DrawLine(Point from, Point to, ID2D1Brush* brush, float width) {
    if (!target_ || !brush) return;
    target_->DrawLine(Direct2D(from), Direct2D(to), brush, width, nullptr);
}

void DrawContext::DrawString(const wchar_t* text, UINT32 length, IDWriteTextFormat* format, const Rect& rect,
                             const Color& color) {
    DrawString(text, length, format, rect, GetBrush(color));
}

void DrawContext::DrawString(const wchar_t* text, UINT32 length, IDWriteTextFormat* format, const Rect& rect,
                             ID2D1Brush* brush) {
    if (!target_ || !brush) return;
    const D2D1_RECT_F box = Direct2D(rect);
    // The plain forms of the text calls: later interfaces have ones of the same names that hide them.
    static_cast<ID2D1RenderTarget*>(target_)->DrawText(text, length, format, &box, brush, D2D1_DRAW_TEXT_OPTIONS_NONE,
                                                       DWRITE_MEASURING_MODE_NATURAL);
}

void DrawContext::DrawLayout(Point origin, IDWriteTextLayout* layout, ID2D1Brush* brush) {
    if (!target_ || !layout || !brush) return;
    static_cast<ID2D1RenderTarget*>(target_)->DrawTextLayout(Direct2D(origin), layout, brush,
                                                             D2D1_DRAW_TEXT_OPTIONS_NONE);
}

void DrawContext::StrokeGeometry(ID2D1Geometry* geometry, ID2D1Brush* brush, float width) {
    if (!target_ || !geometry || !brush) return;
    target_->DrawGeometry(geometry, brush, width, nullptr);
}

void DrawContext::DrawBitmap(ID2D1Bitmap* bitmap, const Rect& rect, float opacity,
                             D2D1_INTERPOLATION_MODE interpolation) {
    if (!target_ || !bitmap) return;
    const D2D1_RECT_F destination = Direct2D(rect);
    target_->DrawBitmap(bitmap, &destination, opacity, interpolation, nullptr, nullptr);
}

void DrawContext::DrawSvg(ID2D1SvgDocument* document, Point origin) {
    if (!target_ || !document) return;
    const Matrix3x2 current = CurrentTransform();
    Apply(Multiply({1, 0, 0, 1, origin.x, origin.y}, current));
    target_->DrawSvgDocument(document);
    Apply(current);
}

}  // namespace Tamborel
