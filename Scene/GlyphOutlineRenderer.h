// The glyphs of a text layout as one geometry.
#pragma once

#include <d2d1_3.h>
#include <dwrite_3.h>
#include <wrl/client.h>

#include <vector>

namespace Tamborel {

/// The outline of all glyphs of `layout`, whose upper left corner lies at (`originX`, `originY`). Underlines,
/// strikethroughs and inline objects are no part of it, and a run of glyphs that can't be converted is left out. Null
/// if an argument is null or nothing came of it.
[[nodiscard]] Microsoft::WRL::ComPtr<ID2D1Geometry> GlyphOutlineBuilder(IDWriteTextLayout* layout,
                                                                        ID2D1Factory* d2dFactory, float originX,
                                                                        float originY);

/// A text renderer that paints nothing: it turns each run of glyphs that a layout hands it into a path. A new one has
/// one reference; the count is not safe across threads, since it lives for one call of GlyphOutlineBuilder.
class GlyphOutlineRenderer final : public IDWriteTextRenderer {
public:
    /// `factory` is not owned and outlives the renderer.
    explicit GlyphOutlineRenderer(ID2D1Factory* factory) : factory_(factory) {}
    GlyphOutlineRenderer(const GlyphOutlineRenderer&) = delete;
    GlyphOutlineRenderer& operator=(const GlyphOutlineRenderer&) = delete;

    /// All runs so far as one geometry. S_FALSE and null when there is none.
    [[nodiscard]] HRESULT TakeOutline(ID2D1Geometry** outline);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    /// They are: glyphs keep their true positions.
    HRESULT STDMETHODCALLTYPE IsPixelSnappingDisabled(void* context, BOOL* disabled) override;
    HRESULT STDMETHODCALLTYPE GetCurrentTransform(void* context, DWRITE_MATRIX* transform) override;
    HRESULT STDMETHODCALLTYPE GetPixelsPerDip(void* context, FLOAT* pixelsPerDip) override;
    /// Always S_OK, so that a run that fails does not end the layout's drawing.
    HRESULT STDMETHODCALLTYPE DrawGlyphRun(void* context, FLOAT baselineX, FLOAT baselineY,
                                           DWRITE_MEASURING_MODE measuring, const DWRITE_GLYPH_RUN* run,
                                           const DWRITE_GLYPH_RUN_DESCRIPTION* description, IUnknown* effect) override;
    HRESULT STDMETHODCALLTYPE DrawUnderline(void* context, FLOAT baselineX, FLOAT baselineY,
                                            const DWRITE_UNDERLINE* underline, IUnknown* effect) override;
    HRESULT STDMETHODCALLTYPE DrawStrikethrough(void* context, FLOAT baselineX, FLOAT baselineY,
                                                const DWRITE_STRIKETHROUGH* strikethrough, IUnknown* effect) override;
    HRESULT STDMETHODCALLTYPE DrawInlineObject(void* context, FLOAT originX, FLOAT originY, IDWriteInlineObject* object,
                                               BOOL isSideways, BOOL isRightToLeft, IUnknown* effect) override;

private:
    ~GlyphOutlineRenderer() = default;

    ID2D1Factory* factory_;
    std::vector<Microsoft::WRL::ComPtr<ID2D1Geometry>> geometries_;  // one for each run, in order of arrival
    ULONG references_ = 1;
};

}  // namespace Tamborel
