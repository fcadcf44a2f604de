// One turn of the render loop, up to the point where something is drawn.
#include "Background/BackgroundRenderer.h"
#include "Core/RenderDevice.h"
#include "Scene/SceneNode.h"
#include "Window/BlitRecord.h"
#include "Window/FrameChrome.h"
#include "Window/RenderLoop.h"

#include <array>

namespace Tamborel {

namespace {

// How long an idle loop sleeps: neither input nor closures wake it. Milliseconds.
constexpr DWORD kIdleWait = 16;
constexpr float kStandardDpi = 96.0F;
constexpr float kNanosecondsPerSecond = 1'000'000'000.0F;

}  // namespace

bool RenderLoop::RenderFrame() {
    if (!frameSurface_ || !clientSurface_) return false;
    if (state_.Closures.RunPending()) MarkAllDirty();

    Turn turn;
    turn.inSizeMove = state_.InSizeMove;
    const BackgroundRenderer* const background = ActiveBackground();
    turn.animating = (background && background->IsAnimated()) || turn.inSizeMove;
    if (!WaitForTurn(turn)) return false;

    turn.seconds = AdvanceClock();
    TakeResize();
    ReadWindow(turn);
    WatchChanges(turn);
    BuildRecord(turn);

    UpdateScene(turn);
    DrainInput();
    AnimateScene(turn);
    if (state_.FrameDirty) FramePass(turn);
    if (ClientPassDue(turn)) ClientPass(turn);
    CommitTurn(turn);
    if (turn.inSizeMove) ReadBack();
    ++Counters.Turns;
    return true;
}

void RenderLoop::CountFrame() {
    if (!state_.InSizeMove) return;
    ++state_.FrameCounter;
    state_.FrameTickEvent.Signal();
}

void RenderLoop::MarkAllDirty() {
    state_.FrameDirty = true;
    state_.ClientDirty = true;
    state_.CommitNeeded = true;
}

BackgroundRenderer* RenderLoop::ActiveBackground() const {
    if (background_ && background_->IsInitialized()) return background_;
    if (fallback_ && fallback_->IsInitialized()) return fallback_.get();
    return nullptr;
}

bool RenderLoop::ClientPassDue(const Turn& turn) const {
    return clientVisible_ && (state_.ClientDirty || turn.animating);
}

bool RenderLoop::WaitForTurn(const Turn& turn) {
    const bool resize = state_.ResizePending;
    const bool waitOnFrame = resize || state_.FrameDirty;
    const bool waitOnClient = (clientVisible_ || resize) && (turn.animating || resize || state_.ClientDirty);
    if (!waitOnFrame && !waitOnClient) return WaitForSingleObjectEx(stopEvent_, kIdleWait, TRUE) != WAIT_OBJECT_0;

    if (waitOnFrame && !WaitForSurface(*frameSurface_)) return false;
    // A resize waits for the client surface too, and may then find that there is nothing left of it to draw.
    if (waitOnClient && !clientPermitHeld_) {
        if (!WaitForSurface(*clientSurface_)) return false;
        clientPermitHeld_ = true;
    }
    return true;
}

bool RenderLoop::WaitForSurface(const WindowSurface& surface) const {
    const std::array<HANDLE, 2> handles{surface.GetFrameLatencyWaitable(), stopEvent_};
    return WaitForMultipleObjectsEx(static_cast<DWORD>(handles.size()), handles.data(), FALSE, INFINITE, TRUE) ==
           WAIT_OBJECT_0;
}

float RenderLoop::AdvanceClock() {
    const std::int64_t now = clock_();
    if (!hasTime_) {
        lastTime_ = now;
        hasTime_ = true;
    }
    const float seconds = static_cast<float>(now - lastTime_) / kNanosecondsPerSecond;
    lastTime_ = now;
    time_ += seconds;
    return seconds;
}

void RenderLoop::TakeResize() {
    if (!state_.ResizePending.exchange(false)) return;
    const WindowGeometry geometry = state_.PendingGeometry.Load();
    (void)frameSurface_->Resize({geometry.windowWidth, geometry.windowHeight});
    clientVisible_ = geometry.clientWidth > 0 && geometry.clientHeight > 0;
    if (clientVisible_) (void)clientSurface_->Resize({geometry.clientWidth, geometry.clientHeight});
    clientOffset_ = {geometry.clientOffsetX, geometry.clientOffsetY};
    (void)tree_.SetClientOffset(clientOffset_);
    MarkAllDirty();
    if (chrome_) chrome_->SetSurface(frameSurface_.get());
    ++Counters.Resizes;
}

void RenderLoop::ReadWindow(Turn& turn) {
    turn.dpiScale = static_cast<float>(GetDpiForWindow(window_)) / kStandardDpi;
    turn.zoomed = IsZoomed(window_) != FALSE;
    HitTestMetrics metrics;
    if (chrome_) {
        metrics = ReadChrome(turn);
    } else {
        const std::lock_guard lock(state_.Theme.Mutex);
        metrics = HitTestMetricsOf(state_.Theme.Metrics);
    }
    state_.CaptionMetrics.Store(metrics);
}

// Tells the chrome how the window stands, and asks what it measures then.
HitTestMetrics RenderLoop::ReadChrome(const Turn& turn) {
    chrome_->HoverZone = state_.HoverZone;
    chrome_->PressedZone = state_.PressedZone;
    chrome_->maximized = turn.zoomed;
    chrome_->dpiScale = turn.dpiScale;
    chrome_->Arrange();
    return chrome_->ReadHitTestMetrics();
}

void RenderLoop::WatchChanges(const Turn& turn) {
    const bool inSizeMove = state_.InSizeMove;
    if (inSizeMove != lastInSizeMove_) {
        MarkAllDirty();
        lastInSizeMove_ = inSizeMove;
    }
    const std::int32_t hover = state_.HoverZone;
    const std::int32_t pressed = state_.PressedZone;
    if (hover == lastHover_ && pressed == lastPressed_ && turn.zoomed == lastZoomed_) return;
    state_.FrameDirty = true;
    state_.CommitNeeded = true;
    lastHover_ = hover;
    lastPressed_ = pressed;
    lastZoomed_ = turn.zoomed;
}

void RenderLoop::BuildRecord(Turn& turn) {
    FrameLook look;
    {
        const std::lock_guard lock(state_.Theme.Mutex);
        look = chrome_ ? FrameLookOf(*chrome_, state_.Theme.Metrics)
                       : FrameLookOf(state_.Theme.Effective, state_.Theme.Metrics);
    }
    const SIZE window = frameSurface_->GetSize();
    turn.record =
        BuildBlitFrameRecord(look, {.windowWidth = window.cx,
                                    .windowHeight = window.cy,
                                    .clientOffsetX = clientOffset_.x,
                                    .clientOffsetY = clientOffset_.y,
                                    .dpiScale = turn.dpiScale,
                                    .maximized = turn.zoomed,
                                    .innerBorder = chrome_ ? chrome_->ReadMetrics().clientVisible : clientVisible_});
    ApplyMaximizedChromePolicy(turn.record);
}

void RenderLoop::UpdateScene(const Turn& turn) {
    if (clientRoot_ && (state_.ClientDirty || turn.animating)) {
        clientRoot_->localTransform = ClientRootTransform(turn.record, turn.dpiScale);
        clientRoot_->Update(turn.seconds);
    }
    if (frameRoot_ && state_.FrameDirty) frameRoot_->Update(turn.seconds);
}

void RenderLoop::DrainInput() {
    InputEvent event;
    bool handled = false;
    while (state_.Input.Pop(event)) {
        router_.Route(clientRoot_, event);
        handled = true;
        ++Counters.InputEvents;
    }
    if (!handled) return;
    state_.ClientDirty = true;
    state_.CommitNeeded = true;
}

void RenderLoop::AnimateScene(const Turn& turn) {
    if (clientRoot_ && (state_.ClientDirty || turn.animating)) clientRoot_->Animate(turn.seconds);
    if (frameRoot_ && state_.FrameDirty) frameRoot_->Animate(turn.seconds);
    if (state_.FrameDirty) frameSurface_->ResetFrameState();
    if (ClientPassDue(turn)) clientSurface_->ResetFrameState();
}

void RenderLoop::CommitTurn(const Turn& turn) {
    if (!turn.framePresented && !turn.clientPresented && !state_.CommitNeeded) {
        ++Counters.IdleTurns;
        return;
    }
    (void)device_->GetDCompDevice()->Commit();
    state_.CommitNeeded = false;
    ++Counters.Commits;
}

}  // namespace Tamborel
