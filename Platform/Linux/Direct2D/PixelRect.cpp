#include "Platform/Linux/Direct2D/PixelRect.h"

#include <cstddef>
#include <limits>

namespace Platform::Direct2D {

namespace {

// Each costs a pass over the list of what is drawn, and a draw or an upload of its own.
constexpr std::size_t maxRects = 16;

// Adds a rectangle, united with all that it overlaps.
void Add(std::vector<PixelRect>& cover, PixelRect rect) {
    for (std::size_t i = 0; i < cover.size();) {
        if (Overlap(cover[i], rect)) {
            rect = Unite(cover[i], rect);
            cover.erase(cover.begin() + static_cast<std::ptrdiff_t>(i));
            i = 0;  // What grew may overlap one that was passed already.
        } else {
            ++i;
        }
    }
    cover.push_back(rect);
}

// Unites the two that waste the least area by it.
void UniteNearest(std::vector<PixelRect>& cover) {
    std::size_t first = 0;
    std::size_t second = 1;
    std::int64_t least = std::numeric_limits<std::int64_t>::max();
    for (std::size_t i = 0; i < cover.size(); ++i) {
        for (std::size_t j = i + 1; j < cover.size(); ++j) {
            const std::int64_t waste = Unite(cover[i], cover[j]).Area() - cover[i].Area() - cover[j].Area();
            if (waste < least) {
                least = waste;
                first = i;
                second = j;
            }
        }
    }
    const PixelRect united = Unite(cover[first], cover[second]);
    cover.erase(cover.begin() + static_cast<std::ptrdiff_t>(second));
    cover.erase(cover.begin() + static_cast<std::ptrdiff_t>(first));
    Add(cover, united);
}

}  // namespace

std::vector<PixelRect> Cover(std::span<const PixelRect> rects, const PixelRect& limits) {
    std::vector<PixelRect> cover;
    for (const PixelRect& rect : rects) {
        const PixelRect inside = Intersect(rect, limits);
        if (inside.IsEmpty()) continue;
        Add(cover, inside);
        if (cover.size() > maxRects) UniteNearest(cover);
    }
    return cover;
}

}  // namespace Platform::Direct2D
