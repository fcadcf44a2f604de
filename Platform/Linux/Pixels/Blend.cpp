#include "Platform/Linux/Pixels/Blend.h"

#include <algorithm>
#include <functional>
#include <numeric>

namespace Platform {

namespace {

constexpr std::uint32_t opaque = 0xFF000000;
constexpr std::uint32_t evenBytes = 0x00FF00FF;

// Multiplies two of a pixel's four bytes at once: x × factor / 255, rounded to nearest. Exact for all bytes:
// (v + 128 + ((v + 128) >> 8)) >> 8 with v = x × factor.
std::uint32_t MultiplyPair(std::uint32_t pair, std::uint32_t factor) {
    const std::uint32_t product = pair * factor + 0x00800080;
    return ((product + ((product >> 8) & evenBytes)) >> 8) & evenBytes;
}

std::uint32_t Over(std::uint32_t source, std::uint32_t below) {
    const std::uint32_t rest = 255 - (source >> 24);
    return source + MultiplyPair(below & evenBytes, rest) + (MultiplyPair((below >> 8) & evenBytes, rest) << 8);
}

void Fill(const Pixels& target, int left, int top, int right, int bottom) {
    for (int y = top; y < bottom; ++y) std::fill(target.Row(y) + left, target.Row(y) + std::max(left, right), opaque);
}

void AddSpans(const Pixels& source, int top, int bottom, std::vector<Span>& spans) {
    constexpr int joinDistance = 16;
    for (int y = top; y < bottom; ++y) {
        const std::uint32_t* const row = source.Row(y);
        const std::uint32_t* const end = row + source.width;
        const std::uint32_t* at = row;
        while ((at = std::find_if(at, end, [](std::uint32_t pixel) { return pixel != 0; })) != end) {
            const int begin = static_cast<int>(at - row);
            at = std::find(at, end, 0U);
            const int stop = static_cast<int>(at - row);
            if (!spans.empty() && spans.back().row == y && begin - spans.back().end < joinDistance) {
                spans.back().end = stop;
            } else {
                spans.push_back({y, begin, stop});
            }
        }
    }
}

}  // namespace

void FindSpans(const Pixels& source, std::vector<Span>& spans) {
    spans.clear();
    AddSpans(source, 0, source.height, spans);
}

void FindSpansAgain(const Pixels& source, int top, int bottom, std::vector<Span>& spans) {
    const auto first = std::ranges::lower_bound(spans, top, {}, &Span::row);
    const auto behind = std::ranges::lower_bound(first, spans.end(), bottom, {}, &Span::row);
    const std::vector<Span> below(behind, spans.end());
    spans.erase(first, spans.end());
    AddSpans(source, top, bottom, spans);
    spans.insert(spans.end(), below.begin(), below.end());
}

void CopyOpaque(const Pixels& target, const Pixels& source, int x, int y) {
    const int left = std::max(x, 0);
    const int right = std::min(x + source.width, target.width);
    const int top = std::max(y, 0);
    const int bottom = std::min(y + source.height, target.height);
    if (left >= right) return;
    for (int row = top; row < bottom; ++row) {
        const std::uint32_t* const from = source.Row(row - y) + (left - x);
        std::transform(from, from + (right - left), target.Row(row) + left,
                       [](std::uint32_t pixel) { return pixel | opaque; });
    }
}

void BlendSpans(const Pixels& target, const Pixels& source, const std::vector<Span>& spans, int x, int y) {
    for (const Span& span : spans) {
        const int row = span.row + y;
        if (row < 0 || row >= target.height) continue;
        const int left = std::max(span.begin + x, 0);
        const int right = std::min(span.end + x, target.width);
        if (left >= right) continue;
        const std::uint32_t* const from = source.Row(span.row) + (left - x);
        std::uint32_t* const to = target.Row(row) + left;
        std::transform(from, from + (right - left), to, to, &Over);
    }
}

void SetAll(const Pixels& target, std::uint32_t pixel) {
    constexpr std::ptrdiff_t piece = 1024;  // a page of memory
    for (int y = 0; y < target.height; ++y) {
        std::uint32_t* const end = target.Row(y) + target.width;
        for (std::uint32_t* at = target.Row(y); at != end;) {
            std::uint32_t* const next = at + std::min(piece, end - at);
            const bool isSet = pixel == 0 && std::reduce(at, next, 0U, std::bit_or<>()) == 0;
            if (!isSet) std::fill(at, next, pixel);
            at = next;
        }
    }
}

void BlackenOutside(const Pixels& target, int left, int top, int right, int bottom) {
    left = std::clamp(left, 0, target.width);
    right = std::clamp(right, left, target.width);
    top = std::clamp(top, 0, target.height);
    bottom = std::clamp(bottom, top, target.height);
    Fill(target, 0, 0, target.width, top);
    Fill(target, 0, top, left, bottom);
    Fill(target, right, top, target.width, bottom);
    Fill(target, 0, bottom, target.width, target.height);
}

}  // namespace Platform
