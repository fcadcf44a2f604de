#include "Platform/Linux/Direct3D/FramePacer.h"

#include <sys/timerfd.h>

#include <cerrno>
#include <system_error>

namespace Platform::Direct3D {

FramePacer::FramePacer() : timer_(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK)), rhythm_(Clock::now()) {
    if (!timer_) throw std::system_error(errno, std::generic_category());
    Arm();
}

void FramePacer::OnWaited() noexcept {
    std::uint64_t expirations = 0;
    static_cast<void>(read(timer_.Get(), &expirations, sizeof expirations));
    rhythm_.Taken(Clock::now());
}

void FramePacer::FrameShown() noexcept {
    const auto lock = LockSignals();
    if (rhythm_.FrameShown(Clock::now())) Arm();
}

void FramePacer::FrameGivenUp() noexcept {
    const auto lock = LockSignals();
    if (rhythm_.FrameGivenUp(Clock::now())) Arm();
}

void FramePacer::GivenUpFrameShown() noexcept {
    const auto lock = LockSignals();
    if (rhythm_.GivenUpFrameShown(Clock::now())) Arm();
}

bool FramePacer::IsOutdated() const noexcept {
    const auto lock = LockSignals();
    return rhythm_.IsOutdated();
}

void FramePacer::Hurry() noexcept {
    const auto lock = LockSignals();
    if (rhythm_.Hurry(Clock::now())) Arm();
}

void FramePacer::SetPeriod(std::chrono::nanoseconds period) noexcept {
    const auto lock = LockSignals();
    if (rhythm_.SetPeriod(period, Clock::now())) Arm();
}

FramePacer::Clock::time_point FramePacer::NextSignal() const {
    const auto lock = LockSignals();
    return rhythm_.Next();
}

void FramePacer::Arm() noexcept {
    const auto sinceStart =
        std::chrono::duration_cast<std::chrono::nanoseconds>(rhythm_.Next().time_since_epoch()).count();
    itimerspec when{};
    when.it_value.tv_sec = static_cast<time_t>(sinceStart / 1'000'000'000);
    when.it_value.tv_nsec = static_cast<long>(sinceStart % 1'000'000'000);
    timerfd_settime(timer_.Get(), TFD_TIMER_ABSTIME, &when, nullptr);
}

}  // namespace Platform::Direct3D
