// The graphics objects of one window.
#pragma once

#include <d2d1_3.h>
#include <d3d11_4.h>
#include <dcomp.h>
#include <wrl/client.h>

#include <mutex>

namespace Tamborel {

/// The Direct3D device with its immediate context, and the Direct2D and DirectComposition devices made on it. Each
/// window's render thread makes its own, uses it, and releases it after everything that was made from it. Accessors add
/// no reference and give null for what does not exist. A device that the system removed is not made anew.
class RenderDevice {
public:
    RenderDevice() = default;
    RenderDevice(const RenderDevice&) = delete;
    RenderDevice& operator=(const RenderDevice&) = delete;

    /// Makes everything on the default hardware adapter; DeviceManager must be initialised. S_OK at once when that is
    /// done already. A failure is returned without a report.
    [[nodiscard]] HRESULT Initialize() noexcept;

    /// Releases everything. Does nothing unless Initialize succeeded.
    void Release() noexcept;

    ID3D11Device5* GetD3DDevice() const noexcept { return D3DDevice.Get(); }
    /// The immediate context. Hold GetContextMutex() while using it.
    ID3D11DeviceContext4* GetD3DContext() const noexcept { return D3DContext.Get(); }
    ID2D1Device2* GetD2DDevice() const noexcept { return D2DDevice.Get(); }
    IDCompositionDesktopDevice* GetDCompDevice() const noexcept { return DCompDevice.Get(); }

    /// Serialises the toolkit's use of the immediate context.
    std::mutex& GetContextMutex() noexcept { return ContextMutex; }

    /// Plays a recorded list on the immediate context, under its mutex. With `restore` the context keeps its state.
    /// E_INVALIDARG for a null list, E_FAIL without a device.
    HRESULT ExecuteImmediateCommandList(ID3D11CommandList* list, bool restore);

private:
    bool Initialized = false;
    Microsoft::WRL::ComPtr<ID3D11Device5> D3DDevice;
    Microsoft::WRL::ComPtr<ID3D11DeviceContext4> D3DContext;
    std::mutex ContextMutex;
    Microsoft::WRL::ComPtr<ID2D1Device2> D2DDevice;
    Microsoft::WRL::ComPtr<IDCompositionDesktopDevice> DCompDevice;
};

}  // namespace Tamborel
