// When a picture has come onto the screen, as the X server sees it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

struct xcb_connection_t;

/// A pixel of the screen.
struct ScreenPoint {
    int x = 0;
    int y = 0;
};

/// A part of the screen: 0xRRGGBB, first row on top.
struct ScreenPicture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    std::uint32_t At(ScreenPoint point) const {
        return pixels[static_cast<std::size_t>(point.y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(point.x)];
    }
};

/// Watches the whole screen of the display that DISPLAY names. Nothing else may draw there meanwhile.
class ScreenWatch {
public:
    /// Throws std::runtime_error where there is no display, or one that doesn't tell what is drawn.
    ScreenWatch();

    /// Forgets what has been drawn so far.
    void Clear();

    /// Waits until something of at least `pixels` has been drawn at once. The moment at which that was known here
    /// (CLOCK_MONOTONIC, nanoseconds); nothing after ten seconds.
    std::optional<std::int64_t> AwaitPicture(std::int64_t pixels);

    /// The same with a limit of one's own, a moment of that clock.
    std::optional<std::int64_t> AwaitPicture(std::int64_t pixels, std::int64_t limit);

    /// What single pixels show at this moment, 0xRRGGBB; 0 beyond the screen.
    std::vector<std::uint32_t> Look(const std::vector<ScreenPoint>& points);

    /// The whole screen. Throws std::runtime_error on a screen without pixels of 32 bits.
    ScreenPicture LookAtAll();

private:
    std::shared_ptr<xcb_connection_t> connection_;
    // For looks. Before it reads pixels, a server that draws the pointer itself takes that away and reports this as
    // drawing: to the first connection that report would come in the midst of the answer, which its bytes then shift.
    std::shared_ptr<xcb_connection_t> eyes_;
    std::uint8_t damageEvent_ = 0;
};
