#pragma once

#include <windows.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace Tamborel {

class FrameWindow;

/// The two threads of a window: one that owns the native window and its messages, one that draws. Used by the
/// application thread, where nothing else is said.
class WindowThreads {
public:
    explicit WindowThreads(FrameWindow& owner) : owner_(owner) {}
    ~WindowThreads() { Stop(); }
    WindowThreads(const WindowThreads&) = delete;
    WindowThreads& operator=(const WindowThreads&) = delete;

    /// Starts both threads. Throws std::system_error when a thread can't be started.
    void Start(HINSTANCE instance, int showCommand);

    /// Asks both threads to end and waits until they have. Does nothing more the second time. Throws std::system_error
    /// when called on one of the two.
    void Stop();

    /// Asks the render thread to end, and does not wait. Any thread.
    void RequestStop();

    /// Waits until the window exists or could not be created. Whether it exists. Any thread but the UI thread.
    bool WaitForWindow();

    /// Set once, when the threads are to end. Any thread.
    const std::atomic<bool>& StopRequested() const noexcept { return stopRequested_; }

    /// Auto-reset, signalled after StopRequested was set. Null before Start.
    HANDLE StopEvent() const noexcept { return stopEvent_; }

private:
    void UiThreadMain(HINSTANCE instance, int showCommand);
    void RunMessageLoop();
    void EndUiThread();
    void RenderThreadMain();

    FrameWindow& owner_;
    std::atomic<bool> running_{false};
    std::atomic<bool> stopRequested_{false};
    std::atomic<DWORD> uiThreadId_{0};      // zero when the thread has ended
    std::atomic<DWORD> renderThreadId_{0};  // zero when the thread has ended
    HANDLE stopEvent_ = nullptr;            // written before the threads start and after they have ended
    std::mutex mutex_;
    std::condition_variable windowKnown_;
    bool windowCreated_ = false;  // guarded by mutex_
    bool windowFailed_ = false;   // guarded by mutex_
    std::thread renderThread_;
    std::thread uiThread_;
};

}  // namespace Tamborel
