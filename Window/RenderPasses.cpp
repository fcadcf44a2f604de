// What a turn of the render loop draws.
#include "Background/BackgroundRenderer.h"
#include "Background/SurfaceTarget.h"
#include "Core/Log.h"
#include "Core/RenderDevice.h"
#include "Scene/DrawContext.h"
#include "Scene/SceneNode.h"
#include "Window/BlitRecord.h"
#include "Window/RenderLoop.h"

#include <mutex>

using Microsoft::WRL::ComPtr;

namespace Tamborel {

namespace {

constexpr UINT kSyncInterval = 1;
// What the client shows without any background.
constexpr Color kPlainColor{0.05F, 0.05F, 0.08F, 1.0F};

void Clear(const WindowSurface& surface, const Color& color) {
    const float scale = surface.GetSdrWhiteScale();
    const D2D1_COLOR_F scaled{color.r * scale, color.g * scale, color.b * scale, color.a};
    surface.GetDC()->Clear(&scaled);
}

}  // namespace

void RenderLoop::FramePass(Turn& turn) {
    (void)frameSurface_->BeginDraw();
    Clear(*frameSurface_, Color{});
    if (frameRoot_) {
        DrawContext context(frameSurface_->GetDC(), &frameCache_, frameSurface_->GetSdrWhiteScale());
        frameRoot_->Prepare(context);
        frameRoot_->Draw(context);
    }
    (void)frameSurface_->EndDraw();
    frameSurface_->Present(kSyncInterval);
    state_.FrameDirty = false;
    turn.framePresented = true;
    ++Counters.FramePasses;
    ++Counters.Presents;
}

void RenderLoop::ClientPass(Turn& turn) {
    // The background goes first, so that the scene lies on it.
    const bool backgroundDrawn = DrawBackground(turn.record);
    (void)clientSurface_->BeginDraw();
    if (!backgroundDrawn) Clear(*clientSurface_, kPlainColor);
    if (clientRoot_) DrawClientScene(turn);
    (void)clientSurface_->EndDraw();
    clientSurface_->Present(kSyncInterval);
    clientPermitHeld_ = false;
    if (!turn.animating) state_.ClientDirty = false;
    turn.clientPresented = true;
    ++Counters.ClientPasses;
    ++Counters.Presents;
}

bool RenderLoop::DrawBackground(BlitFrameRecord& record) {
    BackgroundRenderer* const renderer = ActiveBackground();
    if (!renderer) return false;
    record.useThemeBackground = renderer == background_ ? 1 : 0;

    const SIZE size = clientSurface_->GetSize();
    const SurfaceTarget target{clientSurface_->GetRTV(), static_cast<UINT>(size.cx), static_cast<UINT>(size.cy)};
    ComPtr<ID3D11CommandList> list;
    HRESULT hr = renderer->RecordDraw(&target, time_, deferredContext_.Get(), list.GetAddressOf(), record,
                                      clientSurface_->GetSdrWhiteScale());
    if (FAILED(hr)) Logf("[FrameWindow] Background RecordDraw failed: hr=0x%08X\n", static_cast<unsigned>(hr));
    if (!list) return false;
    hr = device_->ExecuteImmediateCommandList(list.Get(), true);
    if (FAILED(hr)) {
        Logf("[FrameWindow] Background ExecuteImmediateCommandList failed: hr=0x%08X\n", static_cast<unsigned>(hr));
    }
    return SUCCEEDED(hr);
}

void RenderLoop::DrawClientScene(const Turn& turn) {
    DrawContext context(clientSurface_->GetDC(), &clientCache_, clientSurface_->GetSdrWhiteScale());
    const SIZE size = clientSurface_->GetSize();
    const Rect box = ClientClipBox(turn.record, size.cx, size.cy);
    if (IsEmpty(box)) return;
    context.PushClip(box, D2D1_ANTIALIAS_MODE_ALIASED);
    if (state_.ClientDirty) clientRoot_->Prepare(context);
    clientRoot_->Draw(context);
    context.PopClip();
}

// Mapping blocks until the GPU has finished the copy, and with it the frame. The UI thread's wait in a size loop ends
// only after that, so a window edge never runs ahead of its content.
void RenderLoop::ReadBack() {
    if (!stagingTexture_ || !frameSurface_) return;
    const std::lock_guard lock(device_->GetContextMutex());
    ComPtr<ID3D11Texture2D> backBuffer;
    if (FAILED(frameSurface_->GetSwapChain()->GetBuffer(0, IID_PPV_ARGS(&backBuffer)))) return;
    ID3D11DeviceContext4* const context = device_->GetD3DContext();
    const D3D11_BOX corner{0, 0, 0, 1, 1, 1};
    context->CopySubresourceRegion(stagingTexture_.Get(), 0, 0, 0, 0, backBuffer.Get(), 0, &corner);
    D3D11_MAPPED_SUBRESOURCE mapped{};
    if (FAILED(context->Map(stagingTexture_.Get(), 0, D3D11_MAP_READ, 0, &mapped))) return;
    [[maybe_unused]] const std::uint32_t word = *static_cast<const volatile std::uint32_t*>(mapped.pData);
    context->Unmap(stagingTexture_.Get(), 0);
    ++Counters.ReadBacks;
}

}  // namespace Tamborel
