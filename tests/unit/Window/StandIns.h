// What a FrameWindow is tested with: a render side without devices, a window count that can be read, and a window that
// lets a test look inside.
#pragma once

#include "tests/fakes/WindowSystem.h"
#include "Window/FrameWindow.h"

#include <gtest/gtest.h>

#include <atomic>
#include <vector>

namespace Tamborel {

/// How the next render sides behave, and what they saw.
struct RenderStandIn {
    std::atomic<bool> setUpSucceeds{true};
    std::atomic<int> made{0};
    std::atomic<int> ended{0};
    std::atomic<bool> countsFrames{true};  ///< Whether it finishes frames in a size loop.
    std::atomic<BackgroundRenderer*> background{nullptr};

    static RenderStandIn& Get();
    void Reset();
};

/// Windows counted in and out.
struct WindowCount {
    static std::atomic<int> added;
    static std::atomic<int> released;
};

class TestWindow : public FrameWindow {
public:
    /// Makes the native window on this thread and starts no other.
    explicit TestWindow(const WindowConfig& config = {}) {
        ApplyConfig(config);
        created = CreateNativeWindow(nullptr, SW_SHOWNORMAL, config);
        Fakes::WindowSystem::Get().ForgetCalls();
    }

    using FrameWindow::State;

    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) { return HandleMessage(message, wParam, lParam); }

    /// All that the ring holds.
    std::vector<InputEvent> Drain() {
        std::vector<InputEvent> events;
        InputEvent event;
        while (State().Input.Pop(event)) events.push_back(event);
        return events;
    }

    bool created = false;
};

class WindowTest : public testing::Test {
protected:
    WindowTest() {
        windows.Reset();
        RenderStandIn::Get().Reset();
        WindowCount::added = 0;
        WindowCount::released = 0;
    }
    ~WindowTest() override { SetDefaultChromeTheme({}); }

    Fakes::WindowSystem& windows = Fakes::WindowSystem::Get();
};

/// A point as pointer messages carry it.
inline LPARAM PackedPoint(int x, int y) {
    return static_cast<LPARAM>((static_cast<unsigned>(y) & 0xFFFF) << 16 | (static_cast<unsigned>(x) & 0xFFFF));
}

}  // namespace Tamborel
