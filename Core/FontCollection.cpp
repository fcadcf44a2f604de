// How DeviceManager makes a collection of the fonts built into the program.

#include "Core/DeviceManager.h"
#include "Core/EmbeddedFonts.h"

#include <limits>

namespace Tamborel {

void DeviceManager::LoadEmbeddedFonts() noexcept {
    if (FAILED(DWriteFactory->QueryInterface(IID_PPV_ARGS(&DWriteFactory5)))) return;
    // Nothing is said about a failure: text is set in the system's fonts then.
    if (FAILED(CreateFontCollection())) ReleaseFonts();
}

HRESULT DeviceManager::CreateFontCollection() noexcept {
    HRESULT result = DWriteFactory5->CreateInMemoryFontFileLoader(&FontLoader);
    if (FAILED(result)) return result;
    result = DWriteFactory->RegisterFontFileLoader(FontLoader.Get());
    if (FAILED(result)) return result;

    Microsoft::WRL::ComPtr<IDWriteFontSetBuilder1> builder;
    result = DWriteFactory5->CreateFontSetBuilder(builder.GetAddressOf());
    if (FAILED(result)) return result;
    for (EmbeddedResource* const font : EmbeddedFonts()) {
        result = AddEmbeddedFont(DWriteFactory5.Get(), FontLoader.Get(), builder.Get(), *font);
        if (FAILED(result)) return result;
    }

    Microsoft::WRL::ComPtr<IDWriteFontSet> set;
    result = builder->CreateFontSet(&set);
    if (FAILED(result)) return result;
    return DWriteFactory5->CreateFontCollectionFromFontSet(set.Get(), &FontCollection);
}

void DeviceManager::ReleaseFonts() noexcept {
    if (DWriteFactory && FontLoader) DWriteFactory->UnregisterFontFileLoader(FontLoader.Get());
    FontCollection.Reset();
    FontLoader.Reset();
    DWriteFactory5.Reset();
}

HRESULT AddEmbeddedFont(IDWriteFactory5* factory, IDWriteInMemoryFontFileLoader* loader,
                        IDWriteFontSetBuilder1* builder, EmbeddedResource& resource) noexcept {
    if (!factory || !loader || !builder) return E_INVALIDARG;
    const auto [data, size] = resource.Data();
    if (size == 0 || size > std::numeric_limits<UINT32>::max()) return E_FAIL;

    // The resource owns the bytes, which DirectWrite reads where they lie.
    Microsoft::WRL::ComPtr<IDWriteFontFile> file;
    const HRESULT result =
        loader->CreateInMemoryFontFileReference(factory, data, static_cast<UINT32>(size), &resource, &file);
    if (FAILED(result)) return result;
    return builder->AddFontFile(file.Get());
}

}  // namespace Tamborel
