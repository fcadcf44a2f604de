// The context's state: passes, target, clips, and what it makes.

#include "Platform/Linux/Direct2D/DeviceContext.h"

#include "Platform/Linux/Direct2D/SolidColorBrush.h"
#include "Platform/Linux/Direct2D/Transform.h"

#include <wincodec.h>

#include <cmath>
#include <cstring>
#include <new>

namespace Platform::Direct2D {

namespace {

constexpr FLOAT dotsPerInch = 96.0F;
constexpr UINT32 maxBitmapSide = 16384;
constexpr D2D1_PIXEL_FORMAT memoryFormat{DXGI_FORMAT_B8G8R8A8_UNORM, D2D1_ALPHA_MODE_PREMULTIPLIED};

D2D1_BITMAP_PROPERTIES1 Extended(const D2D1_BITMAP_PROPERTIES* properties) {
    if (!properties) return D2D1::BitmapProperties1();
    return D2D1::BitmapProperties1(D2D1_BITMAP_OPTIONS_NONE, properties->pixelFormat, properties->dpiX,
                                   properties->dpiY);
}

// A file's pixels are always asked for in the one format that is kept in memory.
HRESULT CopyFrom(IWICBitmapSource& source, Image& image) {
    UINT width = 0;
    UINT height = 0;
    WICPixelFormatGUID format{};
    if (const HRESULT result = source.GetSize(&width, &height); FAILED(result)) return result;
    if (const HRESULT result = source.GetPixelFormat(&format); FAILED(result)) return result;
    if (format != GUID_WICPixelFormat32bppPBGRA) return D2DERR_UNSUPPORTED_PIXEL_FORMAT;
    if (width == 0 || height == 0 || width > maxBitmapSide || height > maxBitmapSide) return E_INVALIDARG;
    image.width = static_cast<int>(width);
    image.height = static_cast<int>(height);
    image.pixels.resize(std::size_t{width} * height);
    return source.CopyPixels(nullptr, width * 4, width * height * 4, reinterpret_cast<BYTE*>(image.pixels.data()));
}

}  // namespace

DeviceContext::DeviceContext(ComPtr<ID2D1Factory> factory, const LayerTargetMaker& targets, ID2D1Device* device)
    : Resource("ID2D1DeviceContext", std::move(factory)), targets_(targets), device_(device), transform_(identity) {}

HRESULT DeviceContext::CreateBitmap(D2D1_SIZE_U size, const void* pixels, UINT32 pitch,
                                    const D2D1_BITMAP_PROPERTIES* properties, ID2D1Bitmap** bitmap) {
    if (!bitmap) return E_POINTER;
    *bitmap = nullptr;
    const D2D1_BITMAP_PROPERTIES1 extended = Extended(properties);
    ComPtr<ID2D1Bitmap1> made;
    const HRESULT result = CreateBitmap(size, pixels, pitch, &extended, &made);
    *bitmap = made.Detach();
    return result;
}

HRESULT DeviceContext::CreateBitmap(D2D1_SIZE_U size, const void* pixels, UINT32 pitch,
                                    const D2D1_BITMAP_PROPERTIES1* properties, ID2D1Bitmap1** bitmap) try {
    if (!bitmap) return E_POINTER;
    *bitmap = nullptr;
    D2D1_BITMAP_PROPERTIES1 complete = properties ? *properties : D2D1::BitmapProperties1();
    if (complete.bitmapOptions != D2D1_BITMAP_OPTIONS_NONE) return NotImplemented("CreateBitmap with options");
    if (complete.pixelFormat.format == DXGI_FORMAT_UNKNOWN) complete.pixelFormat = memoryFormat;
    if (complete.pixelFormat.format != memoryFormat.format ||
        complete.pixelFormat.alphaMode != memoryFormat.alphaMode) {
        return D2DERR_UNSUPPORTED_PIXEL_FORMAT;
    }
    if (size.width == 0 || size.height == 0 || size.width > maxBitmapSide || size.height > maxBitmapSide) {
        return E_INVALIDARG;
    }
    if (pixels && pitch < size.width * 4) return E_INVALIDARG;
    auto image = std::make_shared<Image>();
    image->width = static_cast<int>(size.width);
    image->height = static_cast<int>(size.height);
    image->pixels.resize(std::size_t{size.width} * size.height);
    for (std::size_t row = 0; pixels && row < size.height; ++row) {
        std::memcpy(image->pixels.data() + row * size.width, static_cast<const BYTE*>(pixels) + row * pitch,
                    std::size_t{size.width} * 4);
    }
    *bitmap = new Bitmap(OwnFactory(), std::move(image), complete);
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT DeviceContext::CreateBitmapFromWicBitmap(IWICBitmapSource* source, const D2D1_BITMAP_PROPERTIES* properties,
                                                 ID2D1Bitmap** bitmap) {
    if (!bitmap) return E_POINTER;
    *bitmap = nullptr;
    const D2D1_BITMAP_PROPERTIES1 extended = Extended(properties);
    ComPtr<ID2D1Bitmap1> made;
    const HRESULT result = CreateBitmapFromWicBitmap(source, &extended, &made);
    *bitmap = made.Detach();
    return result;
}

HRESULT DeviceContext::CreateBitmapFromWicBitmap(IWICBitmapSource* source, const D2D1_BITMAP_PROPERTIES1* properties,
                                                 ID2D1Bitmap1** bitmap) try {
    if (!bitmap) return E_POINTER;
    *bitmap = nullptr;
    if (!source) return E_INVALIDARG;
    auto image = std::make_shared<Image>();
    if (const HRESULT result = CopyFrom(*source, *image); FAILED(result)) return result;
    D2D1_BITMAP_PROPERTIES1 complete = properties ? *properties : D2D1::BitmapProperties1();
    complete.pixelFormat = memoryFormat;
    *bitmap = new Bitmap(OwnFactory(), std::move(image), complete);
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT DeviceContext::CreateBitmapFromDxgiSurface(IDXGISurface* surface, const D2D1_BITMAP_PROPERTIES1* properties,
                                                   ID2D1Bitmap1** bitmap) try {
    if (!bitmap) return E_POINTER;
    *bitmap = nullptr;
    if (!surface) return E_INVALIDARG;
    D2D1_BITMAP_PROPERTIES1 complete =
        properties ? *properties
                   : D2D1::BitmapProperties1(D2D1_BITMAP_OPTIONS_TARGET | D2D1_BITMAP_OPTIONS_CANNOT_DRAW);
    if ((complete.bitmapOptions & D2D1_BITMAP_OPTIONS_TARGET) == 0) return E_INVALIDARG;
    if (complete.pixelFormat.format == DXGI_FORMAT_UNKNOWN) complete.pixelFormat = memoryFormat;
    if (complete.pixelFormat.format != memoryFormat.format) return D2DERR_UNSUPPORTED_PIXEL_FORMAT;
    std::unique_ptr<LayerTarget> target = targets_.Make(surface);
    if (!target) return E_INVALIDARG;
    *bitmap = new Bitmap(OwnFactory(), surface, std::make_unique<Layer>(std::move(target)), complete);
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT DeviceContext::CreateSolidColorBrush(const D2D1_COLOR_F* color, const D2D1_BRUSH_PROPERTIES* properties,
                                             ID2D1SolidColorBrush** brush) {
    if (!brush) return E_POINTER;
    *brush = nullptr;
    if (!color) return E_INVALIDARG;
    *brush = new (std::nothrow) SolidColorBrush(OwnFactory(), *color, properties ? properties->opacity : 1.0F);
    return *brush ? S_OK : E_OUTOFMEMORY;
}

void DeviceContext::Fail(HRESULT result) noexcept {
    if (SUCCEEDED(failure_)) failure_ = result;
}

void DeviceContext::BeginDraw() {
    if (drawing_) {
        Fail(D2DERR_WRONG_STATE);
        return;
    }
    drawing_ = true;
}

HRESULT DeviceContext::EndDraw(D2D1_TAG* tag1, D2D1_TAG* tag2) {
    if (tag1) *tag1 = 0;
    if (tag2) *tag2 = 0;
    if (!drawing_ || !target_) Fail(D2DERR_WRONG_STATE);
    if (!clips_.empty()) Fail(D2DERR_PUSH_POP_UNBALANCED);
    HRESULT result = std::exchange(failure_, S_OK);
    DisplayList list = std::exchange(list_, {});
    clips_.clear();
    drawing_ = false;
    if (FAILED(result)) return result;
    try {
        // The next frame is likely to be as long as this one.
        list_.commands.reserve(list.commands.size());
        result = target_->Target()->Show(std::move(list));
    } catch (const std::bad_alloc&) {
        result = E_OUTOFMEMORY;
    }
    return result;
}

void DeviceContext::Clear(const D2D1_COLOR_F* color) {
    if (!CanDraw()) return;
    if (!clips_.empty()) {
        Fail(NotImplemented("Clear within a clip"));
        return;
    }
    // Nothing of what was drawn so far would be seen.
    list_.commands.clear();
    D2D1_COLOR_F pixel = color ? *color : D2D1_COLOR_F{0.0F, 0.0F, 0.0F, 0.0F};
    if (target_->GetPixelFormat().alphaMode == D2D1_ALPHA_MODE_IGNORE) {
        pixel.a = 1.0F;
    } else {
        pixel.r *= pixel.a;
        pixel.g *= pixel.a;
        pixel.b *= pixel.a;
    }
    list_.clear = pixel;
}

void DeviceContext::PushAxisAlignedClip(const D2D1_RECT_F* rect, D2D1_ANTIALIAS_MODE mode) {
    if (!CanDraw()) return;
    D2D1_RECT_F clip = Bounds(transform_, *rect);
    if (mode == D2D1_ANTIALIAS_MODE_ALIASED) {
        // A pixel is in when its centre is.
        clip = {std::ceil(clip.left - 0.5F), std::ceil(clip.top - 0.5F), std::ceil(clip.right - 0.5F),
                std::ceil(clip.bottom - 0.5F)};
    }
    try {
        clips_.push_back(clips_.empty() ? clip : Intersect(clips_.back(), clip));
    } catch (const std::bad_alloc&) {
        Fail(E_OUTOFMEMORY);
    }
}

void DeviceContext::PopAxisAlignedClip() {
    if (!CanDraw()) return;
    if (clips_.empty()) {
        Fail(D2DERR_POP_CALL_DID_NOT_MATCH_PUSH);
        return;
    }
    clips_.pop_back();
}

void DeviceContext::SetTarget(ID2D1Image* image) {
    if (drawing_) Fail(NotImplemented("SetTarget between BeginDraw and EndDraw"));
    auto* const bitmap = dynamic_cast<Bitmap*>(image);
    if (image && (!bitmap || !bitmap->Target())) Fail(E_INVALIDARG);
    target_ = bitmap && bitmap->Target() ? bitmap : nullptr;
}

void DeviceContext::GetTarget(ID2D1Image** image) const {
    *image = target_.Get();
    if (*image) (*image)->AddRef();
}

D2D1_PIXEL_FORMAT DeviceContext::GetPixelFormat() const {
    return target_ ? target_->GetPixelFormat() : D2D1::PixelFormat();
}

void DeviceContext::SetDpi(FLOAT dpiX, FLOAT dpiY) {
    if (dpiX != dotsPerInch || dpiY != dotsPerInch) NotImplemented("SetDpi with anything but 96");
}

void DeviceContext::GetDpi(FLOAT* dpiX, FLOAT* dpiY) const {
    *dpiX = dotsPerInch;
    *dpiY = dotsPerInch;
}

D2D1_SIZE_F DeviceContext::GetSize() const {
    return target_ ? target_->GetSize() : D2D1_SIZE_F{};
}

D2D1_SIZE_U DeviceContext::GetPixelSize() const {
    return target_ ? target_->GetPixelSize() : D2D1_SIZE_U{};
}

}  // namespace Platform::Direct2D
