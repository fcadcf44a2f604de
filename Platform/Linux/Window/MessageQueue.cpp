#include "Platform/Linux/Window/MessageQueue.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <map>
#include <system_error>
#include <utility>

namespace Platform {

namespace {

struct Queues {
    std::mutex mutex;
    std::map<DWORD, std::shared_ptr<MessageQueue>> byThread;  // guarded by mutex
};

Queues& AllQueues() {
    static Queues* const queues = new Queues;  // never destroyed: threads may end after the statics
    return *queues;
}

DWORD ThisThread() {
    return static_cast<DWORD>(::gettid());
}

/// A thread's share in its queue; ends with the thread.
struct ThreadsQueue {
    std::shared_ptr<MessageQueue> queue = std::make_shared<MessageQueue>();

    ThreadsQueue() {
        const std::lock_guard lock(AllQueues().mutex);
        AllQueues().byThread[ThisThread()] = queue;
    }
    ThreadsQueue(const ThreadsQueue&) = delete;
    ThreadsQueue& operator=(const ThreadsQueue&) = delete;
    ~ThreadsQueue() {
        {
            const std::lock_guard lock(AllQueues().mutex);
            AllQueues().byThread.erase(ThisThread());
        }
        queue->Close();
    }
};

}  // namespace

const std::shared_ptr<MessageQueue>& MessageQueue::OfThisThread() {
    thread_local const ThreadsQueue own;
    return own.queue;
}

std::shared_ptr<MessageQueue> MessageQueue::OfThread(DWORD thread) {
    const std::lock_guard lock(AllQueues().mutex);
    const auto found = AllQueues().byThread.find(thread);
    return found == AllQueues().byThread.end() ? nullptr : found->second;
}

MessageQueue::MessageQueue() : thread_(ThisThread()), wake_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (!wake_) throw std::system_error(errno, std::generic_category(), "eventfd");
}

bool MessageQueue::IsOfThisThread() const {
    return thread_ == ThisThread();
}

void MessageQueue::Wake() {
    eventfd_write(wake_.Get(), 1);  // fails only when the counter is full, and then the descriptor is readable anyway
}

bool MessageQueue::Post(const MSG& message) {
    const bool own = IsOfThisThread();
    {
        const std::lock_guard lock(mutex_);
        if (closed_) return false;
        posted_.push_back({message, own});
        if (own) ++ownCount_;
    }
    Wake();
    return true;
}

LRESULT MessageQueue::Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto sent = std::make_shared<Sent>();
    sent->message = {window, message, wParam, lParam, 0, {}};
    std::future<LRESULT> result = sent->result.get_future();
    {
        const std::lock_guard lock(mutex_);
        if (closed_) return 0;
        sent_.push_back(sent);
    }
    Wake();
    return result.get();
}

void MessageQueue::Quit(int exitCode) {
    const std::lock_guard lock(mutex_);
    quit_ = exitCode;
}

void MessageQueue::AnswerSent() {
    for (;;) {
        std::shared_ptr<Sent> next;
        {
            const std::lock_guard lock(mutex_);
            if (sent_.empty()) return;
            next = std::move(sent_.front());
            sent_.pop_front();
        }
        const MSG& message = next->message;
        next->result.set_value(CallProcedure(message.hwnd, message.message, message.wParam, message.lParam));
    }
}

std::optional<MSG> MessageQueue::Take() {
    eventfd_t count = 0;
    eventfd_read(wake_.Get(), &count);
    AnswerSent();
    const std::lock_guard lock(mutex_);
    if (!posted_.empty()) {
        const Posted next = posted_.front();
        posted_.pop_front();
        if (next.own) --ownCount_;
        return next.message;
    }
    if (!quit_) return std::nullopt;
    const int exitCode = *std::exchange(quit_, std::nullopt);
    return MSG{nullptr, WM_QUIT, static_cast<WPARAM>(exitCode), 0, 0, {}};
}

bool MessageQueue::HasOwn() {
    const std::lock_guard lock(mutex_);
    return ownCount_ > 0 || quit_;
}

void MessageQueue::Close() {
    std::deque<std::shared_ptr<Sent>> unanswered;
    {
        const std::lock_guard lock(mutex_);
        closed_ = true;
        unanswered.swap(sent_);
    }
    for (const auto& sent : unanswered) sent->result.set_value(0);
}

}  // namespace Platform
