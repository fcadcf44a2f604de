#include "tools/background_shot/Picture.h"

#include <png.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <fstream>
#include <stdexcept>

namespace BackgroundShot {

namespace {

std::uint8_t Byte(float value) {
    // Written so that what isn't a number becomes 0.
    return static_cast<std::uint8_t>(std::lround(255.0F * (value > 0.0F ? std::min(value, 1.0F) : 0.0F)));
}

}  // namespace

void WritePng(const Picture& picture, const std::string& path) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve(picture.texels.size() * 4);
    for (const auto& texel : picture.texels) {
        for (const float component : texel) bytes.push_back(Byte(component));
    }
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = picture.width;
    image.height = picture.height;
    image.format = PNG_FORMAT_RGBA;
    if (!png_image_write_to_file(&image, path.c_str(), 0, bytes.data(), 0, nullptr)) {
        throw std::runtime_error("can't write " + path + ": " + image.message);
    }
}

void WriteRaw(const Picture& picture, const std::string& path) {
    static_assert(std::endian::native == std::endian::little);
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(picture.texels.data()),
               static_cast<std::streamsize>(picture.texels.size() * sizeof(picture.texels[0])));
    file.close();
    if (!file) throw std::runtime_error("can't write " + path);
}

}  // namespace BackgroundShot
