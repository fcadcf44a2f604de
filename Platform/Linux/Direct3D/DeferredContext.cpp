#include "Platform/Linux/Direct3D/DeferredContext.h"

#include <new>

namespace Platform::Direct3D {

HRESULT DeferredContext::QueryInterface(REFIID iid, void** object) {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid != __uuidof(IUnknown) && iid != __uuidof(ID3D11DeviceChild) && iid != __uuidof(ID3D11DeviceContext) &&
        iid != __uuidof(ID3D11DeviceContext1) && iid != __uuidof(ID3D11DeviceContext2) &&
        iid != __uuidof(ID3D11DeviceContext3) && iid != __uuidof(ID3D11DeviceContext4))
        return NoInterface("ID3D11DeviceContext (deferred)", iid);
    *object = static_cast<ID3D11DeviceContext4*>(this);
    AddRef();
    return S_OK;
}

ULONG DeferredContext::Release() {
    const ULONG left = references_.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (left == 0) delete this;
    return left;
}

HRESULT DeferredContext::Map(ID3D11Resource* resource, UINT subresource, D3D11_MAP type, UINT,
                             D3D11_MAPPED_SUBRESOURCE* mapped) try {
    if (!resource || subresource != 0 || !mapped || type != D3D11_MAP_WRITE_DISCARD) return E_INVALIDARG;
    *mapped = {};
    D3D11_RESOURCE_DIMENSION dimension = D3D11_RESOURCE_DIMENSION_UNKNOWN;
    resource->GetType(&dimension);
    if (dimension != D3D11_RESOURCE_DIMENSION_BUFFER) return E_INVALIDARG;
    auto* const buffer = static_cast<Buffer*>(resource);
    if (!buffer->IsDynamic()) return E_INVALIDARG;
    WriteCommand write{buffer, std::vector<std::byte>(buffer->Size())};
    // The bytes stay where they are while the command moves about.
    *mapped = {write.bytes.data(), buffer->Size(), buffer->Size()};
    commands_.push_back(std::move(write));
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

void DeferredContext::ExecuteCommandList(ID3D11CommandList* list, BOOL restore) {
    if (list) {
        for (const Command& each : static_cast<CommandList*>(list)->Commands()) commands_.push_back(each);
    }
    if (!restore) ClearState();
}

HRESULT DeferredContext::FinishCommandList(BOOL restore, ID3D11CommandList** list) try {
    auto finished = MakeObject<CommandList>(Owner(), std::exchange(commands_, {}));
    if (!restore) ClearState();
    if (list) *list = finished.Detach();
    return S_OK;
} catch (const std::bad_alloc&) {
    if (list) *list = nullptr;
    return E_OUTOFMEMORY;
}

}  // namespace Platform::Direct3D
