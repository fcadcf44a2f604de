// When the next frame may start.
#pragma once

#include "Platform/Linux/Base/FileDescriptor.h"
#include "Platform/Linux/Base/Handle.h"

#include <chrono>

namespace Platform::Direct3D {

/// The object behind a swap chain's frame latency handle: signalled once at the start and then once for each frame that
/// was shown, one period after the last signal at the earliest. A wait takes the signal. A frame that comes late starts
/// the rhythm anew; a signal that nobody took stays and never doubles. Any thread.
class FramePacer final : public HandleObject {
public:
    using Clock = std::chrono::steady_clock;  // CLOCK_MONOTONIC, the timer's clock

    /// Throws std::system_error when the system has no descriptor left.
    FramePacer();

    int WaitDescriptor() const noexcept override { return timer_.Get(); }
    void OnWaited() noexcept override;

    /// A frame was shown: arms the next signal.
    void FrameShown() noexcept;
    void SetPeriod(std::chrono::nanoseconds period) noexcept;

    /// When the pending signal comes or has come. For tests.
    Clock::time_point NextSignal() const;

private:
    enum class State { Armed, Taken };
    void Arm(Clock::time_point now) noexcept;

    // Guarded by LockSignals().
    FileDescriptor timer_;
    State state_ = State::Armed;
    std::chrono::nanoseconds period_{1'000'000'000 / 60};
    Clock::time_point base_;  ///< The signal before the one that is armed or that comes next.
    Clock::time_point next_;
};

}  // namespace Platform::Direct3D
