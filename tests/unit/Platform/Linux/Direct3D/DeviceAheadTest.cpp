#include "Platform/Linux/Direct3D/DeviceAhead.h"

#include <d3d11_4.h>
#include <dxgi1_6.h>
#include <gtest/gtest.h>
#include <wrl/client.h>

using Microsoft::WRL::ComPtr;
using Platform::Direct3D::DeviceAhead;
using Platform::Direct3D::GraphicsDevice;

namespace {

ComPtr<ID3D11Device> MakeDevice() {
    ComPtr<ID3D11Device> device;
    EXPECT_EQ(D3D11CreateDevice(nullptr, D3D_DRIVER_TYPE_HARDWARE, nullptr, 0, nullptr, 0, D3D11_SDK_VERSION, &device,
                                nullptr, nullptr),
              S_OK);
    return device;
}

// All in one, since a process has one first device.
TEST(DeviceAheadTest, TheFirstFactoryMakesTheFirstDeviceAheadAndItIsTakenOnce) {
    EXPECT_EQ(DeviceAhead::Take(), nullptr) << "Nobody has asked for a factory.";
    ComPtr<IDXGIFactory7> factory;
    ASSERT_EQ(CreateDXGIFactory2(0, IID_PPV_ARGS(&factory)), S_OK);
    EXPECT_NE(DeviceAhead::Start(), nullptr) << "It is under way.";

    const auto first = MakeDevice();
    EXPECT_EQ(DeviceAhead::Take(), nullptr) << "The first device took it.";
    const auto second = MakeDevice();
    EXPECT_NE(GraphicsDevice::From(first.Get()), GraphicsDevice::From(second.Get()));

    factory.Reset();
    EXPECT_EQ(DeviceAhead::Start(), nullptr) << "The drivers are loaded.";
}

}  // namespace
