#include "Platform/Linux/Direct2D/DisplayList.h"

#include <algorithm>
#include <cstddef>

namespace Platform::Direct2D {

namespace {

void AddBounds(std::vector<PixelRect>& rects, std::span<const DrawCommand> commands) {
    for (const DrawCommand& command : commands) rects.push_back(command.bounds);
}

}  // namespace

std::vector<PixelRect> Difference(std::span<const DrawCommand> before, std::span<const DrawCommand> after) {
    // A pixel's colour follows from the commands that touch it, in order. Commands at the start and at the end that
    // both lists share drop out: outside the boxes of those between, both lists paint alike.
    const auto [first, second] = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    before = before.subspan(static_cast<std::size_t>(first - before.begin()));
    after = after.subspan(static_cast<std::size_t>(second - after.begin()));
    while (!before.empty() && !after.empty() && before.back() == after.back()) {
        before = before.first(before.size() - 1);
        after = after.first(after.size() - 1);
    }
    std::vector<PixelRect> rects;
    if (before.size() != after.size()) {
        AddBounds(rects, before);
        AddBounds(rects, after);
        return rects;
    }
    // As many as there were: nodes that changed in place. Equal pairs drop out by the same reasoning.
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (before[i] == after[i]) continue;
        rects.push_back(before[i].bounds);
        rects.push_back(after[i].bounds);
    }
    return rects;
}

}  // namespace Platform::Direct2D
