// Start and end of a window and its threads, and what other threads may ask of it.
#include "Window/FrameWindow.h"

#include "Core/Timestamp.h"
#include "Core/Toolkit.h"
#include "Window/Messages.h"

#include <utility>

namespace Tamborel {

FrameWindow::FrameWindow() = default;

FrameWindow::~FrameWindow() = default;

bool FrameWindow::Create(HINSTANCE instance, int showCommand, const WindowConfig& config) {
    ApplyConfig(config);
    AddWindowRef();
    StopEarlierWindow();
    state_.FrameTickEvent.Open();
    threads_ = std::make_unique<WindowThreads>(*this);
    threads_->Start(instance, showCommand);
    return true;
}

void FrameWindow::ApplyConfig(const WindowConfig& config) {
    {
        const std::lock_guard lock(configMutex_);
        config_ = config;
    }
    {
        const std::lock_guard lock(state_.Theme.Mutex);
        state_.Theme.TitleImage.reset();
    }
    static_cast<void>(ReplaceThemeOverride(config.theme));
}

/// A window that is created again ends the one before, and takes nothing over from it.
void FrameWindow::StopEarlierWindow() {
    if (!threads_) return;
    threads_->Stop();
    threads_.reset();
    ReleaseOnce();
    closed_ = false;
    tracking_ = false;
    state_.FrameDirty = true;
    state_.ClientDirty = true;
    state_.CommitNeeded = true;
    state_.ResizePending = false;
    state_.InSizeMove = false;
    state_.HoverZone = NoZone;
    state_.PressedZone = NoZone;
    const std::lock_guard lock(readyMutex_);
    rendererReady_ = false;
    rendererFailed_ = false;
}

bool FrameWindow::CreateOnUiThread(HINSTANCE instance, int showCommand) {
    WindowConfig config;
    {
        const std::lock_guard lock(configMutex_);
        config = config_;
    }
    return CreateNativeWindow(instance, showCommand, config);
}

void FrameWindow::RunOnRenderThread() {
    std::wstring title;
    {
        const std::lock_guard lock(configMutex_);
        title = config_.title;
    }
    const std::unique_ptr<RenderSide> side =
        MakeRenderSide({Handle(), state_, threads_->StopRequested(), threads_->StopEvent(),
                        [this](bool ready) { ReportReady(ready); }, std::move(title)});
    renderSide_ = side.get();
    side->Run();
    renderSide_ = nullptr;
}

void FrameWindow::ReportReady(bool ready) {
    {
        const std::lock_guard lock(readyMutex_);
        rendererReady_ = ready;
        rendererFailed_ = !ready;
    }
    readyKnown_.notify_all();
}

bool FrameWindow::WaitUntilReady() {
    if (!threads_ || !threads_->WaitForWindow()) return false;
    std::unique_lock lock(readyMutex_);
    readyKnown_.wait(lock, [this] { return rendererReady_ || rendererFailed_; });
    return rendererReady_;
}

void FrameWindow::PostToRenderThread(std::function<void()> closure) {
    state_.Closures.Post(std::move(closure));
}

void FrameWindow::Shutdown() {
    state_.FrameTickEvent.Close();
    PostToRenderThread([] {});
    if (const HWND window = Handle()) PostMessageW(window, WM_CLOSE, 0, 0);
    if (threads_) threads_->Stop();
    ReleaseOnce();
}

void FrameWindow::ReleaseOnce() {
    if (!closed_.exchange(true)) ReleaseWindowRef();
}

void FrameWindow::SetBackgroundRenderer(BackgroundRenderer* renderer) {
    PostToRenderThread([this, renderer] {
        if (renderSide_) renderSide_->SetBackground(renderer);
    });
}

std::shared_ptr<SceneNode> FrameWindow::ClientRoot() const {
    return renderSide_ ? renderSide_->ClientRoot() : nullptr;
}

SIZE FrameWindow::FrameSurfaceSize() const {
    return renderSide_ ? renderSide_->FrameSurfaceSize() : SIZE{};
}

std::uint64_t FrameWindow::AddEventListener(std::wstring name, EventListener listener) {
    return events_.AddListener(std::move(name), std::move(listener));
}

void FrameWindow::RemoveEventListener(std::uint64_t id) {
    events_.RemoveListener(id);
}

void FrameWindow::PostEvent(UiEvent event) {
    if (event.name.empty()) return;
    const HWND window = Handle();
    if (!event.window) event.window = window;
    if (event.timestampMicroseconds == 0) event.timestampMicroseconds = TimestampMicroseconds();
    events_.Append(std::move(event));
    if (window) PostMessageW(window, WM_APP_DISPATCH_EVENTS, 0, 0);
}

}  // namespace Tamborel
