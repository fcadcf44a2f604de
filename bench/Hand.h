// A hand on the display's pointer, and where windows lie.
#pragma once

#include "ScreenWatch.h"

#include <sys/types.h>

#include <cstdint>
#include <memory>
#include <optional>

struct xcb_connection_t;

/// A window's place on the screen, in pixels.
struct WindowPlace {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// A client of the display that DISPLAY names, apart from whoever watches the screen. Throws std::runtime_error where
/// there is no display, or one that takes no events from programs.
class Hand {
public:
    Hand();

    /// Both give the moment just before the event was handed to the server: CLOCK_MONOTONIC, nanoseconds.
    std::int64_t Move(ScreenPoint point);
    std::int64_t Button(bool down);

    /// The first window with a title that says it belongs to this process, as it is shown; nothing while there is none.
    std::optional<WindowPlace> WindowOf(pid_t process);

private:
    std::int64_t Fake(std::uint8_t type, std::uint8_t detail, ScreenPoint point);
    std::optional<std::uint32_t> FindWindow(std::uint32_t below, pid_t process);
    std::uint32_t Property(std::uint32_t window, std::uint32_t property);
    std::uint32_t Atom(const char* name);

    std::shared_ptr<xcb_connection_t> connection_;
    std::uint32_t root_ = 0;
    std::uint32_t processAtom_ = 0;
};
