// Direct2D 1.2.
#pragma once

#include <d2d1_1.h>

struct ID2D1DeviceContext1 : ID2D1DeviceContext {};
VELORINTH_DECLARE_IID(ID2D1DeviceContext1, 0xd37f57e4, 0x6908, 0x459f, 0xa1, 0x99, 0xe7, 0x2f, 0x24, 0xf7, 0x99, 0x87);

struct ID2D1Device1 : ID2D1Device {
    using ID2D1Device::CreateDeviceContext;
    virtual HRESULT STDMETHODCALLTYPE CreateDeviceContext(D2D1_DEVICE_CONTEXT_OPTIONS options,
                                                          ID2D1DeviceContext1** context) = 0;
};
VELORINTH_DECLARE_IID(ID2D1Device1, 0xd21768e1, 0x23a4, 0x4823, 0xa1, 0x4b, 0x7c, 0x3e, 0xba, 0x85, 0xd6, 0x58);

struct ID2D1Factory2 : ID2D1Factory1 {
    using ID2D1Factory1::CreateDevice;
    virtual HRESULT STDMETHODCALLTYPE CreateDevice(IDXGIDevice* dxgiDevice, ID2D1Device1** device) = 0;
};
VELORINTH_DECLARE_IID(ID2D1Factory2, 0x94f81a73, 0x9212, 0x4376, 0x9c, 0x58, 0xb1, 0x6a, 0x3a, 0x0d, 0x39, 0x92);
