// Rectangles of whole pixels, and short lists of them.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

namespace Platform::Direct2D {

/// Left and top lie within, right and bottom outside.
struct PixelRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    bool IsEmpty() const noexcept { return left >= right || top >= bottom; }
    int Width() const noexcept { return right - left; }
    int Height() const noexcept { return bottom - top; }
    std::int64_t Area() const noexcept { return IsEmpty() ? 0 : std::int64_t{Width()} * Height(); }
    friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

inline PixelRect Intersect(const PixelRect& a, const PixelRect& b) noexcept {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right), std::min(a.bottom, b.bottom)};
}

/// The smallest rectangle around both; an empty one adds nothing.
inline PixelRect Unite(const PixelRect& a, const PixelRect& b) noexcept {
    if (a.IsEmpty()) return b;
    if (b.IsEmpty()) return a;
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right), std::max(a.bottom, b.bottom)};
}

inline bool Overlap(const PixelRect& a, const PixelRect& b) noexcept {
    return !Intersect(a, b).IsEmpty();
}

/// Covers the given rectangles by a few that don't overlap each other and lie within `limits`.
std::vector<PixelRect> Cover(std::span<const PixelRect> rects, const PixelRect& limits);

}  // namespace Platform::Direct2D
