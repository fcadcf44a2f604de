#include "Platform/Linux/Direct3D/FramePacer.h"

#include <sys/timerfd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace Platform::Direct3D {

FramePacer::FramePacer() : timer_(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK)) {
    if (!timer_) throw std::system_error(errno, std::generic_category());
    const auto now = Clock::now();
    base_ = now - period_;
    Arm(now);
}

void FramePacer::OnWaited() noexcept {
    std::uint64_t expirations = 0;
    static_cast<void>(read(timer_.Get(), &expirations, sizeof expirations));
    state_ = State::Taken;
    // A signal taken in time keeps the rhythm exact; one that lay there for long says nothing about it.
    const auto now = Clock::now();
    base_ = now - next_ < period_ ? next_ : now;
}

void FramePacer::FrameShown() noexcept {
    const auto lock = LockSignals();
    if (state_ == State::Armed) return;
    state_ = State::Armed;
    Arm(Clock::now());
}

void FramePacer::SetPeriod(std::chrono::nanoseconds period) noexcept {
    const auto lock = LockSignals();
    period_ = period;
    const auto now = Clock::now();
    if (state_ == State::Armed && now < next_ && base_ + period < next_) Arm(now);
}

FramePacer::Clock::time_point FramePacer::NextSignal() const {
    const auto lock = LockSignals();
    return next_;
}

void FramePacer::Arm(Clock::time_point now) noexcept {
    next_ = std::max(now, base_ + period_);
    const auto sinceStart = std::chrono::duration_cast<std::chrono::nanoseconds>(next_.time_since_epoch()).count();
    itimerspec when{};
    when.it_value.tv_sec = static_cast<time_t>(sinceStart / 1'000'000'000);
    when.it_value.tv_nsec = static_cast<long>(sinceStart % 1'000'000'000);
    timerfd_settime(timer_.Get(), TFD_TIMER_ABSTIME, &when, nullptr);
}

}  // namespace Platform::Direct3D
