#include "tools/picture/Picture.h"

#include <png.h>

#include <stdexcept>

namespace Pictures {

namespace {

png_image NewImage() {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    return image;
}

}  // namespace

Picture ReadPng(const std::string& path) {
    png_image image = NewImage();
    if (!png_image_begin_read_from_file(&image, path.c_str())) {
        throw std::runtime_error("can't read " + path + ": " + image.message);
    }
    image.format = PNG_FORMAT_RGBA;
    Picture picture{image.width, image.height, {}};
    picture.texels.resize(std::size_t{image.width} * image.height);
    if (!png_image_finish_read(&image, nullptr, picture.texels.data(), 0, nullptr)) {
        throw std::runtime_error("can't read " + path + ": " + image.message);
    }
    return picture;
}

void WritePng(const Picture& picture, const std::string& path) {
    png_image image = NewImage();
    image.width = picture.width;
    image.height = picture.height;
    image.format = PNG_FORMAT_RGBA;
    if (!png_image_write_to_file(&image, path.c_str(), 0, picture.texels.data(), 0, nullptr)) {
        throw std::runtime_error("can't write " + path + ": " + image.message);
    }
}

}  // namespace Pictures
