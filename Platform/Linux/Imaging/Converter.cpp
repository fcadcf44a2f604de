#include "Platform/Linux/Imaging/Converter.h"

namespace Platform::Imaging {

// Dither, palette and threshold are for formats with few colours.
HRESULT Converter::Initialize(IWICBitmapSource* source, REFWICPixelFormatGUID format, WICBitmapDitherType, IWICPalette*,
                              double, WICBitmapPaletteType) {
    if (!source) return E_INVALIDARG;
    if (source_) return WINCODEC_ERR_WRONGSTATE;
    WICPixelFormatGUID from{};
    if (const HRESULT result = source->GetPixelFormat(&from); FAILED(result)) return result;
    if (format != GUID_WICPixelFormat32bppPBGRA || from != format) return WINCODEC_ERR_UNSUPPORTEDPIXELFORMAT;
    source_ = source;
    return S_OK;
}

HRESULT Converter::GetSize(UINT* width, UINT* height) {
    return source_ ? source_->GetSize(width, height) : WINCODEC_ERR_NOTINITIALIZED;
}

HRESULT Converter::GetPixelFormat(WICPixelFormatGUID* format) {
    return source_ ? source_->GetPixelFormat(format) : WINCODEC_ERR_NOTINITIALIZED;
}

HRESULT Converter::CopyPixels(const WICRect* rect, UINT stride, UINT size, BYTE* pixels) {
    return source_ ? source_->CopyPixels(rect, stride, size, pixels) : WINCODEC_ERR_NOTINITIALIZED;
}

}  // namespace Platform::Imaging
