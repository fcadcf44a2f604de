#include "Window/WindowThreads.h"

#include "Window/FrameWindow.h"
#include "Window/Messages.h"

#include <objbase.h>

#include <utility>

namespace Tamborel {

void WindowThreads::Start(HINSTANCE instance, int showCommand) {
    running_ = true;
    stopRequested_ = false;
    stopEvent_ = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    renderThread_ = std::thread([this] { RenderThreadMain(); });
    uiThread_ = std::thread([this, instance, showCommand] { UiThreadMain(instance, showCommand); });
}

void WindowThreads::RequestStop() {
    stopRequested_ = true;
    SetEvent(stopEvent_);
}

void WindowThreads::Stop() {
    if (running_) {
        RequestStop();
        if (const DWORD id = uiThreadId_) PostThreadMessageW(id, WM_APP_THREAD_QUIT, 0, 0);
    }
    // Threads that ended by themselves, as after a failed creation, are joined all the same.
    if (uiThread_.joinable()) uiThread_.join();
    if (renderThread_.joinable()) renderThread_.join();
    if (stopEvent_) CloseHandle(std::exchange(stopEvent_, nullptr));
    running_ = false;
}

bool WindowThreads::WaitForWindow() {
    std::unique_lock lock(mutex_);
    windowKnown_.wait(lock, [this] { return windowCreated_ || windowFailed_; });
    return !windowFailed_;
}

void WindowThreads::UiThreadMain(HINSTANCE instance, int showCommand) {
    uiThreadId_ = GetCurrentThreadId();
    static_cast<void>(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE));
    const bool created = owner_.CreateOnUiThread(instance, showCommand);
    {
        const std::lock_guard lock(mutex_);
        windowCreated_ = created;
        windowFailed_ = !created;
    }
    windowKnown_.notify_all();
    if (created) {
        RunMessageLoop();
        EndUiThread();
    } else {
        EndUiThread();
        running_ = false;
    }
}

void WindowThreads::EndUiThread() {
    CoUninitialize();
    uiThreadId_ = 0;
}

void WindowThreads::RunMessageLoop() {
    const auto endWindow = [this] {
        const HWND window = owner_.Handle();
        if (!window || !IsWindow(window)) {
            PostQuitMessage(0);
        } else {
            DestroyWindow(window);
        }
    };

    // A stop that came before this thread had an id or a queue had nowhere to post its message to.
    if (stopRequested_) endWindow();

    MSG message{};
    for (;;) {
        const BOOL result = GetMessageW(&message, nullptr, 0, 0);
        if (result == 0 || result == -1) return;
        if (!message.hwnd && message.message == WM_APP_THREAD_QUIT) {
            endWindow();
            continue;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

void WindowThreads::RenderThreadMain() {
    renderThreadId_ = GetCurrentThreadId();
    if (WaitForWindow()) owner_.RunOnRenderThread();
    renderThreadId_ = 0;
}

}  // namespace Tamborel
