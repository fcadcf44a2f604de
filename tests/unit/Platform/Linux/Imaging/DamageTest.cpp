// Files that end early, files with wrong bits, files that claim to be large: no crash, nothing written past the
// picture, no unbounded memory. Fixed seeds: a failure can be run again.

#include "Decoding.h"

#include <fstream>
#include <random>
#include <string>

namespace {

using Pictures::Bytes;
using Pictures::Pixels;

struct Format {
    const char* name;
    Bytes (*write)(const Pixels&);
};
void PrintTo(const Format& format, std::ostream* stream) {
    *stream << format.name;
}

class DamagedImage : public testing::TestWithParam<Format> {};

TEST_P(DamagedImage, EveryTruncationFailsOrIsTheWholePicture) {
    Imaging imaging;
    const Bytes whole = GetParam().write(Pictures::Gradient(40, 30));
    Pixels expected;
    ASSERT_EQ(imaging.Decode(whole, expected), S_OK);
    int failures = 0;
    for (std::size_t size = 0; size < whole.size(); ++size) {
        Pixels pixels;
        const HRESULT result = imaging.Decode(Bytes(whole.begin(), whole.begin() + static_cast<long>(size)), pixels);
        if (FAILED(result)) {
            ++failures;
        } else {
            // Formats end in a mark that carries no pixels.
            EXPECT_GE(size + 16, whole.size());
            EXPECT_EQ(pixels.values, expected.values) << size << " of " << whole.size() << " bytes";
        }
    }
    EXPECT_GE(failures, static_cast<int>(whole.size()) - 16);
}

TEST_P(DamagedImage, FlippedBitsNeverCrashNorWritePastThePicture) {
    Imaging imaging;
    const Bytes whole = GetParam().write(Pictures::Gradient(40, 30));
    std::mt19937 random(20240607);
    for (int round = 0; round < 1500; ++round) {
        Bytes bytes = whole;
        for (unsigned flips = 1 + random() % 8; flips > 0; --flips) {
            bytes[random() % bytes.size()] ^= static_cast<std::uint8_t>(1U << random() % 8);
        }
        Pixels pixels;
        if (SUCCEEDED(imaging.Decode(bytes, pixels))) {
            ASSERT_LE(static_cast<std::uint64_t>(pixels.width) * static_cast<std::uint64_t>(pixels.height),
                      std::uint64_t{1} << 25U);
            for (const std::uint32_t p : pixels.values) {
                // Premultiplied: no colour exceeds the alpha.
                ASSERT_TRUE((p & 0xFF) <= p >> 24 && (p >> 8 & 0xFF) <= p >> 24 && (p >> 16 & 0xFF) <= p >> 24);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, DamagedImage,
                         testing::Values(Format{"Png", Pictures::Png}, Format{"Jpeg", Pictures::Jpeg},
                                         Format{"ProgressiveJpeg", Pictures::ProgressiveJpeg},
                                         Format{"Webp", Pictures::Webp}),
                         [](const auto& info) { return std::string(info.param.name); });

/// Most memory that the process ever held, in KiB.
long PeakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:")) return std::stol(line.substr(6));
    }
    return 0;
}

TEST(OversizedImage, PngOf60000By60000IsRefusedAtNoCost) {
    Imaging imaging;
    Pixels pixels;
    EXPECT_EQ(imaging.Decode(Pictures::PngThatClaims(1, 1), pixels), S_OK) << "the maker itself is at fault";
    const long before = PeakMemory();
    EXPECT_EQ(imaging.Decode(Pictures::PngThatClaims(60000, 60000), pixels), WINCODEC_ERR_IMAGESIZEOUTOFRANGE);
    EXPECT_LT(PeakMemory() - before, 16 * 1024);
}

TEST(OversizedImage, LimitsAreOnSidesAndOnArea) {
    Imaging imaging;
    Microsoft::WRL::ComPtr<IWICBitmapDecoder> decoder;
    EXPECT_EQ(imaging.Open(Pictures::PngThatClaims(16385, 1), decoder), WINCODEC_ERR_IMAGESIZEOUTOFRANGE);
    EXPECT_EQ(imaging.Open(Pictures::PngThatClaims(1, 16385), decoder), WINCODEC_ERR_IMAGESIZEOUTOFRANGE);
    EXPECT_EQ(imaging.Open(Pictures::PngThatClaims(16384, 2049), decoder), WINCODEC_ERR_IMAGESIZEOUTOFRANGE);
    EXPECT_EQ(imaging.Open(Pictures::PngThatClaims(16384, 2048), decoder), S_OK);
}

TEST(OversizedImage, JpegOf65500By65500IsRefused) {
    Imaging imaging;
    Bytes bytes = Pictures::Jpeg(Pictures::Plain(8, 8, 0xFF808080));
    for (std::size_t i = 0; i + 9 < bytes.size(); ++i) {
        // The start of a frame: marker, length, bits, then height and width.
        if (bytes[i] == 0xFF && bytes[i + 1] == 0xC0) {
            for (std::size_t side : {i + 5, i + 7}) {
                bytes[side] = 0xFF;
                bytes[side + 1] = 0xDC;
            }
            break;
        }
    }
    Pixels pixels;
    EXPECT_EQ(imaging.Decode(bytes, pixels), WINCODEC_ERR_IMAGESIZEOUTOFRANGE);
}

}  // namespace
