#pragma once

#include "Platform/Linux/Base/ComObject.h"

#include <dwrite_3.h>

#include <atomic>

namespace Platform::DirectWrite {

/// Makes font files of bytes in memory. Any thread.
class MemoryLoader final : public ComObject<IDWriteInMemoryFontFileLoader, IDWriteFontFileLoader> {
public:
    MemoryLoader() : ComObject("IDWriteInMemoryFontFileLoader") {}

    HRESULT CreateInMemoryFontFileReference(IDWriteFactory* factory, const void* data, UINT32 size, IUnknown* owner,
                                            IDWriteFontFile** file) override;
    UINT32 GetFileCount() override { return count_.load(std::memory_order_relaxed); }

private:
    ~MemoryLoader() override = default;

    std::atomic<UINT32> count_{0};
};

}  // namespace Platform::DirectWrite
