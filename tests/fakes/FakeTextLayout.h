// Fakes of text layouts and font faces: a layout draws the runs of glyphs that the test has told.
#pragma once

#include "tests/fakes/FakeObject.h"

#include <dwrite_3.h>
#include <wrl/client.h>

#include <string>
#include <vector>

namespace Fakes {

/// A run of glyphs. `x` and `y` are the start of its baseline, against the layout's origin.
struct TextRun {
    std::vector<UINT16> glyphs = {1, 2, 3};
    FLOAT x = 0;
    FLOAT y = 10;
    UINT32 bidiLevel = 0;
    BOOL isSideways = FALSE;
    bool underlined = false;  // followed by an underline, a strikethrough and an inline object
};

/// The runs of every layout that is drawn from now on. To begin with, and after Recorder's Reset too, whatever was last
/// set: tests set it back to DefaultTextRuns().
void SetTextRuns(std::vector<TextRun> runs);
std::vector<TextRun> DefaultTextRuns();

class FakeFontFace final : public FakeObject<IDWriteFontFace> {
public:
    FakeFontFace() : FakeObject("FontFace") {}
    HRESULT GetGlyphRunOutline(FLOAT emSize, const UINT16* glyphs, const FLOAT* advances,
                               const DWRITE_GLYPH_OFFSET* offsets, UINT32 count, BOOL isSideways, BOOL isRightToLeft,
                               IDWriteGeometrySink* sink) override;
};

class FakeTextLayout final : public FakeObject<IDWriteTextLayout, IDWriteTextFormat> {
public:
    FakeTextLayout(IDWriteTextFormat* format, FLOAT maxWidth, FLOAT maxHeight)
        : FakeObject("TextLayout"), format_(format), maxWidth_(maxWidth), maxHeight_(maxHeight) {}

    HRESULT SetTextAlignment(DWRITE_TEXT_ALIGNMENT alignment) override { return format_->SetTextAlignment(alignment); }
    HRESULT SetParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT alignment) override {
        return format_->SetParagraphAlignment(alignment);
    }
    HRESULT SetWordWrapping(DWRITE_WORD_WRAPPING wrapping) override { return format_->SetWordWrapping(wrapping); }
    DWRITE_TEXT_ALIGNMENT GetTextAlignment() override { return format_->GetTextAlignment(); }
    DWRITE_PARAGRAPH_ALIGNMENT GetParagraphAlignment() override { return format_->GetParagraphAlignment(); }
    DWRITE_WORD_WRAPPING GetWordWrapping() override { return format_->GetWordWrapping(); }
    HRESULT GetFontCollection(IDWriteFontCollection** collection) override {
        return format_->GetFontCollection(collection);
    }
    UINT32 GetFontFamilyNameLength() override { return format_->GetFontFamilyNameLength(); }
    HRESULT GetFontFamilyName(WCHAR* name, UINT32 size) override { return format_->GetFontFamilyName(name, size); }
    DWRITE_FONT_WEIGHT GetFontWeight() override { return format_->GetFontWeight(); }
    DWRITE_FONT_STYLE GetFontStyle() override { return format_->GetFontStyle(); }
    DWRITE_FONT_STRETCH GetFontStretch() override { return format_->GetFontStretch(); }
    FLOAT GetFontSize() override { return format_->GetFontSize(); }
    UINT32 GetLocaleNameLength() override { return format_->GetLocaleNameLength(); }
    HRESULT GetLocaleName(WCHAR* name, UINT32 size) override { return format_->GetLocaleName(name, size); }

    HRESULT SetMaxWidth(FLOAT maxWidth) override;
    HRESULT SetMaxHeight(FLOAT maxHeight) override;
    HRESULT SetUnderline(BOOL underline, DWRITE_TEXT_RANGE) override { return Call("SetUnderline", underline); }
    HRESULT SetStrikethrough(BOOL strikethrough, DWRITE_TEXT_RANGE) override {
        return Call("SetStrikethrough", strikethrough);
    }
    FLOAT GetMaxWidth() override { return maxWidth_; }
    FLOAT GetMaxHeight() override { return maxHeight_; }
    /// Asks the renderer first about its pixels, as the system's layout does.
    HRESULT Draw(void* context, IDWriteTextRenderer* renderer, FLOAT originX, FLOAT originY) override;
    HRESULT GetLineMetrics(DWRITE_LINE_METRICS*, UINT32, UINT32* actualCount) override {
        *actualCount = 0;
        return Call("GetLineMetrics");
    }
    HRESULT GetMetrics(DWRITE_TEXT_METRICS* metrics) override {
        *metrics = {};
        return Call("GetMetrics");
    }

private:
    Microsoft::WRL::ComPtr<IDWriteTextFormat> format_;
    FLOAT maxWidth_;
    FLOAT maxHeight_;
};

}  // namespace Fakes
