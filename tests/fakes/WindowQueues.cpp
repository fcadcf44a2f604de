// Message queues: one a thread, made when the thread first asks for a message or makes a window.
#include "tests/fakes/WindowSystem.h"

namespace Fakes {

int WindowSystem::Next(MSG& message) {
    std::unique_lock lock(mutex_);
    calls_.emplace_back("GetMessageW");
    Queue& queue = queues_[GetCurrentThreadId()];
    while (queue.messages.empty() && !queue.quit && !settings_.getMessageFails) changed_.wait(lock);
    message = {};
    if (settings_.getMessageFails) return -1;
    // As in the original, what was posted goes before the end of the loop.
    if (queue.messages.empty()) {
        queue.quit = false;
        message.message = WM_QUIT;
        return 0;
    }
    message = queue.messages.front();
    queue.messages.pop_front();
    return 1;
}

bool WindowSystem::Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const std::lock_guard lock(mutex_);
    calls_.emplace_back("PostMessageW");
    posted_.push_back({window, 0, message, wParam, lParam});
    const auto found = windows_.find(window);
    if (found == windows_.end()) return false;
    queues_[found->second.thread].messages.push_back({window, message, wParam, lParam, 0, {}});
    changed_.notify_all();
    return true;
}

bool WindowSystem::PostToThread(DWORD thread, UINT message, WPARAM wParam, LPARAM lParam) {
    const std::lock_guard lock(mutex_);
    calls_.emplace_back("PostThreadMessageW");
    posted_.push_back({nullptr, thread, message, wParam, lParam});
    const auto found = queues_.find(thread);
    if (found == queues_.end()) return false;
    found->second.messages.push_back({nullptr, message, wParam, lParam, 0, {}});
    changed_.notify_all();
    return true;
}

LRESULT WindowSystem::Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    {
        const std::lock_guard lock(mutex_);
        calls_.emplace_back("SendMessageW");
        sent_.push_back({window, 0, message, wParam, lParam});
    }
    return Call(window, message, wParam, lParam);
}

void WindowSystem::PostQuit() {
    const std::lock_guard lock(mutex_);
    calls_.emplace_back("PostQuitMessage");
    queues_[GetCurrentThreadId()].quit = true;
    changed_.notify_all();
}

}  // namespace Fakes
