#pragma once

#include "Platform/Linux/Direct2D/LayerTarget.h"
#include "Platform/Linux/Direct2D/Resource.h"

#include <d2d1_3.h>
#include <dxgi.h>

#include <memory>

namespace Platform::Direct2D {

/// The tie to a graphics device. Its identity is what callers keep device objects by. Any thread.
class Device final : public Resource<ID2D1Device2, ID2D1Device1, ID2D1Device> {
public:
    Device(ComPtr<ID2D1Factory> factory, const LayerTargetMaker& targets, IDXGIDevice* dxgiDevice)
        : Resource("ID2D1Device", std::move(factory)),
          dxgiDevice_(dxgiDevice),
          targets_(targets),
          deviceObjects_(targets.KeepDeviceObjects(dxgiDevice)) {}

    HRESULT CreateDeviceContext(D2D1_DEVICE_CONTEXT_OPTIONS options, ID2D1DeviceContext** context) override;
    HRESULT CreateDeviceContext(D2D1_DEVICE_CONTEXT_OPTIONS options, ID2D1DeviceContext1** context) override;
    HRESULT CreateDeviceContext(D2D1_DEVICE_CONTEXT_OPTIONS options, ID2D1DeviceContext2** context) override;

private:
    ~Device() override = default;

    ComPtr<IDXGIDevice> dxgiDevice_;
    const LayerTargetMaker& targets_;
    std::shared_ptr<const void> deviceObjects_;
};

}  // namespace Platform::Direct2D
