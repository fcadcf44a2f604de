#include "Platform/Linux/Direct3D/UnfinishedPicture.h"

#include <utility>

namespace Platform::Direct3D {

void UnfinishedPicture::Proceed() {
    // A step is over even if it failed.
    Step& step = steps_[next_++];
    if (step.isDrawing) ++drawnSteps_;
    const Function function = std::move(step.function);
    function();
}

bool UnfinishedPicture::IsReplacedBy(const UnfinishedPicture& next) const {
    return isGivenUp_ && buffer_ != next.buffer_ && drawings_ == next.drawings_;
}

void UnfinishedPicture::Skip() {
    while (!IsDone()) {
        if (steps_[next_].isDrawing) {
            ++next_;
        } else {
            Proceed();
        }
    }
}

}  // namespace Platform::Direct3D
