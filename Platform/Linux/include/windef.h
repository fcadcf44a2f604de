// Points, rectangles and the handles of the window system.
#pragma once

#include <minwindef.h>

DECLARE_HANDLE(HBRUSH);
DECLARE_HANDLE(HDC);
DECLARE_HANDLE(HICON);
DECLARE_HANDLE(HMENU);
DECLARE_HANDLE(HMONITOR);
DECLARE_HANDLE(DPI_AWARENESS_CONTEXT);
using HCURSOR = HICON;

struct POINT {
    LONG x;
    LONG y;
};
using LPPOINT = POINT*;
using PPOINT = POINT*;

struct SIZE {
    LONG cx;
    LONG cy;
};
using LPSIZE = SIZE*;

/// Right and bottom lie outside.
struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};
using LPRECT = RECT*;
using PRECT = RECT*;
using LPCRECT = const RECT*;

#define DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2 (reinterpret_cast<DPI_AWARENESS_CONTEXT>(static_cast<LONG_PTR>(-4)))

/// The low and the high 16 bits of a 32-bit value, and a value made of two halves.
template <class T>
constexpr WORD LOWORD(T value) {
    return static_cast<WORD>(static_cast<DWORD_PTR>(value) & 0xFFFFU);
}
template <class T>
constexpr WORD HIWORD(T value) {
    return static_cast<WORD>((static_cast<DWORD_PTR>(value) >> 16U) & 0xFFFFU);
}
template <class Low, class High>
constexpr LONG MAKELONG(Low low, High high) {
    return static_cast<LONG>(static_cast<DWORD>(LOWORD(low)) | (static_cast<DWORD>(LOWORD(high)) << 16U));
}
