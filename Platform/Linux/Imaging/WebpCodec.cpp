// WebP, over libwebp. Still pictures only.
#include "Platform/Linux/Imaging/Codec.h"

#include <webp/decode.h>

#include <cstring>

namespace Platform::Imaging {

namespace {

bool Recognises(Bytes encoded) noexcept {
    return encoded.size() >= 12 && std::memcmp(encoded.data(), "RIFF", 4) == 0 &&
           std::memcmp(encoded.data() + 8, "WEBP", 4) == 0;
}

HRESULT ReadSize(Bytes encoded, PictureSize& size) noexcept {
    WebPBitstreamFeatures features;
    if (WebPGetFeatures(encoded.data(), encoded.size(), &features) != VP8_STATUS_OK) return WINCODEC_ERR_BADHEADER;
    if (features.width <= 0 || features.height <= 0) return WINCODEC_ERR_BADHEADER;
    size = {static_cast<UINT>(features.width), static_cast<UINT>(features.height)};
    return S_OK;
}

HRESULT Decode(Bytes encoded, const PictureSize& size, BYTE* pixels, UINT stride) noexcept {
    WebPDecoderConfig config;
    if (!WebPInitDecoderConfig(&config)) return WINCODEC_ERR_BADIMAGE;
    config.output.colorspace = MODE_bgrA;  // Premultiplied.
    config.output.is_external_memory = 1;
    config.output.u.RGBA.rgba = pixels;
    config.output.u.RGBA.stride = static_cast<int>(stride);
    config.output.u.RGBA.size = std::size_t{stride} * size.height;
    const VP8StatusCode status = WebPDecode(encoded.data(), encoded.size(), &config);
    return status == VP8_STATUS_OK ? S_OK : WINCODEC_ERR_BADIMAGE;
}

}  // namespace

const Codec webpCodec{Recognises, ReadSize, Decode};

}  // namespace Platform::Imaging
