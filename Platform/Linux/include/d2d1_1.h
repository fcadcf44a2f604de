// Direct2D 1.1: devices, and contexts whose target can be changed.
#pragma once

#include <d2d1.h>
#include <dxgi.h>

struct ID2D1ColorContext;

using D2D1_MATRIX_4X4_F = D2D_MATRIX_4X4_F;

enum D2D1_DEVICE_CONTEXT_OPTIONS : UINT32 {
    D2D1_DEVICE_CONTEXT_OPTIONS_NONE = 0,
    D2D1_DEVICE_CONTEXT_OPTIONS_ENABLE_MULTITHREADED_OPTIMIZATIONS = 1,
};

enum D2D1_BITMAP_OPTIONS : UINT32 {
    D2D1_BITMAP_OPTIONS_NONE = 0x0,
    D2D1_BITMAP_OPTIONS_TARGET = 0x1,
    D2D1_BITMAP_OPTIONS_CANNOT_DRAW = 0x2,
    D2D1_BITMAP_OPTIONS_CPU_READ = 0x4,
};
constexpr D2D1_BITMAP_OPTIONS operator|(D2D1_BITMAP_OPTIONS left, D2D1_BITMAP_OPTIONS right) {
    return static_cast<D2D1_BITMAP_OPTIONS>(static_cast<UINT32>(left) | static_cast<UINT32>(right));
}

enum D2D1_INTERPOLATION_MODE : UINT32 {
    D2D1_INTERPOLATION_MODE_NEAREST_NEIGHBOR = D2D1_INTERPOLATION_MODE_DEFINITION_NEAREST_NEIGHBOR,
    D2D1_INTERPOLATION_MODE_LINEAR = D2D1_INTERPOLATION_MODE_DEFINITION_LINEAR,
    D2D1_INTERPOLATION_MODE_CUBIC = D2D1_INTERPOLATION_MODE_DEFINITION_CUBIC,
    D2D1_INTERPOLATION_MODE_MULTI_SAMPLE_LINEAR = D2D1_INTERPOLATION_MODE_DEFINITION_MULTI_SAMPLE_LINEAR,
    D2D1_INTERPOLATION_MODE_ANISOTROPIC = D2D1_INTERPOLATION_MODE_DEFINITION_ANISOTROPIC,
    D2D1_INTERPOLATION_MODE_HIGH_QUALITY_CUBIC = D2D1_INTERPOLATION_MODE_DEFINITION_HIGH_QUALITY_CUBIC,
};

struct D2D1_BITMAP_PROPERTIES1 {
    D2D1_PIXEL_FORMAT pixelFormat;
    FLOAT dpiX;
    FLOAT dpiY;
    D2D1_BITMAP_OPTIONS bitmapOptions;
    ID2D1ColorContext* colorContext;
};

struct ID2D1Bitmap1 : ID2D1Bitmap {
    virtual D2D1_BITMAP_OPTIONS STDMETHODCALLTYPE GetOptions() const = 0;
    /// The surface it wraps, with a reference added. E_FAIL if it
    /// wraps none.
    virtual HRESULT STDMETHODCALLTYPE GetSurface(IDXGISurface** surface) const = 0;
};
VELORINTH_DECLARE_IID(ID2D1Bitmap1, 0xa898a84c, 0x3873, 0x4588, 0xb0, 0x8b, 0xeb, 0xbf, 0x97, 0x8d, 0xf0, 0x41);

struct ID2D1Device;

struct ID2D1DeviceContext : ID2D1RenderTarget {
    using ID2D1RenderTarget::CreateBitmap;
    virtual HRESULT STDMETHODCALLTYPE CreateBitmap(D2D1_SIZE_U size, const void* pixels, UINT32 pitch,
                                                   const D2D1_BITMAP_PROPERTIES1* properties,
                                                   ID2D1Bitmap1** bitmap) = 0;
    using ID2D1RenderTarget::CreateBitmapFromWicBitmap;
    virtual HRESULT STDMETHODCALLTYPE CreateBitmapFromWicBitmap(IWICBitmapSource* source,
                                                                const D2D1_BITMAP_PROPERTIES1* properties,
                                                                ID2D1Bitmap1** bitmap) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateBitmapFromDxgiSurface(IDXGISurface* surface,
                                                                  const D2D1_BITMAP_PROPERTIES1* properties,
                                                                  ID2D1Bitmap1** bitmap) = 0;
    /// Adds a reference to what it returns.
    virtual void STDMETHODCALLTYPE GetDevice(ID2D1Device** device) const = 0;
    /// A bitmap with D2D1_BITMAP_OPTIONS_TARGET, or null. The context holds a reference to it.
    virtual void STDMETHODCALLTYPE SetTarget(ID2D1Image* image) = 0;
    virtual void STDMETHODCALLTYPE GetTarget(ID2D1Image** image) const = 0;
    using ID2D1RenderTarget::DrawBitmap;
    virtual void STDMETHODCALLTYPE DrawBitmap(ID2D1Bitmap* bitmap, const D2D1_RECT_F* destination, FLOAT opacity,
                                              D2D1_INTERPOLATION_MODE interpolation,
                                              const D2D1_RECT_F* source = nullptr,
                                              const D2D1_MATRIX_4X4_F* perspective = nullptr) = 0;

    HRESULT CreateBitmapFromWicBitmap(IWICBitmapSource* source, ID2D1Bitmap1** bitmap) {
        return CreateBitmapFromWicBitmap(source, nullptr, bitmap);
    }
};
VELORINTH_DECLARE_IID(ID2D1DeviceContext, 0xe8f7fe7a, 0x191c, 0x466d, 0xad, 0x95, 0x97, 0x56, 0x78, 0xbd, 0xa9, 0x98);

struct ID2D1Device : ID2D1Resource {
    virtual HRESULT STDMETHODCALLTYPE CreateDeviceContext(D2D1_DEVICE_CONTEXT_OPTIONS options,
                                                          ID2D1DeviceContext** context) = 0;
};
VELORINTH_DECLARE_IID(ID2D1Device, 0x47dd575d, 0xac05, 0x4cdd, 0x80, 0x49, 0x9b, 0x02, 0xcd, 0x16, 0xf4, 0x4c);

struct ID2D1Factory1 : ID2D1Factory {
    virtual HRESULT STDMETHODCALLTYPE CreateDevice(IDXGIDevice* dxgiDevice, ID2D1Device** device) = 0;
};
VELORINTH_DECLARE_IID(ID2D1Factory1, 0xbb12d362, 0xdaee, 0x4b9a, 0xaa, 0x1d, 0x14, 0xba, 0x40, 0x1c, 0xfa, 0x1f);

namespace D2D1 {

constexpr D2D1_BITMAP_PROPERTIES1 BitmapProperties1(D2D1_BITMAP_OPTIONS options = D2D1_BITMAP_OPTIONS_NONE,
                                                    const D2D1_PIXEL_FORMAT& format = PixelFormat(), FLOAT dpiX = 96.0F,
                                                    FLOAT dpiY = 96.0F, ID2D1ColorContext* colorContext = nullptr) {
    return {format, dpiX, dpiY, options, colorContext};
}

}  // namespace D2D1
