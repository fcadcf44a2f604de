#pragma once

#include "Window/AppWindow.h"
#include "Window/RenderSide.h"
#include "Window/UiEventBus.h"
#include "Window/WindowState.h"
#include "Window/WindowThreads.h"

#include <windows.h>

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

namespace Tamborel {

/// A window with a frame and caption of its own, on two threads of its own: a UI thread with the native window and its
/// messages, and a render thread with the devices and the scene. The application's thread calls Create, WaitUntilReady
/// and Shutdown, in this order, and Shutdown before the destructor.
///
/// The scene belongs to the render thread. The application reaches it through closures, and input through a ring.
class FrameWindow : public AppWindow {
public:
    using EventListener = UiEventBus::Listener;

    FrameWindow();
    ~FrameWindow() override;

    /// Starts the threads that make the window. Always true: whether it worked out is WaitUntilReady's to say. Throws
    /// std::system_error when a thread can't be started. Application thread.
    bool Create(HINSTANCE instance, int showCommand, const WindowConfig& config);

    /// Waits until the render thread has finished its set-up. False when the window or the devices could not be had.
    /// Application thread.
    bool WaitUntilReady();

    /// Has the render thread run `closure` at the top of its next frame, which then redraws all. Any thread. An empty
    /// closure ends the program.
    void PostToRenderThread(std::function<void()> closure);

    /// Closes the window and joins its threads. Harmless when the user has closed it already. Application thread.
    void Shutdown();

    /// Sets what is drawn behind the scene, null for the toolkit's own. Not owned: it has to outlive the window. Any
    /// thread; takes effect with the closures.
    void SetBackgroundRenderer(BackgroundRenderer* renderer);

    /// Any thread.
    void SetTitle(std::wstring title);

    /// Replaces this window's overlay on the default theme. Any thread.
    void SetChromeTheme(const ChromeTheme& theme);

    /// Shows an image in the title bar, null for none. Any thread.
    void SetTitleImage(std::shared_ptr<ImageAsset> image);

    /// Calls `listener` on the UI thread for each event of this name. The id for RemoveEventListener, 0 when name or
    /// function is empty. Any thread.
    std::uint64_t AddEventListener(std::wstring name, EventListener listener);
    void RemoveEventListener(std::uint64_t id);

    /// Sends an event to the listeners. One without a name is dropped. Any thread.
    void PostEvent(UiEvent event);

    /// Root of the scene. Within closures on the render thread only; null when there is no render thread.
    std::shared_ptr<SceneNode> ClientRoot() const;

    /// Size in pixels of the surface that covers the whole window, 0 by 0 while there is none. Render thread: within
    /// closures and within the nodes' own operations.
    SIZE FrameSurfaceSize() const;

    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

protected:
    // Tests look at what the two threads share, and answer messages without starting either.
    WindowState& State() noexcept { return state_; }
    void ApplyConfig(const WindowConfig& config);

private:
    friend class WindowThreads;

    enum class CapturedButton : bool { NonClient, Client };

    // Threads: FrameWindow.cpp.
    bool CreateOnUiThread(HINSTANCE instance, int showCommand);
    void RunOnRenderThread();
    void StopEarlierWindow();
    void ReportReady(bool ready);
    void ReleaseOnce();

    // Theme: FrameWindowTheme.cpp.
    ChromeTheme ReplaceThemeOverride(std::optional<ChromeTheme> overlay);
    void DeriveMetricsLocked();

    // Life and focus: FrameWindowMessages.cpp.
    LRESULT HandleLifeMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void OnClose();
    void OnDestroy();
    void OnNcDestroy();

    // Size and position: FrameWindowGeometry.cpp.
    LRESULT HandleGeometryMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnNcCalcSize(WPARAM wParam, LPARAM lParam);
    void OnSize(WPARAM wParam, LPARAM lParam);
    void OnEnterSizeMove();
    void OnExitSizeMove();
    void OnGetMinMaxInfo(MINMAXINFO& info);
    void OnDpiChanged(LPARAM lParam);
    void PublishGeometry(const WindowGeometry& geometry);
    void WaitForNextFrame();
    WindowGeometry MeasuredGeometry(std::int32_t clientWidth, std::int32_t clientHeight) const;
    float DpiScale() const;

    // Caption: FrameWindowCaption.cpp.
    LRESULT HandleCaptionMessage(UINT message, WPARAM wParam, LPARAM lParam);
    int HitTestScreenPoint(POINT screenPoint) const;
    void ArmTracking();
    void OnPointerLeft();
    LRESULT OnNcButtonDown(UINT message, WPARAM wParam, LPARAM lParam);
    bool EndPress(POINT screenPoint, LPARAM lParam, CapturedButton button);

    // Input to the scene: FrameWindowInput.cpp.
    LRESULT HandleInputMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void OnMouseMove(WPARAM wParam, LPARAM lParam);
    void QueueMouseEvent(UINT message, WPARAM wParam, LPARAM lParam);
    void QueueKeyEvent(UINT message, WPARAM wParam, LPARAM lParam);
    void QueuePlainEvent(InputEventKind kind);

    WindowState state_;
    UiEventBus events_;
    bool tracking_ = false;             // UI thread: TrackMouseEvent is armed
    RenderSide* renderSide_ = nullptr;  // render thread
    std::atomic<bool> closed_{false};   // the window count has been released
    std::mutex configMutex_;            // guards config_ from Create on
    std::mutex readyMutex_;
    std::condition_variable readyKnown_;
    bool rendererReady_ = false;   // guarded by readyMutex_
    bool rendererFailed_ = false;  // guarded by readyMutex_
    std::unique_ptr<WindowThreads> threads_;
};

}  // namespace Tamborel
