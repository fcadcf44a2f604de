#include "Platform/Linux/Direct3D/Texture2D.h"

#include "Platform/Linux/Direct3D/Formats.h"
#include "Platform/Linux/Direct3D/SurfaceAccess.h"

namespace Platform::Direct3D {

namespace {

VkImageUsageFlags UsageOf(UINT bindFlags) {
    VkImageUsageFlags usage = 0;
    if (bindFlags & D3D11_BIND_RENDER_TARGET) usage |= VK_IMAGE_USAGE_COLOR_ATTACHMENT_BIT;
    if (bindFlags & D3D11_BIND_UNORDERED_ACCESS) usage |= VK_IMAGE_USAGE_STORAGE_BIT;
    return usage;
}

}  // namespace

Texture2D::Texture2D(IGraphicsObject& owner, const D3D11_TEXTURE2D_DESC& desc, std::shared_ptr<Texture> image)
    : owner_(&owner), desc_(desc), image_(std::move(image)) {
    if (image_) return;
    GraphicsDevice& device = *owner.Graphics();
    if (desc.Usage == D3D11_USAGE_STAGING) {
        pitch_ = desc.Width * FormatOf(desc.Format).value().bytes;
        staging_ = std::make_shared<HostBuffer>(device, VkDeviceSize{pitch_} * desc.Height, HostBuffer::Access::Read);
    } else {
        image_ = Texture::Make(device, {desc.Width, desc.Height}, desc.Format, UsageOf(desc.BindFlags));
    }
}

HRESULT Texture2D::QueryInterface(REFIID iid, void** object) {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid == __uuidof(IUnknown) || iid == __uuidof(ID3D11Texture2D) || iid == __uuidof(ID3D11Resource) ||
        iid == __uuidof(ID3D11DeviceChild)) {
        *object = static_cast<ID3D11Texture2D*>(this);
    } else if (iid == __uuidof(IDXGISurface2) || iid == __uuidof(IDXGISurface1) || iid == __uuidof(IDXGISurface) ||
               iid == __uuidof(IDXGIDeviceSubObject) || iid == __uuidof(IDXGIObject)) {
        *object = static_cast<IDXGISurface2*>(this);
    } else if (iid == __uuidof(ITextureInternals)) {
        *object = static_cast<ITextureInternals*>(this);
    } else if (iid == __uuidof(IGraphicsObject)) {
        return owner_->QueryInterface(iid, object);
    } else {
        return NoInterface("ID3D11Texture2D", iid);
    }
    AddRef();
    return S_OK;
}

ULONG Texture2D::Release() {
    const ULONG left = references_.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (left == 0) {
        // A copy out of or into staging memory may still be under way.
        if (staging_) {
            try {
                Graphics().Keep(staging_);
            } catch (...) {
                vkDeviceWaitIdle(Graphics().Handle());
            }
        }
        delete this;
    }
    return left;
}

void Texture2D::GetDevice(ID3D11Device** device) {
    *device = owner_->AsDirect3D();
    (*device)->AddRef();
}

HRESULT Texture2D::GetParent(REFIID, void** parent) {
    if (parent) *parent = nullptr;
    return NotImplemented("IDXGISurface::GetParent");
}

HRESULT Texture2D::GetDevice(REFIID iid, void** device) {
    return owner_->AsDirect3D()->QueryInterface(iid, device);
}

HRESULT Texture2D::GetDesc(DXGI_SURFACE_DESC* desc) {
    if (!desc) return E_INVALIDARG;
    *desc = {desc_.Width, desc_.Height, desc_.Format, desc_.SampleDesc};
    return S_OK;
}

HRESULT CheckTexture(const D3D11_TEXTURE2D_DESC* desc, const D3D11_SUBRESOURCE_DATA* initialData) {
    constexpr UINT supported = D3D11_BIND_SHADER_RESOURCE | D3D11_BIND_RENDER_TARGET | D3D11_BIND_UNORDERED_ACCESS;
    if (!desc || desc->Width == 0 || desc->Height == 0) return E_INVALIDARG;
    if (desc->Width > D3D11_REQ_TEXTURE2D_U_OR_V_DIMENSION || desc->Height > D3D11_REQ_TEXTURE2D_U_OR_V_DIMENSION)
        return E_INVALIDARG;
    if (desc->MipLevels != 1 || desc->ArraySize != 1 || desc->SampleDesc.Count != 1) return E_INVALIDARG;
    if (!FormatOf(desc->Format) || desc->Format == DXGI_FORMAT_R32G32B32_FLOAT) return E_INVALIDARG;
    if (initialData && (!initialData->pSysMem || desc->Usage == D3D11_USAGE_STAGING)) return E_INVALIDARG;
    switch (desc->Usage) {
        case D3D11_USAGE_STAGING:
            return desc->BindFlags == 0 && desc->CPUAccessFlags != 0 ? S_OK : E_INVALIDARG;
        case D3D11_USAGE_IMMUTABLE:
            if (!initialData) return E_INVALIDARG;
            [[fallthrough]];
        case D3D11_USAGE_DEFAULT:
            return desc->BindFlags != 0 && !(desc->BindFlags & ~supported) && desc->CPUAccessFlags == 0 ? S_OK
                                                                                                        : E_INVALIDARG;
        default:
            return E_INVALIDARG;
    }
}

std::shared_ptr<Texture> TextureOf(IUnknown* object) {
    ComPtr<ITextureInternals> texture;
    if (!object || FAILED(object->QueryInterface(IID_PPV_ARGS(&texture)))) return nullptr;
    Texture2D& implementation = texture->Implementation();
    const auto lock = implementation.Graphics().Lock();
    return implementation.Image();
}

std::shared_ptr<GraphicsDevice> GraphicsDevice::From(IUnknown* object) {
    ComPtr<IGraphicsObject> known;
    if (!object || FAILED(object->QueryInterface(IID_PPV_ARGS(&known)))) return nullptr;
    return known->Graphics();
}

}  // namespace Platform::Direct3D
