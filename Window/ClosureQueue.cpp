#include "Window/ClosureQueue.h"

#include <utility>

namespace Tamborel {

void ClosureQueue::Post(Closure closure) {
    const std::lock_guard lock(mutex_);
    pending_.push_back(std::move(closure));
}

bool ClosureQueue::RunPending() {
    {
        const std::lock_guard lock(mutex_);
        pending_.swap(running_);
    }
    if (running_.empty()) return false;
    for (const Closure& each : running_) each();
    running_.clear();  // keeps the capacity for the turns to come
    return true;
}

}  // namespace Tamborel
