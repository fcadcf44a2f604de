#include "tests/support/Pictures.h"

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include <jpeglib.h>
#include <png.h>
#include <webp/encode.h>
#include <zlib.h>

namespace Pictures {

namespace {

Bytes WritePng(const Pixels& pixels, png_uint_32 format, const void* rows) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(pixels.width);
    image.height = static_cast<png_uint_32>(pixels.height);
    image.format = format;
    png_alloc_size_t size = 0;
    if (!png_image_write_to_memory(&image, nullptr, &size, 0, rows, 0, nullptr)) throw std::runtime_error("png");
    Bytes bytes(size);
    if (!png_image_write_to_memory(&image, bytes.data(), &size, 0, rows, 0, nullptr)) throw std::runtime_error("png");
    bytes.resize(size);
    return bytes;
}

enum class Kind { Sequential, Progressive, Inks };

Bytes WriteJpeg(const Pixels& pixels, Kind kind) {
    jpeg_compress_struct info;
    jpeg_error_mgr errors;
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    unsigned char* written = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&info, &written, &size);
    info.image_width = static_cast<JDIMENSION>(pixels.width);
    info.image_height = static_cast<JDIMENSION>(pixels.height);
    info.input_components = 4;
    info.in_color_space = kind == Kind::Inks ? JCS_CMYK : JCS_EXT_BGRA;
    jpeg_set_defaults(&info);
    jpeg_set_quality(&info, 95, TRUE);
    if (kind == Kind::Progressive) jpeg_simple_progression(&info);
    jpeg_start_compress(&info, TRUE);
    std::vector<std::uint32_t> row(static_cast<std::size_t>(pixels.width));
    while (info.next_scanline < info.image_height) {
        const std::size_t first = std::size_t{info.next_scanline} * row.size();
        for (std::size_t x = 0; x < row.size(); ++x) {
            const std::uint32_t p = pixels.values[first + x];
            // Inverted inks in the order cyan, magenta, yellow, black: the red, green and blue that they leave.
            row[x] = kind == Kind::Inks ? (p >> 16 & 0xFF) | (p & 0xFF00) | (p & 0xFF) << 16 | 0xFF000000 : p;
        }
        auto* line = reinterpret_cast<JSAMPLE*>(row.data());
        jpeg_write_scanlines(&info, &line, 1);
    }
    jpeg_finish_compress(&info);
    Bytes bytes(written, written + size);
    jpeg_destroy_compress(&info);
    std::free(written);
    return bytes;
}

void PutBigEndian(std::uint8_t* bytes, std::uint32_t value) {
    for (int i = 0; i < 4; ++i) bytes[i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
}

}  // namespace

Pixels Plain(int width, int height, std::uint32_t color) {
    return {width, height, std::vector(static_cast<std::size_t>(width * height), color)};
}

Pixels Gradient(int width, int height) {
    Pixels pixels{width, height, {}};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const auto red = static_cast<std::uint32_t>(255 * x / width);
            const auto green = static_cast<std::uint32_t>(255 * y / height);
            pixels.values.push_back(0xFF000080U | red << 16U | green << 8U);
        }
    }
    return pixels;
}

Bytes Png(const Pixels& pixels) {
    return WritePng(pixels, PNG_FORMAT_BGRA, pixels.values.data());
}

Bytes GreyPng(const Pixels& pixels) {
    Bytes grey;
    for (const std::uint32_t p : pixels.values) grey.push_back(static_cast<std::uint8_t>(p));
    return WritePng(pixels, PNG_FORMAT_GRAY, grey.data());
}

Bytes PngThatClaims(std::uint32_t width, std::uint32_t height) {
    Bytes bytes = Png(Plain(1, 1, 0xFFFFFFFF));
    // After the signature: length, "IHDR", thirteen bytes of which the size is the first eight, checksum.
    std::uint8_t* const header = bytes.data() + 12;
    PutBigEndian(header + 4, width);
    PutBigEndian(header + 8, height);
    PutBigEndian(header + 17, static_cast<std::uint32_t>(crc32(0, header, 17)));
    return bytes;
}

Bytes Jpeg(const Pixels& pixels) {
    return WriteJpeg(pixels, Kind::Sequential);
}

Bytes ProgressiveJpeg(const Pixels& pixels) {
    return WriteJpeg(pixels, Kind::Progressive);
}

Bytes JpegOfInks(const Pixels& pixels) {
    return WriteJpeg(pixels, Kind::Inks);
}

Bytes Webp(const Pixels& pixels) {
    std::uint8_t* written = nullptr;
    const std::size_t size = WebPEncodeLosslessBGRA(reinterpret_cast<const std::uint8_t*>(pixels.values.data()),
                                                    pixels.width, pixels.height, pixels.width * 4, &written);
    Bytes bytes(written, written + size);
    WebPFree(written);
    return bytes;
}

Bytes FromText(std::string_view text) {
    return {text.begin(), text.end()};
}

}  // namespace Pictures
