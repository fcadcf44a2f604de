// A Direct2D device context that paints nothing and writes down what it is told to paint.
#pragma once

#include <d2d1_3.h>

#include <array>
#include <iosfwd>
#include <vector>

/// One call of the device context. `numbers` are its arguments in order, records field by field, a stroke style, source
/// rectangle or perspective matrix as 1 if there is one; `objects` are the pointers to objects, also in order.
struct DrawCall {
    const char* name = "";
    std::array<float, 10> numbers{};
    std::array<const void*, 2> objects{};

    friend bool operator==(const DrawCall& left, const DrawCall& right);
};
void PrintTo(const DrawCall& call, std::ostream* stream);

/// A brush that counts itself among `alive`, which outlives it.
class RecordingBrush final : public ID2D1SolidColorBrush {
public:
    RecordingBrush(const D2D1_COLOR_F& color, int& alive);

    HRESULT QueryInterface(REFIID iid, void** object) override;
    ULONG AddRef() override { return ++references_; }
    ULONG Release() override;
    void GetFactory(ID2D1Factory** factory) const override { *factory = nullptr; }
    void SetOpacity(FLOAT opacity) override { opacity_ = opacity; }
    FLOAT GetOpacity() const override { return opacity_; }
    void SetColor(const D2D1_COLOR_F* color) override { color_ = *color; }
    D2D1_COLOR_F GetColor() const override { return color_; }

private:
    ~RecordingBrush() { --alive_; }

    ULONG references_ = 1;
    D2D1_COLOR_F color_;
    FLOAT opacity_ = 1;
    int& alive_;
};

/// Owned by the test: reference counting does not end it, and outlives its brushes. Drawing, transforms, clips and the
/// making of brushes go to `calls`; what has no bearing on pictures does nothing.
class RecordingContext : public ID2D1DeviceContext5 {
public:
    std::vector<DrawCall> calls;
    bool brushesFail = false;  ///< Makes CreateSolidColorBrush answer E_FAIL.
    int brushesAlive = 0;
    ULONG references = 1;

    RecordingContext() = default;
    RecordingContext(const RecordingContext&) = delete;
    RecordingContext& operator=(const RecordingContext&) = delete;
    virtual ~RecordingContext() = default;

    /// The calls since the last Take.
    std::vector<DrawCall> Take();

    HRESULT QueryInterface(REFIID iid, void** object) override;
    ULONG AddRef() override { return ++references; }
    ULONG Release() override { return --references; }
    void GetFactory(ID2D1Factory** factory) const override { *factory = nullptr; }

    HRESULT CreateSolidColorBrush(const D2D1_COLOR_F* color, const D2D1_BRUSH_PROPERTIES* properties,
                                  ID2D1SolidColorBrush** brush) override;
    void SetTransform(const D2D1_MATRIX_3X2_F* transform) override;
    void GetTransform(D2D1_MATRIX_3X2_F* transform) const override { *transform = transform_; }
    void PushAxisAlignedClip(const D2D1_RECT_F* rect, D2D1_ANTIALIAS_MODE mode) override;
    void PopAxisAlignedClip() override;
    void FillRectangle(const D2D1_RECT_F* rect, ID2D1Brush* brush) override;
    void FillRoundedRectangle(const D2D1_ROUNDED_RECT* rect, ID2D1Brush* brush) override;
    void FillEllipse(const D2D1_ELLIPSE* ellipse, ID2D1Brush* brush) override;
    void FillGeometry(ID2D1Geometry* geometry, ID2D1Brush* brush, ID2D1Brush* opacityBrush) override;
    void DrawRectangle(const D2D1_RECT_F* rect, ID2D1Brush* brush, FLOAT width, ID2D1StrokeStyle* style) override;
    void DrawRoundedRectangle(const D2D1_ROUNDED_RECT* rect, ID2D1Brush* brush, FLOAT width,
                              ID2D1StrokeStyle* style) override;
    void DrawEllipse(const D2D1_ELLIPSE* ellipse, ID2D1Brush* brush, FLOAT width, ID2D1StrokeStyle* style) override;
    void DrawLine(D2D1_POINT_2F from, D2D1_POINT_2F to, ID2D1Brush* brush, FLOAT width,
                  ID2D1StrokeStyle* style) override;
    void DrawGeometry(ID2D1Geometry* geometry, ID2D1Brush* brush, FLOAT width, ID2D1StrokeStyle* style) override;
    void DrawText(const WCHAR* text, UINT length, IDWriteTextFormat* format, const D2D1_RECT_F* layoutRect,
                  ID2D1Brush* brush, D2D1_DRAW_TEXT_OPTIONS options, DWRITE_MEASURING_MODE measuring) override;
    void DrawTextLayout(D2D1_POINT_2F origin, IDWriteTextLayout* layout, ID2D1Brush* brush,
                        D2D1_DRAW_TEXT_OPTIONS options) override;
    void DrawBitmap(ID2D1Bitmap* bitmap, const D2D1_RECT_F* destination, FLOAT opacity,
                    D2D1_BITMAP_INTERPOLATION_MODE interpolation, const D2D1_RECT_F* source) override;
    void DrawBitmap(ID2D1Bitmap* bitmap, const D2D1_RECT_F* destination, FLOAT opacity,
                    D2D1_INTERPOLATION_MODE interpolation, const D2D1_RECT_F* source,
                    const D2D1_MATRIX_4X4_F* perspective) override;
    void DrawSvgDocument(ID2D1SvgDocument* document) override;
    void Clear(const D2D1_COLOR_F* color) override;
    void BeginDraw() override { calls.push_back({"BeginDraw", {}, {}}); }
    HRESULT EndDraw(D2D1_TAG* tag1, D2D1_TAG* tag2) override;

    HRESULT CreateBitmap(D2D1_SIZE_U, const void*, UINT32, const D2D1_BITMAP_PROPERTIES*, ID2D1Bitmap**) override {
        return E_NOTIMPL;
    }
    HRESULT CreateBitmap(D2D1_SIZE_U, const void*, UINT32, const D2D1_BITMAP_PROPERTIES1*, ID2D1Bitmap1**) override {
        return E_NOTIMPL;
    }
    HRESULT CreateBitmapFromWicBitmap(IWICBitmapSource*, const D2D1_BITMAP_PROPERTIES*, ID2D1Bitmap**) override {
        return E_NOTIMPL;
    }
    HRESULT CreateBitmapFromWicBitmap(IWICBitmapSource*, const D2D1_BITMAP_PROPERTIES1*, ID2D1Bitmap1**) override {
        return E_NOTIMPL;
    }
    HRESULT CreateBitmapFromDxgiSurface(IDXGISurface*, const D2D1_BITMAP_PROPERTIES1*, ID2D1Bitmap1**) override {
        return E_NOTIMPL;
    }
    HRESULT CreateSvgDocument(IStream*, D2D1_SIZE_F, ID2D1SvgDocument**) override { return E_NOTIMPL; }
    void SetAntialiasMode(D2D1_ANTIALIAS_MODE) override {}
    D2D1_ANTIALIAS_MODE GetAntialiasMode() const override { return D2D1_ANTIALIAS_MODE_PER_PRIMITIVE; }
    D2D1_PIXEL_FORMAT GetPixelFormat() const override { return {}; }
    void SetDpi(FLOAT, FLOAT) override {}
    void GetDpi(FLOAT* dpiX, FLOAT* dpiY) const override { *dpiX = *dpiY = 96; }
    D2D1_SIZE_F GetSize() const override { return {}; }
    D2D1_SIZE_U GetPixelSize() const override { return {}; }
    void GetDevice(ID2D1Device** device) const override { *device = nullptr; }
    void SetTarget(ID2D1Image*) override {}
    void GetTarget(ID2D1Image** image) const override { *image = nullptr; }

private:
    D2D1_MATRIX_3X2_F transform_{1, 0, 0, 1, 0, 0};
};
