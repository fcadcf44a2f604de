// Hands that press, turn and type at random, as fast as the display takes it.
#pragma once

#include "User.h"

#include <cstdint>

struct StormCounts {
    int moves = 0;
    int buttons = 0;  ///< Presses and releases, the wheel's among them.
    int keys = 0;     ///< Presses and releases.
};

/// Gives exactly `events` events to a window and to a rim around it, the same ones for the same seed, and lets go of
/// everything at the end. What it spares: presses at the window's upper right end, where its close button is, and in
/// the corner of the screen, where that is once the window is maximised; the key F4, which closes with Alt; the lock
/// keys. Returns early when the window is gone.
StormCounts Storm(User& user, std::uint64_t seed, int events, xcb_window_t window);
