#include "Platform/Linux/Imaging/Codec.h"

namespace Platform::Imaging {

const Codec* FindCodec(Bytes encoded) noexcept {
    for (const Codec* codec : {&pngCodec, &jpegCodec, &webpCodec}) {
        if (codec->recognises(encoded)) return codec;
    }
    return nullptr;
}

void Premultiply(BYTE* row, UINT width) noexcept {
    for (BYTE* pixel = row; pixel != row + std::size_t{width} * 4; pixel += 4) {
        const unsigned alpha = pixel[3];
        if (alpha == 255) continue;
        for (int i = 0; i < 3; ++i) {
            // x / 255 to the nearest: (y + y / 256) / 256 for y = x + 128, exact below 65536.
            const unsigned product = pixel[i] * alpha + 128;
            pixel[i] = static_cast<BYTE>((product + (product >> 8U)) >> 8U);
        }
    }
}

}  // namespace Platform::Imaging
