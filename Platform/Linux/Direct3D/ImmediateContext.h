#pragma once

#include "Platform/Linux/Direct3D/Context.h"
#include "Platform/Linux/Direct3D/Player.h"

#include <d3d11_4.h>

namespace Platform::Direct3D {

/// The device's own context, part of the device object. While somebody refers to it, it refers to the device; when the
/// last reference goes its state is emptied, so that bound objects don't keep the device alive for ever.
class ImmediateContext final : public Context, public ID3D11Multithread {
public:
    ImmediateContext(IGraphicsObject& owner, GraphicsDevice& device);
    ~ImmediateContext() override = default;

    HRESULT QueryInterface(REFIID iid, void** object) override;
    ULONG AddRef() override;
    ULONG Release() override;

    HRESULT Map(ID3D11Resource* resource, UINT subresource, D3D11_MAP type, UINT flags,
                D3D11_MAPPED_SUBRESOURCE* mapped) override;
    void Unmap(ID3D11Resource*, UINT) override {}
    void ExecuteCommandList(ID3D11CommandList* list, BOOL restore) override;
    void Flush() override;
    D3D11_DEVICE_CONTEXT_TYPE GetType() override { return D3D11_DEVICE_CONTEXT_IMMEDIATE; }
    HRESULT FinishCommandList(BOOL restore, ID3D11CommandList** list) override;

    void Enter() override { device_.Enter(); }
    void Leave() override { device_.Leave(); }
    BOOL SetMultithreadProtected(BOOL protect) override;
    BOOL GetMultithreadProtected() override { return isProtected_.load() ? TRUE : FALSE; }

private:
    void Take(Command command) override { Play(command); }
    void Play(const Command& command) noexcept;
    void FinishAtLast() noexcept;
    /// Leaves a list that draws a picture to whoever needs the pixels. False if it isn't one, or can't be left.
    bool PutOff(CommandList& list) noexcept;

    GraphicsDevice& device_;
    Player player_;
    std::atomic<ULONG> references_{0};
    std::atomic<bool> isProtected_{false};
};

}  // namespace Platform::Direct3D
