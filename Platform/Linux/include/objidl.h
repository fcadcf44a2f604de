// Streams of bytes. What makes them: SHCreateMemStream (shlwapi.h), the imaging factory (wincodec.h).
#pragma once

#include <unknwn.h>

struct ISequentialStream : IUnknown {
    /// Takes up to `size` bytes and tells how many; `read` may be null. S_OK, or S_FALSE at the end.
    virtual HRESULT STDMETHODCALLTYPE Read(void* bytes, ULONG size, ULONG* read) = 0;
};
VELORINTH_DECLARE_IID(ISequentialStream, 0x0c733a30, 0x2a1c, 0x11ce, 0xad, 0xe5, 0x00, 0xaa, 0x00, 0x44, 0x77, 0x3d);

struct IStream : ISequentialStream {};
VELORINTH_DECLARE_IID(IStream, 0x0000000c, 0x0000, 0x0000, 0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46);
