#include "Picture.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <ostream>
#include <random>

namespace {

constexpr std::uint32_t colorBits = 0x00FFFFFF;

template <class Operation>
void OverEach(Picture& target, const Picture& source, int x, int y, Operation operation) {
    for (int row = 0; row < source.height; ++row) {
        for (int column = 0; column < source.width; ++column) {
            const int toX = x + column;
            const int toY = y + row;
            if (toX < 0 || toY < 0 || toX >= target.width || toY >= target.height) continue;
            target.At(toX, toY) = operation(target.At(toX, toY), source.At(column, row));
        }
    }
}

std::uint32_t Over(std::uint32_t below, std::uint32_t above) {
    const double rest = 1 - static_cast<double>(above >> 24) / 255;
    std::uint32_t result = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const double left = std::round(((below >> shift) & 0xFFU) * rest);
        result |= (((above >> shift) & 0xFFU) + static_cast<std::uint32_t>(left)) << shift;
    }
    return result;
}

}  // namespace

Picture::Picture(int pictureWidth, int pictureHeight, std::uint32_t pixel)
    : width(pictureWidth),
      height(pictureHeight),
      pixels(static_cast<std::size_t>(pictureWidth) * static_cast<std::size_t>(pictureHeight), pixel) {}

Picture Picture::Noise(int width, int height, unsigned seed) {
    Picture picture(width, height);
    std::mt19937 random(seed);
    std::ranges::generate(picture.pixels, [&] { return static_cast<std::uint32_t>(random()); });
    return picture;
}

Picture Picture::TranslucentNoise(int width, int height, unsigned seed) {
    Picture picture(width, height);
    std::mt19937 random(seed);
    for (std::uint32_t& pixel : picture.pixels) {
        // A third of each kind.
        const std::uint32_t kind = static_cast<std::uint32_t>(random()) % 3;
        const std::uint32_t alpha = kind == 0 ? 0 : kind == 1 ? 255 : static_cast<std::uint32_t>(random()) & 0xFFU;
        pixel = alpha << 24;
        for (int shift = 0; shift < 24; shift += 8) {
            pixel |= (static_cast<std::uint32_t>(random()) % (alpha + 1)) << shift;
        }
    }
    return picture;
}

Picture Picture::Of(xcb_connection_t* connection, xcb_drawable_t drawable, int x, int y, int width, int height) {
    Picture picture(width, height);
    const auto cookie = xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, static_cast<std::int16_t>(x),
                                      static_cast<std::int16_t>(y), static_cast<std::uint16_t>(width),
                                      static_cast<std::uint16_t>(height), ~0U);
    const std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> reply(
        xcb_get_image_reply(connection, cookie, nullptr), std::free);
    if (!reply) return Picture(0, 0);
    std::memcpy(picture.pixels.data(), xcb_get_image_data(reply.get()), picture.pixels.size() * sizeof(std::uint32_t));
    return picture.WithoutAlpha();
}

Platform::Pixels Picture::View() {
    return {pixels.data(), static_cast<std::size_t>(width), width, height};
}

void Picture::Lay(const Picture& upper, int x, int y) {
    OverEach(*this, upper, x, y, Over);
}

void Picture::Put(const Picture& upper, int x, int y) {
    OverEach(*this, upper, x, y, [](std::uint32_t, std::uint32_t above) { return above; });
}

Picture Picture::WithoutAlpha() const {
    Picture picture = *this;
    for (std::uint32_t& pixel : picture.pixels) pixel &= colorBits;
    return picture;
}

void PrintTo(const Picture& picture, std::ostream* stream) {
    *stream << picture.width << " by " << picture.height << std::hex;
    for (std::size_t i = 0; i < std::min<std::size_t>(8, picture.pixels.size()); ++i)
        *stream << ' ' << picture.pixels[i];
    *stream << std::dec;
}
