#pragma once

#include "Platform/Linux/Direct3D/DeviceChild.h"
#include "Platform/Linux/Direct3D/FramePacer.h"
#include "Platform/Linux/Direct3D/HostBuffer.h"

namespace Platform::Direct3D {

class Texture2D;

/// A private interface: the way from a texture or surface to its implementation.
struct ITextureInternals : public IUnknown {
    virtual Texture2D& Implementation() = 0;
};

/// A texture for Direct3D, a surface for Direct2D. One for staging is rows of pixels in host memory; any other is an
/// image on the device. A swap chain's back buffer is one texture that stands for another image after each present.
class Texture2D final : public ID3D11Texture2D, public IDXGISurface2, public ITextureInternals {
public:
    /// Throws VulkanError. `image` is given for a back buffer and null otherwise.
    Texture2D(IGraphicsObject& owner, const D3D11_TEXTURE2D_DESC& desc, std::shared_ptr<Texture> image = nullptr);
    Texture2D(const Texture2D&) = delete;
    Texture2D& operator=(const Texture2D&) = delete;

    HRESULT QueryInterface(REFIID iid, void** object) override;
    ULONG AddRef() override { return references_.fetch_add(1, std::memory_order_relaxed) + 1; }
    ULONG Release() override;

    void GetDevice(ID3D11Device** device) override;
    void GetType(D3D11_RESOURCE_DIMENSION* dimension) override { *dimension = D3D11_RESOURCE_DIMENSION_TEXTURE2D; }
    void GetDesc(D3D11_TEXTURE2D_DESC* desc) override { *desc = desc_; }
    HRESULT GetParent(REFIID, void** parent) override;
    HRESULT GetDevice(REFIID iid, void** device) override;
    HRESULT GetDesc(DXGI_SURFACE_DESC* desc) override;
    Texture2D& Implementation() override { return *this; }

    const D3D11_TEXTURE2D_DESC& Desc() const { return desc_; }
    GraphicsDevice& Graphics() const { return *owner_->Graphics(); }
    ULONG References() const { return references_.load(std::memory_order_acquire); }

    /// The image it stands for at the moment; null for staging. With the device locked, as SetImage.
    const std::shared_ptr<Texture>& Image() const { return image_; }
    void SetImage(std::shared_ptr<Texture> image) { image_ = std::move(image); }

    /// Of a swap chain's back buffer: what paces its frames.
    void SetPacer(std::shared_ptr<const FramePacer> pacer) { pacer_ = std::move(pacer); }
    /// Whether the frame that is being drawn on it shows nothing of input that has come, as FrameRhythm tells.
    bool IsOutdated() const { return pacer_ && pacer_->IsOutdated(); }

    const std::shared_ptr<HostBuffer>& Staging() const { return staging_; }
    UINT StagingPitch() const { return pitch_; }

private:
    ~Texture2D() = default;

    std::atomic<ULONG> references_{1};
    ComPtr<IGraphicsObject> owner_;
    const D3D11_TEXTURE2D_DESC desc_;
    std::shared_ptr<Texture> image_;
    std::shared_ptr<const FramePacer> pacer_;
    std::shared_ptr<HostBuffer> staging_;
    UINT pitch_ = 0;
};

/// S_OK for a texture that can be made: one level, one layer, one sample.
HRESULT CheckTexture(const D3D11_TEXTURE2D_DESC* desc, const D3D11_SUBRESOURCE_DATA* initialData);

/// A view of a whole texture.
template <class Interface>
class View final : public DeviceChild<Interface, ID3D11View> {
public:
    View(const char* className, IGraphicsObject& owner, Texture2D& texture)
        : DeviceChild<Interface, ID3D11View>(className, owner), texture_(&texture) {}

    void GetResource(ID3D11Resource** resource) override {
        texture_->AddRef();
        *resource = texture_.Get();
    }
    Texture2D& Target() const { return *texture_.Get(); }

private:
    ComPtr<Texture2D> texture_;
};

using RenderTargetView = View<ID3D11RenderTargetView>;
using ShaderResourceView = View<ID3D11ShaderResourceView>;
using UnorderedAccessView = View<ID3D11UnorderedAccessView>;

}  // namespace Platform::Direct3D
VELORINTH_DECLARE_IID(Platform::Direct3D::ITextureInternals, 0x1e9a4c55, 0x27f6, 0x4e0d, 0xb1, 0x09, 0x6c, 0x77, 0x41,
                      0xd2, 0x8a, 0x3f);
