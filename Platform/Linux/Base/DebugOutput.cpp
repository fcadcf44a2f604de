#include "Platform/Linux/Base/DebugOutput.h"

#include <debugapi.h>

#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <ctime>

namespace Platform {

namespace {

std::atomic<DebugOutput> output = nullptr;

/// Keeps a write to a pipe that nobody reads from ending the process, as nobody reading the debug stream ends none.
class WithoutPipeSignal {
public:
    WithoutPipeSignal() {
        sigemptyset(&pipe_);
        sigaddset(&pipe_, SIGPIPE);
        sigset_t pending{};
        sigpending(&pending);
        wasPending_ = sigismember(&pending, SIGPIPE) == 1;
        pthread_sigmask(SIG_BLOCK, &pipe_, &before_);
    }
    ~WithoutPipeSignal() {
        static constexpr timespec now{};
        // SIGPIPE goes to the thread that wrote: the one that came in between is taken away before it is let through.
        if (!wasPending_) {
            while (sigtimedwait(&pipe_, nullptr, &now) < 0 && errno == EINTR) continue;
        }
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }
    WithoutPipeSignal(const WithoutPipeSignal&) = delete;
    WithoutPipeSignal& operator=(const WithoutPipeSignal&) = delete;

private:
    sigset_t pipe_{};
    sigset_t before_{};
    bool wasPending_ = false;
};

}  // namespace

void SetDebugOutput(DebugOutput newOutput) noexcept {
    output.store(newOutput, std::memory_order_release);
}

}  // namespace Platform

void OutputDebugStringA(LPCSTR text) noexcept {
    if (!text) return;
    if (const Platform::DebugOutput output = Platform::output.load(std::memory_order_acquire)) {
        output(text);
        return;
    }
    const int error = errno;
    {
        const Platform::WithoutPipeSignal guard;
        std::size_t left = std::strlen(text);
        while (left > 0) {
            const ssize_t written = write(STDERR_FILENO, text, left);
            if (written < 0 && errno == EINTR) continue;
            if (written < 0) break;
            text += written;
            left -= static_cast<std::size_t>(written);
        }
    }
    errno = error;
}
