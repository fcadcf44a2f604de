#include "Core/RenderDevice.h"

#include "Core/DeviceManager.h"

#include <array>

namespace Tamborel {

using Microsoft::WRL::ComPtr;

HRESULT RenderDevice::Initialize() noexcept {
    if (Initialized) return S_OK;

    static constexpr std::array levels{D3D_FEATURE_LEVEL_11_1, D3D_FEATURE_LEVEL_11_0};
    ComPtr<ID3D11Device> device;
    ComPtr<ID3D11DeviceContext> context;
    HRESULT result =
        D3D11CreateDevice(nullptr, D3D_DRIVER_TYPE_HARDWARE, nullptr, D3D11_CREATE_DEVICE_BGRA_SUPPORT, levels.data(),
                          static_cast<UINT>(levels.size()), D3D11_SDK_VERSION, &device, nullptr, &context);
    if (FAILED(result)) return result;
    result = device->QueryInterface(IID_PPV_ARGS(&D3DDevice));
    if (FAILED(result)) return result;
    result = context->QueryInterface(IID_PPV_ARGS(&D3DContext));
    if (FAILED(result)) return result;

    // Direct2D uses the immediate context through a device of its own. Where the switch is missing, ContextMutex and
    // the one render thread have to do.
    ComPtr<ID3D11Multithread> multithread;
    if (SUCCEEDED(context->QueryInterface(IID_PPV_ARGS(&multithread)))) multithread->SetMultithreadProtected(TRUE);

    ComPtr<IDXGIDevice3> dxgiDevice;
    result = device->QueryInterface(IID_PPV_ARGS(&dxgiDevice));
    if (FAILED(result)) return result;

    ID2D1Factory3* const factory = DeviceManager::Get().GetD2DFactory();
    if (!factory) return E_FAIL;
    result = factory->CreateDevice(dxgiDevice.Get(), D2DDevice.ReleaseAndGetAddressOf());
    if (FAILED(result)) return result;
    result = DCompositionCreateDevice2(dxgiDevice.Get(), IID_PPV_ARGS(&DCompDevice));
    if (FAILED(result)) return result;

    Initialized = true;
    return S_OK;
}

void RenderDevice::Release() noexcept {
    if (!Initialized) return;
    DCompDevice.Reset();
    D2DDevice.Reset();
    D3DContext.Reset();
    D3DDevice.Reset();
    Initialized = false;
}

HRESULT RenderDevice::ExecuteImmediateCommandList(ID3D11CommandList* list, bool restore) {
    if (!list) return E_INVALIDARG;
    if (!D3DContext) return E_FAIL;
    const std::lock_guard lock(ContextMutex);
    D3DContext->ExecuteCommandList(list, restore ? TRUE : FALSE);
    return S_OK;
}

}  // namespace Tamborel
