#pragma once

#include "Platform/Linux/Base/ComObject.h"

#include <wincodec.h>

namespace Platform::Imaging {

/// Reads bytes where they lie. One thread at a time.
class Stream final : public ComObject<IWICStream, IStream, ISequentialStream> {
public:
    Stream() : ComObject("IWICStream") {}

    HRESULT InitializeFromMemory(BYTE* bytes, DWORD size) override;
    HRESULT Read(void* bytes, ULONG size, ULONG* read) override;

private:
    ~Stream() override = default;

    const BYTE* next_ = nullptr;  // not owned; null until initialised
    ULONG left_ = 0;
};

}  // namespace Platform::Imaging
