// How a layout shows itself to a renderer.

#include "Platform/Linux/DirectWrite/TextLayout.h"

#include <cmath>

namespace Platform::DirectWrite {

namespace {

// Moves baselines onto whole pixels for a renderer that wants it so.
class Snapping {
public:
    HRESULT Ask(void* context, IDWriteTextRenderer& renderer) {
        BOOL disabled = FALSE;
        if (const HRESULT result = renderer.IsPixelSnappingDisabled(context, &disabled); FAILED(result)) return result;
        if (disabled) return S_OK;
        DWRITE_MATRIX matrix{};
        if (const HRESULT result = renderer.GetCurrentTransform(context, &matrix); FAILED(result)) return result;
        FLOAT pixelsPerDip = 1.0F;
        if (const HRESULT result = renderer.GetPixelsPerDip(context, &pixelsPerDip); FAILED(result)) return result;
        // Only lines that stay level can lie on a row of pixels.
        if (matrix.m12 != 0.0F || matrix.m21 != 0.0F) return S_OK;
        scale_ = matrix.m22 * pixelsPerDip;
        offset_ = matrix.dy * pixelsPerDip;
        return S_OK;
    }

    float operator()(float y) const {
        return scale_ == 0.0F ? y : (std::floor(y * scale_ + offset_ + 0.5F) - offset_) / scale_;
    }

private:
    float scale_ = 0.0F;  // pixels for each unit; 0 for none
    float offset_ = 0.0F;
};

}  // namespace

HRESULT DrawContent(const TextContent& content, std::wstring_view text, const WCHAR* locale, void* context,
                    IDWriteTextRenderer& renderer, float originX, float originY) {
    Snapping snap;
    if (const HRESULT result = snap.Ask(context, renderer); FAILED(result)) return result;
    for (const GlyphRun& run : content.runs) {
        const DWRITE_GLYPH_RUN glyphs{run.face.Get(),
                                      run.emSize,
                                      static_cast<UINT32>(run.count),
                                      content.glyphs.data() + run.first,
                                      content.advances.data() + run.first,
                                      content.offsets.data() + run.first,
                                      FALSE,
                                      run.level};
        const DWRITE_GLYPH_RUN_DESCRIPTION description{locale, text.data() + run.textPosition, run.textLength, nullptr,
                                                       run.textPosition};
        const float x = originX + run.x;
        const float y = snap(originY + run.y);
        HRESULT result =
            renderer.DrawGlyphRun(context, x, y, DWRITE_MEASURING_MODE_NATURAL, &glyphs, &description, nullptr);
        if (FAILED(result)) return result;
        const FaceMetrics& metrics = run.face->Metrics();
        const auto direction =
            run.level % 2 == 1 ? DWRITE_READING_DIRECTION_RIGHT_TO_LEFT : DWRITE_READING_DIRECTION_LEFT_TO_RIGHT;
        if (run.underlined) {
            const DWRITE_UNDERLINE bar{run.width,
                                       metrics.underlineThickness * run.emSize,
                                       metrics.underlineOffset * run.emSize,
                                       run.height,
                                       direction,
                                       DWRITE_FLOW_DIRECTION_TOP_TO_BOTTOM,
                                       locale,
                                       DWRITE_MEASURING_MODE_NATURAL};
            result = renderer.DrawUnderline(context, x, y, &bar, nullptr);
            if (FAILED(result)) return result;
        }
        if (run.struckThrough) {
            const DWRITE_STRIKETHROUGH bar{run.width,
                                           metrics.strikethroughThickness * run.emSize,
                                           metrics.strikethroughOffset * run.emSize,
                                           direction,
                                           DWRITE_FLOW_DIRECTION_TOP_TO_BOTTOM,
                                           locale,
                                           DWRITE_MEASURING_MODE_NATURAL};
            result = renderer.DrawStrikethrough(context, x, y, &bar, nullptr);
            if (FAILED(result)) return result;
        }
    }
    return S_OK;
}

}  // namespace Platform::DirectWrite
