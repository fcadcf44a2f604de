// UI thread: what goes to the scene. Events that find the ring full are dropped.
#include "Core/Timestamp.h"
#include "Window/FrameWindow.h"
#include "Window/HitTest.h"
#include "Window/MessageParameters.h"

#include <optional>

namespace Tamborel {

namespace {

/// The mouse-button bits of a pointer message's word parameter; the others are keys.
constexpr WPARAM buttonBits = 0x73;

std::optional<InputEventKind> PointerKindOf(UINT message) {
    switch (message) {
        case WM_MOUSEMOVE:
            return InputEventKind::PointerMove;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:  // a double-click is a second press
        case WM_RBUTTONDOWN:
        case WM_MBUTTONDOWN:
            return InputEventKind::PointerDown;
        case WM_LBUTTONUP:
        case WM_RBUTTONUP:
        case WM_MBUTTONUP:
            return InputEventKind::PointerUp;
        case WM_MOUSEWHEEL:
            return InputEventKind::PointerWheel;
        default:
            return std::nullopt;
    }
}

InputEventKind KeyKindOf(UINT message) {
    if (message == WM_KEYDOWN) return InputEventKind::KeyDown;
    return message == WM_KEYUP ? InputEventKind::KeyUp : InputEventKind::Character;
}

std::uint32_t ModifiersNow() {
    std::uint32_t modifiers = 0;
    if (GetKeyState(VK_SHIFT) < 0) modifiers |= 1;
    if (GetKeyState(VK_CONTROL) < 0) modifiers |= 2;
    if (GetKeyState(VK_MENU) < 0) modifiers |= 4;
    return modifiers;
}

}  // namespace

LRESULT FrameWindow::HandleInputMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SETFOCUS:
            QueuePlainEvent(InputEventKind::FocusGained);
            break;
        case WM_KILLFOCUS:
            QueuePlainEvent(InputEventKind::FocusLost);
            break;
        case WM_KEYDOWN:
        case WM_KEYUP:
        case WM_CHAR:
            QueueKeyEvent(message, wParam, lParam);
            break;
        case WM_MOUSEMOVE:
            OnMouseMove(wParam, lParam);
            break;
        case WM_LBUTTONUP: {
            POINT point = PointOf(lParam);
            ClientToScreen(Handle(), &point);
            if (!EndPress(point, lParam, CapturedButton::Client)) QueueMouseEvent(message, wParam, lParam);
            break;
        }
        default:
            QueueMouseEvent(message, wParam, lParam);
            break;
    }
    return 0;
}

void FrameWindow::OnMouseMove(WPARAM wParam, LPARAM lParam) {
    ArmTracking();
    if (state_.PressedZone != NoZone) {
        // While a caption button is held the scene sees no moves.
        POINT point = PointOf(lParam);
        ClientToScreen(Handle(), &point);
        state_.HoverZone = ZoneFromHit(static_cast<WPARAM>(HitTestScreenPoint(point)));
        return;
    }
    state_.HoverZone = NoZone;
    QueueMouseEvent(WM_MOUSEMOVE, wParam, lParam);
}

void FrameWindow::QueueMouseEvent(UINT message, WPARAM wParam, LPARAM lParam) {
    const std::optional<InputEventKind> kind = PointerKindOf(message);
    if (!kind) return;
    POINT point = PointOf(lParam);
    InputEvent event;
    event.kind = *kind;
    event.window = Handle();
    event.timestampMicroseconds = TimestampMicroseconds();
    if (message == WM_MOUSEWHEEL) {
        // The wheel's messages alone tell the position on the screen.
        ScreenToClient(Handle(), &point);
        event.wheelDelta = static_cast<std::int16_t>((wParam >> 16) & 0xFFFF);
    }
    event.x = static_cast<float>(point.x);
    event.y = static_cast<float>(point.y);
    event.buttons = static_cast<std::uint32_t>(wParam & buttonBits);
    state_.Input.Push(event);
}

void FrameWindow::QueueKeyEvent(UINT message, WPARAM wParam, LPARAM lParam) {
    InputEvent event;
    event.kind = KeyKindOf(message);
    event.window = Handle();
    event.timestampMicroseconds = TimestampMicroseconds();
    event.virtualKey = static_cast<std::uint32_t>(wParam);
    event.scanCode = static_cast<std::uint32_t>((lParam >> 16) & 0xFF);
    event.modifiers = ModifiersNow();
    if (message == WM_CHAR) event.character = static_cast<std::uint16_t>(wParam & 0xFFFF);
    state_.Input.Push(event);
}

void FrameWindow::QueuePlainEvent(InputEventKind kind) {
    InputEvent event;
    event.kind = kind;
    event.window = Handle();
    event.timestampMicroseconds = TimestampMicroseconds();
    state_.Input.Push(event);
}

}  // namespace Tamborel
