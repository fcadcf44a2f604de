#pragma once

#include <cairo.h>
#include <d2d1.h>

namespace Platform::Direct2D {

/// Draws the figures that it is handed as a path of Cairo's. Lives on the stack: references to it count for nothing.
class PathPen final : public ID2D1SimplifiedGeometrySink {
public:
    PathPen(cairo_t* cairo, float x, float y) : cairo_(cairo), x_(x), y_(y) {}

    HRESULT QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG AddRef() override { return 1; }
    ULONG Release() override { return 1; }
    void SetFillMode(D2D1_FILL_MODE) override {}
    void SetSegmentFlags(D2D1_PATH_SEGMENT) override {}
    void BeginFigure(D2D1_POINT_2F start, D2D1_FIGURE_BEGIN) override {
        cairo_move_to(cairo_, x_ + start.x, y_ + start.y);
    }
    void AddLines(const D2D1_POINT_2F* points, UINT32 count) override {
        for (UINT32 i = 0; i < count; ++i) cairo_line_to(cairo_, x_ + points[i].x, y_ + points[i].y);
    }
    void AddBeziers(const D2D1_BEZIER_SEGMENT* beziers, UINT32 count) override {
        for (UINT32 i = 0; i < count; ++i) {
            const D2D1_BEZIER_SEGMENT& b = beziers[i];
            cairo_curve_to(cairo_, x_ + b.point1.x, y_ + b.point1.y, x_ + b.point2.x, y_ + b.point2.y, x_ + b.point3.x,
                           y_ + b.point3.y);
        }
    }
    void EndFigure(D2D1_FIGURE_END) override { cairo_close_path(cairo_); }
    HRESULT Close() override { return S_OK; }

private:
    cairo_t* cairo_;
    double x_;
    double y_;
};

}  // namespace Platform::Direct2D
