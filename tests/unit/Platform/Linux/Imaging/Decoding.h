// The way from bytes to pixels that an image takes.
#pragma once

#include "tests/support/Pictures.h"

#include <wincodec.h>
#include <wrl/client.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

/// A thread that may make objects, and the factory.
class Imaging {
public:
    Imaging() {
        EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
        EXPECT_EQ(CoCreateInstance(CLSID_WICImagingFactory2, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&factory_)),
                  S_OK);
    }
    ~Imaging() {
        factory_.Reset();
        CoUninitialize();
    }

    IWICImagingFactory2& Factory() { return *factory_.Get(); }

    /// Until the header is read.
    HRESULT Open(const Pictures::Bytes& bytes, Microsoft::WRL::ComPtr<IWICBitmapDecoder>& decoder) {
        Microsoft::WRL::ComPtr<IWICStream> stream;
        EXPECT_EQ(factory_->CreateStream(&stream), S_OK);
        static BYTE none = 0;
        BYTE* const first = bytes.empty() ? &none : const_cast<BYTE*>(bytes.data());
        EXPECT_EQ(stream->InitializeFromMemory(first, static_cast<DWORD>(bytes.size())), S_OK);
        return factory_->CreateDecoderFromStream(stream.Get(), nullptr, WICDecodeMetadataCacheOnLoad, &decoder);
    }

    /// All the way. Premultiplied pixels, 0xAARRGGBB.
    HRESULT Decode(const Pictures::Bytes& bytes, Pictures::Pixels& pixels) {
        pixels = {};
        Microsoft::WRL::ComPtr<IWICBitmapDecoder> decoder;
        if (const HRESULT result = Open(bytes, decoder); FAILED(result)) return result;
        Microsoft::WRL::ComPtr<IWICBitmapFrameDecode> frame;
        EXPECT_EQ(decoder->GetFrame(0, &frame), S_OK);
        Microsoft::WRL::ComPtr<IWICFormatConverter> converter;
        EXPECT_EQ(factory_->CreateFormatConverter(&converter), S_OK);
        EXPECT_EQ(converter->Initialize(frame.Get(), GUID_WICPixelFormat32bppPBGRA, WICBitmapDitherTypeNone, nullptr,
                                        0.0, WICBitmapPaletteTypeMedianCut),
                  S_OK);
        UINT width = 0;
        UINT height = 0;
        EXPECT_EQ(converter->GetSize(&width, &height), S_OK);
        // What lies behind the last pixel belongs to somebody else.
        static constexpr std::uint32_t guard = 0xDEADBEEF;
        std::vector<std::uint32_t> values(std::size_t{width} * height + 16, guard);
        const HRESULT result =
            converter->CopyPixels(nullptr, width * 4, width * height * 4, reinterpret_cast<BYTE*>(values.data()));
        for (std::size_t i = std::size_t{width} * height; i < values.size(); ++i) EXPECT_EQ(values[i], guard);
        if (FAILED(result)) return result;
        values.resize(std::size_t{width} * height);
        pixels = {static_cast<int>(width), static_cast<int>(height), std::move(values)};
        return S_OK;
    }

private:
    Microsoft::WRL::ComPtr<IWICImagingFactory2> factory_;
};
