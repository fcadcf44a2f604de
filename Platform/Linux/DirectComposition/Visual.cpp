#include "Platform/Linux/DirectComposition/Visual.h"

#include <algorithm>
#include <cmath>

using Microsoft::WRL::ComPtr;

namespace Platform::DirectComposition {

namespace {

// Every visual and transform that reaches these calls was made here: there is no other maker of them.
Visual* OwnVisual(IDCompositionVisual* visual) {
    return static_cast<Visual*>(static_cast<IDCompositionVisual2*>(visual));
}

bool IsFinite(const D2D_MATRIX_3X2_F& matrix) {
    for (const auto& row : matrix.m)
        for (const float value : row)
            if (!std::isfinite(value)) return false;
    return true;
}

}  // namespace

D2D_MATRIX_3X2_F Multiply(const D2D_MATRIX_3X2_F& first, const D2D_MATRIX_3X2_F& second) {
    D2D_MATRIX_3X2_F product{};
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 2; ++column) {
            product.m[row][column] = first.m[row][0] * second.m[0][column] + first.m[row][1] * second.m[1][column] +
                                     (row == 2 ? second.m[2][column] : 0.0F);
        }
    }
    return product;
}

MatrixTransform::MatrixTransform() : ComObject("MatrixTransform"), matrix_(identity) {}

HRESULT MatrixTransform::SetMatrix(const D2D_MATRIX_3X2_F& matrix) {
    if (!IsFinite(matrix)) return E_INVALIDARG;
    matrix_ = matrix;
    return S_OK;
}

Visual::Visual() : ComObject("Visual") {}

Visual::~Visual() {
    (void)RemoveAllVisuals();
}

HRESULT Visual::SetOffsetX(float offset) {
    if (!std::isfinite(offset)) return E_INVALIDARG;
    offsetX_ = offset;
    return S_OK;
}

HRESULT Visual::SetOffsetY(float offset) {
    if (!std::isfinite(offset)) return E_INVALIDARG;
    offsetY_ = offset;
    return S_OK;
}

HRESULT Visual::SetTransform(const D2D_MATRIX_3X2_F& matrix) {
    if (!IsFinite(matrix)) return E_INVALIDARG;
    ComPtr<MatrixTransform> transform;
    transform.Attach(new MatrixTransform);
    (void)transform->SetMatrix(matrix);
    transform_ = std::move(transform);
    return S_OK;
}

HRESULT Visual::SetTransform(IDCompositionTransform* transform) {
    transform_ = static_cast<MatrixTransform*>(static_cast<IDCompositionMatrixTransform*>(transform));
    return S_OK;
}

HRESULT Visual::SetContent(IUnknown* content) {
    content_ = content;
    return S_OK;
}

bool Visual::Contains(const Visual* other) const {
    for (; other; other = other->parent_)
        if (other == this) return true;
    return false;
}

HRESULT Visual::AddVisual(IDCompositionVisual* visual, BOOL insertAbove, IDCompositionVisual* reference) {
    if (!visual) return E_INVALIDARG;
    Visual* const child = OwnVisual(visual);
    if (child->parent_ || child->Contains(this)) return E_INVALIDARG;

    auto place = insertAbove ? children_.begin() : children_.end();
    if (reference) {
        place = std::find_if(children_.begin(), children_.end(),
                             [&](const ComPtr<Visual>& sibling) { return sibling.Get() == OwnVisual(reference); });
        if (place == children_.end()) return E_INVALIDARG;
        if (insertAbove) ++place;
    }
    children_.insert(place, ComPtr<Visual>(child));
    child->parent_ = this;
    return S_OK;
}

void Visual::DropChild(std::vector<ComPtr<Visual>>::iterator child) {
    (*child)->parent_ = nullptr;
    children_.erase(child);
}

HRESULT Visual::RemoveVisual(IDCompositionVisual* visual) {
    const auto child = std::find_if(children_.begin(), children_.end(), [&](const ComPtr<Visual>& candidate) {
        return candidate.Get() == OwnVisual(visual);
    });
    if (!visual || child == children_.end()) return E_INVALIDARG;
    DropChild(child);
    return S_OK;
}

HRESULT Visual::RemoveAllVisuals() {
    while (!children_.empty()) DropChild(children_.end() - 1);
    return S_OK;
}

void Visual::Flatten(const D2D_MATRIX_3X2_F& parent, std::vector<Layer>& layers) const {
    D2D_MATRIX_3X2_F placement = transform_ ? transform_->Matrix() : identity;
    placement.dx += offsetX_;
    placement.dy += offsetY_;
    placement = Multiply(placement, parent);
    if (content_) layers.push_back({content_.Get(), placement});
    for (const ComPtr<Visual>& child : children_) child->Flatten(placement, layers);
}

}  // namespace Platform::DirectComposition
