#pragma once

#include "Platform/Linux/Base/ComObject.h"
#include "Platform/Linux/DirectWrite/FontSource.h"

#include <dwrite_3.h>
#include <wrl/client.h>

#include <mutex>
#include <vector>

namespace Platform::DirectWrite {

/// Makes fonts and formats. Any thread.
class Factory final : public ComObject<IDWriteFactory5, IDWriteFactory4, IDWriteFactory3, IDWriteFactory2,
                                       IDWriteFactory1, IDWriteFactory> {
public:
    Factory() : ComObject("IDWriteFactory") {}

    HRESULT RegisterFontFileLoader(IDWriteFontFileLoader* loader) override;
    HRESULT UnregisterFontFileLoader(IDWriteFontFileLoader* loader) override;
    HRESULT CreateTextFormat(const WCHAR* family, IDWriteFontCollection* collection, DWRITE_FONT_WEIGHT weight,
                             DWRITE_FONT_STYLE style, DWRITE_FONT_STRETCH stretch, FLOAT size, const WCHAR* locale,
                             IDWriteTextFormat** format) override;
    HRESULT CreateTextLayout(const WCHAR* text, UINT32 length, IDWriteTextFormat* format, FLOAT maxWidth,
                             FLOAT maxHeight, IDWriteTextLayout** layout) override;
    HRESULT CreateFontSetBuilder(IDWriteFontSetBuilder** builder) override;
    HRESULT CreateFontSetBuilder(IDWriteFontSetBuilder1** builder) override;
    HRESULT CreateFontCollectionFromFontSet(IDWriteFontSet* set, IDWriteFontCollection1** collection) override;
    HRESULT CreateInMemoryFontFileLoader(IDWriteInMemoryFontFileLoader** loader) override;

    bool IsRegistered(const IDWriteFontFileLoader* loader) const;

private:
    ~Factory() override {
        if (reading_.valid()) reading_.wait();
    }

    // Whoever asks for a factory will set text, mostly in the system's fonts.
    const std::shared_future<void> reading_ = FontSource::ReadSystemAhead();
    mutable std::mutex mutex_;
    std::vector<Microsoft::WRL::ComPtr<IDWriteFontFileLoader>> loaders_;  // guarded by mutex_
};

}  // namespace Platform::DirectWrite
