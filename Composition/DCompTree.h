// What a window shows: two swap chains, one above the other.
#pragma once

#include "Core/RenderDevice.h"

#include <dxgi1_2.h>

namespace Tamborel {

/// The tree of visuals of one window: a root with two children. The frame's visual covers the whole window and lies on
/// top; where its pixels are transparent, the client's visual shows through, at an offset in physical pixels. What is
/// changed shows with the next Commit on the device; only Initialize commits by itself. Failures are reported and
/// returned, and nothing is undone: a tree built in part stays until Release. Render thread only.
class DCompTree {
public:
    DCompTree() = default;
    DCompTree(const DCompTree&) = delete;
    DCompTree& operator=(const DCompTree&) = delete;

    /// Builds the tree in `hwnd` and commits it. The device, of which no reference is held, must outlive the tree or
    /// its Release.
    [[nodiscard]] HRESULT Initialize(RenderDevice& device, HWND hwnd, IDXGISwapChain1* frameSwapChain,
                                     IDXGISwapChain1* clientSwapChain, POINT clientOffset) noexcept;

    /// Takes over a tree that the caller has built, and lets go of the one it held.
    void Adopt(RenderDevice& device, Microsoft::WRL::ComPtr<IDCompositionTarget> target,
               Microsoft::WRL::ComPtr<IDCompositionVisual2> rootVisual,
               Microsoft::WRL::ComPtr<IDCompositionVisual2> frameVisual,
               Microsoft::WRL::ComPtr<IDCompositionVisual2> clientVisual) noexcept;

    /// Moves the client to an offset from the window's outer corner. E_FAIL without a tree.
    [[nodiscard]] HRESULT SetClientOffset(POINT offset) noexcept;

    /// Puts a matrix on everything the window shows. E_FAIL without a tree.
    [[nodiscard]] HRESULT SetRootTransform(const D2D_MATRIX_3X2_F& matrix) noexcept;
    /// Takes it off again. E_FAIL without a tree.
    [[nodiscard]] HRESULT ClearRootTransform() noexcept;

    /// Lets go of everything.
    void Release() noexcept;

private:
    // Failure reports carry these names.
    RenderDevice* Device = nullptr;  // not owned
    Microsoft::WRL::ComPtr<IDCompositionTarget> Target;
    Microsoft::WRL::ComPtr<IDCompositionVisual2> RootVisual;
    Microsoft::WRL::ComPtr<IDCompositionVisual2> FrameVisual;
    Microsoft::WRL::ComPtr<IDCompositionVisual2> ClientVisual;
};

}  // namespace Tamborel
