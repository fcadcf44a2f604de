// What a node paints with.
#pragma once

#include "Scene/BrushCache.h"
#include "Scene/Records.h"

#include <d2d1_3.h>
#include <dwrite_3.h>

#include <cstdint>
#include <vector>

namespace Tamborel {

/// Wraps one Direct2D device context for the painting of one surface in one frame: keeps the brushes, leaves out
/// transforms that change nothing, counts clips and scales every colour. Lives on the stack of the frame loop, on the
/// render thread.
///
/// Geometry is in the local space of the transform that is current; widths and radii are in its units. A painter that
/// gets no brush, be it null or one that could not be made, paints nothing and says nothing. So does every painter of a
/// context without a target.
class DrawContext {
public:
    /// `target` and `cache` are not owned and outlive the context; `cache` is not null. A `colorScale` that is not
    /// greater than 0 becomes 1. Leaves the target with the identity transform.
    DrawContext(ID2D1DeviceContext5* target, BrushCache* cache, float colorScale);

    DrawContext(const DrawContext&) = delete;
    DrawContext& operator=(const DrawContext&) = delete;

    /// For making what is to be drawn. May be null.
    ID2D1DeviceContext5* Target() const { return target_; }

    /// Replaces the transform. Reaches the target only if it differs from what the target holds.
    void SetTransform(const Matrix3x2& transform);
    Matrix3x2 CurrentTransform() const;

    /// Clips to a rectangle of the current transform until the matching PopClip, which is the caller's duty: the end of
    /// the context pops nothing.
    void PushClip(const Rect& rect, D2D1_ANTIALIAS_MODE mode);
    /// Harmless with no clip pushed.
    void PopClip();

    /// The cached brush of a colour, scaled, or null. The cache keeps the reference.
    ID2D1SolidColorBrush* GetBrush(const Color& color);

    void FillRect(const Rect& rect, const Color& color);
    void FillRect(const Rect& rect, ID2D1Brush* brush);
    void FillRoundedRect(const Rect& rect, float rx, float ry, const Color& color);
    void FillRoundedRect(const Rect& rect, float rx, float ry, ID2D1Brush* brush);
    void StrokeRect(const Rect& rect, const Color& color, float width);
    void StrokeRect(const Rect& rect, ID2D1Brush* brush, float width);
    void StrokeRoundedRect(const Rect& rect, float rx, float ry, const Color& color, float width);
    void StrokeRoundedRect(const Rect& rect, float rx, float ry, ID2D1Brush* brush, float width);
    void FillEllipse(Point center, float rx, float ry, const Color& color);
    void FillEllipse(Point center, float rx, float ry, ID2D1Brush* brush);
    void StrokeEllipse(Point center, float rx, float ry, const Color& color, float width);
    void StrokeEllipse(Point center, float rx, float ry, ID2D1Brush* brush, float width);
    void DrawLine(Point from, Point to, const Color& color, float width);
    void DrawLine(Point from, Point to, ID2D1Brush* brush, float width);
    /// `length` counts the units of `text`.
    void DrawString(const wchar_t* text, UINT32 length, IDWriteTextFormat* format, const Rect& rect,
                    const Color& color);
    void DrawString(const wchar_t* text, UINT32 length, IDWriteTextFormat* format, const Rect& rect, ID2D1Brush* brush);

    // Null layouts, geometries, bitmaps and documents are skipped.
    void DrawLayout(Point origin, IDWriteTextLayout* layout, ID2D1Brush* brush);
    void StrokeGeometry(ID2D1Geometry* geometry, ID2D1Brush* brush, float width);
    /// `opacity` from 0 to 1.
    void DrawBitmap(ID2D1Bitmap* bitmap, const Rect& rect, float opacity, D2D1_INTERPOLATION_MODE interpolation);
    /// Draws the document with its corner at `origin`.
    void DrawSvg(ID2D1SvgDocument* document, Point origin);

private:
    void Apply(const Matrix3x2& transform);

    ID2D1DeviceContext5* target_;
    BrushCache* cache_;
    std::vector<Matrix3x2> transforms_{Matrix3x2{}};  // Never empty; drawing only replaces the top.
    Matrix3x2 appliedTransform_;                      // What the target holds, if appliedValid_.
    bool appliedValid_ = false;
    std::int32_t clipDepth_ = 0;
    float colorScale_;
};

}  // namespace Tamborel
