#include "Platform/Linux/DirectWrite/TextContent.h"

#include <algorithm>

namespace Platform::DirectWrite {

bool SameInk(const TextContent& a, const TextContent& b) noexcept {
    const auto sameRun = [](const GlyphRun& left, const GlyphRun& right) {
        return left.face.Get() == right.face.Get() && left.emSize == right.emSize &&
               left.level % 2 == right.level % 2 && left.x == right.x && left.y == right.y && left.count == right.count;
    };
    const auto sameOffset = [](const DWRITE_GLYPH_OFFSET& left, const DWRITE_GLYPH_OFFSET& right) {
        return left.advanceOffset == right.advanceOffset && left.ascenderOffset == right.ascenderOffset;
    };
    return a.glyphs == b.glyphs && a.advances == b.advances && a.decorations == b.decorations &&
           std::ranges::equal(a.runs, b.runs, sameRun) && std::ranges::equal(a.offsets, b.offsets, sameOffset);
}

}  // namespace Platform::DirectWrite
