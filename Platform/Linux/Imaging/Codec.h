// The seam between the imaging objects and the libraries that know the formats.
#pragma once

#include <wincodec.h>

#include <cstddef>
#include <cstdint>
#include <span>

namespace Platform::Imaging {

using Bytes = std::span<const std::uint8_t>;

/// No larger picture is decoded, so that a small file can't ask for a lot of memory: 8K video has as many pixels, and
/// they take 128 MiB.
inline constexpr std::uint64_t maxPixels = std::uint64_t{1} << 25U;
inline constexpr UINT maxSide = 16384;
/// Nor are more encoded bytes looked at.
inline constexpr std::size_t maxEncodedBytes = std::size_t{1} << 27U;

struct PictureSize {
    UINT width = 0;
    UINT height = 0;
};

/// One format. Nothing here throws, whatever the bytes are.
struct Codec {
    bool (*recognises)(Bytes encoded) noexcept;
    /// Reads the header alone.
    HRESULT (*readSize)(Bytes encoded, PictureSize& size) noexcept;
    /// Decodes into rows of `stride` bytes, premultiplied BGRA, for the size that the header tells. Bytes that end
    /// early or are damaged are a failure; then the pixels are anything.
    HRESULT (*decode)(Bytes encoded, const PictureSize& size, BYTE* pixels, UINT stride) noexcept;
};

extern const Codec pngCodec;
extern const Codec jpegCodec;
extern const Codec webpCodec;

/// The format of the bytes, judged by their first few; null for one that is not known.
const Codec* FindCodec(Bytes encoded) noexcept;

/// Multiplies the colours of a row of BGRA pixels by their alpha.
void Premultiply(BYTE* row, UINT width) noexcept;

}  // namespace Platform::Imaging
