#pragma once

#include "Platform/Linux/Direct3D/Context.h"

namespace Platform::Direct3D {

/// Records plain commands; the device hears of them when their list is executed.
class DeferredContext final : public Context {
public:
    explicit DeferredContext(IGraphicsObject& owner) : Context(owner), keptOwner_(&owner) {}

    HRESULT QueryInterface(REFIID iid, void** object) override;
    ULONG AddRef() override { return references_.fetch_add(1, std::memory_order_relaxed) + 1; }
    ULONG Release() override;

    /// Only D3D11_MAP_WRITE_DISCARD of dynamic buffers. The memory stays valid until the list is finished.
    HRESULT Map(ID3D11Resource* resource, UINT subresource, D3D11_MAP type, UINT flags,
                D3D11_MAPPED_SUBRESOURCE* mapped) override;
    void Unmap(ID3D11Resource*, UINT) override {}
    void ExecuteCommandList(ID3D11CommandList* list, BOOL restore) override;
    void Flush() override {}
    D3D11_DEVICE_CONTEXT_TYPE GetType() override { return D3D11_DEVICE_CONTEXT_DEFERRED; }
    HRESULT FinishCommandList(BOOL restore, ID3D11CommandList** list) override;

private:
    ~DeferredContext() override = default;
    void Take(Command command) override { commands_.push_back(std::move(command)); }

    ComPtr<IGraphicsObject> keptOwner_;
    std::atomic<ULONG> references_{1};
    std::vector<Command> commands_;
};

}  // namespace Platform::Direct3D
