#include "Platform/Linux/DirectWrite/FontSet.h"

#include <algorithm>
#include <cwctype>
#include <new>
#include <string_view>
#include <system_error>

namespace Platform::DirectWrite {

namespace {

bool SameName(std::wstring_view a, std::wstring_view b) {
    return std::ranges::equal(a, b, [](wchar_t left, wchar_t right) {
        return std::towlower(static_cast<std::wint_t>(left)) == std::towlower(static_cast<std::wint_t>(right));
    });
}

}  // namespace

HRESULT FontSetBuilder::AddFontSet(IDWriteFontSet* set) try {
    const auto* const own = dynamic_cast<const FontSet*>(set);
    if (!own) return E_INVALIDARG;
    faces_.insert(faces_.end(), own->Faces().begin(), own->Faces().end());
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT FontSetBuilder::AddFontFile(IDWriteFontFile* file) try {
    auto* const own = dynamic_cast<FontFile*>(file);
    if (!own) return E_INVALIDARG;
    std::vector<Face> read;
    if (const HRESULT result = ReadFaces(own, read); FAILED(result)) return result;
    faces_.insert(faces_.end(), read.begin(), read.end());
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT FontSetBuilder::CreateFontSet(IDWriteFontSet** set) try {
    if (!set) return E_POINTER;
    *set = nullptr;
    *set = new FontSet(faces_);
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

namespace {

std::shared_future<std::shared_ptr<FontSource>> Reading(std::vector<ComPtr<FontFile>> files,
                                                        std::vector<std::wstring> families) {
    return std::async(std::launch::deferred,
                      [files = std::move(files), families = std::move(families)] {
                          return std::make_shared<FontSource>(files, families);
                      })
        .share();
}

}  // namespace

FontCollection::FontCollection(FontSet* set) : ComObject("IDWriteFontCollection"), set_(set) {
    for (const Face& face : set->Faces()) {
        const bool known =
            std::ranges::any_of(families_, [&](const std::wstring& family) { return SameName(family, face.family); });
        if (!known) families_.push_back(face.family);
    }
    std::vector<ComPtr<FontFile>> files;
    for (const Face& face : set->Faces()) {
        const bool known = std::ranges::any_of(files, [&](const auto& file) { return file.Get() == face.file.Get(); });
        if (!known) files.push_back(face.file);
    }
    source_ = Reading(std::move(files), families_);
}

HRESULT FontCollection::FindFamilyName(const WCHAR* name, UINT32* index, BOOL* exists) {
    if (!name || !index || !exists) return E_INVALIDARG;
    const auto found =
        std::ranges::find_if(families_, [&](const std::wstring& family) { return SameName(family, name); });
    *exists = found != families_.end() ? TRUE : FALSE;
    *index = *exists ? static_cast<UINT32>(found - families_.begin()) : 0xFFFFFFFF;
    return S_OK;
}

HRESULT FontCollection::GetFontSet(IDWriteFontSet** set) {
    if (!set) return E_POINTER;
    *set = set_.Get();
    (*set)->AddRef();
    return S_OK;
}

}  // namespace Platform::DirectWrite
