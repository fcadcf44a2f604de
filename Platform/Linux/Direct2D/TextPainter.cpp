#include "Platform/Linux/Direct2D/TextPainter.h"

#include "Platform/Linux/Direct2D/PathPen.h"
#include "Platform/Linux/Direct2D/Transform.h"

#include "Platform/Linux/DirectWrite/GlyphPen.h"

#include <algorithm>
#include <cmath>

namespace Platform::Direct2D {

namespace {

using DirectWrite::GlyphMask;
using DirectWrite::GlyphPen;
using DirectWrite::GlyphRun;
using DirectWrite::TextContent;

// Larger glyphs are filled as outlines: masks of them would fill memory.
constexpr float maxMaskSize = 128.0F;
constexpr int phases = 4;  // Places of a glyph within a pixel.

// How much of each pixel of an area text covers.
class Coverage {
public:
    explicit Coverage(const PixelRect& area)
        : area_(area), surface_(cairo_image_surface_create(CAIRO_FORMAT_A8, area.Width(), area.Height())) {
        if (cairo_surface_status(surface_) != CAIRO_STATUS_SUCCESS) {
            cairo_surface_destroy(surface_);
            throw std::bad_alloc();
        }
        bits_ = cairo_image_surface_get_data(surface_);
        stride_ = cairo_image_surface_get_stride(surface_);
    }
    ~Coverage() { cairo_surface_destroy(surface_); }
    Coverage(const Coverage&) = delete;
    Coverage& operator=(const Coverage&) = delete;

    void Add(const GlyphMask& mask, int x, int y) {
        const PixelRect place{x + mask.left, y + mask.top, x + mask.left + mask.width, y + mask.top + mask.height};
        const PixelRect inside = Intersect(place, area_);
        if (inside.IsEmpty()) return;
        for (int row = inside.top; row < inside.bottom; ++row) {
            const std::uint8_t* from =
                mask.coverage.data() + std::ptrdiff_t{row - place.top} * mask.width + (inside.left - place.left);
            std::uint8_t* to = bits_ + std::ptrdiff_t{row - area_.top} * stride_ + (inside.left - area_.left);
            for (int column = inside.Width(); column > 0; --column, ++from, ++to) {
                *to = static_cast<std::uint8_t>(*to + *from - (*to * *from + 127) / 255);
            }
        }
    }

    void Paint(cairo_t* cairo) {
        cairo_surface_mark_dirty(surface_);
        cairo_mask_surface(cairo, surface_, area_.left, area_.top);
    }

private:
    PixelRect area_;
    cairo_surface_t* surface_;
    unsigned char* bits_;
    int stride_;
};

void AddRun(Coverage& coverage, const TextContent& content, const GlyphRun& run, const TextShape& text,
            const D2D1_MATRIX_3X2_F& m, const PixelRect& area) {
    const float sizeX = run.emSize * m._11;
    const float sizeY = run.emSize * m._22;
    const float baseline = (text.origin.y + run.y) * m._22 + m._32;
    // No glyph reaches further than this from its origin; nor may the numbers leave the range of an int.
    const float reach = 4 * std::max(sizeX, sizeY) + 2;
    if (!(baseline > static_cast<float>(area.top) - reach && baseline < static_cast<float>(area.bottom) + reach))
        return;
    const int y = static_cast<int>(std::floor(baseline + 0.5F));
    GlyphPen pen(run.level % 2 == 1);
    for (std::size_t i = run.first; i < run.first + run.count; ++i) {
        const D2D1_POINT_2F at = pen.Place(content.advances[i], content.offsets[i]);
        const float x = (text.origin.x + run.x + at.x) * m._11 + m._31;
        if (!(x > static_cast<float>(area.left) - reach && x < static_cast<float>(area.right) + reach)) continue;
        const auto place = static_cast<int>(std::floor(x * phases + 0.5F));
        const int pixel = place >= 0 ? place / phases : -((phases - 1 - place) / phases);
        const auto raised = static_cast<int>(std::lround(at.y * m._22));
        coverage.Add(*run.face->Mask(content.glyphs[i], sizeX, sizeY, static_cast<unsigned>(place - pixel * phases)),
                     pixel, y + raised);
    }
}

void FillOutlines(cairo_t* cairo, const TextShape& text) {
    const TextContent& content = *text.content;
    cairo_set_fill_rule(cairo, CAIRO_FILL_RULE_WINDING);
    for (const GlyphRun& run : content.runs) {
        PathPen pen(cairo, text.origin.x + run.x, text.origin.y + run.y);
        run.face->GetGlyphRunOutline(run.emSize, content.glyphs.data() + run.first, content.advances.data() + run.first,
                                     content.offsets.data() + run.first, static_cast<UINT32>(run.count), FALSE,
                                     run.level % 2 == 1 ? TRUE : FALSE, &pen);
        cairo_fill(cairo);
    }
}

void FillBars(cairo_t* cairo, const TextShape& text, const D2D1_MATRIX_3X2_F& m) {
    for (const DirectWrite::Decoration& decoration : text.content->decorations) {
        const D2D1_RECT_F& r = decoration.rect;
        const D2D1_RECT_F placed{r.left + text.origin.x, r.top + text.origin.y, r.right + text.origin.x,
                                 r.bottom + text.origin.y};
        D2D1_RECT_F pixels = Bounds(m, placed);
        const float height = std::max(1.0F, std::floor(pixels.bottom - pixels.top + 0.5F));
        pixels.top = std::floor(pixels.top + 0.5F);
        cairo_rectangle(cairo, pixels.left, pixels.top, pixels.right - pixels.left, height);
    }
    cairo_fill(cairo);
}

}  // namespace

void PaintText(cairo_t* cairo, const TextShape& text, const D2D1_MATRIX_3X2_F& transform, const PixelRect& area) {
    const TextContent& content = *text.content;
    const bool upright = transform._12 == 0.0F && transform._21 == 0.0F && transform._11 > 0.0F && transform._22 > 0.0F;
    const float emSize = content.runs.empty() ? 0.0F : content.runs.front().emSize;
    if (!upright || emSize * std::max(transform._11, transform._22) > maxMaskSize) {
        cairo_matrix_t matrix;
        cairo_matrix_init(&matrix, transform._11, transform._12, transform._21, transform._22, transform._31,
                          transform._32);
        cairo_set_matrix(cairo, &matrix);
        FillOutlines(cairo, text);
        FillBars(cairo, text, identity);
        return;
    }
    Coverage coverage(area);
    for (const GlyphRun& run : content.runs) AddRun(coverage, content, run, text, transform, area);
    coverage.Paint(cairo);
    FillBars(cairo, text, transform);
}

}  // namespace Platform::Direct2D
