// When frames may start: the reckoning behind a FramePacer, without a clock of its own.
#pragma once

#include <chrono>

namespace Platform::Direct3D {

/// A signal opens each frame; the next one comes when the frame was shown, one period after the last at the earliest. A
/// frame that comes late starts the rhythm anew, and a signal that nobody takes stays and never doubles.
///
/// After input the next two signals don't wait for the rest of their period: an answer takes two frames, one in which
/// the input is handled and one that shows what came of it. So that input without end makes no more frames than the
/// display shows, every signal keeps its place in the rhythm, and none comes more than two periods ahead of it. What
/// came early is made up for by the signals after: they are a quarter of a period late until the rhythm has caught up.
///
/// Of those two frames only the second shows anything new. The first, and the one that was being drawn when the input
/// came, are outdated: where drawing takes long they may be given up, and the next signal comes at once then. The
/// second never is outdated, whatever comes meanwhile, so that input without end doesn't stop the picture.
///
/// Not for several threads at once. Moments that are passed in never go back.
class FrameRhythm {
public:
    using Moment = std::chrono::steady_clock::time_point;

    /// The first signal is there at once.
    explicit FrameRhythm(Moment now);

    /// The signal that came has been taken: a frame begins.
    void Taken(Moment now) noexcept;
    /// A frame was shown. False if the next signal is pending already.
    bool FrameShown(Moment now) noexcept;
    /// The frame was given up, for the next one to come at once in its place. False if the next signal is pending
    /// already.
    bool FrameGivenUp(Moment now) noexcept;
    /// It was shown all the same. True if the pending signal comes at another time now.
    bool GivenUpFrameShown(Moment now) noexcept;
    /// Whether the frame that is being drawn shows nothing of input that has come, while a later one will. Never of a
    /// frame that didn't begin with a signal: nobody knows what comes after that.
    bool IsOutdated() const noexcept { return state_ == State::Taken && toAnswer_ > 0 && !isAnswer_; }
    /// Input has come. True if the pending signal comes sooner now.
    bool Hurry(Moment now) noexcept;
    /// 1/60 s at first. What came early is forgiven, and nothing is in a hurry any more. True if the pending signal
    /// comes sooner now.
    bool SetPeriod(std::chrono::nanoseconds period, Moment now) noexcept;

    /// When the pending signal comes or has come; when the last one did, while a frame is being drawn.
    Moment Next() const noexcept { return next_; }

private:
    Moment Earliest(Moment now) const noexcept;
    bool BringForward(Moment now) noexcept;

    enum class State { Pending, Taken };
    State state_ = State::Pending;
    std::chrono::nanoseconds period_{1'000'000'000 / 60};
    int hurried_ = 0;        ///< How many of the next signals are in a hurry.
    int toAnswer_ = 0;       ///< How many signals from now the answer to the oldest input comes; 0 without any.
    bool isAnswer_ = false;  ///< Of the frame that is being drawn.
    Moment base_;            ///< The last signal's place in the rhythm, ahead of `last_` if it came early.
    Moment last_;            ///< When it came.
    Moment place_;           ///< The same of the pending one.
    Moment next_;
};

}  // namespace Platform::Direct3D
