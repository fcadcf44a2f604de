// The game's own display modes, by its numbers.
#pragma once

#include <cstdint>

inline constexpr std::int32_t kDisplayModeCount = 10;

/// The label of a mode, 0 to 9.
constexpr const wchar_t* DisplayModeName(std::int32_t mode) {
    constexpr const wchar_t* names[kDisplayModeCount] = {
        L"320 × 240", L"400 × 300",  L"512 × 384",  L"640 × 480",  L"800 × 600",
        L"960 × 720", L"1024 × 768", L"1152 × 864", L"1280 × 960", L"1600 × 1200",
    };
    return names[mode];
}
