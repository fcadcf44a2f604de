#include "Platform/Linux/Direct3D/SwapChain.h"

namespace Platform::Direct3D {

namespace {

constexpr UINT bufferCount = 2;
constexpr UINT maximumLatency = 16;
constexpr UINT maximumSyncInterval = 4;

bool IsSide(UINT pixels) {
    return pixels > 0 && pixels <= D3D11_REQ_TEXTURE2D_U_OR_V_DIMENSION;
}

}  // namespace

HRESULT SwapChain::Check(const DXGI_SWAP_CHAIN_DESC1& desc) {
    const bool isGood =
        IsSide(desc.Width) && IsSide(desc.Height) &&
        (desc.Format == DXGI_FORMAT_B8G8R8A8_UNORM || desc.Format == DXGI_FORMAT_R8G8B8A8_UNORM ||
         desc.Format == DXGI_FORMAT_R16G16B16A16_FLOAT) &&
        !desc.Stereo && desc.SampleDesc.Count == 1 && desc.SampleDesc.Quality == 0 && desc.BufferCount == bufferCount &&
        desc.Scaling == DXGI_SCALING_STRETCH &&
        (desc.SwapEffect == DXGI_SWAP_EFFECT_FLIP_SEQUENTIAL || desc.SwapEffect == DXGI_SWAP_EFFECT_FLIP_DISCARD) &&
        (desc.AlphaMode == DXGI_ALPHA_MODE_PREMULTIPLIED || desc.AlphaMode == DXGI_ALPHA_MODE_IGNORE) &&
        !(desc.Flags & ~UINT{DXGI_SWAP_CHAIN_FLAG_FRAME_LATENCY_WAITABLE_OBJECT});
    return isGood ? S_OK : DXGI_ERROR_INVALID_CALL;
}

SwapChain::SwapChain(IGraphicsObject& owner, const DXGI_SWAP_CHAIN_DESC1& desc)
    : owner_(&owner), pacer_(std::make_shared<FramePacer>()), desc_(desc) {
    MakeBuffers(desc);
}

void SwapChain::MakeBuffers(const DXGI_SWAP_CHAIN_DESC1& desc) {
    GraphicsDevice& device = *owner_->Graphics();
    const VkExtent2D size{desc.Width, desc.Height};
    auto first = Texture::MakeBuffer(device, size, desc.Format);
    auto second = Texture::MakeBuffer(device, size, desc.Format);
    D3D11_TEXTURE2D_DESC texture{};
    texture.Width = desc.Width;
    texture.Height = desc.Height;
    texture.MipLevels = 1;
    texture.ArraySize = 1;
    texture.Format = desc.Format;
    texture.SampleDesc.Count = 1;
    texture.BindFlags = D3D11_BIND_RENDER_TARGET;
    if (desc.BufferUsage & DXGI_USAGE_SHADER_INPUT) texture.BindFlags |= D3D11_BIND_SHADER_RESOURCE;
    backBuffer_ = MakeObject<Texture2D>(*owner_.Get(), texture, first);
    backBuffer_->SetPacer(pacer_);
    back_ = std::move(first);
    other_ = std::move(second);
    desc_ = desc;
}

HRESULT SwapChain::QueryInterface(REFIID iid, void** object) {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid == __uuidof(IUnknown) || iid == __uuidof(IDXGIObject) || iid == __uuidof(IDXGIDeviceSubObject) ||
        iid == __uuidof(IDXGISwapChain) || iid == __uuidof(IDXGISwapChain1) || iid == __uuidof(IDXGISwapChain2) ||
        iid == __uuidof(IDXGISwapChain3)) {
        *object = static_cast<IDXGISwapChain3*>(this);
    } else if (iid == __uuidof(IPresentable)) {
        *object = static_cast<IPresentable*>(this);
    } else if (iid == __uuidof(IGraphicsObject)) {
        return owner_->QueryInterface(iid, object);
    } else {
        return NoInterface("IDXGISwapChain", iid);
    }
    AddRef();
    return S_OK;
}

ULONG SwapChain::Release() {
    const ULONG left = references_.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (left == 0) delete this;
    return left;
}

HRESULT SwapChain::GetParent(REFIID, void** parent) {
    if (parent) *parent = nullptr;
    return NotImplemented("IDXGISwapChain::GetParent");
}

HRESULT SwapChain::GetDevice(REFIID iid, void** device) {
    return owner_->AsDirect3D()->QueryInterface(iid, device);
}

HRESULT SwapChain::GetBuffer(UINT index, REFIID iid, void** surface) {
    if (!surface) return E_POINTER;
    *surface = nullptr;
    // The other buffer is the compositor's.
    if (index != 0) return DXGI_ERROR_INVALID_CALL;
    return backBuffer_->QueryInterface(iid, surface);
}

HRESULT SwapChain::ResizeBuffers(UINT count, UINT width, UINT height, DXGI_FORMAT format, UINT flags) try {
    const auto lock = Graphics()->Lock();
    DXGI_SWAP_CHAIN_DESC1 desc = desc_;
    desc.Width = width;
    desc.Height = height;
    if (count != 0) desc.BufferCount = count;
    if (format != DXGI_FORMAT_UNKNOWN) desc.Format = format;
    if (flags != desc_.Flags || FAILED(Check(desc))) return DXGI_ERROR_INVALID_CALL;
    Graphics()->FinishPicture();  // the commands of one that was put off refer to the buffer
    if (backBuffer_->References() > 1) return DXGI_ERROR_INVALID_CALL;
    MakeBuffers(desc);
    return S_OK;
} catch (...) {
    return CurrentFailure();
}

HRESULT SwapChain::GetDesc1(DXGI_SWAP_CHAIN_DESC1* desc) {
    if (!desc) return E_INVALIDARG;
    const auto lock = Graphics()->Lock();
    *desc = desc_;
    return S_OK;
}

HRESULT SwapChain::Present1(UINT syncInterval, UINT flags, const DXGI_PRESENT_PARAMETERS* parameters) try {
    if (syncInterval > maximumSyncInterval || flags != 0 || !parameters) return DXGI_ERROR_INVALID_CALL;
    const auto lock = Graphics()->Lock();
    if (!Graphics()->IsPutOff(*back_)) Graphics()->Flush();
    std::swap(back_, other_);
    presented_ = other_;
    backBuffer_->SetImage(back_);
    presented_->SetIncomplete(false);
    hasNewPicture_ = true;
    isGivenUp_ = false;
    return S_OK;
} catch (...) {
    return CurrentFailure();
}

HRESULT SwapChain::SetMaximumFrameLatency(UINT latency) {
    if (!HasWaitable() || latency == 0 || latency > maximumLatency) return DXGI_ERROR_INVALID_CALL;
    latency_ = latency;
    return S_OK;
}

HRESULT SwapChain::GetMaximumFrameLatency(UINT* latency) {
    if (!HasWaitable() || !latency) return DXGI_ERROR_INVALID_CALL;
    *latency = latency_;
    return S_OK;
}

HANDLE SwapChain::GetFrameLatencyWaitableObject() {
    return HasWaitable() ? AddHandle(pacer_) : nullptr;
}

HRESULT SwapChain::CheckColorSpaceSupport(DXGI_COLOR_SPACE_TYPE space, UINT* support) {
    if (!support) return E_INVALIDARG;
    *support = space == DXGI_COLOR_SPACE_RGB_FULL_G22_NONE_P709 ? DXGI_SWAP_CHAIN_COLOR_SPACE_SUPPORT_FLAG_PRESENT : 0;
    return S_OK;
}

HRESULT SwapChain::SetColorSpace1(DXGI_COLOR_SPACE_TYPE space) {
    return space == DXGI_COLOR_SPACE_RGB_FULL_G22_NONE_P709 ? S_OK : E_INVALIDARG;
}

std::shared_ptr<Texture> SwapChain::Presented() {
    const auto lock = Graphics()->Lock();
    return presented_;
}

bool SwapChain::HasNewPicture() {
    const auto lock = Graphics()->Lock();
    return hasNewPicture_;
}

void SwapChain::Shown() {
    const auto lock = Graphics()->Lock();
    if (!std::exchange(hasNewPicture_, false)) return;
    if (std::exchange(isGivenUp_, false)) {
        pacer_->GivenUpFrameShown();
    } else {
        pacer_->FrameShown();
    }
}

void SwapChain::GivenUp() {
    const auto lock = Graphics()->Lock();
    if (!hasNewPicture_ || std::exchange(isGivenUp_, true)) return;
    Graphics()->GiveUp(*presented_);
    pacer_->FrameGivenUp();
}

}  // namespace Platform::Direct3D
