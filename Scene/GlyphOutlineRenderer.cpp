#include "Scene/GlyphOutlineRenderer.h"

#include <utility>

namespace Tamborel {

using Microsoft::WRL::ComPtr;

namespace {

/// The glyphs of a run with the start of its baseline at (0, 0), or null.
ComPtr<ID2D1PathGeometry> PathOf(const DWRITE_GLYPH_RUN& run, ID2D1Factory& factory) {
    ComPtr<ID2D1PathGeometry> path;
    if (FAILED(factory.CreatePathGeometry(path.GetAddressOf()))) return nullptr;
    ComPtr<ID2D1GeometrySink> sink;
    if (FAILED(path->Open(sink.GetAddressOf()))) return nullptr;
    // Odd levels of the bidirectional algorithm run from right to left.
    const BOOL rightToLeft = static_cast<BOOL>(run.bidiLevel & 1U);
    const HRESULT outlined =
        run.fontFace->GetGlyphRunOutline(run.fontEmSize, run.glyphIndices, run.glyphAdvances, run.glyphOffsets,
                                         run.glyphCount, run.isSideways, rightToLeft, sink.Get());
    sink->Close();
    return SUCCEEDED(outlined) ? path : nullptr;
}

}  // namespace

ComPtr<ID2D1Geometry> GlyphOutlineBuilder(IDWriteTextLayout* layout, ID2D1Factory* d2dFactory, float originX,
                                          float originY) {
    if (!layout || !d2dFactory) return nullptr;
    ComPtr<GlyphOutlineRenderer> renderer;
    renderer.Attach(new GlyphOutlineRenderer(d2dFactory));
    if (FAILED(layout->Draw(nullptr, renderer.Get(), originX, originY))) return nullptr;
    ComPtr<ID2D1Geometry> outline;
    if (FAILED(renderer->TakeOutline(outline.GetAddressOf()))) return nullptr;
    return outline;
}

HRESULT GlyphOutlineRenderer::TakeOutline(ID2D1Geometry** outline) {
    *outline = nullptr;
    if (geometries_.empty()) return S_FALSE;
    std::vector<ID2D1Geometry*> parts;
    parts.reserve(geometries_.size());
    for (const auto& geometry : geometries_) parts.push_back(geometry.Get());
    ComPtr<ID2D1GeometryGroup> group;
    const HRESULT result = factory_->CreateGeometryGroup(D2D1_FILL_MODE_WINDING, parts.data(),
                                                         static_cast<UINT32>(parts.size()), group.GetAddressOf());
    if (SUCCEEDED(result)) *outline = group.Detach();
    return result;
}

HRESULT GlyphOutlineRenderer::QueryInterface(REFIID iid, void** object) {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid != __uuidof(IUnknown) && iid != __uuidof(IDWritePixelSnapping) && iid != __uuidof(IDWriteTextRenderer)) {
        return E_NOINTERFACE;
    }
    *object = static_cast<IDWriteTextRenderer*>(this);
    AddRef();
    return S_OK;
}

ULONG GlyphOutlineRenderer::AddRef() {
    return ++references_;
}

ULONG GlyphOutlineRenderer::Release() {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

HRESULT GlyphOutlineRenderer::IsPixelSnappingDisabled(void*, BOOL* disabled) {
    *disabled = TRUE;
    return S_OK;
}

HRESULT GlyphOutlineRenderer::GetCurrentTransform(void*, DWRITE_MATRIX* transform) {
    *transform = {1, 0, 0, 1, 0, 0};
    return S_OK;
}

HRESULT GlyphOutlineRenderer::GetPixelsPerDip(void*, FLOAT* pixelsPerDip) {
    *pixelsPerDip = 1.0F;
    return S_OK;
}

HRESULT GlyphOutlineRenderer::DrawGlyphRun(void*, FLOAT baselineX, FLOAT baselineY, DWRITE_MEASURING_MODE,
                                           const DWRITE_GLYPH_RUN* run, const DWRITE_GLYPH_RUN_DESCRIPTION*,
                                           IUnknown*) {
    const ComPtr<ID2D1PathGeometry> path = PathOf(*run, *factory_);
    if (!path) return S_OK;
    const D2D1_MATRIX_3X2_F toBaseline = D2D1::Matrix3x2F::Translation(baselineX, baselineY);
    ComPtr<ID2D1TransformedGeometry> placed;
    if (SUCCEEDED(factory_->CreateTransformedGeometry(path.Get(), &toBaseline, placed.GetAddressOf()))) {
        geometries_.emplace_back(std::move(placed));
    }
    return S_OK;
}

HRESULT GlyphOutlineRenderer::DrawUnderline(void*, FLOAT, FLOAT, const DWRITE_UNDERLINE*, IUnknown*) {
    return S_OK;
}

HRESULT GlyphOutlineRenderer::DrawStrikethrough(void*, FLOAT, FLOAT, const DWRITE_STRIKETHROUGH*, IUnknown*) {
    return S_OK;
}

HRESULT GlyphOutlineRenderer::DrawInlineObject(void*, FLOAT, FLOAT, IDWriteInlineObject*, BOOL, BOOL, IUnknown*) {
    return S_OK;
}

}  // namespace Tamborel
