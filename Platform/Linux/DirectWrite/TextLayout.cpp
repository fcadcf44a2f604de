#include "Platform/Linux/DirectWrite/TextLayout.h"

#include <algorithm>
#include <new>

namespace Platform::DirectWrite {

namespace {

constexpr HRESULT notSufficientBuffer = HRESULT_FROM_WIN32(ERROR_INSUFFICIENT_BUFFER);
constexpr float tabStopsInEms = 4.0F;

}  // namespace

TextLayout::TextLayout(std::wstring_view text, Microsoft::WRL::ComPtr<TextFormat> format,
                       std::shared_ptr<FontSource> fonts, float maxWidth, float maxHeight)
    : ComObject("IDWriteTextLayout"),
      text_(text),
      format_(std::move(format)),
      fonts_(std::move(fonts)),
      maxWidth_(maxWidth),
      maxHeight_(maxHeight) {}

HRESULT TextLayout::Changed(HRESULT result) noexcept {
    if (SUCCEEDED(result)) content_ = nullptr;
    return result;
}

HRESULT TextLayout::SetTextAlignment(DWRITE_TEXT_ALIGNMENT alignment) {
    return Changed(format_->SetTextAlignment(alignment));
}

HRESULT TextLayout::SetParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT alignment) {
    return Changed(format_->SetParagraphAlignment(alignment));
}

HRESULT TextLayout::SetWordWrapping(DWRITE_WORD_WRAPPING wrapping) {
    return Changed(format_->SetWordWrapping(wrapping));
}

HRESULT TextLayout::SetMaxWidth(FLOAT maxWidth) {
    if (!(maxWidth >= 0.0F)) return E_INVALIDARG;
    maxWidth_ = maxWidth;
    return Changed(S_OK);
}

HRESULT TextLayout::SetMaxHeight(FLOAT maxHeight) {
    if (!(maxHeight >= 0.0F)) return E_INVALIDARG;
    maxHeight_ = maxHeight;
    return Changed(S_OK);
}

HRESULT TextLayout::Mark(std::vector<bool>& marks, bool on, DWRITE_TEXT_RANGE range) try {
    marks.resize(text_.size());
    const std::size_t first = std::min<std::size_t>(range.startPosition, text_.size());
    const std::size_t count = std::min<std::size_t>(range.length, text_.size() - first);
    std::fill_n(marks.begin() + static_cast<std::ptrdiff_t>(first), count, on);
    return Changed(S_OK);
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT TextLayout::SetUnderline(BOOL underline, DWRITE_TEXT_RANGE range) {
    return Mark(marks_.underlined, underline != FALSE, range);
}

HRESULT TextLayout::SetStrikethrough(BOOL strikethrough, DWRITE_TEXT_RANGE range) {
    return Mark(marks_.struckThrough, strikethrough != FALSE, range);
}

std::shared_ptr<const TextContent> TextLayout::Content() noexcept try {
    if (content_) return content_;
    const TextFormat::Font& font = format_->GetFont();
    const FontRequest request{font.family, font.weight, font.style, font.stretch, font.size, font.locale};
    const TextBox box{
        maxWidth_,        maxHeight_, font.size * tabStopsInEms, GetTextAlignment(), GetParagraphAlignment(),
        GetWordWrapping()};
    content_ = std::make_shared<const TextContent>(SetText(Shape(*fonts_, request, text_), box, marks_));
    return content_;
} catch (const std::exception&) {
    return nullptr;
}

HRESULT TextLayout::Draw(void* context, IDWriteTextRenderer* renderer, FLOAT originX, FLOAT originY) {
    if (!renderer) return E_INVALIDARG;
    const std::shared_ptr<const TextContent> content = Content();
    if (!content) return E_OUTOFMEMORY;
    return DrawContent(*content, text_, format_->GetFont().locale.c_str(), context, *renderer, originX, originY);
}

HRESULT TextLayout::GetLineMetrics(DWRITE_LINE_METRICS* metrics, UINT32 maxCount, UINT32* actualCount) {
    if (!actualCount || (!metrics && maxCount > 0)) return E_INVALIDARG;
    const std::shared_ptr<const TextContent> content = Content();
    if (!content) return E_OUTOFMEMORY;
    *actualCount = static_cast<UINT32>(content->lines.size());
    if (*actualCount > maxCount) return notSufficientBuffer;
    std::ranges::copy(content->lines, metrics);
    return S_OK;
}

HRESULT TextLayout::GetMetrics(DWRITE_TEXT_METRICS* metrics) {
    if (!metrics) return E_INVALIDARG;
    const std::shared_ptr<const TextContent> content = Content();
    if (!content) return E_OUTOFMEMORY;
    *metrics = content->metrics;
    return S_OK;
}

}  // namespace Platform::DirectWrite
