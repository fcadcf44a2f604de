#include "Platform/Linux/Direct2D/Device.h"

#include "Platform/Linux/Direct2D/DeviceContext.h"

#include <new>

namespace Platform::Direct2D {

namespace {

template <class Interface>
HRESULT MakeContext(Device* device, ID2D1Factory* factory, const LayerTargetMaker& targets, Interface** context) {
    if (!context) return E_POINTER;
    *context = new (std::nothrow) DeviceContext(factory, targets, device);
    return *context ? S_OK : E_OUTOFMEMORY;
}

}  // namespace

// The options only tune how the system spreads work; here there is nothing to tune.
HRESULT Device::CreateDeviceContext(D2D1_DEVICE_CONTEXT_OPTIONS, ID2D1DeviceContext** context) {
    return MakeContext(this, OwnFactory(), targets_, context);
}

HRESULT Device::CreateDeviceContext(D2D1_DEVICE_CONTEXT_OPTIONS, ID2D1DeviceContext1** context) {
    return MakeContext(this, OwnFactory(), targets_, context);
}

HRESULT Device::CreateDeviceContext(D2D1_DEVICE_CONTEXT_OPTIONS, ID2D1DeviceContext2** context) {
    return MakeContext(this, OwnFactory(), targets_, context);
}

}  // namespace Platform::Direct2D
