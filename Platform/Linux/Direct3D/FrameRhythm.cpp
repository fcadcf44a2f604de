#include "Platform/Linux/Direct3D/FrameRhythm.h"

#include <algorithm>

namespace Platform::Direct3D {

namespace {

constexpr int answerFrames = 2;
constexpr int mostAhead = 2;  // periods

}  // namespace

FrameRhythm::FrameRhythm(Moment now) : base_(now - period_), last_(base_), place_(now), next_(now) {}

void FrameRhythm::Taken(Moment now) noexcept {
    state_ = State::Taken;
    if (hurried_ > 0) --hurried_;
    isAnswer_ = toAnswer_ > 0 && --toAnswer_ == 0;
    // A signal taken in time keeps the rhythm exact; one that lay there for long says nothing about it.
    base_ = now - place_ < period_ ? place_ : now;
    last_ = now - next_ < period_ ? next_ : now;
}

bool FrameRhythm::FrameShown(Moment now) noexcept {
    if (state_ == State::Pending) return false;
    state_ = State::Pending;
    place_ = std::max(now, base_ + period_);
    next_ = Earliest(now);
    return true;
}

bool FrameRhythm::FrameGivenUp(Moment now) noexcept {
    if (state_ == State::Pending) return false;
    state_ = State::Pending;
    place_ = base_;
    next_ = now;
    return true;
}

bool FrameRhythm::GivenUpFrameShown(Moment now) noexcept {
    if (state_ == State::Taken) return false;
    place_ = std::max(now, base_ + period_);
    next_ = Earliest(now);
    return true;
}

bool FrameRhythm::Hurry(Moment now) noexcept {
    hurried_ = answerFrames;
    if (toAnswer_ == 0) toAnswer_ = answerFrames;
    return BringForward(now);
}

bool FrameRhythm::SetPeriod(std::chrono::nanoseconds period, Moment now) noexcept {
    if (period == period_) return false;
    period_ = period;
    hurried_ = 0;
    toAnswer_ = 0;
    base_ = std::min(base_, last_);
    if (state_ == State::Taken || next_ <= now || base_ + period >= place_) return false;
    place_ = std::max(now, base_ + period);
    return BringForward(now);
}

FrameRhythm::Moment FrameRhythm::Earliest(Moment now) const noexcept {
    const Moment soonest = hurried_ > 0 ? place_ - mostAhead * period_ : last_ + period_ + period_ / 4;
    return std::max(now, std::min(place_, soonest));
}

bool FrameRhythm::BringForward(Moment now) noexcept {
    if (state_ == State::Taken || next_ <= now) return false;
    const Moment sooner = Earliest(now);
    if (sooner >= next_) return false;
    next_ = sooner;
    return true;
}

}  // namespace Platform::Direct3D
