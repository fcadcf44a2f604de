// UI thread: size and position of the window and its client area, in physical pixels.
#include "Window/FrameWindow.h"
#include "Window/HitTest.h"

#include <algorithm>
#include <limits>

namespace Tamborel {

namespace {

/// How far the client area stays inside a window that is not maximised.
constexpr LONG rim = 1;

/// One look at the frame counter in a size loop, in milliseconds.
constexpr DWORD frameWait = 50;

std::int32_t WidthOf(const RECT& rectangle) {
    return rectangle.right - rectangle.left;
}

std::int32_t HeightOf(const RECT& rectangle) {
    return rectangle.bottom - rectangle.top;
}

std::int32_t LowWord(LPARAM value) {
    return static_cast<std::int32_t>(value & 0xFFFF);
}

std::int32_t HighWord(LPARAM value) {
    return static_cast<std::int32_t>((value >> 16) & 0xFFFF);
}

}  // namespace

LRESULT FrameWindow::HandleGeometryMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_NCCALCSIZE:
            return OnNcCalcSize(wParam, lParam);
        case WM_SIZE:
            OnSize(wParam, lParam);
            return 0;
        case WM_GETMINMAXINFO:
            OnGetMinMaxInfo(*reinterpret_cast<MINMAXINFO*>(lParam));
            return 0;
        case WM_ENTERSIZEMOVE:
            OnEnterSizeMove();
            return 0;
        case WM_EXITSIZEMOVE:
            OnExitSizeMove();
            return 0;
        case WM_DPICHANGED:
            OnDpiChanged(lParam);
            return 0;
        default:
            return AppWindow::HandleMessage(message, wParam, lParam);
    }
}

LRESULT FrameWindow::OnNcCalcSize(WPARAM wParam, LPARAM lParam) {
    if (!wParam) return AppWindow::HandleMessage(WM_NCCALCSIZE, wParam, lParam);

    const HWND window = Handle();
    RECT& rectangle = reinterpret_cast<NCCALCSIZE_PARAMS*>(lParam)->rgrc[0];
    const RECT proposed = rectangle;
    WindowGeometry geometry;
    geometry.windowWidth = WidthOf(proposed);
    geometry.windowHeight = HeightOf(proposed);

    if (IsZoomed(window)) {
        // The system's frame stays where a maximised window overhangs the screen; its caption band goes.
        DefWindowProcW(window, WM_NCCALCSIZE, wParam, lParam);
        rectangle.top -= GetSystemMetricsForDpi(SM_CYCAPTION, GetDpiForWindow(window));
        // The client surface covers the whole window then, whatever the client area is.
        geometry.clientWidth = geometry.windowWidth;
        geometry.clientHeight = geometry.windowHeight;
    } else {
        rectangle.left += rim;
        rectangle.top += rim;
        rectangle.right -= rim;
        rectangle.bottom -= rim;
        geometry.clientWidth = std::max(0, WidthOf(rectangle));
        geometry.clientHeight = std::max(0, HeightOf(rectangle));
        geometry.clientOffsetX = rectangle.left - proposed.left;
        geometry.clientOffsetY = rectangle.top - proposed.top;
    }
    PublishGeometry(geometry);
    if (state_.InSizeMove) WaitForNextFrame();
    return 0;
}

/// The record first, then the flag: whoever takes the flag finds the record complete.
void FrameWindow::PublishGeometry(const WindowGeometry& geometry) {
    state_.PendingGeometry.Store(geometry);
    state_.ResizePending = true;
}

/// Holds the system's size loop until the render thread has finished a frame, so that the window's edge and what is in
/// it move together.
void FrameWindow::WaitForNextFrame() {
    const std::uint64_t before = state_.FrameCounter;
    if (before == std::numeric_limits<std::uint64_t>::max()) return;
    while (state_.FrameCounter < before + 1) {
        // A render thread that was told to end finishes no frame any more, and its owner is about to join this one.
        if (threads_ && threads_->StopRequested()) return;
        state_.FrameTickEvent.Wait(frameWait);
    }
}

void FrameWindow::OnSize(WPARAM wParam, LPARAM lParam) {
    if (wParam == SIZE_MINIMIZED || !state_.SurfacesReady) return;
    WindowGeometry geometry = MeasuredGeometry(LowWord(lParam), HighWord(lParam));
    if (IsZoomed(Handle())) {
        geometry.clientWidth = geometry.windowWidth;
        geometry.clientHeight = geometry.windowHeight;
        geometry.clientOffsetX = 0;
        geometry.clientOffsetY = 0;
    }
    PublishGeometry(geometry);
}

/// The window as it stands, with a client area of the given size.
WindowGeometry FrameWindow::MeasuredGeometry(std::int32_t clientWidth, std::int32_t clientHeight) const {
    RECT outer{};
    GetWindowRect(Handle(), &outer);
    POINT origin{0, 0};
    ClientToScreen(Handle(), &origin);
    return {clientWidth, clientHeight, origin.x - outer.left, origin.y - outer.top, WidthOf(outer), HeightOf(outer)};
}

void FrameWindow::OnEnterSizeMove() {
    state_.FrameCounter = 0;
    state_.InSizeMove = true;
    state_.ResizePending = true;
    state_.FrameDirty = true;
    state_.ClientDirty = true;
    state_.CommitNeeded = true;
}

void FrameWindow::OnExitSizeMove() {
    state_.InSizeMove = false;
    if (!state_.SurfacesReady) return;
    RECT client{};
    GetClientRect(Handle(), &client);
    PublishGeometry(MeasuredGeometry(WidthOf(client), HeightOf(client)));
}

void FrameWindow::OnGetMinMaxInfo(MINMAXINFO& info) {
    ThemeMetrics theme;
    {
        // A chrome would know better than the theme; without one the theme speaks.
        const std::lock_guard lock(state_.Theme.Mutex);
        theme = state_.Theme.Metrics;
    }
    const MinimumSize minimum = MinimumWindowSize(theme, DpiScale());
    info.ptMinTrackSize.x = minimum.width;
    info.ptMinTrackSize.y = minimum.height;
}

void FrameWindow::OnDpiChanged(LPARAM lParam) {
    const RECT& suggested = *reinterpret_cast<const RECT*>(lParam);
    SetWindowPos(Handle(), nullptr, suggested.left, suggested.top, WidthOf(suggested), HeightOf(suggested),
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

float FrameWindow::DpiScale() const {
    return static_cast<float>(GetDpiForWindow(Handle())) / 96.0F;
}

}  // namespace Tamborel
