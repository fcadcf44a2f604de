#include "Platform/Linux/DirectWrite/ShapedText.h"

#include "Platform/Text/Unicode.h"

#include <algorithm>
#include <limits>
#include <memory>

namespace Platform::DirectWrite {

namespace {

constexpr wchar_t wordJoiner = 0x2060;  // Takes no room, shows nothing, and parts nothing.
constexpr wchar_t replacement = 0xFFFD;

constexpr float FromPango(int units) {
    return static_cast<float>(units) / PANGO_SCALE;
}

bool IsNewline(wchar_t character) {
    return (character >= L'\n' && character <= L'\r') || character == 0x85 || character == 0x2028 ||
           character == 0x2029;
}

// Control characters show nothing; a surrogate that stands alone, and what lies beyond Unicode, shows as a mark.
wchar_t Shown(wchar_t character) {
    const auto code = static_cast<char32_t>(character);
    if (code == '\t') return character;
    if (code < 0x20 || (code >= 0x7F && code < 0xA0)) return wordJoiner;
    if ((code >= 0xD800 && code < 0xE000) || code > 0x10FFFF) return replacement;
    return character;
}

// A space that holds words together counts as one of their letters.
bool IsWhite(wchar_t character, const PangoLogAttr& attributes) {
    return attributes.is_white && character != 0xA0 && character != 0x2007 && character != 0x202F;
}

struct GlyphStringDeleter {
    void operator()(PangoGlyphString* glyphs) const { pango_glyph_string_free(glyphs); }
};
struct ItemsDeleter {
    void operator()(GList* items) const {
        g_list_free_full(items, [](gpointer item) { pango_item_free(static_cast<PangoItem*>(item)); });
    }
};

class Shaper {
public:
    Shaper(FontSource& fonts, const FontRequest& request, std::wstring_view text, ShapedText& shaped)
        : session_(fonts, request),
          request_(request),
          text_(text),
          shaped_(shaped),
          glyphs_(pango_glyph_string_new()) {}

    void Run() {
        PangoFont* const base = session_.BaseFont();
        shaped_.emptyLine = BoxOf(base, session_.Face(base).Get());
        shaped_.glyphs.reserve(text_.size());
        shaped_.advances.reserve(text_.size());
        shaped_.offsets.reserve(text_.size());
        shaped_.clusters.reserve(text_.size());
        std::size_t at = 0;
        for (;;) {
            std::size_t end = at;
            while (end < text_.size() && !IsNewline(text_[end])) ++end;
            std::size_t next = end;
            if (next < text_.size()) {
                ++next;
                if (text_[end] == L'\r' && next < text_.size() && text_[next] == L'\n') ++next;
            }
            const std::size_t first = shaped_.clusters.size();
            ShapeParagraph(at, end);
            shaped_.paragraphs.push_back({first, shaped_.clusters.size(), static_cast<UINT32>(at),
                                          static_cast<UINT32>(end - at), static_cast<UINT32>(next - end)});
            if (next == end) break;
            at = next;
        }
    }

private:
    LineBox BoxOf(PangoFont* font, const FontFace* face) const {
        if (const auto& line = session_.Family().line; line && (!face || session_.IsOfFamily(font))) {
            return {line->ascent * request_.size, line->descent * request_.size};
        }
        if (!face) return {request_.size, 0.0F};
        const FaceMetrics& metrics = face->Metrics();
        return {metrics.ascent * session_.EmSize(), (metrics.descent + metrics.lineGap) * session_.EmSize()};
    }

    void ShapeParagraph(std::size_t start, std::size_t end) {
        if (start == end) return;
        std::wstring shown(text_.substr(start, end - start));
        std::ranges::transform(shown, shown.begin(), Shown);
        utf8_ = Utf8FromWide(shown);
        const int bytes = static_cast<int>(utf8_.size());
        attributes_.assign(shown.size() + 1, {});
        const std::unique_ptr<PangoAttrList, decltype(&pango_attr_list_unref)> none(pango_attr_list_new(),
                                                                                    pango_attr_list_unref);
        const std::unique_ptr<GList, ItemsDeleter> items(pango_itemize_with_base_dir(
            session_.Context(), PANGO_DIRECTION_LTR, utf8_.data(), 0, bytes, none.get(), nullptr));
        pango_get_log_attrs(utf8_.data(), bytes, -1, session_.Language(), attributes_.data(),
                            static_cast<int>(attributes_.size()));
        paragraph_ = start;
        character_ = 0;
        for (const GList* each = items.get(); each; each = each->next) ShapeItem(static_cast<PangoItem*>(each->data));
    }

    void ShapeItem(PangoItem* item) {
        PangoFont* const font = item->analysis.font;
        const Microsoft::WRL::ComPtr<FontFace> face = session_.Face(font);
        pango_shape_item(item, utf8_.data(), static_cast<int>(utf8_.size()), attributes_.data() + character_,
                         glyphs_.get(), PANGO_SHAPE_NONE);
        run_ = static_cast<UINT32>(shaped_.runs.size());
        shaped_.runs.push_back({face, session_.EmSize(), item->analysis.level, BoxOf(font, face.Get())});
        const bool toTheLeft = item->analysis.level % 2 == 1;
        const int count = glyphs_->num_glyphs;
        const auto inTextOrder = [&](int i) { return toTheLeft ? count - 1 - i : i; };
        const std::size_t itemEnd = character_ + static_cast<std::size_t>(item->num_chars);
        for (int i = 0; i < count;) {
            const int bytes = glyphs_->log_clusters[inTextOrder(i)];
            const auto glyph = static_cast<UINT32>(shaped_.glyphs.size());
            float width = 0.0F;
            for (; i < count && glyphs_->log_clusters[inTextOrder(i)] == bytes; ++i) {
                width += AddGlyph(glyphs_->glyphs[inTextOrder(i)], face.Get(), toTheLeft);
            }
            const int next = i < count ? glyphs_->log_clusters[inTextOrder(i)] : item->length;
            AddCluster(i < count ? character_ + Characters(item->offset + bytes, next - bytes) : itemEnd, glyph, width);
        }
        character_ = itemEnd;
    }

    float AddGlyph(const PangoGlyphInfo& info, const FontFace* face, bool toTheLeft) {
        if (info.glyph == PANGO_GLYPH_EMPTY) return 0.0F;
        if ((info.glyph & PANGO_GLYPH_UNKNOWN_FLAG) != 0 || info.glyph > std::numeric_limits<UINT16>::max()) {
            // Glyph 0 is a font's own sign for what it hasn't got.
            return Append(0, face ? face->Advance(0) * session_.EmSize() : 0.0F, {});
        }
        const float x = FromPango(info.geometry.x_offset);
        return Append(static_cast<UINT16>(info.glyph), FromPango(info.geometry.width),
                      {toTheLeft ? -x : x, -FromPango(info.geometry.y_offset)});
    }

    float Append(UINT16 glyph, float advance, const DWRITE_GLYPH_OFFSET& offset) {
        shaped_.glyphs.push_back(glyph);
        shaped_.advances.push_back(advance);
        shaped_.offsets.push_back(offset);
        return advance;
    }

    // Adds the cluster of the characters from character_ to `end`.
    void AddCluster(std::size_t end, UINT32 glyph, float width) {
        if (end <= character_) return;
        bool white = true;
        for (std::size_t i = character_; i < end; ++i) {
            white = white && IsWhite(text_[paragraph_ + i], attributes_[i]);
        }
        const bool tab = text_[paragraph_ + character_] == L'\t';
        if (tab) {
            shaped_.glyphs.resize(glyph);
            shaped_.advances.resize(glyph);
            shaped_.offsets.resize(glyph);
        }
        const auto glyphCount = static_cast<UINT32>(shaped_.glyphs.size()) - glyph;
        shaped_.clusters.push_back({static_cast<UINT32>(paragraph_ + character_), static_cast<UINT32>(end - character_),
                                    run_, glyph, glyphCount, tab ? 0.0F : width, white, tab,
                                    attributes_[end].is_line_break != 0,
                                    attributes_[character_].is_cursor_position != 0});
        character_ = end;
    }

    std::size_t Characters(int offset, int bytes) const {
        const char* const start = utf8_.data() + offset;
        return static_cast<std::size_t>(std::count_if(
            start, start + bytes, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }));
    }

    FontSource::Session session_;
    const FontRequest& request_;
    std::wstring_view text_;
    ShapedText& shaped_;
    std::unique_ptr<PangoGlyphString, GlyphStringDeleter> glyphs_;
    std::string utf8_;                      // of the paragraph, as are the next three
    std::vector<PangoLogAttr> attributes_;  // one for each character and one for the end
    std::size_t paragraph_ = 0;             // its position in the text
    std::size_t character_ = 0;             // the next one to shape, counted from there
    UINT32 run_ = 0;
};

}  // namespace

ShapedText Shape(FontSource& fonts, const FontRequest& request, std::wstring_view text) {
    ShapedText shaped;
    Shaper(fonts, request, text, shaped).Run();
    return shaped;
}

}  // namespace Platform::DirectWrite
