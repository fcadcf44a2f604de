#pragma once

#include <dwrite.h>

namespace Platform::DirectWrite {

/// Walks along a glyph run from its origin. Glyphs come in the order of the text; a run to the left starts at its right
/// end, and its advances and offsets count to the left.
class GlyphPen {
public:
    explicit GlyphPen(bool toTheLeft) : toTheLeft_(toTheLeft) {}

    /// Where the next glyph's origin lies, against the run's.
    D2D1_POINT_2F Place(float advance, const DWRITE_GLYPH_OFFSET& offset) noexcept {
        if (toTheLeft_) {
            x_ -= advance;
            return {x_ - offset.advanceOffset, -offset.ascenderOffset};
        }
        const D2D1_POINT_2F at{x_ + offset.advanceOffset, -offset.ascenderOffset};
        x_ += advance;
        return at;
    }

private:
    bool toTheLeft_;
    float x_ = 0.0F;
};

}  // namespace Platform::DirectWrite
