// Fakes of WIC: every picture has the size that the test sets, whatever its bytes.
#pragma once

#include "tests/fakes/FakeObject.h"

#include <wincodec.h>

namespace Fakes {

/// The size of the pictures that decoders hand out from now on.
void SetPictureSize(UINT width, UINT height);

class FakeImagingFactory final : public FakeObject<IWICImagingFactory2, IWICImagingFactory> {
public:
    FakeImagingFactory() : FakeObject("ImagingFactory") {}
    HRESULT CreateDecoderFromStream(IStream* stream, const GUID* vendor, WICDecodeOptions options,
                                    IWICBitmapDecoder** decoder) override;
    HRESULT CreateFormatConverter(IWICFormatConverter** converter) override;
    HRESULT CreateStream(IWICStream** stream) override;
};

}  // namespace Fakes
