// The beginning and the end of a window's render thread.
#include "Background/BackgroundRenderer.h"
#include "Core/Log.h"
#include "Core/RenderDevice.h"
#include "Scene/SceneNode.h"
#include "Window/FrameChrome.h"
#include "Window/RenderLoop.h"
#include "Window/WindowIcons.h"

#include <dcomp.h>

#include <chrono>
#include <utility>

using Microsoft::WRL::ComPtr;

namespace Tamborel {

namespace {

SIZE SizeOf(const RECT& rect) {
    return {rect.right - rect.left, rect.bottom - rect.top};
}

}  // namespace

std::int64_t RenderLoop::SteadyNanoseconds() {
    using namespace std::chrono;
    return duration_cast<nanoseconds>(steady_clock::now().time_since_epoch()).count();
}

RenderLoop::RenderLoop(const RenderSideSetup& setup, Clock clock)
    : window_(setup.window),
      state_(setup.state),
      stopRequested_(setup.stopRequested),
      stopEvent_(setup.stopEvent),
      ready_(setup.ready),
      clock_(clock),
      title_(setup.title) {}

RenderLoop::~RenderLoop() {
    TearDown();
}

void RenderLoop::Run() {
    if (!SetUp()) {
        ready_(false);
        return;
    }
    ready_(true);
    lastTime_ = clock_();
    time_ = 0;
    hasTime_ = true;
    while (!stopRequested_ && RenderFrame()) CountFrame();
    TearDown();
}

bool RenderLoop::SetUp() {
    device_ = std::make_unique<RenderDevice>();
    if (FAILED(device_->Initialize())) return false;
    if (!SetUpSurfaces()) return false;
    clientRoot_ = std::make_shared<SceneNode>();
    frameRoot_ = std::make_shared<SceneNode>();
    SetUpChrome();
    if (!SetUpDirect3D()) return false;
    SetUpFallbackBackground();
    return true;
}

bool RenderLoop::SetUpSurfaces() {
    frameSurface_ = std::make_unique<WindowSurface>();
    clientSurface_ = std::make_unique<WindowSurface>();
    // From here on a size is news: one that arrives while the window is measured below is taken over at the first turn.
    state_.SurfacesReady = true;

    RECT outer{};
    RECT client{};
    POINT origin{0, 0};
    GetWindowRect(window_, &outer);
    GetClientRect(window_, &client);
    ClientToScreen(window_, &origin);
    clientOffset_ = {origin.x - outer.left, origin.y - outer.top};
    return SUCCEEDED(BuildTree(clientOffset_, SizeOf(outer), SizeOf(client)));
}

// The tree first, so that each surface can put itself into its visual; one commit shows it all.
HRESULT RenderLoop::BuildTree(POINT clientOffset, SIZE outer, SIZE client) {
    IDCompositionDesktopDevice* const dcomp = device_->GetDCompDevice();
    ComPtr<IDCompositionTarget> target;
    ComPtr<IDCompositionVisual2> root;
    ComPtr<IDCompositionVisual2> frame;
    ComPtr<IDCompositionVisual2> clientVisual;

    HRESULT hr = dcomp->CreateTargetForHwnd(window_, TRUE, &target);
    if (SUCCEEDED(hr)) hr = dcomp->CreateVisual(&root);
    if (SUCCEEDED(hr)) hr = target->SetRoot(root.Get());
    if (SUCCEEDED(hr)) hr = dcomp->CreateVisual(&frame);
    if (SUCCEEDED(hr)) hr = root->AddVisual(frame.Get(), FALSE, nullptr);
    if (SUCCEEDED(hr)) hr = dcomp->CreateVisual(&clientVisual);
    if (SUCCEEDED(hr)) hr = clientVisual->SetOffsetX(static_cast<float>(clientOffset.x));
    if (SUCCEEDED(hr)) hr = clientVisual->SetOffsetY(static_cast<float>(clientOffset.y));
    // Not above the frame: the frame's pixels with alpha cover the client.
    if (SUCCEEDED(hr)) hr = root->AddVisual(clientVisual.Get(), FALSE, frame.Get());
    if (SUCCEEDED(hr)) hr = frameSurface_->Initialize(*device_, outer, DXGI_ALPHA_MODE_PREMULTIPLIED, frame.Get());
    if (SUCCEEDED(hr)) hr = clientSurface_->Initialize(*device_, client, DXGI_ALPHA_MODE_IGNORE, clientVisual.Get());
    if (SUCCEEDED(hr)) hr = dcomp->Commit();
    if (FAILED(hr)) return hr;
    ++Counters.Commits;
    tree_.Adopt(*device_, std::move(target), std::move(root), std::move(frame), std::move(clientVisual));
    return S_OK;
}

bool RenderLoop::SetUpDirect3D() {
    D3D11_TEXTURE2D_DESC staging{};
    staging.Width = 1;
    staging.Height = 1;
    staging.MipLevels = 1;
    staging.ArraySize = 1;
    staging.Format = DXGI_FORMAT_B8G8R8A8_UNORM;
    staging.SampleDesc.Count = 1;
    staging.Usage = D3D11_USAGE_STAGING;
    staging.CPUAccessFlags = D3D11_CPU_ACCESS_READ;
    // Without it there is no read-back, and a size loop runs a frame ahead of the display.
    (void)device_->GetD3DDevice()->CreateTexture2D(&staging, nullptr, &stagingTexture_);

    ComPtr<ID3D11DeviceContext> deferred;
    if (FAILED(device_->GetD3DDevice()->CreateDeferredContext(0, &deferred))) return false;
    return SUCCEEDED(deferred.As(&deferredContext_));
}

// A chrome that fails leaves a window that runs without.
void RenderLoop::SetUpChrome() {
    auto chrome = std::make_shared<FrameChrome>();
    chrome->title = title_;
    ChromeTheme theme;
    {
        const std::lock_guard lock(state_.Theme.Mutex);
        theme = state_.Theme.Effective;
        chrome->titleImage = state_.Theme.TitleImage;
    }
    chrome->ApplyTheme(theme);
    if (FAILED(chrome->Initialize(frameSurface_.get()))) return;
    SendIcons(window_, theme);
    frameRoot_->AddChild(chrome);
    chrome_ = std::move(chrome);
}

void RenderLoop::SetChromeTitle(const std::wstring& title) {
    if (chrome_) chrome_->title = title;
}

void RenderLoop::SetChromeTheme(const ChromeTheme& theme) {
    if (chrome_) chrome_->ApplyTheme(theme);
}

void RenderLoop::SetChromeTitleImage(const std::shared_ptr<ImageAsset>& image) {
    if (chrome_) chrome_->titleImage = image;
}

void RenderLoop::SetUpFallbackBackground() {
    fallback_ = std::make_unique<BackgroundRenderer>();
    fallback_->SetAnimate(false);  // It paints a flat fill, which nothing moves: a still window stays without work.
    if (SUCCEEDED(fallback_->Initialize(device_.get()))) return;
    Log("[FrameWindow] Fallback background renderer init failed.\n");
    fallback_.reset();
}

void RenderLoop::SetBackground(BackgroundRenderer* renderer) {
    if (background_ && background_ != renderer) background_->ReleaseResources();
    if (renderer && device_ && !renderer->IsInitialized() && FAILED(renderer->Initialize(device_.get()))) {
        Log("[FrameWindow] Background renderer init failed.\n");
        return;
    }
    background_ = renderer;
    state_.ClientDirty = true;
    state_.CommitNeeded = true;
}

void RenderLoop::TearDown() {
    if (background_) background_->ReleaseResources();
    background_ = nullptr;
    if (fallback_) fallback_->ReleaseResources();
    fallback_.reset();
    if (chrome_) chrome_->SetSurface(nullptr);
    clientCache_ = {};
    frameCache_ = {};
    chrome_.reset();
    clientRoot_.reset();
    frameRoot_.reset();
    stagingTexture_.Reset();
    deferredContext_.Reset();
    state_.SurfacesReady = false;
    clientSurface_.reset();
    frameSurface_.reset();
    tree_.Release();
    if (device_) device_->Release();
    device_.reset();
}

}  // namespace Tamborel
