#pragma once

#include "Platform/Linux/Direct2D/Bitmap.h"
#include "Platform/Linux/Direct2D/DisplayList.h"
#include "Platform/Linux/Direct2D/Resource.h"

#include <d2d1_3.h>

#include <vector>

namespace Platform::Direct2D {

/// Records drawing calls between BeginDraw and EndDraw and hands them to the target at the end. A call that is wrong
/// stops the recording; EndDraw tells the first such failure and shows nothing of that pass. One unit is one pixel
/// whatever the dots per inch. One thread at a time.
class DeviceContext final
    : public Resource<ID2D1DeviceContext5, ID2D1DeviceContext4, ID2D1DeviceContext3, ID2D1DeviceContext2,
                      ID2D1DeviceContext1, ID2D1DeviceContext, ID2D1RenderTarget> {
public:
    DeviceContext(ComPtr<ID2D1Factory> factory, const LayerTargetMaker& targets, ID2D1Device* device);

    // What it makes.
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

    // What it draws.
    void DrawLine(D2D1_POINT_2F from, D2D1_POINT_2F to, ID2D1Brush* brush, FLOAT strokeWidth,
                  ID2D1StrokeStyle* style) override;
    void DrawRectangle(const D2D1_RECT_F* rect, ID2D1Brush* brush, FLOAT strokeWidth, ID2D1StrokeStyle* style) override;
    void FillRectangle(const D2D1_RECT_F* rect, ID2D1Brush* brush) override;
    void DrawRoundedRectangle(const D2D1_ROUNDED_RECT* rect, ID2D1Brush* brush, FLOAT strokeWidth,
                              ID2D1StrokeStyle* style) override;
    void FillRoundedRectangle(const D2D1_ROUNDED_RECT* rect, ID2D1Brush* brush) override;
    void DrawEllipse(const D2D1_ELLIPSE* ellipse, ID2D1Brush* brush, FLOAT strokeWidth,
                     ID2D1StrokeStyle* style) override;
    void FillEllipse(const D2D1_ELLIPSE* ellipse, ID2D1Brush* brush) override;
    void DrawGeometry(ID2D1Geometry* geometry, ID2D1Brush* brush, FLOAT strokeWidth, ID2D1StrokeStyle* style) override;
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

    // Its state.
    void SetTransform(const D2D1_MATRIX_3X2_F* transform) override { transform_ = *transform; }
    void GetTransform(D2D1_MATRIX_3X2_F* transform) const override { *transform = transform_; }
    void SetAntialiasMode(D2D1_ANTIALIAS_MODE mode) override { antialiasMode_ = mode; }
    D2D1_ANTIALIAS_MODE GetAntialiasMode() const override { return antialiasMode_; }
    void PushAxisAlignedClip(const D2D1_RECT_F* rect, D2D1_ANTIALIAS_MODE mode) override;
    void PopAxisAlignedClip() override;
    void Clear(const D2D1_COLOR_F* color) override;
    void BeginDraw() override;
    HRESULT EndDraw(D2D1_TAG* tag1, D2D1_TAG* tag2) override;
    void GetDevice(ID2D1Device** device) const override { static_cast<void>(device_.CopyTo(device)); }
    void SetTarget(ID2D1Image* image) override;
    void GetTarget(ID2D1Image** image) const override;
    D2D1_PIXEL_FORMAT GetPixelFormat() const override;
    void SetDpi(FLOAT dpiX, FLOAT dpiY) override;
    void GetDpi(FLOAT* dpiX, FLOAT* dpiY) const override;
    D2D1_SIZE_F GetSize() const override;
    D2D1_SIZE_U GetPixelSize() const override;

private:
    ~DeviceContext() override = default;

    /// Keeps the first failure of a pass.
    void Fail(HRESULT result) noexcept;
    /// Whether the call may be recorded; fails the pass if there is no pass or no target.
    bool CanDraw() noexcept;
    void Record(Shape shape, const D2D1_COLOR_F& color, std::optional<float> strokeWidth) noexcept;
    void Paint(Shape shape, ID2D1Brush* brush, std::optional<float> strokeWidth, ID2D1StrokeStyle* style) noexcept;
    void PaintGeometry(ID2D1Geometry* geometry, ID2D1Brush* brush, std::optional<float> strokeWidth,
                       ID2D1StrokeStyle* style) noexcept;

    const LayerTargetMaker& targets_;
    ComPtr<ID2D1Device> device_;
    ComPtr<Bitmap> target_;
    D2D1_MATRIX_3X2_F transform_;
    D2D1_ANTIALIAS_MODE antialiasMode_ = D2D1_ANTIALIAS_MODE_PER_PRIMITIVE;
    bool drawing_ = false;
    HRESULT failure_ = S_OK;          // of this pass
    std::vector<D2D1_RECT_F> clips_;  // in pixels; each is the intersection with those below it
    DisplayList list_;
};

}  // namespace Platform::Direct2D
