// Text as glyphs, before it is broken into lines.
#pragma once

#include "Platform/Linux/DirectWrite/FontSource.h"

#include <string_view>
#include <vector>

namespace Platform::DirectWrite {

/// The height of a line, in device-independent pixels. What a font wants between lines counts as descent.
struct LineBox {
    float ascent = 0.0F;
    float descent = 0.0F;
};

/// A stretch of one face and one direction.
struct ShapedRun {
    Microsoft::WRL::ComPtr<FontFace> face;  ///< Null where there is no font: nothing to paint.
    float emSize;
    unsigned level;
    LineBox box;
};

/// Characters that share glyphs and can't be parted.
struct Cluster {
    UINT32 text;  ///< Position of the first character.
    UINT32 length;
    UINT32 run;
    UINT32 glyph;  ///< The first of them.
    UINT32 glyphCount;
    float width;
    bool white;       ///< May hang over the end of a line.
    bool tab;         ///< As wide as it is to the next stop.
    bool breakAfter;  ///< A line may end here.
    bool boundary;    ///< Begins what a reader takes for a character: a line may be broken before it in an emergency.
};

struct Paragraph {
    std::size_t first;  ///< Of its clusters.
    std::size_t end;
    UINT32 text;
    UINT32 length;         ///< Without the line break.
    UINT32 newlineLength;  ///< 0 for the last.
};

struct ShapedText {
    std::vector<ShapedRun> runs;
    std::vector<Cluster> clusters;  ///< In the order of the text, and so their glyphs.
    std::vector<UINT16> glyphs;
    std::vector<float> advances;
    std::vector<DWRITE_GLYPH_OFFSET> offsets;
    std::vector<Paragraph> paragraphs;  ///< One at least.
    LineBox emptyLine;
};

/// Any text goes: what is no character, or has no meaning on a screen, takes no room or shows as a box. Time is linear
/// in the length. Throws std::bad_alloc and std::runtime_error (no fonts).
ShapedText Shape(FontSource& fonts, const FontRequest& request, std::wstring_view text);

}  // namespace Platform::DirectWrite
