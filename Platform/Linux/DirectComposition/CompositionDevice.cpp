#include "Platform/Linux/DirectComposition/CompositionDevice.h"

#include <algorithm>
#include <new>
#include <utility>

using Microsoft::WRL::ComPtr;

namespace Platform::DirectComposition {

CompositionTarget::CompositionTarget(CompositionDevice& device, HWND window, std::unique_ptr<Presenter> presenter)
    : ComObject("CompositionTarget"), device_(&device), window_(window), presenter_(std::move(presenter)) {}

CompositionTarget::~CompositionTarget() {
    device_->Forget(this);
}

HRESULT CompositionTarget::SetRoot(IDCompositionVisual* visual) {
    root_ = static_cast<Visual*>(static_cast<IDCompositionVisual2*>(visual));
    return S_OK;
}

HRESULT CompositionTarget::Show() {
    layers_.clear();
    if (root_) root_->Flatten(identity, layers_);
    return presenter_->Show(layers_);
}

CompositionDevice::CompositionDevice(PresenterMaker maker) : ComObject("CompositionDevice"), makePresenter_(maker) {}

HRESULT CompositionDevice::Commit() {
    HRESULT result = S_OK;
    for (CompositionTarget* const target : targets_) {
        const HRESULT hr = target->Show();
        if (FAILED(hr) && SUCCEEDED(result)) result = hr;
    }
    return result;
}

HRESULT CompositionDevice::WaitForCommitCompletion() {
    return S_OK;  // A commit has handed its picture to the display server when it returns.
}

HRESULT CompositionDevice::CreateVisual(IDCompositionVisual2** visual) {
    if (!visual) return E_INVALIDARG;
    *visual = new (std::nothrow) Visual;
    return *visual ? S_OK : E_OUTOFMEMORY;
}

HRESULT CompositionDevice::CreateMatrixTransform(IDCompositionMatrixTransform** transform) {
    if (!transform) return E_INVALIDARG;
    *transform = new (std::nothrow) MatrixTransform;
    return *transform ? S_OK : E_OUTOFMEMORY;
}

HRESULT CompositionDevice::CreateTargetForHwnd(HWND window, BOOL /*topmost*/, IDCompositionTarget** target) {
    if (!target) return E_INVALIDARG;
    *target = nullptr;
    // Nothing else draws into a window here, so there is no layer beside the tree to be above or below of. A second
    // tree for one window has no place either, as with the topmost layer of the system.
    const bool taken = std::any_of(targets_.begin(), targets_.end(),
                                   [&](const CompositionTarget* other) { return other->Window() == window; });
    if (taken) return DCOMPOSITION_ERROR_WINDOW_ALREADY_COMPOSED;
    std::unique_ptr<Presenter> presenter = makePresenter_(window);
    if (!presenter) return E_INVALIDARG;
    auto* const made = new (std::nothrow) CompositionTarget(*this, window, std::move(presenter));
    if (!made) return E_OUTOFMEMORY;
    targets_.push_back(made);
    *target = made;
    return S_OK;
}

void CompositionDevice::Forget(CompositionTarget* target) {
    targets_.erase(std::remove(targets_.begin(), targets_.end(), target), targets_.end());
}

}  // namespace Platform::DirectComposition

HRESULT WINAPI DCompositionCreateDevice2(IUnknown* renderingDevice, REFIID iid, void** device) noexcept {
    if (!device) return E_INVALIDARG;
    *device = nullptr;
    if (!renderingDevice) return E_INVALIDARG;  // A device without a renderer would have nothing to show.
    ComPtr<Platform::DirectComposition::CompositionDevice> made;
    made.Attach(new (std::nothrow) Platform::DirectComposition::CompositionDevice);
    if (!made) return E_OUTOFMEMORY;
    return made->QueryInterface(iid, device);
}
