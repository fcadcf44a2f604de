// Composing 32-bit premultiplied BGRA pixels in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Platform {

/// Pixels owned by somebody else, first row on top; `stride` in pixels.
struct Pixels {
    std::uint32_t* data = nullptr;
    std::size_t stride = 0;
    int width = 0;
    int height = 0;

    std::uint32_t* Row(int y) const { return data + static_cast<std::size_t>(y) * stride; }
};

/// A run of pixels of one row that are not wholly transparent, from `begin` to before `end`.
struct Span {
    int row;
    int begin;
    int end;
};

/// Where a layer has anything to show. A frame around a window is nearly all transparent, so most of a picture never
/// needs to be looked at again until the layer changes. Pixels closer than 16 share a run.
void FindSpans(const Pixels& source, std::vector<Span>& spans);

/// The same after a change of the rows from `top` to before `bottom`: `spans` are those of the picture before it.
void FindSpansAgain(const Pixels& source, int top, int bottom, std::vector<Span>& spans);

/// Copies `source` with its top left at x, y, cut to the target. Alpha is set to opaque.
void CopyOpaque(const Pixels& target, const Pixels& source, int x, int y);

/// Lays the runs of a premultiplied source over the target: source + target × (1 - alpha), rounded to nearest.
void BlendSpans(const Pixels& target, const Pixels& source, const std::vector<Span>& spans, int x, int y);

/// Sets all pixels to one value. Zeros are only written where there is anything else: a new picture is zero, and the
/// system gives it no memory before somebody writes to it.
void SetAll(const Pixels& target, std::uint32_t pixel);

/// Sets what lies outside the rectangle to opaque black.
void BlackenOutside(const Pixels& target, int left, int top, int right, int bottom);

}  // namespace Platform
