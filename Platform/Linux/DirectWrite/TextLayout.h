#pragma once

#include "Platform/Linux/DirectWrite/FontSource.h"
#include "Platform/Linux/DirectWrite/SetText.h"
#include "Platform/Linux/DirectWrite/TextContent.h"
#include "Platform/Linux/DirectWrite/TextFormat.h"

#include <memory>
#include <string>
#include <string_view>

namespace Platform::DirectWrite {

/// Text with a copy of its format, set when it is first asked for and after each change. One thread at a time.
class TextLayout final : public ComObject<IDWriteTextLayout, IDWriteTextFormat>, public TextSource {
public:
    TextLayout(std::wstring_view text, Microsoft::WRL::ComPtr<TextFormat> format, std::shared_ptr<FontSource> fonts,
               float maxWidth, float maxHeight);

    HRESULT SetTextAlignment(DWRITE_TEXT_ALIGNMENT alignment) override;
    HRESULT SetParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT alignment) override;
    HRESULT SetWordWrapping(DWRITE_WORD_WRAPPING wrapping) override;
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
    HRESULT SetUnderline(BOOL underline, DWRITE_TEXT_RANGE range) override;
    HRESULT SetStrikethrough(BOOL strikethrough, DWRITE_TEXT_RANGE range) override;
    FLOAT GetMaxWidth() override { return maxWidth_; }
    FLOAT GetMaxHeight() override { return maxHeight_; }
    HRESULT Draw(void* context, IDWriteTextRenderer* renderer, FLOAT originX, FLOAT originY) override;
    HRESULT GetLineMetrics(DWRITE_LINE_METRICS* metrics, UINT32 maxCount, UINT32* actualCount) override;
    HRESULT GetMetrics(DWRITE_TEXT_METRICS* metrics) override;

    std::shared_ptr<const TextContent> Content() noexcept override;

private:
    ~TextLayout() override = default;

    /// Lets go of what is out of date and passes the result on.
    HRESULT Changed(HRESULT result) noexcept;
    HRESULT Mark(std::vector<bool>& marks, bool on, DWRITE_TEXT_RANGE range);

    std::wstring text_;
    Microsoft::WRL::ComPtr<TextFormat> format_;
    std::shared_ptr<FontSource> fonts_;
    float maxWidth_;
    float maxHeight_;
    TextMarks marks_;
    std::shared_ptr<const TextContent> content_;  // null until asked for
};

/// Hands the content's runs, with what is drawn along them, to a renderer.
HRESULT DrawContent(const TextContent& content, std::wstring_view text, const WCHAR* locale, void* context,
                    IDWriteTextRenderer& renderer, float originX, float originY);

}  // namespace Platform::DirectWrite
