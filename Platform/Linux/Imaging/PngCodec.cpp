// PNG, over libpng's simplified interface: it keeps its errors to itself, converts all kinds of pixels and applies the
// library's own limits to chunks.
#include "Platform/Linux/Imaging/Codec.h"

#include <png.h>

#include <algorithm>
#include <array>

namespace Platform::Imaging {

namespace {

class Reader {
public:
    explicit Reader(Bytes encoded) noexcept {
        image_.version = PNG_IMAGE_VERSION;
        opened_ = png_image_begin_read_from_memory(&image_, encoded.data(), encoded.size()) != 0;
    }
    ~Reader() { png_image_free(&image_); }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    bool IsOpen() const noexcept { return opened_; }
    PictureSize Size() const noexcept { return {image_.width, image_.height}; }

    bool Read(BYTE* pixels, UINT stride) noexcept {
        image_.format = PNG_FORMAT_BGRA;
        image_.flags |= PNG_IMAGE_FLAG_16BIT_sRGB;  // Else 16 bits without a word about gamma are taken for linear.
        return png_image_finish_read(&image_, nullptr, pixels, static_cast<png_int_32>(stride), nullptr) != 0;
    }

private:
    png_image image_{};
    bool opened_ = false;
};

bool Recognises(Bytes encoded) noexcept {
    static constexpr std::array<std::uint8_t, 8> signature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    return encoded.size() >= signature.size() && std::ranges::equal(encoded.first(signature.size()), signature);
}

HRESULT ReadSize(Bytes encoded, PictureSize& size) noexcept {
    const Reader reader(encoded);
    if (!reader.IsOpen()) return WINCODEC_ERR_BADHEADER;
    size = reader.Size();
    return S_OK;
}

HRESULT Decode(Bytes encoded, const PictureSize& size, BYTE* pixels, UINT stride) noexcept {
    Reader reader(encoded);
    if (!reader.IsOpen()) return WINCODEC_ERR_BADHEADER;
    if (!reader.Read(pixels, stride)) return WINCODEC_ERR_BADIMAGE;
    for (UINT row = 0; row < size.height; ++row) Premultiply(pixels + std::size_t{row} * stride, size.width);
    return S_OK;
}

}  // namespace

const Codec pngCodec{Recognises, ReadSize, Decode};

}  // namespace Platform::Imaging
