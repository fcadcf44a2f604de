#pragma once

#include "Platform/Linux/Base/ComObject.h"
#include "Platform/Linux/Imaging/Codec.h"

#include <wincodec.h>

#include <memory>
#include <vector>

namespace Platform::Imaging {

/// An encoded picture whose header is read. Its pixels are decoded when they are copied, straight into the caller's
/// memory: there is never more than one copy of them. Any thread.
class Frame final : public ComObject<IWICBitmapFrameDecode, IWICBitmapSource> {
public:
    Frame(std::shared_ptr<const std::vector<std::uint8_t>> encoded, const Codec& codec, const PictureSize& size)
        : ComObject("IWICBitmapFrameDecode"), encoded_(std::move(encoded)), codec_(codec), size_(size) {}

    HRESULT GetSize(UINT* width, UINT* height) override;
    /// The one format that callers here ask for, whatever the file has.
    HRESULT GetPixelFormat(WICPixelFormatGUID* format) override;
    HRESULT CopyPixels(const WICRect* rect, UINT stride, UINT size, BYTE* pixels) override;

private:
    ~Frame() override = default;

    std::shared_ptr<const std::vector<std::uint8_t>> encoded_;
    const Codec& codec_;
    PictureSize size_;
};

/// A file with one picture. Any thread.
class Decoder final : public ComObject<IWICBitmapDecoder> {
public:
    Decoder(std::shared_ptr<const std::vector<std::uint8_t>> encoded, const Codec& codec, const PictureSize& size)
        : ComObject("IWICBitmapDecoder"), encoded_(std::move(encoded)), codec_(codec), size_(size) {}

    HRESULT GetFrameCount(UINT* count) override;
    HRESULT GetFrame(UINT index, IWICBitmapFrameDecode** frame) override;

private:
    ~Decoder() override = default;

    std::shared_ptr<const std::vector<std::uint8_t>> encoded_;
    const Codec& codec_;
    PictureSize size_;
};

/// Reads the stream to its end and the header in it. WINCODEC_ERR_COMPONENTNOTFOUND for an unknown format,
/// WINCODEC_ERR_BADHEADER, WINCODEC_ERR_IMAGESIZEOUTOFRANGE for a picture without pixels or beyond the limits.
HRESULT MakeDecoder(IStream& stream, IWICBitmapDecoder** decoder) noexcept;

}  // namespace Platform::Imaging
