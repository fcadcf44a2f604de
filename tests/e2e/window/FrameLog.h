// A render side that keeps a diary: the real render loop, turn by turn.
#pragma once

#include "Window/RenderLoop.h"
#include "Window/RenderSide.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

/// A frame that a window has finished, with what it was made for.
struct FinishedFrame {
    double milliseconds;  ///< Of a clock that never goes back.
    SIZE size;            ///< Of the surface that covers the window, in pixels.
};

/// A copy of a window's counters.
struct Counts {
    std::uint64_t turns = 0;
    std::uint64_t framePasses = 0;
    std::uint64_t clientPasses = 0;
    std::uint64_t presents = 0;
    std::uint64_t commits = 0;
    std::uint64_t resizes = 0;
};

/// What the render threads of all windows have done, by window. Any thread.
class FrameLog {
public:
    static FrameLog& Get();
    static double Now();

    void Add(HWND window, const FinishedFrame& frame, const Counts& counts);
    void Count(HWND window, const Counts& counts);

    Counts CountsOf(HWND window);
    /// The frames since the last call.
    std::vector<FinishedFrame> TakeFrames(HWND window);

private:
    struct Entry {
        Counts counts;
        std::vector<FinishedFrame> frames;
    };

    std::mutex mutex_;
    std::map<HWND, Entry> entries_;  // guarded by mutex_
};
