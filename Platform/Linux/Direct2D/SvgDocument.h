#pragma once

#include "Platform/Linux/Direct2D/DrawCommand.h"
#include "Platform/Linux/Direct2D/Resource.h"
#include "Platform/Linux/Imaging/SvgDrawing.h"

#include <d2d1_3.h>

#include <memory>
#include <span>
#include <vector>

namespace Platform::Direct2D {

/// A parsed drawing, and the last few pictures that were made of it: drawing it again at the same scale costs nothing.
/// It is drawn within its viewport only. One thread at a time.
class SvgDocument final : public Resource<ID2D1SvgDocument> {
public:
    /// E_FAIL for what is no SVG, or none that may be parsed.
    static HRESULT Make(ComPtr<ID2D1Factory> factory, std::span<const std::uint8_t> bytes, D2D1_SIZE_F viewport,
                        ID2D1SvgDocument** document);

    HRESULT SetViewportSize(D2D1_SIZE_F viewportSize) override;
    D2D1_SIZE_F GetViewportSize() const override { return viewport_; }
    void GetRoot(ID2D1SvgElement** root) override;

    /// Replaces the root's "width" or "height". Any other name has no way to the renderer: E_NOTIMPL.
    HRESULT SetRootLength(PCWSTR name, const D2D1_SVG_LENGTH& length);

    struct Picture {
        std::shared_ptr<const Image> image;  ///< The same object for the same pixels. Null if there is nothing to draw.
        PixelRect place;                     ///< Of the image on the target.
    };
    /// The document under a transform to the pixels of a target of that extent, rendered at that scale. Throws
    /// std::bad_alloc.
    Picture Render(const D2D1_MATRIX_3X2_F& transform, const PixelRect& target);

private:
    struct Rendered {
        D2D1_MATRIX_3X2_F transform;         // to pixels; its translation is less than one
        PixelRect place;                     // as the transform has it
        std::shared_ptr<const Image> image;  // null if the renderer gave up
    };
    SvgDocument(ComPtr<ID2D1Factory> factory, Imaging::SvgDrawing drawing, D2D1_SIZE_F viewport);
    ~SvgDocument() override = default;

    std::shared_ptr<const Image> Rasterise(const D2D1_MATRIX_3X2_F& transform, const PixelRect& place);
    void Keep(Rendered rendered);

    Imaging::SvgDrawing drawing_;
    D2D1_SIZE_F viewport_;
    std::vector<Rendered> rendered_;  // most recently drawn last
};

}  // namespace Platform::Direct2D
