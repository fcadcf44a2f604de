#include "tests/fakes/FakeDirect2D.h"

#include <dwrite.h>
#include <wincodec.h>

namespace Fakes {

namespace {

std::string Fields(const D2D1_POINT_2F& p) {
    return "{" + Joined(p.x, p.y) + "}";
}
std::string Fields(const D2D1_RECT_F* r) {
    return r ? "{" + Joined(r->left, r->top, r->right, r->bottom) + "}" : "null";
}
std::string Fields(const D2D1_ROUNDED_RECT* r) {
    return Fields(&r->rect) + ", " + Joined(r->radiusX, r->radiusY);
}
std::string Fields(const D2D1_ELLIPSE* e) {
    return Fields(e->point) + ", " + Joined(e->radiusX, e->radiusY);
}
std::string Fields(const D2D1_COLOR_F* c) {
    return c ? "{" + Joined(c->r, c->g, c->b, c->a) + "}" : "null";
}

D2D1_BITMAP_PROPERTIES1 Extended(const D2D1_BITMAP_PROPERTIES* p) {
    if (!p) return D2D1::BitmapProperties1();
    return {p->pixelFormat, p->dpiX, p->dpiY, D2D1_BITMAP_OPTIONS_NONE, nullptr};
}

D2D1_BITMAP_PROPERTIES1 OrDefault(const D2D1_BITMAP_PROPERTIES1* p) {
    return p ? *p : D2D1::BitmapProperties1();
}

D2D1_SIZE_U SizeOf(IWICBitmapSource* source) {
    D2D1_SIZE_U size{};
    if (source) source->GetSize(&size.width, &size.height);
    return size;
}

}  // namespace

HRESULT FakeDrawingContext::CreateBitmap(D2D1_SIZE_U size, const void*, UINT32,
                                         const D2D1_BITMAP_PROPERTIES* properties, ID2D1Bitmap** bitmap) {
    const HRESULT result = Call("CreateBitmap", size.width, size.height);
    return Make<FakeBitmap>(result, bitmap, nullptr, size, Extended(properties));
}
HRESULT FakeDrawingContext::CreateBitmap(D2D1_SIZE_U size, const void*, UINT32,
                                         const D2D1_BITMAP_PROPERTIES1* properties, ID2D1Bitmap1** bitmap) {
    const HRESULT result = Call("CreateBitmap", size.width, size.height);
    return Make<FakeBitmap>(result, bitmap, nullptr, size, OrDefault(properties));
}
HRESULT FakeDrawingContext::CreateBitmapFromWicBitmap(IWICBitmapSource* source,
                                                      const D2D1_BITMAP_PROPERTIES* properties, ID2D1Bitmap** bitmap) {
    const HRESULT result = Call("CreateBitmapFromWicBitmap", source);
    return Make<FakeBitmap>(result, bitmap, nullptr, SizeOf(source), Extended(properties));
}
HRESULT FakeDrawingContext::CreateBitmapFromWicBitmap(IWICBitmapSource* source,
                                                      const D2D1_BITMAP_PROPERTIES1* properties,
                                                      ID2D1Bitmap1** bitmap) {
    const HRESULT result = Call("CreateBitmapFromWicBitmap", source);
    return Make<FakeBitmap>(result, bitmap, nullptr, SizeOf(source), OrDefault(properties));
}

HRESULT FakeDrawingContext::CreateBitmapFromDxgiSurface(IDXGISurface* surface,
                                                        const D2D1_BITMAP_PROPERTIES1* properties,
                                                        ID2D1Bitmap1** bitmap) {
    const D2D1_BITMAP_PROPERTIES1 p = OrDefault(properties);
    const HRESULT result = Call("CreateBitmapFromDxgiSurface", surface, p.pixelFormat.format, p.pixelFormat.alphaMode,
                                p.dpiX, p.dpiY, Hex{p.bitmapOptions});
    DXGI_SURFACE_DESC description{};
    if (surface) surface->GetDesc(&description);
    return Make<FakeBitmap>(result, bitmap, surface, D2D1::SizeU(description.Width, description.Height), p);
}

HRESULT FakeDrawingContext::CreateSolidColorBrush(const D2D1_COLOR_F* color, const D2D1_BRUSH_PROPERTIES*,
                                                  ID2D1SolidColorBrush** brush) {
    return Make<FakeBrush>(Call("CreateSolidColorBrush", Fields(color)), brush, *color);
}

HRESULT FakeDrawingContext::CreateSvgDocument(IStream*, D2D1_SIZE_F size, ID2D1SvgDocument** document) {
    return Make<FakeSvgDocument>(Call("CreateSvgDocument", size.width, size.height), document, size);
}

void FakeDrawingContext::DrawLine(D2D1_POINT_2F from, D2D1_POINT_2F to, ID2D1Brush* brush, FLOAT width,
                                  ID2D1StrokeStyle*) {
    Call("DrawLine", Fields(from), Fields(to), brush, width);
}
void FakeDrawingContext::DrawRectangle(const D2D1_RECT_F* rect, ID2D1Brush* brush, FLOAT width, ID2D1StrokeStyle*) {
    Call("DrawRectangle", Fields(rect), brush, width);
}
void FakeDrawingContext::FillRectangle(const D2D1_RECT_F* rect, ID2D1Brush* brush) {
    Call("FillRectangle", Fields(rect), brush);
}
void FakeDrawingContext::DrawRoundedRectangle(const D2D1_ROUNDED_RECT* rect, ID2D1Brush* brush, FLOAT width,
                                              ID2D1StrokeStyle*) {
    Call("DrawRoundedRectangle", Fields(rect), brush, width);
}
void FakeDrawingContext::FillRoundedRectangle(const D2D1_ROUNDED_RECT* rect, ID2D1Brush* brush) {
    Call("FillRoundedRectangle", Fields(rect), brush);
}
void FakeDrawingContext::DrawEllipse(const D2D1_ELLIPSE* ellipse, ID2D1Brush* brush, FLOAT width, ID2D1StrokeStyle*) {
    Call("DrawEllipse", Fields(ellipse), brush, width);
}
void FakeDrawingContext::FillEllipse(const D2D1_ELLIPSE* ellipse, ID2D1Brush* brush) {
    Call("FillEllipse", Fields(ellipse), brush);
}
void FakeDrawingContext::DrawGeometry(ID2D1Geometry* geometry, ID2D1Brush* brush, FLOAT width, ID2D1StrokeStyle*) {
    Call("DrawGeometry", geometry, brush, width);
}
void FakeDrawingContext::FillGeometry(ID2D1Geometry* geometry, ID2D1Brush* brush, ID2D1Brush* opacityBrush) {
    Call("FillGeometry", geometry, brush, opacityBrush);
}
void FakeDrawingContext::DrawBitmap(ID2D1Bitmap* bitmap, const D2D1_RECT_F* destination, FLOAT opacity,
                                    D2D1_BITMAP_INTERPOLATION_MODE interpolation, const D2D1_RECT_F* source) {
    Call("DrawBitmap", bitmap, Fields(destination), opacity, interpolation, Fields(source));
}
void FakeDrawingContext::DrawBitmap(ID2D1Bitmap* bitmap, const D2D1_RECT_F* destination, FLOAT opacity,
                                    D2D1_INTERPOLATION_MODE interpolation, const D2D1_RECT_F* source,
                                    const D2D1_MATRIX_4X4_F*) {
    Call("DrawBitmap", bitmap, Fields(destination), opacity, interpolation, Fields(source));
}
void FakeDrawingContext::DrawText(const WCHAR* text, UINT length, IDWriteTextFormat* format,
                                  const D2D1_RECT_F* layoutRect, ID2D1Brush* brush, D2D1_DRAW_TEXT_OPTIONS options,
                                  DWRITE_MEASURING_MODE) {
    Call("DrawText", std::wstring(text, length).c_str(), format, Fields(layoutRect), brush, options);
}
void FakeDrawingContext::DrawTextLayout(D2D1_POINT_2F origin, IDWriteTextLayout* layout, ID2D1Brush* brush,
                                        D2D1_DRAW_TEXT_OPTIONS options) {
    Call("DrawTextLayout", Fields(origin), layout, brush, options);
}
void FakeDrawingContext::DrawSvgDocument(ID2D1SvgDocument* document) {
    Call("DrawSvgDocument", document);
}

void FakeDrawingContext::SetTransform(const D2D1_MATRIX_3X2_F* m) {
    transform_ = *m;
    Call("SetTransform", "{" + Joined(m->_11, m->_12, m->_21, m->_22, m->_31, m->_32) + "}");
}
void FakeDrawingContext::SetAntialiasMode(D2D1_ANTIALIAS_MODE mode) {
    antialiasMode_ = mode;
    Call("SetAntialiasMode", mode);
}
void FakeDrawingContext::PushAxisAlignedClip(const D2D1_RECT_F* rect, D2D1_ANTIALIAS_MODE mode) {
    Call("PushAxisAlignedClip", Fields(rect), mode);
}
void FakeDrawingContext::PopAxisAlignedClip() {
    Call("PopAxisAlignedClip");
}
void FakeDrawingContext::Clear(const D2D1_COLOR_F* color) {
    Call("Clear", Fields(color));
}
void FakeDrawingContext::BeginDraw() {
    Call("BeginDraw");
}
HRESULT FakeDrawingContext::EndDraw(D2D1_TAG* tag1, D2D1_TAG* tag2) {
    if (tag1) *tag1 = 0;
    if (tag2) *tag2 = 0;
    return Call("EndDraw");
}
void FakeDrawingContext::SetDpi(FLOAT x, FLOAT y) {
    dpiX_ = x;
    dpiY_ = y;
    Call("SetDpi", x, y);
}
void FakeDrawingContext::GetDpi(FLOAT* x, FLOAT* y) const {
    *x = dpiX_;
    *y = dpiY_;
}
void FakeDrawingContext::SetTarget(ID2D1Image* image) {
    target_ = image;
    Call("SetTarget", image);
}

}  // namespace Fakes
