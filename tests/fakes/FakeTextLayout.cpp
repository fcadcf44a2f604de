#include "tests/fakes/FakeTextLayout.h"

#include <mutex>

namespace Fakes {

namespace {

std::mutex runsMutex;
std::vector<TextRun> textRuns = DefaultTextRuns();  // guarded by runsMutex

std::vector<TextRun> TextRuns() {
    const std::lock_guard lock(runsMutex);
    return textRuns;
}

}  // namespace

std::vector<TextRun> DefaultTextRuns() {
    return {TextRun{}};
}

void SetTextRuns(std::vector<TextRun> runs) {
    const std::lock_guard lock(runsMutex);
    textRuns = std::move(runs);
}

HRESULT FakeFontFace::GetGlyphRunOutline(FLOAT emSize, const UINT16* glyphs, const FLOAT*, const DWRITE_GLYPH_OFFSET*,
                                         UINT32 count, BOOL isSideways, BOOL isRightToLeft, IDWriteGeometrySink*) {
    std::string indices;
    for (UINT32 i = 0; i < count; ++i) indices += (i ? " " : "") + std::to_string(glyphs[i]);
    return Call("GetGlyphRunOutline", emSize, "[" + indices + "]", isSideways, isRightToLeft);
}

HRESULT FakeTextLayout::SetMaxWidth(FLOAT maxWidth) {
    maxWidth_ = maxWidth;
    return Call("SetMaxWidth", maxWidth);
}

HRESULT FakeTextLayout::SetMaxHeight(FLOAT maxHeight) {
    maxHeight_ = maxHeight;
    return Call("SetMaxHeight", maxHeight);
}

HRESULT FakeTextLayout::Draw(void* context, IDWriteTextRenderer* renderer, FLOAT originX, FLOAT originY) {
    if (const HRESULT result = Call("Draw", originX, originY); FAILED(result)) return result;
    BOOL snappingDisabled = FALSE;
    FLOAT pixelsPerDip = 0;
    DWRITE_MATRIX transform{};
    renderer->IsPixelSnappingDisabled(context, &snappingDisabled);
    renderer->GetCurrentTransform(context, &transform);
    renderer->GetPixelsPerDip(context, &pixelsPerDip);

    Microsoft::WRL::ComPtr<FakeFontFace> face;
    face.Attach(new FakeFontFace);
    for (const TextRun& each : TextRuns()) {
        const std::vector<FLOAT> advances(each.glyphs.size(), 8.0F);
        DWRITE_GLYPH_RUN run{};
        run.fontFace = face.Get();
        run.fontEmSize = GetFontSize();
        run.glyphCount = static_cast<UINT32>(each.glyphs.size());
        run.glyphIndices = each.glyphs.data();
        run.glyphAdvances = advances.data();
        run.isSideways = each.isSideways;
        run.bidiLevel = each.bidiLevel;
        const FLOAT x = originX + each.x;
        const FLOAT y = originY + each.y;
        if (const HRESULT result =
                renderer->DrawGlyphRun(context, x, y, DWRITE_MEASURING_MODE_NATURAL, &run, nullptr, nullptr);
            FAILED(result)) {
            return result;
        }
        if (!each.underlined) continue;
        const DWRITE_UNDERLINE underline{};
        const DWRITE_STRIKETHROUGH strikethrough{};
        renderer->DrawUnderline(context, x, y, &underline, nullptr);
        renderer->DrawStrikethrough(context, x, y, &strikethrough, nullptr);
        renderer->DrawInlineObject(context, x, y, nullptr, FALSE, FALSE, nullptr);
    }
    return S_OK;
}

}  // namespace Fakes
