#include "Platform/Linux/DirectWrite/Factory.h"

#include "Platform/Linux/DirectWrite/FontSet.h"
#include "Platform/Linux/DirectWrite/MemoryLoader.h"
#include "Platform/Linux/DirectWrite/TextFormat.h"
#include "Platform/Linux/DirectWrite/TextLayout.h"

#include <algorithm>
#include <new>
#include <stdexcept>

namespace Platform::DirectWrite {

namespace {

constexpr HRESULT noFont = static_cast<HRESULT>(0x88985002);             // DWRITE_E_NOFONT
constexpr HRESULT alreadyRegistered = static_cast<HRESULT>(0x88985006);  // DWRITE_E_ALREADYREGISTERED

template <class Object, class Interface>
HRESULT Make(Interface** out) {
    if (!out) return E_POINTER;
    *out = new (std::nothrow) Object();
    return *out ? S_OK : E_OUTOFMEMORY;
}

// A copy of a format's attributes, which later changes of the format don't reach.
ComPtr<TextFormat> CopyOf(IDWriteTextFormat& format) {
    std::wstring family(format.GetFontFamilyNameLength() + 1, L'\0');
    format.GetFontFamilyName(family.data(), static_cast<UINT32>(family.size()));
    family.pop_back();
    std::wstring locale(format.GetLocaleNameLength() + 1, L'\0');
    format.GetLocaleName(locale.data(), static_cast<UINT32>(locale.size()));
    locale.pop_back();
    ComPtr<IDWriteFontCollection> collection;
    format.GetFontCollection(&collection);
    ComPtr<TextFormat> copy;
    copy.Attach(new TextFormat({std::move(family), collection, format.GetFontWeight(), format.GetFontStyle(),
                                format.GetFontStretch(), format.GetFontSize(), std::move(locale)}));
    copy->SetTextAlignment(format.GetTextAlignment());
    copy->SetParagraphAlignment(format.GetParagraphAlignment());
    copy->SetWordWrapping(format.GetWordWrapping());
    return copy;
}

std::shared_ptr<FontSource> FontsOf(const TextFormat::Font& font) {
    auto* const collection = dynamic_cast<FontCollection*>(font.collection.Get());
    return collection ? collection->Source() : FontSource::System();
}

}  // namespace

HRESULT Factory::RegisterFontFileLoader(IDWriteFontFileLoader* loader) try {
    if (!loader) return E_INVALIDARG;
    if (IsRegistered(loader)) return alreadyRegistered;
    const std::lock_guard lock(mutex_);
    loaders_.emplace_back(loader);
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT Factory::UnregisterFontFileLoader(IDWriteFontFileLoader* loader) {
    const std::lock_guard lock(mutex_);
    return std::erase_if(loaders_, [loader](const auto& each) { return each.Get() == loader; }) ? S_OK : E_INVALIDARG;
}

bool Factory::IsRegistered(const IDWriteFontFileLoader* loader) const {
    const std::lock_guard lock(mutex_);
    return std::ranges::any_of(loaders_, [loader](const auto& each) { return each.Get() == loader; });
}

HRESULT Factory::CreateTextFormat(const WCHAR* family, IDWriteFontCollection* collection, DWRITE_FONT_WEIGHT weight,
                                  DWRITE_FONT_STYLE style, DWRITE_FONT_STRETCH stretch, FLOAT size, const WCHAR* locale,
                                  IDWriteTextFormat** format) try {
    if (!format) return E_POINTER;
    *format = nullptr;
    const bool known = weight >= 1 && weight <= 999 && style >= DWRITE_FONT_STYLE_NORMAL &&
                       style <= DWRITE_FONT_STYLE_ITALIC && stretch >= DWRITE_FONT_STRETCH_UNDEFINED &&
                       stretch <= DWRITE_FONT_STRETCH_ULTRA_EXPANDED;
    if (!family || !locale || !known || !(size > 0.0F)) return E_INVALIDARG;
    *format = new TextFormat({family, collection, weight, style, stretch, size, locale});
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT Factory::CreateTextLayout(const WCHAR* text, UINT32 length, IDWriteTextFormat* format, FLOAT maxWidth,
                                  FLOAT maxHeight, IDWriteTextLayout** layout) try {
    if (!layout) return E_POINTER;
    *layout = nullptr;
    if ((!text && length > 0) || !format || !(maxWidth >= 0.0F) || !(maxHeight >= 0.0F)) return E_INVALIDARG;
    const std::wstring_view view = length > 0 ? std::wstring_view(text, length) : std::wstring_view();
    ComPtr<TextFormat> copy = CopyOf(*format);
    std::shared_ptr<FontSource> fonts = FontsOf(copy->GetFont());
    ComPtr<TextLayout> made;
    made.Attach(new TextLayout(view, std::move(copy), std::move(fonts), maxWidth, maxHeight));
    if (!made->Content()) return E_OUTOFMEMORY;
    *layout = made.Detach();
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
} catch (const std::runtime_error&) {
    return noFont;
}

HRESULT Factory::CreateFontSetBuilder(IDWriteFontSetBuilder** builder) {
    return Make<FontSetBuilder>(builder);
}

HRESULT Factory::CreateFontSetBuilder(IDWriteFontSetBuilder1** builder) {
    return Make<FontSetBuilder>(builder);
}

HRESULT Factory::CreateFontCollectionFromFontSet(IDWriteFontSet* set, IDWriteFontCollection1** collection) try {
    if (!collection) return E_POINTER;
    *collection = nullptr;
    auto* const own = dynamic_cast<FontSet*>(set);
    if (!own) return E_INVALIDARG;
    *collection = new FontCollection(own);
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT Factory::CreateInMemoryFontFileLoader(IDWriteInMemoryFontFileLoader** loader) {
    return Make<MemoryLoader>(loader);
}

}  // namespace Platform::DirectWrite

HRESULT WINAPI DWriteCreateFactory(DWRITE_FACTORY_TYPE type, REFIID iid, IUnknown** factory) noexcept try {
    using Platform::DirectWrite::Factory;
    if (!factory) return E_POINTER;
    *factory = nullptr;
    Microsoft::WRL::ComPtr<Factory> made;
    if (type == DWRITE_FACTORY_TYPE_SHARED) {
        static const Microsoft::WRL::ComPtr<Factory> shared = [] {
            Microsoft::WRL::ComPtr<Factory> first;
            first.Attach(new Factory());
            return first;
        }();
        made = shared;
    } else {
        made.Attach(new Factory());
    }
    return made->QueryInterface(iid, reinterpret_cast<void**>(factory));
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}
