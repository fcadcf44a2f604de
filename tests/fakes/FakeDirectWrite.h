// Fakes of DirectWrite: the factory, the in-memory font loader with what builds a collection, and text formats.
#pragma once

#include "tests/fakes/FakeObject.h"

#include <dwrite_3.h>
#include <wrl/client.h>

#include <string>
#include <vector>

namespace Fakes {

/// The families of every font collection that is made from now on.
void SetFontFamilies(std::vector<std::wstring> families);

class FakeTextFactory final : public FakeObject<IDWriteFactory5, IDWriteFactory, IDWriteFactory1, IDWriteFactory2,
                                                IDWriteFactory3, IDWriteFactory4> {
public:
    FakeTextFactory() : FakeObject("TextFactory") {}
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
};

class FakeFontLoader final : public FakeObject<IDWriteInMemoryFontFileLoader, IDWriteFontFileLoader> {
public:
    FakeFontLoader() : FakeObject("FontLoader") {}
    HRESULT CreateInMemoryFontFileReference(IDWriteFactory* factory, const void* data, UINT32 size, IUnknown* owner,
                                            IDWriteFontFile** file) override;
    UINT32 GetFileCount() override { return files_; }

private:
    UINT32 files_ = 0;
};

/// Holds the owner of its bytes.
class FakeFontFile final : public FakeObject<IDWriteFontFile> {
public:
    FakeFontFile(const void* data, IUnknown* owner) : FakeObject("FontFile"), bytes(data), owner_(owner) {}

    const void* const bytes;

private:
    Microsoft::WRL::ComPtr<IUnknown> owner_;
};

class FakeFontSetBuilder final : public FakeObject<IDWriteFontSetBuilder1, IDWriteFontSetBuilder> {
public:
    FakeFontSetBuilder() : FakeObject("FontSetBuilder") {}
    HRESULT AddFontSet(IDWriteFontSet* set) override { return Call("AddFontSet", set); }
    HRESULT CreateFontSet(IDWriteFontSet** set) override;
    HRESULT AddFontFile(IDWriteFontFile* file) override;

private:
    std::vector<Microsoft::WRL::ComPtr<IDWriteFontFile>> files_;
};

/// Holds the files that its builder was given.
class FakeFontSet final : public FakeObject<IDWriteFontSet> {
public:
    explicit FakeFontSet(std::vector<Microsoft::WRL::ComPtr<IDWriteFontFile>> files)
        : FakeObject("FontSet"), files_(std::move(files)) {}
    UINT32 GetFontCount() override { return static_cast<UINT32>(files_.size()); }

private:
    std::vector<Microsoft::WRL::ComPtr<IDWriteFontFile>> files_;
};

class FakeFontCollection final : public FakeObject<IDWriteFontCollection1, IDWriteFontCollection> {
public:
    explicit FakeFontCollection(IDWriteFontSet* set);
    UINT32 GetFontFamilyCount() override { return static_cast<UINT32>(families_.size()); }
    HRESULT FindFamilyName(const WCHAR* name, UINT32* index, BOOL* exists) override;
    HRESULT GetFontSet(IDWriteFontSet** set) override { return set_.CopyTo(set); }

private:
    Microsoft::WRL::ComPtr<IDWriteFontSet> set_;
    std::vector<std::wstring> families_;
};

class FakeTextFormat final : public FakeObject<IDWriteTextFormat> {
public:
    FakeTextFormat(const WCHAR* family, IDWriteFontCollection* collection, DWRITE_FONT_WEIGHT weight,
                   DWRITE_FONT_STYLE style, DWRITE_FONT_STRETCH stretch, FLOAT size, const WCHAR* locale);
    HRESULT SetTextAlignment(DWRITE_TEXT_ALIGNMENT alignment) override;
    HRESULT SetParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT alignment) override;
    HRESULT SetWordWrapping(DWRITE_WORD_WRAPPING wrapping) override;
    DWRITE_TEXT_ALIGNMENT GetTextAlignment() override { return alignment_; }
    DWRITE_PARAGRAPH_ALIGNMENT GetParagraphAlignment() override { return paragraph_; }
    DWRITE_WORD_WRAPPING GetWordWrapping() override { return wrapping_; }
    HRESULT GetFontCollection(IDWriteFontCollection** collection) override { return collection_.CopyTo(collection); }
    UINT32 GetFontFamilyNameLength() override { return static_cast<UINT32>(family_.size()); }
    HRESULT GetFontFamilyName(WCHAR* name, UINT32 size) override;
    DWRITE_FONT_WEIGHT GetFontWeight() override { return weight_; }
    DWRITE_FONT_STYLE GetFontStyle() override { return style_; }
    DWRITE_FONT_STRETCH GetFontStretch() override { return stretch_; }
    FLOAT GetFontSize() override { return size_; }
    UINT32 GetLocaleNameLength() override { return static_cast<UINT32>(locale_.size()); }
    HRESULT GetLocaleName(WCHAR* name, UINT32 size) override;

private:
    std::wstring family_;
    Microsoft::WRL::ComPtr<IDWriteFontCollection> collection_;
    DWRITE_FONT_WEIGHT weight_;
    DWRITE_FONT_STYLE style_;
    DWRITE_FONT_STRETCH stretch_;
    FLOAT size_;
    std::wstring locale_;
    DWRITE_TEXT_ALIGNMENT alignment_ = DWRITE_TEXT_ALIGNMENT_LEADING;
    DWRITE_PARAGRAPH_ALIGNMENT paragraph_ = DWRITE_PARAGRAPH_ALIGNMENT_NEAR;
    DWRITE_WORD_WRAPPING wrapping_ = DWRITE_WORD_WRAPPING_WRAP;
};

}  // namespace Fakes
