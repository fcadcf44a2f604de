#include "Core/EmbeddedResource.h"

namespace Tamborel {

HRESULT EmbeddedResource::QueryInterface(REFIID iid, void** object) {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid != __uuidof(IUnknown)) return E_NOINTERFACE;
    *object = static_cast<IUnknown*>(this);
    AddRef();
    return S_OK;
}

ULONG EmbeddedResource::AddRef() {
    return references_.fetch_add(1, std::memory_order_relaxed) + 1;
}

ULONG EmbeddedResource::Release() {
    return references_.fetch_sub(1, std::memory_order_acq_rel) - 1;
}

std::pair<const std::uint8_t*, std::uint64_t> EmbeddedResource::Data() {
    return {data_, dataSize_};
}

}  // namespace Tamborel
