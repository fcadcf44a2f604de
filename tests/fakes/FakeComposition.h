// Fakes of DirectComposition: the device, targets, visuals and transforms. As the system's, they hold what they show.
#pragma once

#include "tests/fakes/FakeObject.h"

#include <dcomp.h>
#include <wrl/client.h>

#include <vector>

namespace Fakes {

class FakeTransform final : public FakeObject<IDCompositionMatrixTransform, IDCompositionEffect,
                                              IDCompositionTransform3D, IDCompositionTransform> {
public:
    FakeTransform() : FakeObject("Transform") {}
    HRESULT SetMatrix(const D2D_MATRIX_3X2_F& matrix) override;
};

class FakeVisual final : public FakeObject<IDCompositionVisual2, IDCompositionVisual> {
public:
    FakeVisual() : FakeObject("Visual") {}
    HRESULT SetOffsetX(float offset) override { return Call("SetOffsetX", offset); }
    HRESULT SetOffsetY(float offset) override { return Call("SetOffsetY", offset); }
    HRESULT SetTransform(const D2D_MATRIX_3X2_F& matrix) override;
    HRESULT SetTransform(IDCompositionTransform* transform) override;
    HRESULT SetContent(IUnknown* content) override;
    HRESULT AddVisual(IDCompositionVisual* visual, BOOL insertAbove, IDCompositionVisual* reference) override;
    HRESULT RemoveVisual(IDCompositionVisual* visual) override;
    HRESULT RemoveAllVisuals() override;

private:
    Microsoft::WRL::ComPtr<IUnknown> content_;
    Microsoft::WRL::ComPtr<IDCompositionTransform> transform_;
    std::vector<Microsoft::WRL::ComPtr<IDCompositionVisual>> children_;
};

class FakeTarget final : public FakeObject<IDCompositionTarget> {
public:
    FakeTarget() : FakeObject("Target") {}
    HRESULT SetRoot(IDCompositionVisual* visual) override;

private:
    Microsoft::WRL::ComPtr<IDCompositionVisual> root_;
};

class FakeCompositionDevice final : public FakeObject<IDCompositionDesktopDevice, IDCompositionDevice2> {
public:
    FakeCompositionDevice() : FakeObject("CompositionDevice") {}
    HRESULT Commit() override { return Call("Commit"); }
    HRESULT WaitForCommitCompletion() override { return Call("WaitForCommitCompletion"); }
    HRESULT CreateVisual(IDCompositionVisual2** visual) override;
    HRESULT CreateMatrixTransform(IDCompositionMatrixTransform** transform) override;
    HRESULT CreateTargetForHwnd(HWND window, BOOL topmost, IDCompositionTarget** target) override;
};

}  // namespace Fakes
