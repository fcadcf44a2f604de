// Fakes of Direct2D: factory, device, device context, bitmaps and brushes. As the system's, a bitmap holds its surface
// and a context its target.
#pragma once

#include "tests/fakes/FakeObject.h"

#include <d2d1_3.h>
#include <wrl/client.h>

namespace Fakes {

/// Nobody here asks a resource for its factory: it gives none.
template <class Interface, class... Bases>
class FakeResource : public FakeObject<Interface, ID2D1Resource, Bases...> {
public:
    using FakeObject<Interface, ID2D1Resource, Bases...>::FakeObject;
    void GetFactory(ID2D1Factory** factory) const override { *factory = nullptr; }
};

class FakeDrawingFactory final : public FakeObject<ID2D1Factory3, ID2D1Factory, ID2D1Factory1, ID2D1Factory2> {
public:
    FakeDrawingFactory() : FakeObject("DrawingFactory") {}
    HRESULT CreateGeometryGroup(D2D1_FILL_MODE mode, ID2D1Geometry** geometries, UINT32 count,
                                ID2D1GeometryGroup** group) override;
    HRESULT CreateTransformedGeometry(ID2D1Geometry* source, const D2D1_MATRIX_3X2_F* transform,
                                      ID2D1TransformedGeometry** geometry) override;
    HRESULT CreatePathGeometry(ID2D1PathGeometry** geometry) override;
    HRESULT CreateDevice(IDXGIDevice* dxgiDevice, ID2D1Device** device) override;
    HRESULT CreateDevice(IDXGIDevice* dxgiDevice, ID2D1Device1** device) override;
    HRESULT CreateDevice(IDXGIDevice* dxgiDevice, ID2D1Device2** device) override;
};

class FakeDrawingDevice final : public FakeResource<ID2D1Device2, ID2D1Device, ID2D1Device1> {
public:
    FakeDrawingDevice() : FakeResource("DrawingDevice") {}
    HRESULT CreateDeviceContext(D2D1_DEVICE_CONTEXT_OPTIONS options, ID2D1DeviceContext** context) override;
    HRESULT CreateDeviceContext(D2D1_DEVICE_CONTEXT_OPTIONS options, ID2D1DeviceContext1** context) override;
    HRESULT CreateDeviceContext(D2D1_DEVICE_CONTEXT_OPTIONS options, ID2D1DeviceContext2** context) override;
};

class FakeBitmap final : public FakeResource<ID2D1Bitmap1, ID2D1Image, ID2D1Bitmap> {
public:
    /// `surface` may be null.
    FakeBitmap(IDXGISurface* surface, D2D1_SIZE_U size, const D2D1_BITMAP_PROPERTIES1& properties)
        : FakeResource("Bitmap"), surface_(surface), size_(size), properties_(properties) {}
    D2D1_SIZE_F GetSize() const override;
    D2D1_SIZE_U GetPixelSize() const override { return size_; }
    D2D1_PIXEL_FORMAT GetPixelFormat() const override { return properties_.pixelFormat; }
    void GetDpi(FLOAT* x, FLOAT* y) const override;
    D2D1_BITMAP_OPTIONS GetOptions() const override { return properties_.bitmapOptions; }
    HRESULT GetSurface(IDXGISurface** surface) const override;

private:
    Microsoft::WRL::ComPtr<IDXGISurface> surface_;
    D2D1_SIZE_U size_;
    D2D1_BITMAP_PROPERTIES1 properties_;
};

class FakeBrush final : public FakeResource<ID2D1SolidColorBrush, ID2D1Brush> {
public:
    explicit FakeBrush(const D2D1_COLOR_F& color) : FakeResource("Brush"), color_(color) {}
    using ID2D1SolidColorBrush::SetColor;
    void SetOpacity(FLOAT opacity) override { opacity_ = opacity; }
    FLOAT GetOpacity() const override { return opacity_; }
    void SetColor(const D2D1_COLOR_F* color) override { color_ = *color; }
    D2D1_COLOR_F GetColor() const override { return color_; }

private:
    D2D1_COLOR_F color_;
    FLOAT opacity_ = 1.0F;
};

class FakeSvgDocument final : public FakeResource<ID2D1SvgDocument> {
public:
    explicit FakeSvgDocument(D2D1_SIZE_F viewport) : FakeResource("SvgDocument"), viewport_(viewport) {}
    HRESULT SetViewportSize(D2D1_SIZE_F viewport) override;
    D2D1_SIZE_F GetViewportSize() const override { return viewport_; }
    /// None when a failure of "GetRoot" was asked for.
    void GetRoot(ID2D1SvgElement** root) override;

private:
    D2D1_SIZE_F viewport_;
};

class FakeSvgElement final : public FakeResource<ID2D1SvgElement> {
public:
    FakeSvgElement() : FakeResource("SvgElement") {}
    HRESULT SetAttributeValue(PCWSTR name, D2D1_SVG_ATTRIBUTE_POD_TYPE type, const void* value, UINT32 size) override;
};

class FakeDrawingContext final
    : public FakeResource<ID2D1DeviceContext5, ID2D1RenderTarget, ID2D1DeviceContext, ID2D1DeviceContext1,
                          ID2D1DeviceContext2, ID2D1DeviceContext3, ID2D1DeviceContext4> {
public:
    /// The device is not counted: it outlives its contexts here.
    explicit FakeDrawingContext(ID2D1Device* device) : FakeResource("DrawingContext"), device_(device) {}

    HRESULT CreateBitmap(D2D1_SIZE_U size, const void* pixels, UINT32 pitch, const D2D1_BITMAP_PROPERTIES* properties,
                         ID2D1Bitmap** bitmap) override;
    HRESULT CreateBitmap(D2D1_SIZE_U size, const void* pixels, UINT32 pitch, const D2D1_BITMAP_PROPERTIES1* properties,
                         ID2D1Bitmap1** bitmap) override;
    HRESULT CreateBitmapFromWicBitmap(IWICBitmapSource* source, const D2D1_BITMAP_PROPERTIES* properties,
                                      ID2D1Bitmap** bitmap) override;
    HRESULT CreateBitmapFromWicBitmap(IWICBitmapSource* source, const D2D1_BITMAP_PROPERTIES1* properties,
                                      ID2D1Bitmap1** bitmap) override;
    HRESULT CreateBitmapFromDxgiSurface(IDXGISurface* surface, const D2D1_BITMAP_PROPERTIES1* properties,
                                        ID2D1Bitmap1** bitmap) override;
    HRESULT CreateSolidColorBrush(const D2D1_COLOR_F* color, const D2D1_BRUSH_PROPERTIES* properties,
                                  ID2D1SolidColorBrush** brush) override;
    HRESULT CreateSvgDocument(IStream* stream, D2D1_SIZE_F viewportSize, ID2D1SvgDocument** document) override;

    void DrawLine(D2D1_POINT_2F from, D2D1_POINT_2F to, ID2D1Brush* brush, FLOAT width, ID2D1StrokeStyle*) override;
    void DrawRectangle(const D2D1_RECT_F* rect, ID2D1Brush* brush, FLOAT width, ID2D1StrokeStyle*) override;
    void FillRectangle(const D2D1_RECT_F* rect, ID2D1Brush* brush) override;
    void DrawRoundedRectangle(const D2D1_ROUNDED_RECT* rect, ID2D1Brush* brush, FLOAT width,
                              ID2D1StrokeStyle*) override;
    void FillRoundedRectangle(const D2D1_ROUNDED_RECT* rect, ID2D1Brush* brush) override;
    void DrawEllipse(const D2D1_ELLIPSE* ellipse, ID2D1Brush* brush, FLOAT width, ID2D1StrokeStyle*) override;
    void FillEllipse(const D2D1_ELLIPSE* ellipse, ID2D1Brush* brush) override;
    void DrawGeometry(ID2D1Geometry* geometry, ID2D1Brush* brush, FLOAT width, ID2D1StrokeStyle*) override;
    void FillGeometry(ID2D1Geometry* geometry, ID2D1Brush* brush, ID2D1Brush* opacityBrush) override;
    void DrawBitmap(ID2D1Bitmap* bitmap, const D2D1_RECT_F* destination, FLOAT opacity,
                    D2D1_BITMAP_INTERPOLATION_MODE interpolation, const D2D1_RECT_F* source) override;
    void DrawBitmap(ID2D1Bitmap* bitmap, const D2D1_RECT_F* destination, FLOAT opacity,
                    D2D1_INTERPOLATION_MODE interpolation, const D2D1_RECT_F* source,
                    const D2D1_MATRIX_4X4_F* perspective) override;
    void DrawText(const WCHAR* text, UINT length, IDWriteTextFormat* format, const D2D1_RECT_F* layoutRect,
                  ID2D1Brush* brush, D2D1_DRAW_TEXT_OPTIONS options, DWRITE_MEASURING_MODE measuring) override;
    void DrawTextLayout(D2D1_POINT_2F origin, IDWriteTextLayout* layout, ID2D1Brush* brush,
                        D2D1_DRAW_TEXT_OPTIONS options) override;
    void DrawSvgDocument(ID2D1SvgDocument* document) override;

    void SetTransform(const D2D1_MATRIX_3X2_F* transform) override;
    void GetTransform(D2D1_MATRIX_3X2_F* transform) const override { *transform = transform_; }
    void SetAntialiasMode(D2D1_ANTIALIAS_MODE mode) override;
    D2D1_ANTIALIAS_MODE GetAntialiasMode() const override { return antialiasMode_; }
    void PushAxisAlignedClip(const D2D1_RECT_F* rect, D2D1_ANTIALIAS_MODE mode) override;
    void PopAxisAlignedClip() override;
    void Clear(const D2D1_COLOR_F* color) override;
    void BeginDraw() override;
    HRESULT EndDraw(D2D1_TAG* tag1, D2D1_TAG* tag2) override;
    D2D1_PIXEL_FORMAT GetPixelFormat() const override { return {}; }
    void SetDpi(FLOAT x, FLOAT y) override;
    void GetDpi(FLOAT* x, FLOAT* y) const override;
    D2D1_SIZE_F GetSize() const override { return {}; }
    D2D1_SIZE_U GetPixelSize() const override { return {}; }
    void GetDevice(ID2D1Device** device) const override {
        *device = device_;
        if (device_) device_->AddRef();
    }
    void SetTarget(ID2D1Image* image) override;
    void GetTarget(ID2D1Image** image) const override { target_.CopyTo(image); }

private:
    ID2D1Device* device_;
    D2D1_MATRIX_3X2_F transform_ = D2D1::Matrix3x2F::Identity();
    D2D1_ANTIALIAS_MODE antialiasMode_ = D2D1_ANTIALIAS_MODE_PER_PRIMITIVE;
    FLOAT dpiX_ = 96.0F;
    FLOAT dpiY_ = 96.0F;
    Microsoft::WRL::ComPtr<ID2D1Image> target_;
};

}  // namespace Fakes
