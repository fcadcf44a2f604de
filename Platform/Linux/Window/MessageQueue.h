// The messages that wait for a thread.
#pragma once

#include "Platform/Linux/Base/FileDescriptor.h"

#include <windows.h>

#include <cstddef>
#include <deque>
#include <future>
#include <memory>
#include <mutex>
#include <optional>

namespace Platform {

/// One thread's queue. Other threads post and send to it; only its own thread takes from it.
class MessageQueue {
public:
    /// The calling thread's queue, made at its first use and closed when the thread ends.
    static const std::shared_ptr<MessageQueue>& OfThisThread();
    /// Null for a thread that has no queue.
    static std::shared_ptr<MessageQueue> OfThread(DWORD thread);

    MessageQueue();
    MessageQueue(const MessageQueue&) = delete;
    MessageQueue& operator=(const MessageQueue&) = delete;

    /// False once the thread has ended. Any thread.
    bool Post(const MSG& message);
    /// Waits until the queue's thread has handled the message; 0 if it ends before. Any other thread.
    LRESULT Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    /// Readable after a post or a send, until the next Take().
    int Descriptor() const { return wake_.Get(); }

    void Quit(int exitCode);
    /// Runs what other threads have sent, then takes the next posted message; when there is none and Quit() was called,
    /// WM_QUIT, once.
    std::optional<MSG> Take();
    /// Whether a message of the thread's own, or WM_QUIT, waits to be taken.
    bool HasOwn();
    bool IsOfThisThread() const;
    void Close();

private:
    struct Posted {
        MSG message;
        bool own;  // posted by the queue's thread itself
    };
    struct Sent {
        MSG message;
        std::promise<LRESULT> result;
    };

    void AnswerSent();
    void Wake();

    const DWORD thread_;
    FileDescriptor wake_;
    std::mutex mutex_;
    std::deque<Posted> posted_;  // guarded by mutex_, as all below
    std::size_t ownCount_ = 0;   // how many of them are own
    std::deque<std::shared_ptr<Sent>> sent_;
    std::optional<int> quit_;
    bool closed_ = false;
};

/// Calls the window's procedure on the calling thread, which is the window's. 0 for no window.
LRESULT CallProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace Platform
