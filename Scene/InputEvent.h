// What the window saw of the pointer and the keyboard, as nodes receive it.
#pragma once

#include <windows.h>

#include <cstdint>

namespace Tamborel {

/// The values up to FocusLost number a node's handlers.
enum class InputEventKind : std::uint32_t {
    PointerMove = 0,
    PointerEnter = 1,  ///< Made by routing out of moves and releases, never queued.
    PointerLeave = 2,  ///< Likewise.
    PointerDown = 3,
    PointerUp = 4,
    PointerWheel = 5,
    KeyDown = 6,
    KeyUp = 7,
    Character = 8,
    FocusGained = 9,
    FocusLost = 10,
    // 11 is not in use.
    WindowClosing = 12,  ///< No node receives it: routing forgets its targets.
};

/// A plain record, copied by value from the window's thread to the render thread. The unions hold their first member
/// for pointer kinds (0 to 5) and their second for key kinds.
struct InputEvent {
    InputEventKind kind = InputEventKind::PointerMove;
    HWND window = nullptr;  ///< The window that saw the event.
    std::int64_t timestampMicroseconds = 0;
    union {
        float x = 0;  ///< Window client pixels in the queue, the receiver's local space in a handler.
        std::uint32_t virtualKey;
    };
    union {
        float y = 0;  ///< As `x`.
        std::uint32_t scanCode;
    };
    union {
        std::uint32_t buttons = 0;  ///< Bit 0 left, bit 1 right, bit 4 middle, bits 5 and 6 the extra buttons.
        std::uint32_t modifiers;    ///< Bit 0 Shift, bit 1 Ctrl, bit 2 Alt.
    };
    union {
        std::int32_t wheelDelta = 0;  ///< PointerWheel only, in units of 1/120 notch; positive is away from the user.
        std::uint16_t character;      ///< Character only: one UTF-16 code unit.
    };
};

}  // namespace Tamborel
