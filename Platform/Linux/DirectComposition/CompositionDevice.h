// The composition device of a window's render thread, and the ties to its windows.
#pragma once

#include "Platform/Linux/DirectComposition/Presenter.h"
#include "Platform/Linux/DirectComposition/Visual.h"

#include <memory>
#include <vector>

namespace Platform::DirectComposition {

class CompositionTarget;

/// Makes presenters; the tests' seam. Returns null for a window that doesn't exist.
using PresenterMaker = std::unique_ptr<Presenter> (*)(HWND);

/// Targets commit together. Used on one thread, on which its targets end too.
class CompositionDevice final : public ComObject<IDCompositionDesktopDevice, IDCompositionDevice2> {
public:
    explicit CompositionDevice(PresenterMaker maker = &MakePresenter);

    HRESULT STDMETHODCALLTYPE Commit() override;
    HRESULT STDMETHODCALLTYPE WaitForCommitCompletion() override;
    HRESULT STDMETHODCALLTYPE CreateVisual(IDCompositionVisual2** visual) override;
    HRESULT STDMETHODCALLTYPE CreateMatrixTransform(IDCompositionMatrixTransform** transform) override;
    HRESULT STDMETHODCALLTYPE CreateTargetForHwnd(HWND window, BOOL topmost, IDCompositionTarget** target) override;

    /// Called by a target that ends.
    void Forget(CompositionTarget* target);

private:
    PresenterMaker makePresenter_;
    std::vector<CompositionTarget*> targets_;  ///< Not owned: each is its owner's, and forgets itself here.
};

/// The tie between one window and its tree.
class CompositionTarget final : public ComObject<IDCompositionTarget> {
public:
    CompositionTarget(CompositionDevice& device, HWND window, std::unique_ptr<Presenter> presenter);

    HRESULT STDMETHODCALLTYPE SetRoot(IDCompositionVisual* visual) override;

    HWND Window() const { return window_; }
    HRESULT Show();

private:
    ~CompositionTarget() override;

    Microsoft::WRL::ComPtr<CompositionDevice> device_;
    HWND window_;
    std::unique_ptr<Presenter> presenter_;
    Microsoft::WRL::ComPtr<Visual> root_;
    std::vector<Layer> layers_;  ///< Kept for its capacity: a frame allocates nothing.
};

}  // namespace Platform::DirectComposition
