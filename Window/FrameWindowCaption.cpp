// UI thread: hit-testing and the caption's buttons, which act on release and through the system's own commands.
#include "Window/FrameWindow.h"
#include "Window/HitTest.h"
#include "Window/MessageParameters.h"

namespace Tamborel {

LRESULT FrameWindow::HandleCaptionMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_NCHITTEST:
            return HitTestScreenPoint(PointOf(lParam));
        case WM_NCMOUSEMOVE:
            ArmTracking();
            state_.HoverZone = ZoneFromHit(wParam);
            break;
        case WM_NCLBUTTONDOWN:
        case WM_NCLBUTTONDBLCLK:
            return OnNcButtonDown(message, wParam, lParam);
        case WM_NCLBUTTONUP:
            if (EndPress(PointOf(lParam), lParam, CapturedButton::NonClient)) return 0;
            break;
        case WM_CAPTURECHANGED:
            state_.PressedZone = NoZone;
            return 0;
        case WM_NCMOUSELEAVE:
            OnPointerLeft();
            break;
        case WM_MOUSELEAVE:
            OnPointerLeft();
            return 0;
        default:
            break;
    }
    return DefWindowProcW(Handle(), message, wParam, lParam);
}

int FrameWindow::HitTestScreenPoint(POINT screenPoint) const {
    const HWND window = Handle();
    if (!window) return HTCLIENT;
    RECT outer{};
    GetWindowRect(window, &outer);
    const CaptionPoint point{screenPoint.x - outer.left, screenPoint.y - outer.top, outer.right - outer.left,
                             outer.bottom - outer.top};
    return HitTestCaption(state_.CaptionMetrics.Load(), point, DpiScale());
}

/// Asks for one leave message. Both kinds of move arm it in the same way, since the pointer passes between the caption
/// and the client area without leaving the window.
void FrameWindow::ArmTracking() {
    if (tracking_) return;
    TRACKMOUSEEVENT track{};
    track.cbSize = sizeof(track);
    track.dwFlags = TME_LEAVE | TME_NONCLIENT;
    track.hwndTrack = Handle();
    TrackMouseEvent(&track);
    tracking_ = true;
}

void FrameWindow::OnPointerLeft() {
    tracking_ = false;
    state_.HoverZone = NoZone;
}

LRESULT FrameWindow::OnNcButtonDown(UINT message, WPARAM wParam, LPARAM lParam) {
    const std::int32_t zone = ZoneFromHit(wParam);
    state_.PressedZone = zone;
    // Outside the buttons the system moves or sizes the window.
    if (zone == NoZone) return DefWindowProcW(Handle(), message, wParam, lParam);
    SetCapture(Handle());
    return 0;
}

/// Ends the press of a caption button at a point, and runs its command if the pointer is still over it. False when no
/// button was pressed. `lParam` goes with the command as it came.
bool FrameWindow::EndPress(POINT screenPoint, LPARAM lParam, CapturedButton button) {
    // Read and cleared in one step before the capture goes, since its end is told by a message that clears it as well.
    const std::int32_t pressed = state_.PressedZone.exchange(NoZone);
    if (button == CapturedButton::Client && pressed == NoZone) return false;
    const HWND window = Handle();
    if (GetCapture() == window) ReleaseCapture();
    if (pressed == NoZone) return false;

    const std::int32_t released = ZoneFromHit(static_cast<WPARAM>(HitTestScreenPoint(screenPoint)));
    state_.HoverZone = released;
    // A press that leaves its button is cancelled.
    if (released != pressed) return true;
    if (const WPARAM command = SysCommandForZone(pressed, IsZoomed(window)))
        PostMessageW(window, WM_SYSCOMMAND, command, lParam);
    return true;
}

}  // namespace Tamborel
