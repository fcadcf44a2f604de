// The fonts that text is set in: the system's, alone or behind those of a private collection.
#pragma once

#include "Platform/Linux/Base/FileDescriptor.h"
#include "Platform/Linux/DirectWrite/Family.h"
#include "Platform/Linux/DirectWrite/FontFace.h"
#include "Platform/Linux/DirectWrite/FontFile.h"

#include <pango/pangofc-fontmap.h>
#include <wrl/client.h>

#include <future>
#include <map>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <vector>

namespace Platform::DirectWrite {

/// A font as a format asks for it.
struct FontRequest {
    std::wstring family;
    DWRITE_FONT_WEIGHT weight;
    DWRITE_FONT_STYLE style;
    DWRITE_FONT_STRETCH stretch;
    FLOAT size;  ///< In device-independent pixels.
    std::wstring locale;
};

/// Any thread; Pango's objects are used by one at a time.
class FontSource {
public:
    /// The system's fonts, read once and kept until the process ends. Throws std::runtime_error if there are none.
    static std::shared_ptr<FontSource> System();
    /// Begins to read them while the program does other things: that is the longest part of setting the first text. To
    /// be waited for before the process ends.
    static std::shared_future<void> ReadSystemAhead();
    /// The fonts of some files first, then the system's. `families` are those of the files: the system's fonts of the
    /// same names are left out.
    FontSource(std::span<const Microsoft::WRL::ComPtr<FontFile>> files, std::span<const std::wstring> families);
    ~FontSource();
    FontSource(const FontSource&) = delete;
    FontSource& operator=(const FontSource&) = delete;

    /// Pango, ready for one request. Holds the source's lock.
    class Session {
    public:
        Session(FontSource& source, const FontRequest& request);
        ~Session();
        Session(const Session&) = delete;
        Session& operator=(const Session&) = delete;

        PangoContext* Context() const noexcept { return source_.context_; }
        PangoLanguage* Language() const noexcept { return language_; }
        const FamilyChoice& Family() const noexcept { return family_; }
        /// The em size that fonts are asked for.
        float EmSize() const noexcept { return emSize_; }
        /// The font for text that needs no other; null if there is no font at all.
        PangoFont* BaseFont();
        /// Ours for one of Pango's. Null if its file can't be read.
        Microsoft::WRL::ComPtr<FontFace> Face(PangoFont* font);
        /// Whether the font is of the family that was chosen, and not one that fills in for missing characters.
        bool IsOfFamily(PangoFont* font) const;

    private:
        FontSource& source_;
        std::lock_guard<std::mutex> lock_;
        FamilyChoice family_;
        float emSize_;
        PangoLanguage* language_;
        PangoFontDescription* description_;
        PangoFont* base_ = nullptr;
    };

private:
    std::mutex mutex_;  // guards the rest
    std::vector<FileDescriptor> files_;
    FcConfig* config_ = nullptr;
    PangoFontMap* fontMap_ = nullptr;
    PangoContext* context_ = nullptr;
    std::map<std::wstring, FamilyChoice> families_;
    std::vector<std::pair<FaceOrigin, Microsoft::WRL::ComPtr<FontFace>>> faces_;
};

}  // namespace Platform::DirectWrite
