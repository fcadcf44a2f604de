#include "tests/fakes/FakeImaging.h"

#include <shlwapi.h>
#include <wrl/client.h>

#include <atomic>

namespace Fakes {

namespace {

std::atomic<UINT> pictureWidth{1};
std::atomic<UINT> pictureHeight{1};

class FakeImagingStream final : public FakeObject<IWICStream, IStream, ISequentialStream> {
public:
    FakeImagingStream() : FakeObject("ImagingStream") {}
    HRESULT InitializeFromMemory(BYTE* bytes, DWORD size) override {
        return Call("InitializeFromMemory", bytes ? static_cast<int>(*bytes) : -1, size);
    }
    HRESULT Read(void*, ULONG size, ULONG* read) override {
        if (read) *read = 0;
        const HRESULT result = Call("Read", size);
        return FAILED(result) ? result : S_FALSE;
    }
};

class FakeMemoryStream final : public FakeObject<IStream, ISequentialStream> {
public:
    FakeMemoryStream() : FakeObject("MemoryStream") {}
    HRESULT Read(void*, ULONG size, ULONG* read) override {
        if (read) *read = 0;
        const HRESULT result = Call("Read", size);
        return FAILED(result) ? result : S_FALSE;
    }
};

/// A frame, or a converter that makes one of a frame.
template <class Interface>
class FakeSource : public FakeObject<Interface, IWICBitmapSource> {
public:
    using FakeObject<Interface, IWICBitmapSource>::FakeObject;
    HRESULT GetSize(UINT* width, UINT* height) override {
        *width = pictureWidth;
        *height = pictureHeight;
        return S_OK;
    }
    HRESULT GetPixelFormat(WICPixelFormatGUID* format) override {
        *format = GUID_WICPixelFormat32bppPBGRA;
        return S_OK;
    }
    HRESULT CopyPixels(const WICRect*, UINT stride, UINT size, BYTE*) override {
        return this->Call("CopyPixels", stride, size);
    }
};

class FakeFrame final : public FakeSource<IWICBitmapFrameDecode> {
public:
    FakeFrame() : FakeSource("Frame") {}
};

class FakeConverter final : public FakeSource<IWICFormatConverter> {
public:
    FakeConverter() : FakeSource("Converter") {}
    HRESULT Initialize(IWICBitmapSource* source, REFWICPixelFormatGUID format, WICBitmapDitherType dither,
                       IWICPalette* palette, double threshold, WICBitmapPaletteType translate) override {
        const HRESULT result =
            Call("Initialize", source, std::string(format == GUID_WICPixelFormat32bppPBGRA ? "32bppPBGRA" : "?"),
                 dither, std::string(palette ? "palette" : "null"), threshold, translate);
        if (SUCCEEDED(result)) source_ = source;
        return result;
    }

private:
    Microsoft::WRL::ComPtr<IWICBitmapSource> source_;
};

class FakeDecoder final : public FakeObject<IWICBitmapDecoder> {
public:
    explicit FakeDecoder(IStream* stream) : FakeObject("Decoder"), stream_(stream) {}
    HRESULT GetFrameCount(UINT* count) override {
        *count = 1;
        return S_OK;
    }
    HRESULT GetFrame(UINT index, IWICBitmapFrameDecode** frame) override {
        return Make<FakeFrame>(Call("GetFrame", index), frame);
    }

private:
    Microsoft::WRL::ComPtr<IStream> stream_;
};

}  // namespace

void SetPictureSize(UINT width, UINT height) {
    pictureWidth = width;
    pictureHeight = height;
}

HRESULT FakeImagingFactory::CreateDecoderFromStream(IStream* stream, const GUID* vendor, WICDecodeOptions options,
                                                    IWICBitmapDecoder** decoder) {
    const HRESULT result = Call("CreateDecoderFromStream", stream, std::string(vendor ? "vendor" : "null"), options);
    return Make<FakeDecoder>(result, decoder, stream);
}

HRESULT FakeImagingFactory::CreateFormatConverter(IWICFormatConverter** converter) {
    return Make<FakeConverter>(Call("CreateFormatConverter"), converter);
}

HRESULT FakeImagingFactory::CreateStream(IWICStream** stream) {
    return Make<FakeImagingStream>(Call("CreateStream"), stream);
}

}  // namespace Fakes

FAKE_FUNCTION IStream* WINAPI SHCreateMemStream(const BYTE*, UINT size) noexcept {
    return SUCCEEDED(Fakes::FreeCall("SHCreateMemStream", size)) ? new Fakes::FakeMemoryStream : nullptr;
}
