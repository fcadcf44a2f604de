// Text that is set: what a layout comes to, as plain data.
#pragma once

#include "Platform/Linux/DirectWrite/FontFace.h"
#include "Platform/Linux/DirectWrite/GlyphPen.h"

#include <dwrite.h>
#include <wrl/client.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace Platform::DirectWrite {

/// Glyphs of one face, side by side. Places are in device-independent pixels against the layout box's upper left
/// corner.
struct GlyphRun {
    Microsoft::WRL::ComPtr<FontFace> face;
    float emSize;
    unsigned level;  ///< Bidirectional; an odd one runs to the left from its origin.
    float x;         ///< Of the origin, on the baseline.
    float y;
    float width;
    std::size_t first;  ///< In the content's glyphs.
    std::size_t count;
    UINT32 textPosition;
    UINT32 textLength;
    bool underlined;
    bool struckThrough;
    float height;  ///< Of a line of it.
};

/// A bar along a run.
struct Decoration {
    D2D1_RECT_F rect;
    friend bool operator==(const Decoration& a, const Decoration& b) noexcept {
        return a.rect.left == b.rect.left && a.rect.top == b.rect.top && a.rect.right == b.rect.right &&
               a.rect.bottom == b.rect.bottom;
    }
};

struct TextContent {
    std::vector<GlyphRun> runs;  ///< Line by line, each from left to right.
    std::vector<UINT16> glyphs;  ///< Of each run in the order of the text; so the next two.
    std::vector<float> advances;
    std::vector<DWRITE_GLYPH_OFFSET> offsets;
    std::vector<Decoration> decorations;
    std::vector<DWRITE_LINE_METRICS> lines;
    DWRITE_TEXT_METRICS metrics{};
    D2D1_RECT_F ink{};  ///< Nothing is painted outside. All zero if nothing is painted at all.
};

/// Whether both paint the same.
bool SameInk(const TextContent& a, const TextContent& b) noexcept;

/// What our layouts are besides the interface: the way to their content.
class TextSource {
public:
    /// Null if it could not be made. Never changes; a change of the layout makes another.
    virtual std::shared_ptr<const TextContent> Content() noexcept = 0;

protected:
    ~TextSource() = default;
};

}  // namespace Platform::DirectWrite
