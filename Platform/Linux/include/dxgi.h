// Swap chains, surfaces and the devices behind them. Implemented in Platform/Linux/Direct3D.
//
// Interfaces hold the methods that have a caller here, in the order of the system's own; they are not binary compatible
// with Windows.
#pragma once

#include <dxgitype.h>
#include <unknwn.h>

using DXGI_USAGE = UINT;
constexpr DXGI_USAGE DXGI_USAGE_SHADER_INPUT = 0x10;
constexpr DXGI_USAGE DXGI_USAGE_RENDER_TARGET_OUTPUT = 0x20;

enum DXGI_SWAP_EFFECT {
    DXGI_SWAP_EFFECT_DISCARD = 0,
    DXGI_SWAP_EFFECT_SEQUENTIAL = 1,
    DXGI_SWAP_EFFECT_FLIP_SEQUENTIAL = 3,
    DXGI_SWAP_EFFECT_FLIP_DISCARD = 4,
};

enum DXGI_SWAP_CHAIN_FLAG {
    DXGI_SWAP_CHAIN_FLAG_FRAME_LATENCY_WAITABLE_OBJECT = 64,
};

struct DXGI_SURFACE_DESC {
    UINT Width;
    UINT Height;
    DXGI_FORMAT Format;
    DXGI_SAMPLE_DESC SampleDesc;
};

struct IDXGIObject : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE GetParent(REFIID riid, void** ppParent) = 0;
};
VELORINTH_DECLARE_IID(IDXGIObject, 0xaec22fb8, 0x76f3, 0x4639, 0x9b, 0xe0, 0x28, 0xeb, 0x43, 0xa6, 0x7a, 0x2e);

struct IDXGIDeviceSubObject : public IDXGIObject {
    virtual HRESULT STDMETHODCALLTYPE GetDevice(REFIID riid, void** ppDevice) = 0;
};
VELORINTH_DECLARE_IID(IDXGIDeviceSubObject, 0x3d3e0379, 0xf9de, 0x4d58, 0xbb, 0x6c, 0x18, 0xd6, 0x29, 0x92, 0xf1, 0xa6);

/// A texture as what draws without knowing Direct3D sees it.
struct IDXGISurface : public IDXGIDeviceSubObject {
    virtual HRESULT STDMETHODCALLTYPE GetDesc(DXGI_SURFACE_DESC* pDesc) = 0;
};
VELORINTH_DECLARE_IID(IDXGISurface, 0xcafcb56c, 0x6ac3, 0x4889, 0xbf, 0x47, 0x9e, 0x23, 0xbb, 0xd2, 0x60, 0xec);

struct IDXGISurface1 : public IDXGISurface {};
VELORINTH_DECLARE_IID(IDXGISurface1, 0x4ae63092, 0x6327, 0x4c1b, 0x80, 0xae, 0xbf, 0xe1, 0x2e, 0xa3, 0x2b, 0x86);

struct IDXGIOutput : public IDXGIObject {};
VELORINTH_DECLARE_IID(IDXGIOutput, 0xae02eedb, 0xc735, 0x4690, 0x8d, 0x52, 0x5a, 0x8d, 0xc2, 0x02, 0x13, 0xaa);

struct IDXGIAdapter : public IDXGIObject {};
VELORINTH_DECLARE_IID(IDXGIAdapter, 0x2411e7e1, 0x12ac, 0x4ccf, 0xbd, 0x14, 0x97, 0x98, 0xe8, 0x53, 0x4d, 0xc0);

struct IDXGISwapChain : public IDXGIDeviceSubObject {
    /// Buffer 0 is the current back buffer.
    virtual HRESULT STDMETHODCALLTYPE GetBuffer(UINT Buffer, REFIID riid, void** ppSurface) = 0;
    /// Replaces the buffers. `BufferCount` 0 and `DXGI_FORMAT_UNKNOWN` keep count and format. DXGI_ERROR_INVALID_CALL
    /// while anybody still holds the back buffer, for a side of 0, and for other flags than at creation.
    virtual HRESULT STDMETHODCALLTYPE ResizeBuffers(UINT BufferCount, UINT Width, UINT Height, DXGI_FORMAT NewFormat,
                                                    UINT SwapChainFlags) = 0;
};
VELORINTH_DECLARE_IID(IDXGISwapChain, 0x310d36a0, 0xd2e7, 0x4c0a, 0xaa, 0x04, 0x6a, 0x9d, 0x23, 0xb8, 0x88, 0x6a);

struct IDXGIFactory : public IDXGIObject {};
VELORINTH_DECLARE_IID(IDXGIFactory, 0x7b7166ec, 0x21c7, 0x44ae, 0xb2, 0x1a, 0xc9, 0xae, 0x32, 0x1a, 0xe3, 0x69);

struct IDXGIDevice : public IDXGIObject {};
VELORINTH_DECLARE_IID(IDXGIDevice, 0x54ec77fa, 0x1377, 0x44e6, 0x8c, 0x32, 0x88, 0xfd, 0x5f, 0x44, 0xc8, 0x4c);

struct IDXGIFactory1 : public IDXGIFactory {};
VELORINTH_DECLARE_IID(IDXGIFactory1, 0x770aae78, 0xf26f, 0x4dba, 0xa8, 0x29, 0x25, 0x3c, 0x83, 0xd1, 0xb3, 0x87);

struct IDXGIDevice1 : public IDXGIDevice {};
VELORINTH_DECLARE_IID(IDXGIDevice1, 0x77db970f, 0x6276, 0x48ba, 0xba, 0x28, 0x07, 0x01, 0x43, 0xb4, 0x39, 0x2c);
