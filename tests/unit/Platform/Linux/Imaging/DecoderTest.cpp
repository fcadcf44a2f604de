// What each format's pixels become, and what is refused.

#include "Decoding.h"

namespace {

using Microsoft::WRL::ComPtr;
using Pictures::Pixels;

void ExpectNear(const Pixels& actual, const Pixels& expected, int tolerance) {
    ASSERT_EQ(actual.width, expected.width);
    ASSERT_EQ(actual.height, expected.height);
    for (std::size_t i = 0; i < actual.values.size(); ++i) {
        for (int shift = 0; shift < 32; shift += 8) {
            ASSERT_NEAR(static_cast<int>(actual.values[i] >> shift & 0xFF),
                        static_cast<int>(expected.values[i] >> shift & 0xFF), tolerance)
                << "pixel " << i;
        }
    }
}

TEST(ImageDecoding, PngComesExact) {
    Imaging imaging;
    const Pixels gradient = Pictures::Gradient(37, 21);
    Pixels pixels;
    ASSERT_EQ(imaging.Decode(Pictures::Png(gradient), pixels), S_OK);
    ExpectNear(pixels, gradient, 0);
}

TEST(ImageDecoding, TransparentPngComesPremultiplied) {
    Imaging imaging;
    Pixels pixels;
    ASSERT_EQ(imaging.Decode(Pictures::Png({2, 2, {0x80FF8000, 0x00FFFFFF, 0xFF102030, 0x01FF0000}}), pixels), S_OK);
    EXPECT_EQ(pixels.values, (std::vector<std::uint32_t>{0x80804000, 0x00000000, 0xFF102030, 0x01010000}));
}

TEST(ImageDecoding, GreyPngComesInThreeColours) {
    Imaging imaging;
    Pixels pixels;
    ASSERT_EQ(imaging.Decode(Pictures::GreyPng({2, 1, {0x40, 0xFF}}), pixels), S_OK);
    EXPECT_EQ(pixels.values, (std::vector<std::uint32_t>{0xFF404040, 0xFFFFFFFF}));
}

TEST(ImageDecoding, JpegComesNear) {
    Imaging imaging;
    const Pixels gradient = Pictures::Gradient(64, 48);
    Pixels pixels;
    ASSERT_EQ(imaging.Decode(Pictures::Jpeg(gradient), pixels), S_OK);
    ExpectNear(pixels, gradient, 12);
}

TEST(ImageDecoding, ProgressiveJpegComesNear) {
    Imaging imaging;
    const Pixels gradient = Pictures::Gradient(64, 48);
    Pixels pixels;
    ASSERT_EQ(imaging.Decode(Pictures::ProgressiveJpeg(gradient), pixels), S_OK);
    ExpectNear(pixels, gradient, 12);
}

TEST(ImageDecoding, JpegOfFourInksComesNear) {
    Imaging imaging;
    const Pixels gradient = Pictures::Gradient(64, 48);
    Pixels pixels;
    ASSERT_EQ(imaging.Decode(Pictures::JpegOfInks(gradient), pixels), S_OK);
    ExpectNear(pixels, gradient, 12);
}

TEST(ImageDecoding, WebpComesExactAndPremultiplied) {
    Imaging imaging;
    Pixels gradient = Pictures::Gradient(37, 21);
    Pixels pixels;
    ASSERT_EQ(imaging.Decode(Pictures::Webp(gradient), pixels), S_OK);
    ExpectNear(pixels, gradient, 0);
    ASSERT_EQ(imaging.Decode(Pictures::Webp({2, 1, {0x80FF8000, 0xFF102030}}), pixels), S_OK);
    ExpectNear(pixels, {2, 1, {0x80804000, 0xFF102030}}, 1);
}

TEST(ImageDecoding, UnknownFormatHasNoDecoder) {
    Imaging imaging;
    Pixels pixels;
    EXPECT_EQ(imaging.Decode({}, pixels), WINCODEC_ERR_COMPONENTNOTFOUND);
    EXPECT_EQ(imaging.Decode(Pictures::FromText("<svg/>"), pixels), WINCODEC_ERR_COMPONENTNOTFOUND);
    EXPECT_EQ(imaging.Decode(Pictures::FromText("\x89PNG\r\n"), pixels), WINCODEC_ERR_COMPONENTNOTFOUND);
}

TEST(ImageDecoding, SignatureAloneIsABadHeader) {
    Imaging imaging;
    Pixels pixels;
    EXPECT_EQ(imaging.Decode(Pictures::FromText("\x89PNG\r\n\x1A\n"), pixels), WINCODEC_ERR_BADHEADER);
    EXPECT_EQ(imaging.Decode(Pictures::FromText("\xFF\xD8\xFF\xE0"), pixels), WINCODEC_ERR_BADHEADER);
    EXPECT_EQ(imaging.Decode(Pictures::FromText("RIFF....WEBP"), pixels), WINCODEC_ERR_BADHEADER);
}

TEST(ImageDecoding, OnlyTheFirstFrameIsThere) {
    Imaging imaging;
    ComPtr<IWICBitmapDecoder> decoder;
    ASSERT_EQ(imaging.Open(Pictures::Png(Pictures::Plain(2, 2, 0xFF000000)), decoder), S_OK);
    UINT count = 0;
    EXPECT_EQ(decoder->GetFrameCount(&count), S_OK);
    EXPECT_EQ(count, 1U);
    ComPtr<IWICBitmapFrameDecode> frame;
    EXPECT_EQ(decoder->GetFrame(1, &frame), WINCODEC_ERR_FRAMEMISSING);
    EXPECT_FALSE(frame);
}

TEST(ImageDecoding, MemoryThatIsTooSmallIsLeftAlone) {
    Imaging imaging;
    ComPtr<IWICBitmapDecoder> decoder;
    ASSERT_EQ(imaging.Open(Pictures::Png(Pictures::Plain(4, 4, 0xFFFFFFFF)), decoder), S_OK);
    ComPtr<IWICBitmapFrameDecode> frame;
    ASSERT_EQ(decoder->GetFrame(0, &frame), S_OK);
    std::vector<BYTE> bytes(64, 7);
    EXPECT_EQ(frame->CopyPixels(nullptr, 16, 63, bytes.data()), WINCODEC_ERR_INSUFFICIENTBUFFER);
    EXPECT_EQ(frame->CopyPixels(nullptr, 12, 64, bytes.data()), E_INVALIDARG);
    EXPECT_EQ(bytes, std::vector<BYTE>(64, 7));
    EXPECT_EQ(frame->CopyPixels(nullptr, 16, 64, bytes.data()), S_OK);
}

TEST(ImageDecoding, ConverterKnowsOneFormatAndOneSource) {
    Imaging imaging;
    ComPtr<IWICFormatConverter> converter;
    ASSERT_EQ(imaging.Factory().CreateFormatConverter(&converter), S_OK);
    UINT side = 0;
    EXPECT_EQ(converter->GetSize(&side, &side), WINCODEC_ERR_NOTINITIALIZED);
    ComPtr<IWICBitmapDecoder> decoder;
    ASSERT_EQ(imaging.Open(Pictures::Png(Pictures::Plain(2, 2, 0xFF000000)), decoder), S_OK);
    ComPtr<IWICBitmapFrameDecode> frame;
    ASSERT_EQ(decoder->GetFrame(0, &frame), S_OK);
    const auto initialize = [&](const GUID& format) {
        return converter->Initialize(frame.Get(), format, WICBitmapDitherTypeNone, nullptr, 0.0,
                                     WICBitmapPaletteTypeMedianCut);
    };
    EXPECT_EQ(initialize(GUID{}), WINCODEC_ERR_UNSUPPORTEDPIXELFORMAT);
    EXPECT_EQ(initialize(GUID_WICPixelFormat32bppPBGRA), S_OK);
    EXPECT_EQ(initialize(GUID_WICPixelFormat32bppPBGRA), WINCODEC_ERR_WRONGSTATE);
}

TEST(ImageDecoding, StreamWithoutBytesCannotBeRead) {
    Imaging imaging;
    ComPtr<IWICStream> stream;
    ASSERT_EQ(imaging.Factory().CreateStream(&stream), S_OK);
    ComPtr<IWICBitmapDecoder> decoder;
    EXPECT_EQ(
        imaging.Factory().CreateDecoderFromStream(stream.Get(), nullptr, WICDecodeMetadataCacheOnDemand, &decoder),
        WINCODEC_ERR_STREAMREAD);
    BYTE byte = 0;
    EXPECT_EQ(stream->InitializeFromMemory(&byte, 1), S_OK);
    EXPECT_EQ(stream->InitializeFromMemory(&byte, 1), WINCODEC_ERR_WRONGSTATE);
}

}  // namespace
