#include "Platform/Linux/Direct3D/UnfinishedPicture.h"

namespace Platform::Direct3D {

void UnfinishedPicture::Proceed() {
    // A step is over even if it fails.
    const Step step = std::move(steps_.front());
    steps_.pop_front();
    if (step.isDrawing) ++drawnSteps_;
    step.function();
}

bool UnfinishedPicture::IsReplacedBy(const UnfinishedPicture& next) const {
    return isGivenUp_ && buffer_ != next.buffer_ && drawings_ == next.drawings_;
}

void UnfinishedPicture::Skip() {
    while (!steps_.empty()) {
        if (steps_.front().isDrawing) {
            buffer_->SetIncomplete(true);
            steps_.pop_front();
        } else {
            Proceed();
        }
    }
}

}  // namespace Platform::Direct3D
