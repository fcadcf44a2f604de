// The signed halves of a message's point.
#pragma once

#include <windef.h>

template <class T>
constexpr int GET_X_LPARAM(T value) {
    return static_cast<SHORT>(LOWORD(value));
}
template <class T>
constexpr int GET_Y_LPARAM(T value) {
    return static_cast<SHORT>(HIWORD(value));
}
