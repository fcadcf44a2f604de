// Direct2D: targets, brushes, bitmaps, geometry. Interfaces hold the methods that have a caller here, in the order of
// the system's tables. Implemented in Platform/Linux/Direct2D.
#pragma once

#include <d2dbasetypes.h>
#include <d2derr.h>
#include <dcommon.h>
#include <unknwn.h>

struct IDWriteTextFormat;
struct IDWriteTextLayout;
struct IDXGIDevice;
struct IDXGISurface;
struct IWICBitmapSource;

using D2D1_TAG = UINT64;
using D2D1_POINT_2U = D2D_POINT_2U;
using D2D1_RECT_F = D2D_RECT_F;
using D2D1_RECT_U = D2D_RECT_U;
using D2D1_SIZE_F = D2D_SIZE_F;
using D2D1_COLOR_F = D2D_COLOR_F;
using D2D1_MATRIX_3X2_F = D2D_MATRIX_3X2_F;

enum D2D1_FACTORY_TYPE : UINT32 { D2D1_FACTORY_TYPE_SINGLE_THREADED = 0, D2D1_FACTORY_TYPE_MULTI_THREADED = 1 };
enum D2D1_DEBUG_LEVEL : UINT32 {
    D2D1_DEBUG_LEVEL_NONE = 0,
    D2D1_DEBUG_LEVEL_ERROR = 1,
    D2D1_DEBUG_LEVEL_WARNING = 2,
    D2D1_DEBUG_LEVEL_INFORMATION = 3,
};
enum D2D1_ANTIALIAS_MODE : UINT32 { D2D1_ANTIALIAS_MODE_PER_PRIMITIVE = 0, D2D1_ANTIALIAS_MODE_ALIASED = 1 };
enum D2D1_BITMAP_INTERPOLATION_MODE : UINT32 {
    D2D1_BITMAP_INTERPOLATION_MODE_NEAREST_NEIGHBOR = 0,
    D2D1_BITMAP_INTERPOLATION_MODE_LINEAR = 1,
};
enum D2D1_INTERPOLATION_MODE_DEFINITION : UINT32 {
    D2D1_INTERPOLATION_MODE_DEFINITION_NEAREST_NEIGHBOR = 0,
    D2D1_INTERPOLATION_MODE_DEFINITION_LINEAR = 1,
    D2D1_INTERPOLATION_MODE_DEFINITION_CUBIC = 2,
    D2D1_INTERPOLATION_MODE_DEFINITION_MULTI_SAMPLE_LINEAR = 3,
    D2D1_INTERPOLATION_MODE_DEFINITION_ANISOTROPIC = 4,
    D2D1_INTERPOLATION_MODE_DEFINITION_HIGH_QUALITY_CUBIC = 5,
};
enum D2D1_DRAW_TEXT_OPTIONS : UINT32 {
    D2D1_DRAW_TEXT_OPTIONS_NONE = 0x0,
    D2D1_DRAW_TEXT_OPTIONS_NO_SNAP = 0x1,
    D2D1_DRAW_TEXT_OPTIONS_CLIP = 0x2,
    D2D1_DRAW_TEXT_OPTIONS_ENABLE_COLOR_FONT = 0x4,
};
enum D2D1_FILL_MODE : UINT32 { D2D1_FILL_MODE_ALTERNATE = 0, D2D1_FILL_MODE_WINDING = 1 };
enum D2D1_FIGURE_BEGIN : UINT32 { D2D1_FIGURE_BEGIN_FILLED = 0, D2D1_FIGURE_BEGIN_HOLLOW = 1 };
enum D2D1_FIGURE_END : UINT32 { D2D1_FIGURE_END_OPEN = 0, D2D1_FIGURE_END_CLOSED = 1 };
enum D2D1_PATH_SEGMENT : UINT32 {
    D2D1_PATH_SEGMENT_NONE = 0x0,
    D2D1_PATH_SEGMENT_FORCE_UNSTROKED = 0x1,
    D2D1_PATH_SEGMENT_FORCE_ROUND_LINE_JOIN = 0x2,
};
enum D2D1_TEXT_ANTIALIAS_MODE : UINT32 {
    D2D1_TEXT_ANTIALIAS_MODE_DEFAULT = 0,
    D2D1_TEXT_ANTIALIAS_MODE_CLEARTYPE = 1,
    D2D1_TEXT_ANTIALIAS_MODE_GRAYSCALE = 2,
    D2D1_TEXT_ANTIALIAS_MODE_ALIASED = 3,
};

struct D2D1_FACTORY_OPTIONS {
    D2D1_DEBUG_LEVEL debugLevel;
};
struct D2D1_BITMAP_PROPERTIES {
    D2D1_PIXEL_FORMAT pixelFormat;
    FLOAT dpiX;
    FLOAT dpiY;
};
struct D2D1_BRUSH_PROPERTIES {
    FLOAT opacity;
    D2D1_MATRIX_3X2_F transform;
};
struct D2D1_ELLIPSE {
    D2D1_POINT_2F point;
    FLOAT radiusX;
    FLOAT radiusY;
};
struct D2D1_ROUNDED_RECT {
    D2D1_RECT_F rect;
    FLOAT radiusX;
    FLOAT radiusY;
};
struct D2D1_BEZIER_SEGMENT {
    D2D1_POINT_2F point1;
    D2D1_POINT_2F point2;
    D2D1_POINT_2F point3;
};

struct ID2D1Factory;
struct ID2D1StrokeStyle;

struct ID2D1Resource : IUnknown {
    /// Adds a reference to what it returns.
    virtual void STDMETHODCALLTYPE GetFactory(ID2D1Factory** factory) const = 0;
};
VELORINTH_DECLARE_IID(ID2D1Resource, 0x2cd90691, 0x12e2, 0x11dc, 0x9f, 0xed, 0x00, 0x11, 0x43, 0xa0, 0x55, 0xf9);

struct ID2D1Image : ID2D1Resource {};
VELORINTH_DECLARE_IID(ID2D1Image, 0x65019f75, 0x8da2, 0x497c, 0xb3, 0x2c, 0xdf, 0xa3, 0x4e, 0x48, 0xed, 0xe6);

struct ID2D1Bitmap : ID2D1Image {
    /// In device-independent pixels.
    virtual D2D1_SIZE_F STDMETHODCALLTYPE GetSize() const = 0;
    virtual D2D1_SIZE_U STDMETHODCALLTYPE GetPixelSize() const = 0;
    virtual D2D1_PIXEL_FORMAT STDMETHODCALLTYPE GetPixelFormat() const = 0;
    virtual void STDMETHODCALLTYPE GetDpi(FLOAT* dpiX, FLOAT* dpiY) const = 0;
};
VELORINTH_DECLARE_IID(ID2D1Bitmap, 0xa2296057, 0xea42, 0x4099, 0x98, 0x3b, 0x53, 0x9f, 0xb6, 0x50, 0x54, 0x26);

struct ID2D1Brush : ID2D1Resource {
    virtual void STDMETHODCALLTYPE SetOpacity(FLOAT opacity) = 0;
    virtual FLOAT STDMETHODCALLTYPE GetOpacity() const = 0;
};
VELORINTH_DECLARE_IID(ID2D1Brush, 0x2cd906a8, 0x12e2, 0x11dc, 0x9f, 0xed, 0x00, 0x11, 0x43, 0xa0, 0x55, 0xf9);

struct ID2D1SolidColorBrush : ID2D1Brush {
    virtual void STDMETHODCALLTYPE SetColor(const D2D1_COLOR_F* color) = 0;
    virtual D2D1_COLOR_F STDMETHODCALLTYPE GetColor() const = 0;

    void SetColor(const D2D1_COLOR_F& color) { SetColor(&color); }
};
VELORINTH_DECLARE_IID(ID2D1SolidColorBrush, 0x2cd906a9, 0x12e2, 0x11dc, 0x9f, 0xed, 0x00, 0x11, 0x43, 0xa0, 0x55, 0xf9);

struct ID2D1SimplifiedGeometrySink : IUnknown {
    virtual void STDMETHODCALLTYPE SetFillMode(D2D1_FILL_MODE mode) = 0;
    virtual void STDMETHODCALLTYPE SetSegmentFlags(D2D1_PATH_SEGMENT flags) = 0;
    virtual void STDMETHODCALLTYPE BeginFigure(D2D1_POINT_2F start, D2D1_FIGURE_BEGIN begin) = 0;
    virtual void STDMETHODCALLTYPE AddLines(const D2D1_POINT_2F* points, UINT32 count) = 0;
    virtual void STDMETHODCALLTYPE AddBeziers(const D2D1_BEZIER_SEGMENT* beziers, UINT32 count) = 0;
    virtual void STDMETHODCALLTYPE EndFigure(D2D1_FIGURE_END end) = 0;
    /// D2DERR_WRONG_STATE when a figure is open or the sink was closed before.
    virtual HRESULT STDMETHODCALLTYPE Close() = 0;
};
VELORINTH_DECLARE_IID(ID2D1SimplifiedGeometrySink, 0x2cd9069e, 0x12e2, 0x11dc, 0x9f, 0xed, 0x00, 0x11, 0x43, 0xa0, 0x55,
                      0xf9);

struct ID2D1GeometrySink : ID2D1SimplifiedGeometrySink {
    virtual void STDMETHODCALLTYPE AddLine(D2D1_POINT_2F point) = 0;
    virtual void STDMETHODCALLTYPE AddBezier(const D2D1_BEZIER_SEGMENT* bezier) = 0;
};
VELORINTH_DECLARE_IID(ID2D1GeometrySink, 0x2cd9069f, 0x12e2, 0x11dc, 0x9f, 0xed, 0x00, 0x11, 0x43, 0xa0, 0x55, 0xf9);

struct ID2D1Geometry : ID2D1Resource {
    virtual HRESULT STDMETHODCALLTYPE GetBounds(const D2D1_MATRIX_3X2_F* worldTransform, D2D1_RECT_F* bounds) const = 0;
};
VELORINTH_DECLARE_IID(ID2D1Geometry, 0x2cd906a1, 0x12e2, 0x11dc, 0x9f, 0xed, 0x00, 0x11, 0x43, 0xa0, 0x55, 0xf9);

struct ID2D1GeometryGroup : ID2D1Geometry {};
VELORINTH_DECLARE_IID(ID2D1GeometryGroup, 0x2cd906a6, 0x12e2, 0x11dc, 0x9f, 0xed, 0x00, 0x11, 0x43, 0xa0, 0x55, 0xf9);

struct ID2D1TransformedGeometry : ID2D1Geometry {};
VELORINTH_DECLARE_IID(ID2D1TransformedGeometry, 0x2cd906bb, 0x12e2, 0x11dc, 0x9f, 0xed, 0x00, 0x11, 0x43, 0xa0, 0x55,
                      0xf9);

struct ID2D1PathGeometry : ID2D1Geometry {
    /// Once per path: D2DERR_WRONG_STATE afterwards.
    virtual HRESULT STDMETHODCALLTYPE Open(ID2D1GeometrySink** sink) = 0;
};
VELORINTH_DECLARE_IID(ID2D1PathGeometry, 0x2cd906a5, 0x12e2, 0x11dc, 0x9f, 0xed, 0x00, 0x11, 0x43, 0xa0, 0x55, 0xf9);

/// What can be drawn on. Drawing calls between BeginDraw and EndDraw are recorded; EndDraw tells the first failure.
/// Used by one thread at a time.
struct ID2D1RenderTarget : ID2D1Resource {
    virtual HRESULT STDMETHODCALLTYPE CreateBitmap(D2D1_SIZE_U size, const void* pixels, UINT32 pitch,
                                                   const D2D1_BITMAP_PROPERTIES* properties, ID2D1Bitmap** bitmap) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateBitmapFromWicBitmap(IWICBitmapSource* source,
                                                                const D2D1_BITMAP_PROPERTIES* properties,
                                                                ID2D1Bitmap** bitmap) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateSolidColorBrush(const D2D1_COLOR_F* color,
                                                            const D2D1_BRUSH_PROPERTIES* properties,
                                                            ID2D1SolidColorBrush** brush) = 0;
    virtual void STDMETHODCALLTYPE DrawLine(D2D1_POINT_2F from, D2D1_POINT_2F to, ID2D1Brush* brush,
                                            FLOAT strokeWidth = 1.0F, ID2D1StrokeStyle* style = nullptr) = 0;
    virtual void STDMETHODCALLTYPE DrawRectangle(const D2D1_RECT_F* rect, ID2D1Brush* brush, FLOAT strokeWidth = 1.0F,
                                                 ID2D1StrokeStyle* style = nullptr) = 0;
    virtual void STDMETHODCALLTYPE FillRectangle(const D2D1_RECT_F* rect, ID2D1Brush* brush) = 0;
    virtual void STDMETHODCALLTYPE DrawRoundedRectangle(const D2D1_ROUNDED_RECT* rect, ID2D1Brush* brush,
                                                        FLOAT strokeWidth = 1.0F,
                                                        ID2D1StrokeStyle* style = nullptr) = 0;
    virtual void STDMETHODCALLTYPE FillRoundedRectangle(const D2D1_ROUNDED_RECT* rect, ID2D1Brush* brush) = 0;
    virtual void STDMETHODCALLTYPE DrawEllipse(const D2D1_ELLIPSE* ellipse, ID2D1Brush* brush, FLOAT strokeWidth = 1.0F,
                                               ID2D1StrokeStyle* style = nullptr) = 0;
    virtual void STDMETHODCALLTYPE FillEllipse(const D2D1_ELLIPSE* ellipse, ID2D1Brush* brush) = 0;
    virtual void STDMETHODCALLTYPE DrawGeometry(ID2D1Geometry* geometry, ID2D1Brush* brush, FLOAT strokeWidth = 1.0F,
                                                ID2D1StrokeStyle* style = nullptr) = 0;
    virtual void STDMETHODCALLTYPE FillGeometry(ID2D1Geometry* geometry, ID2D1Brush* brush,
                                                ID2D1Brush* opacityBrush = nullptr) = 0;
    virtual void STDMETHODCALLTYPE
    DrawBitmap(ID2D1Bitmap* bitmap, const D2D1_RECT_F* destination = nullptr, FLOAT opacity = 1.0F,
               D2D1_BITMAP_INTERPOLATION_MODE interpolation = D2D1_BITMAP_INTERPOLATION_MODE_LINEAR,
               const D2D1_RECT_F* source = nullptr) = 0;
    virtual void STDMETHODCALLTYPE DrawText(const WCHAR* text, UINT length, IDWriteTextFormat* format,
                                            const D2D1_RECT_F* layoutRect, ID2D1Brush* brush,
                                            D2D1_DRAW_TEXT_OPTIONS options = D2D1_DRAW_TEXT_OPTIONS_NONE,
                                            DWRITE_MEASURING_MODE measuring = DWRITE_MEASURING_MODE_NATURAL) = 0;
    virtual void STDMETHODCALLTYPE DrawTextLayout(D2D1_POINT_2F origin, IDWriteTextLayout* layout, ID2D1Brush* brush,
                                                  D2D1_DRAW_TEXT_OPTIONS options = D2D1_DRAW_TEXT_OPTIONS_NONE) = 0;
    virtual void STDMETHODCALLTYPE SetTransform(const D2D1_MATRIX_3X2_F* transform) = 0;
    virtual void STDMETHODCALLTYPE GetTransform(D2D1_MATRIX_3X2_F* transform) const = 0;
    virtual void STDMETHODCALLTYPE SetAntialiasMode(D2D1_ANTIALIAS_MODE mode) = 0;
    virtual D2D1_ANTIALIAS_MODE STDMETHODCALLTYPE GetAntialiasMode() const = 0;
    /// The rectangle is taken through the current transform; what lies outside its bounding box is not painted.
    virtual void STDMETHODCALLTYPE PushAxisAlignedClip(const D2D1_RECT_F* rect, D2D1_ANTIALIAS_MODE mode) = 0;
    virtual void STDMETHODCALLTYPE PopAxisAlignedClip() = 0;
    /// Paints the whole target (within the clip) with the colour, blending nothing. Null is transparent black.
    virtual void STDMETHODCALLTYPE Clear(const D2D1_COLOR_F* color = nullptr) = 0;
    virtual void STDMETHODCALLTYPE BeginDraw() = 0;
    virtual HRESULT STDMETHODCALLTYPE EndDraw(D2D1_TAG* tag1 = nullptr, D2D1_TAG* tag2 = nullptr) = 0;
    virtual D2D1_PIXEL_FORMAT STDMETHODCALLTYPE GetPixelFormat() const = 0;
    virtual void STDMETHODCALLTYPE SetDpi(FLOAT dpiX, FLOAT dpiY) = 0;
    virtual void STDMETHODCALLTYPE GetDpi(FLOAT* dpiX, FLOAT* dpiY) const = 0;
    virtual D2D1_SIZE_F STDMETHODCALLTYPE GetSize() const = 0;
    virtual D2D1_SIZE_U STDMETHODCALLTYPE GetPixelSize() const = 0;

    HRESULT CreateSolidColorBrush(const D2D1_COLOR_F& color, ID2D1SolidColorBrush** brush) {
        return CreateSolidColorBrush(&color, nullptr, brush);
    }
    void DrawRectangle(const D2D1_RECT_F& rect, ID2D1Brush* brush, FLOAT strokeWidth = 1.0F,
                       ID2D1StrokeStyle* style = nullptr) {
        DrawRectangle(&rect, brush, strokeWidth, style);
    }
    void FillRectangle(const D2D1_RECT_F& rect, ID2D1Brush* brush) { FillRectangle(&rect, brush); }
    void DrawRoundedRectangle(const D2D1_ROUNDED_RECT& rect, ID2D1Brush* brush, FLOAT strokeWidth = 1.0F,
                              ID2D1StrokeStyle* style = nullptr) {
        DrawRoundedRectangle(&rect, brush, strokeWidth, style);
    }
    void FillRoundedRectangle(const D2D1_ROUNDED_RECT& rect, ID2D1Brush* brush) { FillRoundedRectangle(&rect, brush); }
    void DrawEllipse(const D2D1_ELLIPSE& ellipse, ID2D1Brush* brush, FLOAT strokeWidth = 1.0F,
                     ID2D1StrokeStyle* style = nullptr) {
        DrawEllipse(&ellipse, brush, strokeWidth, style);
    }
    void FillEllipse(const D2D1_ELLIPSE& ellipse, ID2D1Brush* brush) { FillEllipse(&ellipse, brush); }
    void SetTransform(const D2D1_MATRIX_3X2_F& transform) { SetTransform(&transform); }
    void PushAxisAlignedClip(const D2D1_RECT_F& rect, D2D1_ANTIALIAS_MODE mode) { PushAxisAlignedClip(&rect, mode); }
    void Clear(const D2D1_COLOR_F& color) { Clear(&color); }
};
VELORINTH_DECLARE_IID(ID2D1RenderTarget, 0x2cd90694, 0x12e2, 0x11dc, 0x9f, 0xed, 0x00, 0x11, 0x43, 0xa0, 0x55, 0xf9);

struct ID2D1Factory : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE CreateGeometryGroup(D2D1_FILL_MODE mode, ID2D1Geometry** geometries, UINT32 count,
                                                          ID2D1GeometryGroup** group) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateTransformedGeometry(ID2D1Geometry* source,
                                                                const D2D1_MATRIX_3X2_F* transform,
                                                                ID2D1TransformedGeometry** geometry) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreatePathGeometry(ID2D1PathGeometry** geometry) = 0;

    HRESULT CreateTransformedGeometry(ID2D1Geometry* source, const D2D1_MATRIX_3X2_F& transform,
                                      ID2D1TransformedGeometry** geometry) {
        return CreateTransformedGeometry(source, &transform, geometry);
    }
};
VELORINTH_DECLARE_IID(ID2D1Factory, 0x06152247, 0x6f50, 0x465a, 0x92, 0x45, 0x11, 0x8b, 0xfd, 0x3b, 0x60, 0x07);

/// Makes a factory: ID2D1Factory to ID2D1Factory3. E_NOINTERFACE for anything else.
HRESULT WINAPI D2D1CreateFactory(D2D1_FACTORY_TYPE type, REFIID iid, const D2D1_FACTORY_OPTIONS* options,
                                 void** factory) noexcept;
/// Replaces the matrix by its inverse. FALSE, and the matrix as it was, if it has none.
BOOL WINAPI D2D1InvertMatrix(D2D1_MATRIX_3X2_F* matrix) noexcept;
BOOL WINAPI D2D1IsMatrixInvertible(const D2D1_MATRIX_3X2_F* matrix) noexcept;

template <class Factory>
HRESULT D2D1CreateFactory(D2D1_FACTORY_TYPE type, Factory** factory) {
    return D2D1CreateFactory(type, __uuidof(Factory), nullptr, reinterpret_cast<void**>(factory));
}
template <class Factory>
HRESULT D2D1CreateFactory(D2D1_FACTORY_TYPE type, const D2D1_FACTORY_OPTIONS& options, Factory** factory) {
    return D2D1CreateFactory(type, __uuidof(Factory), &options, reinterpret_cast<void**>(factory));
}

#include <d2d1helper.h>
