#pragma once

#include "Platform/Linux/Base/ComObject.h"

#include <dwrite.h>
#include <wrl/client.h>

#include <string>

namespace Platform::DirectWrite {

/// The attributes that text is laid out with. What a format is made from never changes; alignment and wrapping do, by
/// one thread at a time.
class TextFormat final : public ComObject<IDWriteTextFormat> {
public:
    struct Font {
        std::wstring family;
        Microsoft::WRL::ComPtr<IDWriteFontCollection> collection;  ///< Null for the system's fonts.
        DWRITE_FONT_WEIGHT weight;
        DWRITE_FONT_STYLE style;
        DWRITE_FONT_STRETCH stretch;
        FLOAT size;  ///< In device-independent pixels.
        std::wstring locale;
    };

    explicit TextFormat(Font font) : ComObject("IDWriteTextFormat"), font_(std::move(font)) {}

    const Font& GetFont() const noexcept { return font_; }

    HRESULT SetTextAlignment(DWRITE_TEXT_ALIGNMENT alignment) override;
    HRESULT SetParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT alignment) override;
    HRESULT SetWordWrapping(DWRITE_WORD_WRAPPING wrapping) override;
    DWRITE_TEXT_ALIGNMENT GetTextAlignment() override { return textAlignment_; }
    DWRITE_PARAGRAPH_ALIGNMENT GetParagraphAlignment() override { return paragraphAlignment_; }
    DWRITE_WORD_WRAPPING GetWordWrapping() override { return wordWrapping_; }
    HRESULT GetFontCollection(IDWriteFontCollection** collection) override;
    UINT32 GetFontFamilyNameLength() override { return static_cast<UINT32>(font_.family.size()); }
    HRESULT GetFontFamilyName(WCHAR* name, UINT32 size) override;
    DWRITE_FONT_WEIGHT GetFontWeight() override { return font_.weight; }
    DWRITE_FONT_STYLE GetFontStyle() override { return font_.style; }
    DWRITE_FONT_STRETCH GetFontStretch() override { return font_.stretch; }
    FLOAT GetFontSize() override { return font_.size; }
    UINT32 GetLocaleNameLength() override { return static_cast<UINT32>(font_.locale.size()); }
    HRESULT GetLocaleName(WCHAR* name, UINT32 size) override;

private:
    ~TextFormat() override = default;

    Font font_;
    DWRITE_TEXT_ALIGNMENT textAlignment_ = DWRITE_TEXT_ALIGNMENT_LEADING;
    DWRITE_PARAGRAPH_ALIGNMENT paragraphAlignment_ = DWRITE_PARAGRAPH_ALIGNMENT_NEAR;
    DWRITE_WORD_WRAPPING wordWrapping_ = DWRITE_WORD_WRAPPING_WRAP;
};

}  // namespace Platform::DirectWrite
