// Fakes of DXGI: the factory, swap chains with a real waitable, and the faces that Direct3D objects have there.
#pragma once

#include "tests/fakes/FakeObject.h"

#include <d3d11_4.h>
#include <dxgi1_6.h>
#include <wrl/client.h>

namespace Fakes {

class FakeTexture;

class FakeFactory final : public FakeObject<IDXGIFactory7, IDXGIObject, IDXGIFactory, IDXGIFactory1, IDXGIFactory2,
                                            IDXGIFactory3, IDXGIFactory4, IDXGIFactory5, IDXGIFactory6> {
public:
    FakeFactory() : FakeObject("Factory") {}
    HRESULT GetParent(REFIID iid, void** parent) override;
    HRESULT CreateSwapChainForComposition(IUnknown* device, const DXGI_SWAP_CHAIN_DESC1* description,
                                          IDXGIOutput* output, IDXGISwapChain1** swapChain) override;
};

/// As the system's, it refuses to resize while somebody holds a buffer.
class FakeSwapChain final : public FakeObject<IDXGISwapChain3, IDXGIObject, IDXGIDeviceSubObject, IDXGISwapChain,
                                              IDXGISwapChain1, IDXGISwapChain2> {
public:
    explicit FakeSwapChain(const DXGI_SWAP_CHAIN_DESC1& description);

    HRESULT GetParent(REFIID iid, void** parent) override;
    HRESULT GetDevice(REFIID iid, void** device) override;
    HRESULT GetBuffer(UINT index, REFIID iid, void** surface) override;
    HRESULT ResizeBuffers(UINT count, UINT width, UINT height, DXGI_FORMAT format, UINT flags) override;
    HRESULT GetDesc1(DXGI_SWAP_CHAIN_DESC1* description) override;
    HRESULT Present1(UINT interval, UINT flags, const DXGI_PRESENT_PARAMETERS* parameters) override;
    HRESULT SetMaximumFrameLatency(UINT latency) override;
    HRESULT GetMaximumFrameLatency(UINT* latency) override;
    /// Null when the call is to fail. Signalled at first; then whenever SignalFrame is called.
    HANDLE GetFrameLatencyWaitableObject() override;
    HRESULT CheckColorSpaceSupport(DXGI_COLOR_SPACE_TYPE space, UINT* support) override;
    HRESULT SetColorSpace1(DXGI_COLOR_SPACE_TYPE space) override;

private:
    void MakeBuffer();

    DXGI_SWAP_CHAIN_DESC1 description_;
    Microsoft::WRL::ComPtr<FakeTexture> buffer_;
    UINT latency_ = 3;
};

/// Signals the waitables that swap chains have handed out and that are not closed yet: a frame may start. Any thread.
void SignalFrame();

/// Whether each present signals the waitables, so that frames follow each other without SignalFrame. Off at first.
void SignalFrameOnPresent(bool signal);

}  // namespace Fakes
