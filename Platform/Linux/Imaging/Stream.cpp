#include "Platform/Linux/Imaging/Stream.h"

#include <algorithm>
#include <cstring>

namespace Platform::Imaging {

HRESULT Stream::InitializeFromMemory(BYTE* bytes, DWORD size) {
    if (!bytes) return E_INVALIDARG;
    if (next_) return WINCODEC_ERR_WRONGSTATE;
    next_ = bytes;
    left_ = size;
    return S_OK;
}

HRESULT Stream::Read(void* bytes, ULONG size, ULONG* read) {
    if (read) *read = 0;
    if (!next_) return WINCODEC_ERR_NOTINITIALIZED;
    const ULONG count = std::min(size, left_);
    if (count > 0) std::memcpy(bytes, next_, count);
    next_ += count;
    left_ -= count;
    if (read) *read = count;
    return count == size ? S_OK : S_FALSE;
}

}  // namespace Platform::Imaging
