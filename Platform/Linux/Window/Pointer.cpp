// The pointer's events become client or non-client messages, as the window's own hit-test says.
#include "Platform/Linux/Window/SizeMove.h"
#include "Platform/Linux/Window/UiThread.h"

#include <algorithm>
#include <utility>

namespace Platform {

namespace {

constexpr xcb_timestamp_t kDoubleClickTime = 500;  // milliseconds
constexpr LONG kDoubleClickReach = 4;              // pixels

constexpr std::uint8_t kLeft = 1;
constexpr std::uint8_t kMiddle = 2;
constexpr std::uint8_t kRight = 3;
constexpr std::uint8_t kWheelUp = 4;
constexpr std::uint8_t kWheelDown = 5;
constexpr std::uint8_t kWheelLeft = 6;
constexpr std::uint8_t kWheelRight = 7;

LPARAM Pack(POINT point) {
    return static_cast<LPARAM>(static_cast<DWORD>(MAKELONG(point.x, point.y)));
}

POINT InClient(const WindowView& view, POINT place) {
    return {place.x - view.client.left, place.y - view.client.top};
}

/// The buttons and keys that mouse messages tell of.
int HeldKeys(std::uint16_t state) {
    int held = 0;
    if (state & XCB_BUTTON_MASK_1) held |= MK_LBUTTON;
    if (state & XCB_BUTTON_MASK_2) held |= MK_MBUTTON;
    if (state & XCB_BUTTON_MASK_3) held |= MK_RBUTTON;
    if (state & XCB_MOD_MASK_SHIFT) held |= MK_SHIFT;
    if (state & XCB_MOD_MASK_CONTROL) held |= MK_CONTROL;
    return held;
}

int HeldBy(std::uint8_t button) {
    if (button == kLeft) return MK_LBUTTON;
    return button == kMiddle ? MK_MBUTTON : MK_RBUTTON;
}

struct ButtonMessages {
    UINT down;
    UINT up;
    UINT doubleClick;
};

ButtonMessages MessagesOf(std::uint8_t button) {
    if (button == kLeft) return {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK};
    if (button == kMiddle) return {WM_MBUTTONDOWN, WM_MBUTTONUP, WM_MBUTTONDBLCLK};
    return {WM_RBUTTONDOWN, WM_RBUTTONUP, WM_RBUTTONDBLCLK};
}

/// The non-client message of each client one lies as far below it as the moves do.
UINT NonClient(UINT message) {
    return message - (WM_MOUSEMOVE - WM_NCMOUSEMOVE);
}

bool Contains(const RECT& rectangle, POINT place) {
    return place.x >= rectangle.left && place.x < rectangle.right && place.y >= rectangle.top &&
           place.y < rectangle.bottom;
}

void PostLeave(UiThread& thread) {
    const LeaveTracking ended = std::exchange(thread.tracking, {});
    if (ended.window) PostInput(thread, ended.window, ended.nonClient ? WM_NCMOUSELEAVE : WM_MOUSELEAVE, 0, 0);
}

/// Where in the window the pointer is, after its own hit-test; tells whoever tracks that it left the part it was in.
int AskWhere(UiThread& thread, const Window& window, POINT place) {
    const int hit = static_cast<int>(CallProcedure(window.handle, WM_NCHITTEST, 0, Pack(place)));
    const bool wasClient = std::exchange(thread.hit, hit) == HTCLIENT;
    const bool isClient = hit == HTCLIENT;
    if (thread.tracking.window == window.handle && wasClient != isClient) {
        // Only the part that is tracked can be left.
        if (thread.tracking.nonClient == isClient) PostLeave(thread);
    }
    return hit;
}

bool IsDoubleClick(UiThread& thread, const Press& press) {
    const Press last = std::exchange(thread.lastPress, press);
    const bool repeats = last.window == press.window && last.button == press.button && last.hit == press.hit &&
                         press.time - last.time <= kDoubleClickTime &&
                         std::abs(press.place.x - last.place.x) <= kDoubleClickReach &&
                         std::abs(press.place.y - last.place.y) <= kDoubleClickReach;
    if (repeats) thread.lastPress = {};  // a third press begins anew
    return repeats;
}

void PostWheel(UiThread& thread, const Window& window, std::uint8_t button, int held) {
    const bool vertical = button == kWheelUp || button == kWheelDown;
    const bool positive = button == kWheelUp || button == kWheelRight;
    const auto keys = static_cast<DWORD>(MAKELONG(held, positive ? WHEEL_DELTA : -WHEEL_DELTA));
    PostInput(thread, window.handle, vertical ? WM_MOUSEWHEEL : WM_MOUSEHWHEEL, keys, Pack(thread.pointer));
}

}  // namespace

void HandleMotion(UiThread& thread, const std::shared_ptr<Window>& window, POINT place, std::uint16_t state) {
    thread.pointer = place;
    const bool held = (state & XCB_BUTTON_MASK_1) != 0;
    if (!held) EndSizeMove(thread);
    if (DriveSizeMove(thread, place)) return;
    const WindowView view = window->View();
    const auto keys = static_cast<WPARAM>(HeldKeys(state));
    if (thread.capture == window->handle) {
        PostInput(thread, window->handle, WM_MOUSEMOVE, keys, Pack(InClient(view, place)));
        return;
    }
    // A held button brings us the pointer's path outside the window too. That is nobody's without a capture.
    if (!Contains(view.window, place)) return HandlePointerGone(thread, *window);
    const int hit = AskWhere(thread, *window, place);
    CallProcedure(window->handle, WM_SETCURSOR, reinterpret_cast<WPARAM>(window->handle), MAKELONG(hit, WM_MOUSEMOVE));
    if (hit == HTCLIENT) {
        PostInput(thread, window->handle, WM_MOUSEMOVE, keys, Pack(InClient(view, place)));
    } else {
        PostInput(thread, window->handle, WM_NCMOUSEMOVE, static_cast<WPARAM>(hit), Pack(place));
    }
}

void HandleButton(UiThread& thread, const std::shared_ptr<Window>& window, const xcb_button_press_event_t& event,
                  bool down) {
    const POINT place{event.root_x, event.root_y};
    const std::uint8_t button = event.detail;
    thread.pointer = place;
    if (button >= kWheelUp && button <= kWheelRight) {
        if (down) PostWheel(thread, *window, button, HeldKeys(event.state));
        return;
    }
    if (button < kLeft || button > kRight) return;
    if (button == kLeft && !down && thread.sizeMove) {
        EndSizeMove(thread);
        return;
    }
    // The event's state is that before it.
    const int before = HeldKeys(event.state);
    const int held = down ? before | HeldBy(button) : before & ~HeldBy(button);
    const WindowView view = window->View();
    const bool captured = thread.capture == window->handle;
    if (!captured && !Contains(view.window, place)) return;
    const int hit = captured ? HTCLIENT : AskWhere(thread, *window, place);
    const ButtonMessages messages = MessagesOf(button);
    UINT message = down ? messages.down : messages.up;
    const bool twice = down && IsDoubleClick(thread, {window->handle, button, hit, event.time, place});
    if (twice && (hit != HTCLIENT || (window->windowClass.style & CS_DBLCLKS))) message = messages.doubleClick;
    if (hit == HTCLIENT) {
        PostInput(thread, window->handle, message, static_cast<WPARAM>(held), Pack(InClient(view, place)));
    } else {
        PostInput(thread, window->handle, NonClient(message), static_cast<WPARAM>(hit), Pack(place));
    }
}

void HandlePointerGone(UiThread& thread, Window& window) {
    thread.hit = HTNOWHERE;
    if (thread.tracking.window == window.handle) PostLeave(thread);
}

}  // namespace Platform

BOOL TrackMouseEvent(LPTRACKMOUSEEVENT track) noexcept {
    using namespace Platform;
    if (!track || track->cbSize != sizeof(TRACKMOUSEEVENT)) return FALSE;
    const auto window = FindOwnWindow(track->hwndTrack);
    if (!window || (track->dwFlags & TME_LEAVE) == 0) return FALSE;
    LeaveTracking& tracking = UiThread::OfThisThread().tracking;
    const bool cancel = (track->dwFlags & TME_CANCEL) != 0;
    tracking = cancel ? LeaveTracking{} : LeaveTracking{window->handle, (track->dwFlags & TME_NONCLIENT) != 0};
    return TRUE;
}
