// One drawing call, with all the state that it depends on: the element of a display list.
#pragma once

#include "Platform/Linux/Direct2D/Path.h"
#include "Platform/Linux/Direct2D/PixelRect.h"
#include "Platform/Linux/DirectWrite/TextContent.h"

#include <d2d1_1.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

namespace Platform::Direct2D {

/// Pixels in memory: premultiplied BGRA, 32 bits each, rows without gaps. Never changes once drawn.
struct Image {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;
};

struct RectShape {
    D2D1_RECT_F rect;
};
struct RoundedRectShape {
    D2D1_ROUNDED_RECT rect;
};
struct EllipseShape {
    D2D1_ELLIPSE ellipse;
};
struct LineShape {
    D2D1_POINT_2F from;
    D2D1_POINT_2F to;
};
struct PathShape {
    std::shared_ptr<const Path> path;
};
/// How an image's pixels become others. Smooth looks at all pixels of a picture that is made smaller.
enum class Sampling : unsigned char { Nearest, Linear, Smooth };
/// Part of an image, stretched over a rectangle.
struct ImageShape {
    std::shared_ptr<const Image> image;
    D2D1_RECT_F source;
    D2D1_RECT_F destination;
    Sampling sampling;
};
/// Text that is set, its box's upper left corner at a place.
struct TextShape {
    std::shared_ptr<const DirectWrite::TextContent> content;
    D2D1_POINT_2F origin;
};

using Shape = std::variant<RectShape, RoundedRectShape, EllipseShape, LineShape, PathShape, ImageShape, TextShape>;

struct DrawCommand {
    Shape shape;
    D2D1_MATRIX_3X2_F transform;       ///< From the shape to pixels.
    D2D1_COLOR_F color;                ///< Straight alpha. For an image only the alpha counts.
    std::optional<float> strokeWidth;  ///< In the shape's units; none for a fill.
    bool antialiased = true;
    std::optional<D2D1_RECT_F> clip;  ///< In pixels: the intersection of the clips in force.
    PixelRect bounds;                 ///< No pixel outside it is touched. Follows from the rest.
};

// A shape always holds one of its alternatives, so that no visit of it throws in these two.
// NOLINTBEGIN(bugprone-exception-escape)
bool operator==(const DrawCommand& a, const DrawCommand& b) noexcept;

/// The pixels that a command can touch within a target of the given size. Empty for one that paints nothing.
PixelRect BoundsOf(const DrawCommand& command, const PixelRect& target) noexcept;
// NOLINTEND(bugprone-exception-escape)

}  // namespace Platform::Direct2D
