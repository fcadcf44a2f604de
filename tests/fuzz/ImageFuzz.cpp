// A picture's way from bytes to pixels: decoder, frame, converter, memory of exactly the size that it takes.
#include "Expect.h"

#include <shlwapi.h>
#include <wincodec.h>
#include <wrl/client.h>

#include <cstdint>
#include <vector>

using Microsoft::WRL::ComPtr;

namespace {

IWICImagingFactory& Factory() {
    static const ComPtr<IWICImagingFactory> factory = [] {
        ComPtr<IWICImagingFactory> made;
        Expect(SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED)), "an apartment");
        Expect(
            SUCCEEDED(CoCreateInstance(CLSID_WICImagingFactory2, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&made))),
            "the factory");
        return made;
    }();
    return *factory.Get();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    IWICImagingFactory& factory = Factory();
    ComPtr<IStream> stream;
    stream.Attach(SHCreateMemStream(data, static_cast<UINT>(size)));
    ComPtr<IWICBitmapDecoder> decoder;
    const HRESULT opened =
        factory.CreateDecoderFromStream(stream.Get(), nullptr, WICDecodeMetadataCacheOnLoad, &decoder);
    Expect(SUCCEEDED(opened) == (decoder.Get() != nullptr), "a decoder exactly on success");
    if (!decoder) return 0;

    ComPtr<IWICBitmapFrameDecode> frame;
    Expect(SUCCEEDED(decoder->GetFrame(0, &frame)), "a first frame");
    ComPtr<IWICFormatConverter> converter;
    Expect(SUCCEEDED(factory.CreateFormatConverter(&converter)), "a converter");
    Expect(SUCCEEDED(converter->Initialize(frame.Get(), GUID_WICPixelFormat32bppPBGRA, WICBitmapDitherTypeNone, nullptr,
                                           0.0, WICBitmapPaletteTypeMedianCut)),
           "pixels in the one format");
    UINT width = 0;
    UINT height = 0;
    Expect(SUCCEEDED(converter->GetSize(&width, &height)), "a size");
    Expect(width > 0 && height > 0 && std::uint64_t{width} * height <= std::uint64_t{1} << 25U, "a size within limits");
    if (std::uint64_t{width} * height > std::uint64_t{1} << 20U) return 0;  // The fuzzer's time goes further elsewhere.
    std::vector<std::uint32_t> pixels(std::size_t{width} * height);
    const HRESULT copied =
        converter->CopyPixels(nullptr, width * 4, width * height * 4, reinterpret_cast<BYTE*>(pixels.data()));
    if (FAILED(copied)) return 0;
    for (const std::uint32_t p : pixels) {
        const std::uint32_t alpha = p >> 24U;
        Expect((p & 0xFF) <= alpha && (p >> 8U & 0xFF) <= alpha && (p >> 16U & 0xFF) <= alpha, "premultiplied colours");
    }
    return 0;
}
