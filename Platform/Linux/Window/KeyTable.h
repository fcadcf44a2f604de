// The names of keys: X11's numbers and symbols, Windows' virtual keys and scan codes.
#pragma once

#include <windows.h>

#include <cstdint>

namespace Platform {

/// A key as a keyboard of a PC numbers it.
struct ScanCode {
    std::uint8_t code = 0;
    bool extended = false;  // sent with a prefix
};

/// From X11's number of a key (that of the kernel plus 8).
ScanCode ScanCodeOf(std::uint8_t keycode);

/// The virtual key for a key symbol, as it is without Shift; 0 when no key of Windows stands for it.
int VirtualKeyOfSymbol(std::uint32_t symbol);

/// The virtual key at that place of an American keyboard; 0 for a place that has none.
int VirtualKeyOfPlace(std::uint8_t keycode);

}  // namespace Platform
