#include "Platform/Linux/Direct2D/Bitmap.h"

namespace Platform::Direct2D {

namespace {

constexpr FLOAT defaultDpi = 96.0F;

D2D1_BITMAP_PROPERTIES1 Completed(D2D1_BITMAP_PROPERTIES1 properties) {
    if (properties.dpiX == 0.0F) properties.dpiX = defaultDpi;
    if (properties.dpiY == 0.0F) properties.dpiY = defaultDpi;
    properties.colorContext = nullptr;
    return properties;
}

}  // namespace

Bitmap::Bitmap(ComPtr<ID2D1Factory> factory, std::shared_ptr<const Image> image,
               const D2D1_BITMAP_PROPERTIES1& properties)
    : Resource("ID2D1Bitmap", std::move(factory)), properties_(Completed(properties)), image_(std::move(image)) {}

Bitmap::Bitmap(ComPtr<ID2D1Factory> factory, IDXGISurface* surface, std::unique_ptr<Layer> layer,
               const D2D1_BITMAP_PROPERTIES1& properties)
    : Resource("ID2D1Bitmap", std::move(factory)),
      properties_(Completed(properties)),
      surface_(surface),
      layer_(std::move(layer)) {}

D2D1_SIZE_F Bitmap::GetSize() const {
    const D2D1_SIZE_U size = GetPixelSize();
    return {static_cast<float>(size.width) * defaultDpi / properties_.dpiX,
            static_cast<float>(size.height) * defaultDpi / properties_.dpiY};
}

D2D1_SIZE_U Bitmap::GetPixelSize() const {
    if (layer_) return layer_->Size();
    return {static_cast<UINT32>(image_->width), static_cast<UINT32>(image_->height)};
}

void Bitmap::GetDpi(FLOAT* dpiX, FLOAT* dpiY) const {
    *dpiX = properties_.dpiX;
    *dpiY = properties_.dpiY;
}

HRESULT Bitmap::GetSurface(IDXGISurface** surface) const {
    if (!surface) return E_POINTER;
    *surface = nullptr;
    return surface_ ? surface_.CopyTo(surface) : E_FAIL;
}

}  // namespace Platform::Direct2D
