// One face of a font file: measures, outlines, and coverage masks of its glyphs.
#pragma once

#include "Platform/Linux/Base/ComObject.h"
#include "Platform/Linux/DirectWrite/GlyphMask.h"

#include <dwrite.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

namespace Platform::DirectWrite {

/// What makes a face, as Fontconfig tells it.
struct FaceOrigin {
    std::string file;
    unsigned index = 0;            ///< Of the face; the upper 16 bits pick a named instance.
    std::vector<int> coordinates;  ///< Of a variable font: normalised, 1.0 is 16384. Empty for the default.
    bool embolden = false;         ///< The bold is made from a lighter face.
    double slant = 0.0;            ///< How far a glyph leans to the right, per unit of height.

    friend bool operator==(const FaceOrigin&, const FaceOrigin&) = default;
};

/// In ems. Offsets count downward from the baseline to the line's upper edge.
struct FaceMetrics {
    float ascent;
    float descent;
    float lineGap;
    float underlineOffset;
    float underlineThickness;
    float strikethroughOffset;
    float strikethroughThickness;
};

/// Any thread.
class FontFace final : public ComObject<IDWriteFontFace> {
public:
    /// Throws std::runtime_error if the file can't be read.
    explicit FontFace(const FaceOrigin& origin);

    HRESULT GetGlyphRunOutline(FLOAT emSize, const UINT16* glyphs, const FLOAT* advances,
                               const DWRITE_GLYPH_OFFSET* offsets, UINT32 count, BOOL isSideways, BOOL isRightToLeft,
                               IDWriteGeometrySink* sink) override;

    const FaceMetrics& Metrics() const noexcept { return metrics_; }
    /// In ems.
    float Advance(UINT16 glyph) const;
    /// The box around a glyph's outline, in ems, y downward. All zero for one without ink.
    D2D1_RECT_F Box(UINT16 glyph) const;
    /// A glyph's coverage at a size in pixels, shifted to the right by `phase` quarters of a pixel. Throws
    /// std::bad_alloc.
    std::shared_ptr<const GlyphMask> Mask(UINT16 glyph, float pixelsX, float pixelsY, unsigned phase) const;

private:
    struct MaskKey {
        UINT16 glyph;
        unsigned phase;
        FT_F26Dot6 sizeX;
        FT_F26Dot6 sizeY;
        friend bool operator==(const MaskKey&, const MaskKey&) = default;
    };
    struct MaskKeyHash {
        std::size_t operator()(const MaskKey& key) const noexcept;
    };

    ~FontFace() override;

    void ReadMetrics();
    /// The glyph's outline, in font units or, with a size, in 64ths of a pixel; null if it has none. Needs mutex_.
    FT_Outline* Outline(UINT16 glyph, FT_F26Dot6 sizeX = 0, FT_F26Dot6 sizeY = 0) const;
    std::shared_ptr<const GlyphMask> MakeMask(const MaskKey& key) const;

    FaceOrigin origin_;
    FT_Library library_ = nullptr;  // of its own: FreeType's must not be shared between threads
    FT_Face face_ = nullptr;
    float unitsPerEm_ = 1.0F;
    FaceMetrics metrics_{};
    mutable std::mutex mutex_;  // guards what follows, and face_
    mutable std::unordered_map<UINT16, D2D1_RECT_F> boxes_;
    mutable std::unordered_map<MaskKey, std::shared_ptr<const GlyphMask>, MaskKeyHash> masks_;
};

}  // namespace Platform::DirectWrite
