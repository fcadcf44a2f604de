// The faces of a font file, as FreeType reads them.

#include "Platform/Linux/DirectWrite/FontSet.h"

#include "Platform/Text/Unicode.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <new>

namespace Platform::DirectWrite {

namespace {

// An instance for each use: FreeType's own must not be shared between threads, and reading names is rare.
class Library {
public:
    Library() {
        if (FT_Init_FreeType(&library_) != 0) throw std::bad_alloc();
    }
    ~Library() { FT_Done_FreeType(library_); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    FT_Library Get() const noexcept { return library_; }

private:
    FT_Library library_ = nullptr;
};

std::wstring FamilyName(FT_Face face) {
    if (!face->family_name) return {};
    return WideFromNative(face->family_name);  // ASCII: FreeType puts a question mark for anything else.
}

}  // namespace

HRESULT ReadFaces(FontFile* file, std::vector<Face>& faces) {
    const std::span<const std::byte> bytes = file->Bytes();
    const Library library;
    FT_Long count = 1;
    for (FT_Long index = 0; index < count; ++index) {
        FT_Face face = nullptr;
        if (FT_New_Memory_Face(library.Get(), reinterpret_cast<const FT_Byte*>(bytes.data()),
                               static_cast<FT_Long>(bytes.size()), index, &face) != 0) {
            return DWRITE_E_FILEFORMAT;
        }
        std::wstring family;
        try {
            family = FamilyName(face);
            count = face->num_faces;
        } catch (...) {
            FT_Done_Face(face);
            throw;
        }
        FT_Done_Face(face);
        faces.push_back({file, index, std::move(family)});
    }
    return S_OK;
}

}  // namespace Platform::DirectWrite
