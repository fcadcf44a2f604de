#include "Platform/Linux/DirectWrite/TextFormat.h"

#include <algorithm>

namespace Platform::DirectWrite {

namespace {

constexpr HRESULT notSufficientBuffer = HRESULT_FROM_WIN32(ERROR_INSUFFICIENT_BUFFER);

// Stores a value that is one of an enumeration's, which starts at 0.
template <class Enumeration>
HRESULT Store(Enumeration value, Enumeration last, Enumeration& place) {
    if (value < 0 || value > last) return E_INVALIDARG;
    place = value;
    return S_OK;
}

HRESULT CopyText(const std::wstring& text, WCHAR* buffer, UINT32 size) {
    if (!buffer) return E_INVALIDARG;
    if (size < text.size() + 1) return notSufficientBuffer;
    *std::copy(text.begin(), text.end(), buffer) = L'\0';
    return S_OK;
}

}  // namespace

HRESULT TextFormat::SetTextAlignment(DWRITE_TEXT_ALIGNMENT alignment) {
    return Store(alignment, DWRITE_TEXT_ALIGNMENT_JUSTIFIED, textAlignment_);
}

HRESULT TextFormat::SetParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT alignment) {
    return Store(alignment, DWRITE_PARAGRAPH_ALIGNMENT_CENTER, paragraphAlignment_);
}

HRESULT TextFormat::SetWordWrapping(DWRITE_WORD_WRAPPING wrapping) {
    return Store(wrapping, DWRITE_WORD_WRAPPING_CHARACTER, wordWrapping_);
}

HRESULT TextFormat::GetFontCollection(IDWriteFontCollection** collection) {
    return collection ? font_.collection.CopyTo(collection) : E_POINTER;
}

HRESULT TextFormat::GetFontFamilyName(WCHAR* name, UINT32 size) {
    return CopyText(font_.family, name, size);
}

HRESULT TextFormat::GetLocaleName(WCHAR* name, UINT32 size) {
    return CopyText(font_.locale, name, size);
}

}  // namespace Platform::DirectWrite
