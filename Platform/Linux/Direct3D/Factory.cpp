// CreateDXGIFactory2.
#include "Platform/Linux/Direct3D/DeviceAhead.h"
#include "Platform/Linux/Direct3D/SwapChain.h"

#include <dxgi1_6.h>

namespace Platform::Direct3D {

namespace {

class Factory final : public ComObject<IDXGIFactory7, IDXGIFactory6, IDXGIFactory5, IDXGIFactory4, IDXGIFactory3,
                                       IDXGIFactory2, IDXGIFactory1, IDXGIFactory, IDXGIObject> {
public:
    Factory() : ComObject("IDXGIFactory") {}

    HRESULT GetParent(REFIID, void** parent) override {
        if (parent) *parent = nullptr;
        return NotImplemented("IDXGIFactory::GetParent");
    }

    HRESULT CreateSwapChainForComposition(IUnknown* device, const DXGI_SWAP_CHAIN_DESC1* desc, IDXGIOutput* output,
                                          IDXGISwapChain1** swapChain) override try {
        if (!swapChain) return DXGI_ERROR_INVALID_CALL;
        *swapChain = nullptr;
        if (!device || !desc || output) return DXGI_ERROR_INVALID_CALL;
        ComPtr<IGraphicsObject> owner;
        if (FAILED(device->QueryInterface(IID_PPV_ARGS(&owner)))) return DXGI_ERROR_INVALID_CALL;
        if (const HRESULT hr = SwapChain::Check(*desc); FAILED(hr)) return hr;
        *swapChain = MakeObject<SwapChain>(*owner.Get(), *desc).Detach();
        return S_OK;
    } catch (...) {
        return CurrentFailure();
    }

private:
    // Whoever asks for a factory will ask for a device.
    const std::shared_ptr<DeviceAhead> ahead_ = DeviceAhead::Start();
};

}  // namespace

}  // namespace Platform::Direct3D

HRESULT CreateDXGIFactory2(UINT, REFIID iid, void** factory) noexcept try {
    if (!factory) return E_POINTER;
    *factory = nullptr;
    const auto made = Platform::Direct3D::MakeObject<Platform::Direct3D::Factory>();
    return made->QueryInterface(iid, factory);
} catch (...) {
    return Platform::Direct3D::CurrentFailure();
}
