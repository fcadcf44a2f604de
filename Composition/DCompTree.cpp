#include "Composition/DCompTree.h"

#include "Core/Check.h"

#include <utility>

namespace Tamborel {

using Microsoft::WRL::ComPtr;

HRESULT DCompTree::Initialize(RenderDevice& device, HWND hwnd, IDXGISwapChain1* frameSwapChain,
                              IDXGISwapChain1* clientSwapChain, POINT clientOffset) noexcept {
    Device = &device;
    IDCompositionDesktopDevice* const dcomp = device.GetDCompDevice();
    if (!dcomp) return E_FAIL;
    TAMBOREL_CHECK(dcomp->CreateTargetForHwnd(hwnd, TRUE, &Target));
    TAMBOREL_CHECK(dcomp->CreateVisual(&RootVisual));
    TAMBOREL_CHECK(Target->SetRoot(RootVisual.Get()));

    TAMBOREL_CHECK(dcomp->CreateVisual(&FrameVisual));
    TAMBOREL_CHECK(FrameVisual->SetContent(frameSwapChain));
    TAMBOREL_CHECK(RootVisual->AddVisual(FrameVisual.Get(), FALSE, nullptr));

    TAMBOREL_CHECK(dcomp->CreateVisual(&ClientVisual));
    TAMBOREL_CHECK(ClientVisual->SetContent(clientSwapChain));
    TAMBOREL_CHECK(ClientVisual->SetOffsetX(static_cast<float>(clientOffset.x)));
    TAMBOREL_CHECK(ClientVisual->SetOffsetY(static_cast<float>(clientOffset.y)));
    // Not "above" the frame's visual, so behind it.
    TAMBOREL_CHECK(RootVisual->AddVisual(ClientVisual.Get(), FALSE, FrameVisual.Get()));
    TAMBOREL_CHECK(dcomp->Commit());
    return S_OK;
}

void DCompTree::Adopt(RenderDevice& device, ComPtr<IDCompositionTarget> target, ComPtr<IDCompositionVisual2> rootVisual,
                      ComPtr<IDCompositionVisual2> frameVisual, ComPtr<IDCompositionVisual2> clientVisual) noexcept {
    Device = &device;
    Target = std::move(target);
    RootVisual = std::move(rootVisual);
    FrameVisual = std::move(frameVisual);
    ClientVisual = std::move(clientVisual);
}

HRESULT DCompTree::SetClientOffset(POINT offset) noexcept {
    if (!ClientVisual) return E_FAIL;
    TAMBOREL_CHECK(ClientVisual->SetOffsetX(static_cast<float>(offset.x)));
    TAMBOREL_CHECK(ClientVisual->SetOffsetY(static_cast<float>(offset.y)));
    return S_OK;
}

HRESULT DCompTree::SetRootTransform(const D2D_MATRIX_3X2_F& matrix) noexcept {
    if (!Device || !RootVisual) return E_FAIL;
    IDCompositionDesktopDevice* const dcomp = Device->GetDCompDevice();
    if (!dcomp) return E_FAIL;
    ComPtr<IDCompositionMatrixTransform> transform;
    TAMBOREL_CHECK(dcomp->CreateMatrixTransform(&transform));
    TAMBOREL_CHECK(transform->SetMatrix(matrix));
    TAMBOREL_CHECK(RootVisual->SetTransform(transform.Get()));
    return S_OK;
}

HRESULT DCompTree::ClearRootTransform() noexcept {
    if (!RootVisual) return E_FAIL;
    TAMBOREL_CHECK(RootVisual->SetTransform(nullptr));
    return S_OK;
}

void DCompTree::Release() noexcept {
    Device = nullptr;
    ClientVisual.Reset();
    FrameVisual.Reset();
    RootVisual.Reset();
    Target.Reset();
}

}  // namespace Tamborel
