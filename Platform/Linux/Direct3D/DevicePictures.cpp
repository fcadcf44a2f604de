// GraphicsDevice: the picture that is drawn when it is needed.
#include "Platform/Linux/Direct3D/Batch.h"
#include "Platform/Linux/Direct3D/Device.h"

#include <atomic>
#include <cstdio>
#include <utility>

namespace Platform::Direct3D {

namespace {

// The device has the next step while it works on one, so that it never waits for the program, and no more than that:
// otherwise nothing would be left to give up.
constexpr std::size_t stepsAhead = 2;

/// What is recorded belongs to the picture, as long as this lives.
class InStep {
public:
    explicit InStep(bool& isInStep) : isInStep_(isInStep) { isInStep_ = true; }
    ~InStep() { isInStep_ = false; }
    InStep(const InStep&) = delete;
    InStep& operator=(const InStep&) = delete;

private:
    bool& isInStep_;
};

}  // namespace

void GraphicsDevice::PutOff(UnfinishedPicture picture) {
    const auto lock = Lock();
    if (unfinished_.IsReplacedBy(picture)) {
        const InStep inStep(isInStep_);
        unfinished_.Skip();
    }
    FinishPicture();
    unfinished_ = std::move(picture);
}

void GraphicsDevice::BeginPicture() {
    const auto lock = Lock();
    // The last one is left, for what comes behind it to be put off too.
    while (unfinished_.StepsLeft() > 1 && unfinished_.DrawnSteps() < stepsAhead) HandOverStep();
}

bool GraphicsDevice::AddToPicture(const std::shared_ptr<Texture>& buffer, std::function<void()> draw) {
    const auto lock = Lock();
    if (isInStep_ || unfinished_.IsDone() || !unfinished_.IsOf(*buffer)) return false;
    unfinished_.AddDrawing([this, buffer, draw = std::move(draw)] {
        AwaitPixels(buffer);
        draw();
    });
    return true;
}

bool GraphicsDevice::IsPutOff(const Texture& buffer) {
    const auto lock = Lock();
    return !unfinished_.IsDone() && unfinished_.IsOf(buffer);
}

void GraphicsDevice::GiveUp(const Texture& buffer) {
    const auto lock = Lock();
    if (unfinished_.IsOf(buffer)) unfinished_.GiveUp();
}

void GraphicsDevice::FinishPicture() {
    Proceed(nullptr);
}

void GraphicsDevice::DropPicture() noexcept {
    const auto lock = Lock();
    // What its end sets off finds no picture any more.
    const UnfinishedPicture dropped = std::exchange(unfinished_, {});
}

bool GraphicsDevice::Proceed(const std::function<bool()>& isUnwanted) {
    const auto lock = Lock();
    if (isInStep_ || unfinished_.IsDone()) return true;
    while (!unfinished_.IsDone()) {
        if (isUnwanted && isUnwanted()) return false;
        Step();
    }
    DropPicture();
    return true;
}

void GraphicsDevice::Step() {
    const std::uint64_t before = batchNumber_;
    HandOverStep();
    if (batchNumber_ != before) batches_[(current_ + batches_.size() - stepsAhead) % batches_.size()]->Await();
}

void GraphicsDevice::HandOverStep() noexcept {
    const InStep inStep(isInStep_);
    try {
        unfinished_.Proceed();
        Flush();
    } catch (...) {
        static std::atomic_flag written;
        if (!written.test_and_set()) std::fputs("Direct3D: a part of a picture failed and was left out.\n", stderr);
    }
}

}  // namespace Platform::Direct3D
