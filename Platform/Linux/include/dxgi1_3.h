// Frame latency, and the making of a factory. Implemented in Platform/Linux/Direct3D.
#pragma once

#include <dxgi1_2.h>

struct IDXGIDevice3 : public IDXGIDevice2 {};
VELORINTH_DECLARE_IID(IDXGIDevice3, 0x6007896c, 0x3244, 0x4afd, 0xbf, 0x18, 0xa6, 0xd3, 0xbe, 0xda, 0x50, 0x23);

struct IDXGISwapChain2 : public IDXGISwapChain1 {
    virtual HRESULT STDMETHODCALLTYPE SetMaximumFrameLatency(UINT MaxLatency) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetMaximumFrameLatency(UINT* pMaxLatency) = 0;
    /// A handle that is signalled once for each frame that may start. The caller closes it. Null for a swap chain made
    /// without DXGI_SWAP_CHAIN_FLAG_FRAME_LATENCY_WAITABLE_OBJECT.
    virtual HANDLE STDMETHODCALLTYPE GetFrameLatencyWaitableObject() = 0;
};
VELORINTH_DECLARE_IID(IDXGISwapChain2, 0xa8be2ac4, 0x199f, 0x4946, 0xb3, 0x31, 0x79, 0x59, 0x9f, 0xb9, 0x8d, 0xe7);

struct IDXGIFactory3 : public IDXGIFactory2 {};
VELORINTH_DECLARE_IID(IDXGIFactory3, 0x25483823, 0xcd46, 0x4c7d, 0x86, 0xca, 0x47, 0xaa, 0x95, 0xb8, 0x37, 0xbd);

/// `Flags` is 0. E_NOINTERFACE for an interface that the factory lacks. Any thread.
HRESULT WINAPI CreateDXGIFactory2(UINT Flags, REFIID riid, void** ppFactory) noexcept;
