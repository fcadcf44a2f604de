// The nodes of a composition tree.
#pragma once

#include "Platform/Linux/Base/ComObject.h"

#include <dcomp.h>
#include <wrl/client.h>

#include <vector>

namespace Platform::DirectComposition {

/// A 3-by-2 matrix that visuals refer to. Later changes of the matrix show with the next commit.
class MatrixTransform final : public ComObject<IDCompositionMatrixTransform, IDCompositionTransform,
                                               IDCompositionTransform3D, IDCompositionEffect> {
public:
    MatrixTransform();
    HRESULT STDMETHODCALLTYPE SetMatrix(const D2D_MATRIX_3X2_F& matrix) override;
    const D2D_MATRIX_3X2_F& Matrix() const { return matrix_; }

private:
    D2D_MATRIX_3X2_F matrix_;
};

/// What a tree shows of one swap chain: where its top left lies in the window and how its pixels are transformed.
struct Layer {
    IUnknown* content;           ///< Borrowed from the visual.
    D2D_MATRIX_3X2_F placement;  ///< From pixels of the content to pixels of the window.
};

/// One visual. A parent holds references to its children; order is back to front. Used on one thread at a time.
class Visual final : public ComObject<IDCompositionVisual2, IDCompositionVisual> {
public:
    Visual();

    HRESULT STDMETHODCALLTYPE SetOffsetX(float offset) override;
    HRESULT STDMETHODCALLTYPE SetOffsetY(float offset) override;
    HRESULT STDMETHODCALLTYPE SetTransform(const D2D_MATRIX_3X2_F& matrix) override;
    HRESULT STDMETHODCALLTYPE SetTransform(IDCompositionTransform* transform) override;
    HRESULT STDMETHODCALLTYPE SetContent(IUnknown* content) override;
    HRESULT STDMETHODCALLTYPE AddVisual(IDCompositionVisual* visual, BOOL insertAbove,
                                        IDCompositionVisual* reference) override;
    HRESULT STDMETHODCALLTYPE RemoveVisual(IDCompositionVisual* visual) override;
    HRESULT STDMETHODCALLTYPE RemoveAllVisuals() override;

    /// Appends this subtree's contents, back to front: a visual's own content lies behind its children.
    void Flatten(const D2D_MATRIX_3X2_F& parent, std::vector<Layer>& layers) const;

private:
    ~Visual() override;
    bool Contains(const Visual* other) const;
    void DropChild(std::vector<Microsoft::WRL::ComPtr<Visual>>::iterator child);

    float offsetX_ = 0;
    float offsetY_ = 0;
    Microsoft::WRL::ComPtr<MatrixTransform> transform_;
    Microsoft::WRL::ComPtr<IUnknown> content_;
    std::vector<Microsoft::WRL::ComPtr<Visual>> children_;
    Visual* parent_ = nullptr;
};

/// The product that applies `first`, then `second`.
D2D_MATRIX_3X2_F Multiply(const D2D_MATRIX_3X2_F& first, const D2D_MATRIX_3X2_F& second);
inline constexpr D2D_MATRIX_3X2_F identity{{{1, 0, 0, 1, 0, 0}}};

}  // namespace Platform::DirectComposition
