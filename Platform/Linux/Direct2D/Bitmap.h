#pragma once

#include "Platform/Linux/Direct2D/DrawCommand.h"
#include "Platform/Linux/Direct2D/Layer.h"
#include "Platform/Linux/Direct2D/Resource.h"

#include <d2d1_1.h>

#include <memory>

namespace Platform::Direct2D {

/// Either pixels in memory, to draw from, or a surface, to draw on.
class Bitmap final : public Resource<ID2D1Bitmap1, ID2D1Bitmap, ID2D1Image> {
public:
    Bitmap(ComPtr<ID2D1Factory> factory, std::shared_ptr<const Image> image, const D2D1_BITMAP_PROPERTIES1& properties);
    Bitmap(ComPtr<ID2D1Factory> factory, IDXGISurface* surface, std::unique_ptr<Layer> layer,
           const D2D1_BITMAP_PROPERTIES1& properties);

    D2D1_SIZE_F GetSize() const override;
    D2D1_SIZE_U GetPixelSize() const override;
    D2D1_PIXEL_FORMAT GetPixelFormat() const override { return properties_.pixelFormat; }
    void GetDpi(FLOAT* dpiX, FLOAT* dpiY) const override;
    D2D1_BITMAP_OPTIONS GetOptions() const override { return properties_.bitmapOptions; }
    HRESULT GetSurface(IDXGISurface** surface) const override;

    /// What to draw from; null for a target.
    const std::shared_ptr<const Image>& Pixels() const noexcept { return image_; }
    /// What to draw on; null for pixels in memory.
    Layer* Target() noexcept { return layer_.get(); }

private:
    ~Bitmap() override = default;

    D2D1_BITMAP_PROPERTIES1 properties_;  // dpi never 0, no colour context
    std::shared_ptr<const Image> image_;
    ComPtr<IDXGISurface> surface_;
    std::unique_ptr<Layer> layer_;
};

}  // namespace Platform::Direct2D
