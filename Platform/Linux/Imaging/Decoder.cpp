#include "Platform/Linux/Imaging/Decoder.h"

#include <new>

namespace Platform::Imaging {

namespace {

HRESULT ReadToEnd(IStream& stream, std::vector<std::uint8_t>& bytes) {
    static constexpr ULONG portion = 64 * 1024;
    for (;;) {
        const std::size_t before = bytes.size();
        if (before > maxEncodedBytes) return WINCODEC_ERR_IMAGESIZEOUTOFRANGE;
        bytes.resize(before + portion);
        ULONG read = 0;
        if (FAILED(stream.Read(bytes.data() + before, portion, &read)) || read > portion) {
            return WINCODEC_ERR_STREAMREAD;
        }
        bytes.resize(before + read);
        if (read == 0) break;
    }
    bytes.shrink_to_fit();
    return S_OK;
}

}  // namespace

HRESULT Frame::GetSize(UINT* width, UINT* height) {
    if (!width || !height) return E_INVALIDARG;
    *width = size_.width;
    *height = size_.height;
    return S_OK;
}

HRESULT Frame::GetPixelFormat(WICPixelFormatGUID* format) {
    if (!format) return E_INVALIDARG;
    *format = GUID_WICPixelFormat32bppPBGRA;
    return S_OK;
}

HRESULT Frame::CopyPixels(const WICRect* rect, UINT stride, UINT size, BYTE* pixels) {
    if (rect) return NotImplemented("IWICBitmapSource::CopyPixels with a rectangle");
    if (!pixels || stride < size_.width * 4) return E_INVALIDARG;
    if (std::uint64_t{stride} * (size_.height - 1) + std::uint64_t{size_.width} * 4 > size) {
        return WINCODEC_ERR_INSUFFICIENTBUFFER;
    }
    return codec_.decode(*encoded_, size_, pixels, stride);
}

HRESULT Decoder::GetFrameCount(UINT* count) {
    if (!count) return E_INVALIDARG;
    *count = 1;
    return S_OK;
}

HRESULT Decoder::GetFrame(UINT index, IWICBitmapFrameDecode** frame) {
    if (!frame) return E_INVALIDARG;
    *frame = nullptr;
    if (index != 0) return WINCODEC_ERR_FRAMEMISSING;
    *frame = new (std::nothrow) Frame(encoded_, codec_, size_);
    return *frame ? S_OK : E_OUTOFMEMORY;
}

HRESULT MakeDecoder(IStream& stream, IWICBitmapDecoder** decoder) noexcept try {
    auto encoded = std::make_shared<std::vector<std::uint8_t>>();
    if (const HRESULT result = ReadToEnd(stream, *encoded); FAILED(result)) return result;
    const Codec* const codec = FindCodec(*encoded);
    if (!codec) return WINCODEC_ERR_COMPONENTNOTFOUND;
    PictureSize size;
    if (const HRESULT result = codec->readSize(*encoded, size); FAILED(result)) return result;
    const bool fits = size.width > 0 && size.height > 0 && size.width <= maxSide && size.height <= maxSide &&
                      std::uint64_t{size.width} * size.height <= maxPixels;
    if (!fits) return WINCODEC_ERR_IMAGESIZEOUTOFRANGE;
    *decoder = new Decoder(std::move(encoded), *codec, size);
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

}  // namespace Platform::Imaging
