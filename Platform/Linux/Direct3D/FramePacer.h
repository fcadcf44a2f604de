// When the next frame may start.
#pragma once

#include "Platform/Linux/Base/FileDescriptor.h"
#include "Platform/Linux/Base/Handle.h"
#include "Platform/Linux/Direct3D/FrameRhythm.h"

#include <chrono>

namespace Platform::Direct3D {

/// The object behind a swap chain's frame latency handle, signalled in a FrameRhythm. A wait takes the signal. Any
/// thread.
class FramePacer final : public HandleObject {
public:
    using Clock = std::chrono::steady_clock;  // CLOCK_MONOTONIC, the timer's clock

    /// Throws std::system_error when the system has no descriptor left.
    FramePacer();

    int WaitDescriptor() const noexcept override { return timer_.Get(); }
    void OnWaited() noexcept override;

    /// A frame was shown: arms the next signal.
    void FrameShown() noexcept;
    /// It was given up: signals at once.
    void FrameGivenUp() noexcept;
    /// It was shown all the same.
    void GivenUpFrameShown() noexcept;
    /// Whether the frame that is being drawn had better be given up, as FrameRhythm tells.
    bool IsOutdated() const noexcept;
    /// Input has come that the next two frames answer.
    void Hurry() noexcept;
    void SetPeriod(std::chrono::nanoseconds period) noexcept;

    /// When the pending signal comes or has come. For tests.
    Clock::time_point NextSignal() const;

private:
    void Arm() noexcept;

    // Guarded by LockSignals().
    FileDescriptor timer_;
    FrameRhythm rhythm_;
};

}  // namespace Platform::Direct3D
