#include "Platform/Linux/DirectWrite/FontFace.h"

#include FT_ADVANCES_H
#include FT_MULTIPLE_MASTERS_H
#include FT_OUTLINE_H
#include FT_TRUETYPE_TABLES_H

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace Platform::DirectWrite {

namespace {

// A bold made from a regular grows by this part of an em in all, as Cairo's does.
constexpr float emboldening = 1.0F / 24.0F;
// Some hundred glyphs at a few sizes and four phases; about a megabyte at common sizes.
constexpr std::size_t maxMasks = 4096;
constexpr FT_Int32 loadFlags = FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP;

}  // namespace

FontFace::FontFace(const FaceOrigin& origin) : ComObject("IDWriteFontFace"), origin_(origin) {
    if (FT_Init_FreeType(&library_) != 0) throw std::bad_alloc();
    if (FT_New_Face(library_, origin_.file.c_str(), static_cast<FT_Long>(origin_.index), &face_) != 0) {
        FT_Done_FreeType(library_);
        throw std::runtime_error("not a font: " + origin_.file);
    }
    if (!origin_.coordinates.empty()) {
        std::vector<FT_Fixed> fixed;
        for (const int coordinate : origin_.coordinates) fixed.push_back(FT_Fixed{coordinate} * 4);
        FT_Set_Var_Blend_Coordinates(face_, static_cast<FT_UInt>(fixed.size()), fixed.data());
    }
    if (face_->units_per_EM != 0) unitsPerEm_ = static_cast<float>(face_->units_per_EM);
    ReadMetrics();
}

FontFace::~FontFace() {
    FT_Done_Face(face_);
    FT_Done_FreeType(library_);
}

// The same choice among a font's three sets of values as the system makes: the typographic ones if the font asks for
// them, else the clipping ones, with what the third set's gap goes beyond them.
void FontFace::ReadMetrics() {
    const auto ems = [this](auto units) { return static_cast<float>(units) / unitsPerEm_; };
    metrics_.ascent = ems(face_->ascender);
    metrics_.descent = ems(-face_->descender);
    metrics_.underlineThickness = ems(face_->underline_thickness);
    metrics_.underlineOffset = ems(-face_->underline_position) - metrics_.underlineThickness / 2;
    metrics_.strikethroughThickness = metrics_.underlineThickness;
    metrics_.strikethroughOffset = -metrics_.ascent / 3;
    const auto* const os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face_, FT_SFNT_OS2));
    const auto* const hhea = static_cast<const TT_HoriHeader*>(FT_Get_Sfnt_Table(face_, FT_SFNT_HHEA));
    if (!os2 || os2->version == 0xFFFF) return;
    constexpr FT_UShort useTypographic = 1U << 7U;
    if ((os2->fsSelection & useTypographic) != 0) {
        metrics_.ascent = ems(os2->sTypoAscender);
        metrics_.descent = ems(-os2->sTypoDescender);
        metrics_.lineGap = ems(os2->sTypoLineGap);
    } else if (os2->usWinAscent + os2->usWinDescent > 0) {
        metrics_.ascent = ems(os2->usWinAscent);
        metrics_.descent = ems(os2->usWinDescent);
        if (hhea) {
            const int beyond =
                hhea->Line_Gap - (os2->usWinAscent + os2->usWinDescent - hhea->Ascender + hhea->Descender);
            metrics_.lineGap = std::max(0.0F, ems(beyond));
        }
    }
    if (os2->yStrikeoutSize > 0) {
        metrics_.strikethroughThickness = ems(os2->yStrikeoutSize);
        metrics_.strikethroughOffset = ems(-os2->yStrikeoutPosition);
    }
}

FT_Outline* FontFace::Outline(UINT16 glyph, FT_F26Dot6 sizeX, FT_F26Dot6 sizeY) const {
    const bool scaled = sizeX > 0;
    if (scaled && FT_Set_Char_Size(face_, sizeX, sizeY, 0, 0) != 0) return nullptr;
    if (FT_Load_Glyph(face_, glyph, scaled ? loadFlags : loadFlags | FT_LOAD_NO_SCALE) != 0) return nullptr;
    if (face_->glyph->format != FT_GLYPH_FORMAT_OUTLINE || face_->glyph->outline.n_contours == 0) return nullptr;
    FT_Outline* const outline = &face_->glyph->outline;
    if (origin_.embolden) {
        const float em = scaled ? static_cast<float>(sizeY) : unitsPerEm_;
        FT_Outline_Embolden(outline, std::lround(em * emboldening));
    }
    if (origin_.slant != 0.0) {
        const FT_Matrix lean{0x10000, std::lround(origin_.slant * 0x10000), 0, 0x10000};
        FT_Outline_Transform(outline, &lean);
    }
    return outline;
}

float FontFace::Advance(UINT16 glyph) const {
    const std::lock_guard lock(mutex_);
    FT_Fixed advance = 0;
    if (FT_Get_Advance(face_, glyph, loadFlags | FT_LOAD_NO_SCALE, &advance) != 0) return 0.0F;
    return static_cast<float>(advance) / unitsPerEm_;
}

D2D1_RECT_F FontFace::Box(UINT16 glyph) const {
    const std::lock_guard lock(mutex_);
    if (const auto known = boxes_.find(glyph); known != boxes_.end()) return known->second;
    D2D1_RECT_F box{};
    if (FT_Outline* const outline = Outline(glyph)) {
        FT_BBox units{};
        FT_Outline_Get_CBox(outline, &units);
        box = {static_cast<float>(units.xMin) / unitsPerEm_, static_cast<float>(-units.yMax) / unitsPerEm_,
               static_cast<float>(units.xMax) / unitsPerEm_, static_cast<float>(-units.yMin) / unitsPerEm_};
    }
    boxes_.emplace(glyph, box);
    return box;
}

std::size_t FontFace::MaskKeyHash::operator()(const MaskKey& key) const noexcept {
    const auto size = static_cast<std::size_t>(key.sizeX) * 31 + static_cast<std::size_t>(key.sizeY);
    return (size * 65599 + key.glyph) * 4 + key.phase;
}

std::shared_ptr<const GlyphMask> FontFace::Mask(UINT16 glyph, float pixelsX, float pixelsY, unsigned phase) const {
    constexpr float fraction = 64.0F;
    const MaskKey key{glyph, phase, std::lround(pixelsX * fraction), std::lround(pixelsY * fraction)};
    const std::lock_guard lock(mutex_);
    if (const auto known = masks_.find(key); known != masks_.end()) return known->second;
    if (masks_.size() >= maxMasks) masks_.clear();
    return masks_.emplace(key, MakeMask(key)).first->second;
}

std::shared_ptr<const GlyphMask> FontFace::MakeMask(const MaskKey& key) const {
    auto mask = std::make_shared<GlyphMask>();
    if (key.sizeX <= 0 || key.sizeY <= 0) return mask;
    FT_Outline* const outline = Outline(key.glyph, key.sizeX, key.sizeY);
    if (!outline) return mask;
    FT_Outline_Translate(outline, static_cast<FT_Pos>(key.phase) * 16, 0);
    FT_BBox box{};
    FT_Outline_Get_CBox(outline, &box);
    mask->left = static_cast<int>(box.xMin >> 6);
    mask->top = -static_cast<int>((box.yMax + 63) >> 6);
    mask->width = static_cast<int>((box.xMax + 63) >> 6) - mask->left;
    mask->height = -static_cast<int>(box.yMin >> 6) - mask->top;
    constexpr int maxSide = 4096;
    if (mask->width <= 0 || mask->height <= 0 || mask->width > maxSide || mask->height > maxSide)
        return std::make_shared<GlyphMask>();
    mask->coverage.resize(static_cast<std::size_t>(mask->width) * static_cast<std::size_t>(mask->height));
    FT_Outline_Translate(outline, -FT_Pos{mask->left} * 64, FT_Pos{mask->top + mask->height} * 64);
    FT_Bitmap bitmap{};
    bitmap.width = static_cast<unsigned>(mask->width);
    bitmap.rows = static_cast<unsigned>(mask->height);
    bitmap.pitch = mask->width;
    bitmap.buffer = mask->coverage.data();
    bitmap.num_grays = 256;
    bitmap.pixel_mode = FT_PIXEL_MODE_GRAY;
    FT_Outline_Get_Bitmap(library_, outline, &bitmap);
    return mask;
}

}  // namespace Platform::DirectWrite
