// When a picture has come onto the screen, as the X server sees it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

struct xcb_connection_t;

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

private:
    std::shared_ptr<xcb_connection_t> connection_;
    std::uint8_t damageEvent_ = 0;
};
