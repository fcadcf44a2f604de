// Glyph outlines as figures of a geometry.

#include "Platform/Linux/DirectWrite/FontFace.h"
#include "Platform/Linux/DirectWrite/GlyphPen.h"

#include FT_OUTLINE_H

namespace Platform::DirectWrite {

namespace {

// Passes an outline in font units on to a sink. FreeType's curves of the second order become curves of the third.
class Tracer {
public:
    Tracer(IDWriteGeometrySink* sink, float scale) : sink_(sink), scale_(scale) {}

    void Trace(FT_Outline* outline, float x, float y) {
        x_ = x;
        y_ = y;
        FT_Outline_Funcs functions{};
        functions.move_to = [](const FT_Vector* to, void* self) { return static_cast<Tracer*>(self)->Move(to); };
        functions.line_to = [](const FT_Vector* to, void* self) { return static_cast<Tracer*>(self)->Line(to); };
        functions.conic_to = [](const FT_Vector* control, const FT_Vector* to, void* self) {
            return static_cast<Tracer*>(self)->Conic(control, to);
        };
        functions.cubic_to = [](const FT_Vector* first, const FT_Vector* second, const FT_Vector* to, void* self) {
            return static_cast<Tracer*>(self)->Cubic(first, second, to);
        };
        FT_Outline_Decompose(outline, &functions, this);
        End();
    }

private:
    D2D1_POINT_2F Point(const FT_Vector* units) const {
        return {x_ + static_cast<float>(units->x) * scale_, y_ - static_cast<float>(units->y) * scale_};
    }
    void End() {
        if (open_) sink_->EndFigure(D2D1_FIGURE_END_CLOSED);
        open_ = false;
    }
    int Move(const FT_Vector* to) {
        End();
        at_ = Point(to);
        sink_->BeginFigure(at_, D2D1_FIGURE_BEGIN_FILLED);
        open_ = true;
        return 0;
    }
    int Line(const FT_Vector* to) {
        at_ = Point(to);
        sink_->AddLines(&at_, 1);
        return 0;
    }
    int Conic(const FT_Vector* control, const FT_Vector* to) {
        const D2D1_POINT_2F middle = Point(control);
        const D2D1_POINT_2F end = Point(to);
        const auto towards = [](const D2D1_POINT_2F& from, const D2D1_POINT_2F& by) {
            return D2D1_POINT_2F{from.x + (by.x - from.x) * 2 / 3, from.y + (by.y - from.y) * 2 / 3};
        };
        Add({towards(at_, middle), towards(end, middle), end});
        return 0;
    }
    int Cubic(const FT_Vector* first, const FT_Vector* second, const FT_Vector* to) {
        Add({Point(first), Point(second), Point(to)});
        return 0;
    }
    void Add(const D2D1_BEZIER_SEGMENT& bezier) {
        sink_->AddBeziers(&bezier, 1);
        at_ = bezier.point3;
    }

    IDWriteGeometrySink* sink_;
    float scale_;
    float x_ = 0.0F;
    float y_ = 0.0F;
    D2D1_POINT_2F at_{};
    bool open_ = false;
};

}  // namespace

HRESULT FontFace::GetGlyphRunOutline(FLOAT emSize, const UINT16* glyphs, const FLOAT* advances,
                                     const DWRITE_GLYPH_OFFSET* offsets, UINT32 count, BOOL isSideways,
                                     BOOL isRightToLeft, IDWriteGeometrySink* sink) {
    if (!sink || (!glyphs && count > 0) || !(emSize >= 0.0F)) return E_INVALIDARG;
    if (isSideways) return NotImplemented("GetGlyphRunOutline of a sideways run");
    sink->SetFillMode(D2D1_FILL_MODE_WINDING);
    Tracer tracer(sink, emSize / unitsPerEm_);
    GlyphPen pen(isRightToLeft != FALSE);
    for (UINT32 i = 0; i < count; ++i) {
        const float advance = advances ? advances[i] : Advance(glyphs[i]) * emSize;
        const D2D1_POINT_2F at = pen.Place(advance, offsets ? offsets[i] : DWRITE_GLYPH_OFFSET{});
        const std::lock_guard lock(mutex_);
        if (FT_Outline* const outline = Outline(glyphs[i])) tracer.Trace(outline, at.x, at.y);
    }
    return S_OK;
}

}  // namespace Platform::DirectWrite
