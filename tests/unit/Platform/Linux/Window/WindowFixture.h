// A window on a display of its own that writes down its messages.
#pragma once

#include "Platform/Linux/Window/NativeWindow.h"
#include "TestDisplay.h"

#include <gtest/gtest.h>
#include <windows.h>
#include <windowsx.h>

#include <functional>
#include <string>
#include <vector>

struct SeenMessage {
    UINT message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
};

class WindowTest : public testing::Test {
protected:
    WindowTest();
    ~WindowTest() override;

    /// Makes the window at 100, 50 with 400 by 300 pixels and shows it. Its hit-test: a border of 8 pixels, 40 of
    /// caption with a close button in the last 60 pixels, the rest client area, which is the window less 1 pixel.
    void Make(DWORD style = WS_OVERLAPPEDWINDOW, UINT classStyle = 0);
    HWND CreateHidden(DWORD style = WS_OVERLAPPEDWINDOW, UINT classStyle = 0);

    /// Runs the message loop until the condition holds. False after a long time.
    [[nodiscard]] bool PumpUntil(const std::function<bool()>& condition);
    /// Runs it until all that has happened on the display so far has been handled.
    void PumpAll();
    [[nodiscard]] bool PumpUntilSeen(UINT message);

    bool Saw(UINT message) const;
    /// The last one of its kind; a failure and zeros when there is none.
    SeenMessage Last(UINT message) const;
    std::size_t Count(UINT message) const;
    /// Which of these kinds came, in the order in which they came.
    std::vector<UINT> Order(const std::vector<UINT>& kinds) const;
    xcb_window_t XWindow() const { return Platform::ViewNativeWindow(window_)->window; }
    RECT Place() const;

    /// What the window does instead of its usual answer; called first.
    std::function<bool(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)> answer_;

    TestDisplay& display_ = TestDisplay::Get();
    HWND window_ = nullptr;
    std::vector<SeenMessage> seen_;
    bool quit_ = false;
    SIZE least_{200, 100};

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    int HitTest(POINT place) const;
};

inline LPARAM Packed(int x, int y) {
    return static_cast<LPARAM>(static_cast<DWORD>(MAKELONG(x, y)));
}
