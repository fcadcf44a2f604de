#pragma once

#include "Platform/Linux/Base/ComObject.h"

#include <wincodec.h>
#include <wrl/client.h>

namespace Platform::Imaging {

/// Hands pixels on: sources have the one format that can be asked for already. One thread at a time.
class Converter final : public ComObject<IWICFormatConverter, IWICBitmapSource> {
public:
    Converter() : ComObject("IWICFormatConverter") {}

    HRESULT Initialize(IWICBitmapSource* source, REFWICPixelFormatGUID format, WICBitmapDitherType dither,
                       IWICPalette* palette, double alphaThresholdPercent,
                       WICBitmapPaletteType paletteTranslate) override;
    HRESULT GetSize(UINT* width, UINT* height) override;
    HRESULT GetPixelFormat(WICPixelFormatGUID* format) override;
    HRESULT CopyPixels(const WICRect* rect, UINT stride, UINT size, BYTE* pixels) override;

private:
    ~Converter() override = default;

    Microsoft::WRL::ComPtr<IWICBitmapSource> source_;  // null until initialised
};

}  // namespace Platform::Imaging
