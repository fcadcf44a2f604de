#pragma once

#include "Window/WindowConfig.h"

#include <windows.h>

#include <atomic>

namespace Tamborel {

/// A top-level window whose messages reach a virtual function. Nothing is painted through the system's paint cycle: all
/// pixels come from the composition tree.
class AppWindow {
public:
    AppWindow() = default;
    AppWindow(const AppWindow&) = delete;
    AppWindow& operator=(const AppWindow&) = delete;

    /// Destroys the window if it is still there; on the thread that created it.
    virtual ~AppWindow();

    /// Answers a message of the window, on the thread that created it.
    virtual LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam);

    /// The native window, null when there is none. Any thread.
    HWND Handle() const noexcept { return window_.load(std::memory_order_acquire); }

protected:
    /// Registers the class and creates and shows the window. The handle is known here before its first message. False
    /// when the system gives no window. The calling thread owns the window from then on.
    bool CreateNativeWindow(HINSTANCE instance, int showCommand, const WindowConfig& config);

    /// For the last message of a window: the handle is no window any more.
    void ClearHandle() noexcept { window_.store(nullptr, std::memory_order_release); }

    WindowConfig config_;

private:
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    std::atomic<HWND> window_{nullptr};
};

}  // namespace Tamborel
