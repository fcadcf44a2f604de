// Direct2D 1.3.
#pragma once

#include <d2d1_2.h>
#include <d2d1svg.h>

struct IStream;

struct ID2D1DeviceContext2 : ID2D1DeviceContext1 {};
VELORINTH_DECLARE_IID(ID2D1DeviceContext2, 0x394ea6a3, 0x0c34, 0x4321, 0x95, 0x0b, 0x6c, 0xa2, 0x0f, 0x0b, 0xe6, 0xc7);

struct ID2D1DeviceContext3 : ID2D1DeviceContext2 {};
VELORINTH_DECLARE_IID(ID2D1DeviceContext3, 0x235a7496, 0x8351, 0x414c, 0xbc, 0xd4, 0x66, 0x72, 0xab, 0x2d, 0x8e, 0x00);

struct ID2D1DeviceContext4 : ID2D1DeviceContext3 {};
VELORINTH_DECLARE_IID(ID2D1DeviceContext4, 0x8c427831, 0x3d90, 0x4476, 0xb6, 0x47, 0xc4, 0xfa, 0xe3, 0x49, 0xe4, 0xdb);

struct ID2D1DeviceContext5 : ID2D1DeviceContext4 {
    /// Parses the stream from its present position. E_FAIL if it holds no SVG.
    virtual HRESULT STDMETHODCALLTYPE CreateSvgDocument(IStream* stream, D2D1_SIZE_F viewportSize,
                                                        ID2D1SvgDocument** document) = 0;
    virtual void STDMETHODCALLTYPE DrawSvgDocument(ID2D1SvgDocument* document) = 0;
};
VELORINTH_DECLARE_IID(ID2D1DeviceContext5, 0x7836d248, 0x68cc, 0x4df6, 0xb9, 0xe8, 0xde, 0x99, 0x1b, 0xf6, 0x2e, 0xb7);

struct ID2D1Device2 : ID2D1Device1 {
    using ID2D1Device1::CreateDeviceContext;
    virtual HRESULT STDMETHODCALLTYPE CreateDeviceContext(D2D1_DEVICE_CONTEXT_OPTIONS options,
                                                          ID2D1DeviceContext2** context) = 0;
};
VELORINTH_DECLARE_IID(ID2D1Device2, 0xa44472e1, 0x8dfb, 0x4e60, 0x84, 0x92, 0x6e, 0x28, 0x61, 0xc9, 0xca, 0x8b);

struct ID2D1Factory3 : ID2D1Factory2 {
    using ID2D1Factory2::CreateDevice;
    virtual HRESULT STDMETHODCALLTYPE CreateDevice(IDXGIDevice* dxgiDevice, ID2D1Device2** device) = 0;
};
VELORINTH_DECLARE_IID(ID2D1Factory3, 0x0869759f, 0x4f00, 0x413f, 0xb0, 0x3e, 0x2b, 0xda, 0x45, 0x40, 0x4d, 0x0f);
