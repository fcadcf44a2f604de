#pragma once

#include "Platform/Linux/Direct3D/FramePacer.h"
#include "Platform/Linux/Direct3D/Presentable.h"
#include "Platform/Linux/Direct3D/Texture2D.h"

#include <dxgi1_6.h>

namespace Platform::Direct3D {

/// Two buffers that change roles with each present, for a compositor to show. The back buffer is one texture for its
/// users, whichever of the two images it stands for.
class SwapChain final : public IDXGISwapChain3, public IPresentable {
public:
    /// `desc` is one that Check accepts. Throws VulkanError and std::system_error.
    SwapChain(IGraphicsObject& owner, const DXGI_SWAP_CHAIN_DESC1& desc);
    SwapChain(const SwapChain&) = delete;
    SwapChain& operator=(const SwapChain&) = delete;

    /// S_OK for a description of a swap chain that can be made.
    static HRESULT Check(const DXGI_SWAP_CHAIN_DESC1& desc);

    HRESULT QueryInterface(REFIID iid, void** object) override;
    ULONG AddRef() override { return references_.fetch_add(1, std::memory_order_relaxed) + 1; }
    ULONG Release() override;

    HRESULT GetParent(REFIID iid, void** parent) override;
    HRESULT GetDevice(REFIID iid, void** device) override;
    HRESULT GetBuffer(UINT index, REFIID iid, void** surface) override;
    HRESULT ResizeBuffers(UINT count, UINT width, UINT height, DXGI_FORMAT format, UINT flags) override;
    HRESULT GetDesc1(DXGI_SWAP_CHAIN_DESC1* desc) override;
    HRESULT Present1(UINT syncInterval, UINT flags, const DXGI_PRESENT_PARAMETERS* parameters) override;
    HRESULT SetMaximumFrameLatency(UINT latency) override;
    HRESULT GetMaximumFrameLatency(UINT* latency) override;
    HANDLE GetFrameLatencyWaitableObject() override;
    HRESULT CheckColorSpaceSupport(DXGI_COLOR_SPACE_TYPE space, UINT* support) override;
    HRESULT SetColorSpace1(DXGI_COLOR_SPACE_TYPE space) override;

    const std::shared_ptr<GraphicsDevice>& Graphics() override { return owner_->Graphics(); }
    std::shared_ptr<Texture> Presented() override;
    DXGI_ALPHA_MODE AlphaMode() override { return desc_.AlphaMode; }
    bool HasNewPicture() override;
    void Shown() override;
    bool IsOutdated() override { return backBuffer_->IsOutdated(); }
    void GivenUp() override;
    const HandleObject* Waitable() override { return pacer_.get(); }
    void SetPeriod(std::chrono::nanoseconds period) override { pacer_->SetPeriod(period); }
    void Hurry() override { pacer_->Hurry(); }

private:
    ~SwapChain() = default;
    bool HasWaitable() const { return desc_.Flags & DXGI_SWAP_CHAIN_FLAG_FRAME_LATENCY_WAITABLE_OBJECT; }
    void MakeBuffers(const DXGI_SWAP_CHAIN_DESC1& desc);

    std::atomic<ULONG> references_{1};
    ComPtr<IGraphicsObject> owner_;
    const std::shared_ptr<FramePacer> pacer_;

    // Guarded by the device's lock.
    DXGI_SWAP_CHAIN_DESC1 desc_;
    std::shared_ptr<Texture> back_;   ///< What the next present shows.
    std::shared_ptr<Texture> other_;  ///< What the last one showed, if there was one since the buffers were made.
    ComPtr<Texture2D> backBuffer_;    ///< Stands for `back_`.
    std::shared_ptr<Texture> presented_;
    bool hasNewPicture_ = false;
    bool isGivenUp_ = false;  ///< What is new.
    UINT latency_ = 1;
};

}  // namespace Platform::Direct3D
