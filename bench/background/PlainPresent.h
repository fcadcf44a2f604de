// The least that brings a picture in memory onto an X screen: a copy into shared memory and a request to show it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

struct xcb_connection_t;

namespace BackgroundBench {

/// A window of its own with room for one picture. Throws std::runtime_error where there is no display or no shared
/// memory.
class PlainPresent {
public:
    PlainPresent(std::uint32_t width, std::uint32_t height);
    ~PlainPresent();
    PlainPresent(const PlainPresent&) = delete;
    PlainPresent& operator=(const PlainPresent&) = delete;

    /// Copies the picture and waits until the server has it on the screen.
    void Show();

private:
    std::shared_ptr<xcb_connection_t> connection_;
    std::uint16_t width_;
    std::uint16_t height_;
    std::uint32_t window_ = 0;
    std::uint32_t graphics_ = 0;
    std::uint32_t segment_ = 0;
    std::uint8_t depth_ = 0;
    std::byte* shared_ = nullptr;
    std::vector<std::byte> picture_;  // Stands for the device's image, which on a software device is memory as well.
};

}  // namespace BackgroundBench
