#include "tests/fakes/RecordingContext.h"

#include <ostream>
#include <string_view>
#include <utility>

bool operator==(const DrawCall& left, const DrawCall& right) {
    return std::string_view(left.name) == right.name && left.numbers == right.numbers && left.objects == right.objects;
}

void PrintTo(const DrawCall& call, std::ostream* stream) {
    *stream << call.name << '(';
    for (const float number : call.numbers) *stream << number << ' ';
    *stream << call.objects[0] << ' ' << call.objects[1] << ')';
}

namespace {

float Given(const void* pointer) {
    return pointer ? 1.0F : 0.0F;
}

}  // namespace

RecordingBrush::RecordingBrush(const D2D1_COLOR_F& color, int& alive) : color_(color), alive_(alive) {
    ++alive_;
}

HRESULT RecordingBrush::QueryInterface(REFIID, void** object) {
    *object = nullptr;
    return E_NOINTERFACE;
}

ULONG RecordingBrush::Release() {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

std::vector<DrawCall> RecordingContext::Take() {
    return std::exchange(calls, {});
}

HRESULT RecordingContext::QueryInterface(REFIID, void** object) {
    *object = nullptr;
    return E_NOINTERFACE;
}

HRESULT RecordingContext::CreateSolidColorBrush(const D2D1_COLOR_F* color, const D2D1_BRUSH_PROPERTIES* properties,
                                                ID2D1SolidColorBrush** brush) {
    calls.push_back({"CreateSolidColorBrush", {color->r, color->g, color->b, color->a, Given(properties)}, {}});
    *brush = brushesFail ? nullptr : new RecordingBrush(*color, brushesAlive);
    return brushesFail ? E_FAIL : S_OK;
}

void RecordingContext::SetTransform(const D2D1_MATRIX_3X2_F* transform) {
    const D2D1_MATRIX_3X2_F& m = *transform;
    calls.push_back({"SetTransform", {m._11, m._12, m._21, m._22, m._31, m._32}, {}});
    transform_ = m;
}

void RecordingContext::PushAxisAlignedClip(const D2D1_RECT_F* rect, D2D1_ANTIALIAS_MODE mode) {
    calls.push_back(
        {"PushAxisAlignedClip", {rect->left, rect->top, rect->right, rect->bottom, static_cast<float>(mode)}, {}});
}

void RecordingContext::PopAxisAlignedClip() {
    calls.push_back({"PopAxisAlignedClip", {}, {}});
}

void RecordingContext::FillRectangle(const D2D1_RECT_F* rect, ID2D1Brush* brush) {
    calls.push_back({"FillRectangle", {rect->left, rect->top, rect->right, rect->bottom}, {brush}});
}

void RecordingContext::FillRoundedRectangle(const D2D1_ROUNDED_RECT* rounded, ID2D1Brush* brush) {
    const D2D1_RECT_F& rect = rounded->rect;
    calls.push_back({"FillRoundedRectangle",
                     {rect.left, rect.top, rect.right, rect.bottom, rounded->radiusX, rounded->radiusY},
                     {brush}});
}

void RecordingContext::FillEllipse(const D2D1_ELLIPSE* ellipse, ID2D1Brush* brush) {
    calls.push_back({"FillEllipse", {ellipse->point.x, ellipse->point.y, ellipse->radiusX, ellipse->radiusY}, {brush}});
}

void RecordingContext::FillGeometry(ID2D1Geometry* geometry, ID2D1Brush* brush, ID2D1Brush* opacityBrush) {
    calls.push_back({"FillGeometry", {Given(opacityBrush)}, {geometry, brush}});
}

void RecordingContext::DrawRectangle(const D2D1_RECT_F* rect, ID2D1Brush* brush, FLOAT width, ID2D1StrokeStyle* style) {
    calls.push_back(
        {"DrawRectangle", {rect->left, rect->top, rect->right, rect->bottom, width, Given(style)}, {brush}});
}

void RecordingContext::DrawRoundedRectangle(const D2D1_ROUNDED_RECT* rounded, ID2D1Brush* brush, FLOAT width,
                                            ID2D1StrokeStyle* style) {
    const D2D1_RECT_F& rect = rounded->rect;
    calls.push_back(
        {"DrawRoundedRectangle",
         {rect.left, rect.top, rect.right, rect.bottom, rounded->radiusX, rounded->radiusY, width, Given(style)},
         {brush}});
}

void RecordingContext::DrawEllipse(const D2D1_ELLIPSE* ellipse, ID2D1Brush* brush, FLOAT width,
                                   ID2D1StrokeStyle* style) {
    calls.push_back({"DrawEllipse",
                     {ellipse->point.x, ellipse->point.y, ellipse->radiusX, ellipse->radiusY, width, Given(style)},
                     {brush}});
}

void RecordingContext::DrawLine(D2D1_POINT_2F from, D2D1_POINT_2F to, ID2D1Brush* brush, FLOAT width,
                                ID2D1StrokeStyle* style) {
    calls.push_back({"DrawLine", {from.x, from.y, to.x, to.y, width, Given(style)}, {brush}});
}

void RecordingContext::DrawGeometry(ID2D1Geometry* geometry, ID2D1Brush* brush, FLOAT width, ID2D1StrokeStyle* style) {
    calls.push_back({"DrawGeometry", {width, Given(style)}, {geometry, brush}});
}

void RecordingContext::DrawText(const WCHAR*, UINT length, IDWriteTextFormat* format, const D2D1_RECT_F* rect,
                                ID2D1Brush* brush, D2D1_DRAW_TEXT_OPTIONS options, DWRITE_MEASURING_MODE measuring) {
    calls.push_back({"DrawText",
                     {static_cast<float>(length), rect->left, rect->top, rect->right, rect->bottom,
                      static_cast<float>(options), static_cast<float>(measuring)},
                     {format, brush}});
}

void RecordingContext::DrawTextLayout(D2D1_POINT_2F origin, IDWriteTextLayout* layout, ID2D1Brush* brush,
                                      D2D1_DRAW_TEXT_OPTIONS options) {
    calls.push_back({"DrawTextLayout", {origin.x, origin.y, static_cast<float>(options)}, {layout, brush}});
}

void RecordingContext::DrawBitmap(ID2D1Bitmap* bitmap, const D2D1_RECT_F* destination, FLOAT opacity,
                                  D2D1_BITMAP_INTERPOLATION_MODE interpolation, const D2D1_RECT_F* source) {
    const D2D1_RECT_F rect = destination ? *destination : D2D1_RECT_F{};
    calls.push_back(
        {"DrawBitmap of the render target",
         {rect.left, rect.top, rect.right, rect.bottom, opacity, static_cast<float>(interpolation), Given(source)},
         {bitmap}});
}

void RecordingContext::DrawBitmap(ID2D1Bitmap* bitmap, const D2D1_RECT_F* destination, FLOAT opacity,
                                  D2D1_INTERPOLATION_MODE interpolation, const D2D1_RECT_F* source,
                                  const D2D1_MATRIX_4X4_F* perspective) {
    const D2D1_RECT_F rect = destination ? *destination : D2D1_RECT_F{};
    calls.push_back({"DrawBitmap",
                     {rect.left, rect.top, rect.right, rect.bottom, opacity, static_cast<float>(interpolation),
                      Given(source), Given(perspective)},
                     {bitmap}});
}

void RecordingContext::DrawSvgDocument(ID2D1SvgDocument* document) {
    calls.push_back({"DrawSvgDocument", {}, {document}});
}

void RecordingContext::Clear(const D2D1_COLOR_F* color) {
    const D2D1_COLOR_F c = color ? *color : D2D1_COLOR_F{};
    calls.push_back({"Clear", {c.r, c.g, c.b, c.a}, {}});
}

HRESULT RecordingContext::EndDraw(D2D1_TAG*, D2D1_TAG*) {
    calls.push_back({"EndDraw", {}, {}});
    return S_OK;
}
