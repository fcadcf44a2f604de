// Sets of fonts, the builder that makes them, and the collection that finds them by family.
#pragma once

#include "Platform/Linux/DirectWrite/FontFile.h"
#include "Platform/Linux/DirectWrite/FontSource.h"

#include <dwrite_3.h>
#include <wrl/client.h>

#include <future>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Platform::DirectWrite {

using Microsoft::WRL::ComPtr;

/// One face of a font file.
struct Face {
    ComPtr<FontFile> file;
    long index;           ///< In the file.
    std::wstring family;  ///< As the file names it.
};

/// Reads which faces a file holds. DWRITE_E_FILEFORMAT if it is no font. Throws std::bad_alloc.
HRESULT ReadFaces(FontFile* file, std::vector<Face>& faces);

/// Never changes.
class FontSet final : public ComObject<IDWriteFontSet> {
public:
    explicit FontSet(std::vector<Face> faces) : ComObject("IDWriteFontSet"), faces_(std::move(faces)) {}

    UINT32 GetFontCount() override { return static_cast<UINT32>(faces_.size()); }
    const std::vector<Face>& Faces() const noexcept { return faces_; }

private:
    ~FontSet() override = default;

    std::vector<Face> faces_;
};

/// One thread at a time.
class FontSetBuilder final : public ComObject<IDWriteFontSetBuilder1, IDWriteFontSetBuilder> {
public:
    FontSetBuilder() : ComObject("IDWriteFontSetBuilder") {}

    HRESULT AddFontSet(IDWriteFontSet* set) override;
    HRESULT AddFontFile(IDWriteFontFile* file) override;
    HRESULT CreateFontSet(IDWriteFontSet** set) override;

private:
    ~FontSetBuilder() override = default;

    std::vector<Face> faces_;
};

/// The families of a set, in the order of their first faces. Any thread.
class FontCollection final : public ComObject<IDWriteFontCollection1, IDWriteFontCollection> {
public:
    explicit FontCollection(FontSet* set);

    UINT32 GetFontFamilyCount() override { return static_cast<UINT32>(families_.size()); }
    HRESULT FindFamilyName(const WCHAR* name, UINT32* index, BOOL* exists) override;
    HRESULT GetFontSet(IDWriteFontSet** set) override;

    /// The collection's fonts with the system's behind them, read at the first call. Throws std::runtime_error.
    std::shared_ptr<FontSource> Source() { return source_.get(); }

private:
    ~FontCollection() override = default;

    ComPtr<FontSet> set_;
    std::vector<std::wstring> families_;
    std::shared_future<std::shared_ptr<FontSource>> source_;
};

}  // namespace Platform::DirectWrite
