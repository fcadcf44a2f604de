#pragma once

#include <d3d11_3.h>
#include <dxgi1_5.h>

struct ID3D11DeviceContext4 : public ID3D11DeviceContext3 {};
VELORINTH_DECLARE_IID(ID3D11DeviceContext4, 0x917600da, 0xf58c, 0x4c33, 0x98, 0xd8, 0x3e, 0x15, 0xb3, 0x90, 0xfa, 0x24);

struct ID3D11Device4 : public ID3D11Device3 {};
VELORINTH_DECLARE_IID(ID3D11Device4, 0x8992ab71, 0x02e6, 0x4b8d, 0xba, 0x48, 0xb0, 0x56, 0xdc, 0xda, 0x42, 0xc4);

struct ID3D11Device5 : public ID3D11Device4 {};
VELORINTH_DECLARE_IID(ID3D11Device5, 0x8ffde202, 0xa0e7, 0x45df, 0x9e, 0x01, 0xe8, 0x37, 0x80, 0x1b, 0x5e, 0xa0);

/// The immediate context's lock. Work reaches the device under it in any case; the switch only remembers what it was
/// set to. The context's state is for one thread at a time: take the lock around a run of calls.
struct ID3D11Multithread : public IUnknown {
    virtual void STDMETHODCALLTYPE Enter() = 0;
    virtual void STDMETHODCALLTYPE Leave() = 0;
    /// Returns the former setting.
    virtual BOOL STDMETHODCALLTYPE SetMultithreadProtected(BOOL bMTProtect) = 0;
    virtual BOOL STDMETHODCALLTYPE GetMultithreadProtected() = 0;
};
VELORINTH_DECLARE_IID(ID3D11Multithread, 0x9b7e4e00, 0x342c, 0x4106, 0xa1, 0x9f, 0x4f, 0x27, 0x04, 0xf6, 0x89, 0xf0);
