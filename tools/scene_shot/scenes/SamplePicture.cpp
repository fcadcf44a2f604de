#include "tools/scene_shot/scenes/SamplePicture.h"

#include <png.h>

#include <cstdio>  // ahead of jpeglib.h, which uses it

#include <jpeglib.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <stdexcept>

namespace SceneShot {

namespace {

using Texel = std::array<std::uint8_t, 4>;

/// `x` and `y` from 0 to 1.
Texel At(float x, float y) {
    const auto byte = [](float value) { return static_cast<std::uint8_t>(std::lround(255.0F * value)); };
    const float hill = 0.68F + 0.12F * std::sin(6.0F * x);
    if (y > hill) return {30, byte(0.45F - 0.25F * y), 60, 255};
    const float sun = std::hypot((x - 0.7F) * 4.0F / 3.0F, y - 0.35F);
    if (sun < 0.16F) return {255, 220, 120, 255};
    return {byte(0.15F + 0.55F * y), byte(0.30F + 0.35F * y), byte(0.75F - 0.1F * y), 255};
}

bool IsCutCorner(float x, float y) {
    const float radius = 0.15F;
    const float dx = std::max(radius - x * 4.0F / 3.0F, x * 4.0F / 3.0F - (4.0F / 3.0F - radius));
    const float dy = std::max(radius - y, y - (1.0F - radius));
    return dx > 0 && dy > 0 && std::hypot(dx, dy) > radius;
}

std::vector<Texel> Texels(std::uint32_t width, std::uint32_t height) {
    std::vector<Texel> texels;
    texels.reserve(std::size_t{width} * height);
    for (std::uint32_t row = 0; row < height; ++row) {
        for (std::uint32_t column = 0; column < width; ++column) {
            const float x = (static_cast<float>(column) + 0.5F) / static_cast<float>(width);
            const float y = (static_cast<float>(row) + 0.5F) / static_cast<float>(height);
            texels.push_back(IsCutCorner(x, y) ? Texel{} : At(x, y));
        }
    }
    return texels;
}

}  // namespace

std::vector<std::uint8_t> SamplePng(std::uint32_t width, std::uint32_t height) {
    const std::vector<Texel> texels = Texels(width, height);
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = width;
    image.height = height;
    image.format = PNG_FORMAT_RGBA;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::vector<std::uint8_t> bytes(size);
    if (!png_image_write_to_memory(&image, bytes.data(), &size, 0, texels.data(), 0, nullptr)) {
        throw std::runtime_error(image.message);
    }
    bytes.resize(size);
    return bytes;
}

std::vector<std::uint8_t> SampleJpeg(std::uint32_t width, std::uint32_t height) {
    const std::vector<Texel> texels = Texels(width, height);
    jpeg_error_mgr errors{};
    jpeg_compress_struct jpeg{};
    jpeg.err = jpeg_std_error(&errors);  // ends the program on an error: the input is ours
    jpeg_create_compress(&jpeg);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&jpeg, &bytes, &size);
    jpeg.image_width = width;
    jpeg.image_height = height;
    jpeg.input_components = 3;
    jpeg.in_color_space = JCS_RGB;
    jpeg_set_defaults(&jpeg);
    jpeg_set_quality(&jpeg, 90, TRUE);
    jpeg_start_compress(&jpeg, TRUE);
    std::vector<std::uint8_t> row(std::size_t{width} * 3);
    while (jpeg.next_scanline < height) {
        for (std::uint32_t x = 0; x < width; ++x) {
            const Texel& texel = texels[std::size_t{jpeg.next_scanline} * width + x];
            std::copy_n(texel.begin(), 3, row.begin() + std::ptrdiff_t{x} * 3);
        }
        JSAMPROW rows[] = {row.data()};
        jpeg_write_scanlines(&jpeg, rows, 1);
    }
    jpeg_finish_compress(&jpeg);
    jpeg_destroy_compress(&jpeg);
    std::vector<std::uint8_t> copy(bytes, bytes + size);
    std::free(bytes);
    return copy;
}

}  // namespace SceneShot
