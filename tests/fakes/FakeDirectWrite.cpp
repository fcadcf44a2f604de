#include "tests/fakes/FakeDirectWrite.h"

#include "tests/fakes/FakeTextLayout.h"

#include <algorithm>
#include <mutex>

namespace Fakes {

namespace {

std::mutex familiesMutex;
std::vector<std::wstring> families;  // guarded by familiesMutex

HRESULT CopyText(const std::wstring& text, WCHAR* to, UINT32 size) {
    if (size <= text.size()) return HRESULT_FROM_WIN32(ERROR_INSUFFICIENT_BUFFER);
    std::ranges::copy(text, to);
    to[text.size()] = L'\0';
    return S_OK;
}

}  // namespace

void SetFontFamilies(std::vector<std::wstring> newFamilies) {
    const std::lock_guard lock(familiesMutex);
    families = std::move(newFamilies);
}

HRESULT FakeTextFactory::RegisterFontFileLoader(IDWriteFontFileLoader* loader) {
    return Call("RegisterFontFileLoader", loader);
}
HRESULT FakeTextFactory::UnregisterFontFileLoader(IDWriteFontFileLoader* loader) {
    return Call("UnregisterFontFileLoader", loader);
}

HRESULT FakeTextFactory::CreateTextFormat(const WCHAR* family, IDWriteFontCollection* collection,
                                          DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STYLE style,
                                          DWRITE_FONT_STRETCH stretch, FLOAT size, const WCHAR* locale,
                                          IDWriteTextFormat** format) {
    const HRESULT result = Call("CreateTextFormat", family, collection, weight, style, stretch, size, locale);
    return Make<FakeTextFormat>(result, format, family, collection, weight, style, stretch, size, locale);
}

HRESULT FakeTextFactory::CreateTextLayout(const WCHAR* text, UINT32 length, IDWriteTextFormat* format, FLOAT maxWidth,
                                          FLOAT maxHeight, IDWriteTextLayout** layout) {
    const HRESULT result = Call("CreateTextLayout", std::wstring(text, length).c_str(), format, maxWidth, maxHeight);
    return Make<FakeTextLayout>(result, layout, format, maxWidth, maxHeight);
}

HRESULT FakeTextFactory::CreateFontSetBuilder(IDWriteFontSetBuilder** builder) {
    return Make<FakeFontSetBuilder>(Call("CreateFontSetBuilder"), builder);
}
HRESULT FakeTextFactory::CreateFontSetBuilder(IDWriteFontSetBuilder1** builder) {
    return Make<FakeFontSetBuilder>(Call("CreateFontSetBuilder"), builder);
}
HRESULT FakeTextFactory::CreateFontCollectionFromFontSet(IDWriteFontSet* set, IDWriteFontCollection1** collection) {
    return Make<FakeFontCollection>(Call("CreateFontCollectionFromFontSet", set), collection, set);
}
HRESULT FakeTextFactory::CreateInMemoryFontFileLoader(IDWriteInMemoryFontFileLoader** loader) {
    return Make<FakeFontLoader>(Call("CreateInMemoryFontFileLoader"), loader);
}

HRESULT FakeFontLoader::CreateInMemoryFontFileReference(IDWriteFactory* factory, const void* data, UINT32 size,
                                                        IUnknown* owner, IDWriteFontFile** file) {
    const HRESULT result =
        Call("CreateInMemoryFontFileReference", factory, size, std::string(owner ? "owner" : "null"));
    if (SUCCEEDED(result)) ++files_;
    return Make<FakeFontFile>(result, file, data, owner);
}

HRESULT FakeFontSetBuilder::CreateFontSet(IDWriteFontSet** set) {
    return Make<FakeFontSet>(Call("CreateFontSet"), set, files_);
}
HRESULT FakeFontSetBuilder::AddFontFile(IDWriteFontFile* file) {
    const HRESULT result = Call("AddFontFile", file);
    if (SUCCEEDED(result)) files_.emplace_back(file);
    return result;
}

FakeFontCollection::FakeFontCollection(IDWriteFontSet* set) : FakeObject("FontCollection"), set_(set) {
    const std::lock_guard lock(familiesMutex);
    families_ = families;
}

HRESULT FakeFontCollection::FindFamilyName(const WCHAR* name, UINT32* index, BOOL* exists) {
    const HRESULT result = Call("FindFamilyName", name);
    const auto found = std::ranges::find(families_, name);
    *exists = SUCCEEDED(result) && found != families_.end();
    *index = *exists ? static_cast<UINT32>(found - families_.begin()) : 0xFFFFFFFF;
    return result;
}

FakeTextFormat::FakeTextFormat(const WCHAR* family, IDWriteFontCollection* collection, DWRITE_FONT_WEIGHT weight,
                               DWRITE_FONT_STYLE style, DWRITE_FONT_STRETCH stretch, FLOAT size, const WCHAR* locale)
    : FakeObject("TextFormat"),
      family_(family),
      collection_(collection),
      weight_(weight),
      style_(style),
      stretch_(stretch),
      size_(size),
      locale_(locale) {}

HRESULT FakeTextFormat::SetTextAlignment(DWRITE_TEXT_ALIGNMENT alignment) {
    alignment_ = alignment;
    return Call("SetTextAlignment", alignment);
}
HRESULT FakeTextFormat::SetParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT alignment) {
    paragraph_ = alignment;
    return Call("SetParagraphAlignment", alignment);
}
HRESULT FakeTextFormat::SetWordWrapping(DWRITE_WORD_WRAPPING wrapping) {
    wrapping_ = wrapping;
    return Call("SetWordWrapping", wrapping);
}
HRESULT FakeTextFormat::GetFontFamilyName(WCHAR* name, UINT32 size) {
    return CopyText(family_, name, size);
}
HRESULT FakeTextFormat::GetLocaleName(WCHAR* name, UINT32 size) {
    return CopyText(locale_, name, size);
}

}  // namespace Fakes

FAKE_FUNCTION HRESULT WINAPI DWriteCreateFactory(DWRITE_FACTORY_TYPE type, REFIID iid, IUnknown** factory) noexcept {
    return Fakes::MakeAs<Fakes::FakeTextFactory>(Fakes::FreeCall("DWriteCreateFactory", type), iid,
                                                 reinterpret_cast<void**>(factory));
}
