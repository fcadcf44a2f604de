// What is packed into the parameters of pointer messages.
#pragma once

#include <windows.h>

#include <cstdint>

namespace Tamborel {

/// The low and high half, each signed: positions left of or above the origin are negative.
inline POINT PointOf(LPARAM lParam) {
    return {static_cast<std::int16_t>(lParam & 0xFFFF), static_cast<std::int16_t>((lParam >> 16) & 0xFFFF)};
}

}  // namespace Tamborel
