#include "Core/Toolkit.h"

#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace Tamborel {

namespace {

// Leaf lock: nothing else is locked while it is held.
std::mutex mutex;
std::condition_variable changed;
std::int32_t windows = 0;  // guarded by mutex

}  // namespace

void AddWindowRef() {
    const std::lock_guard lock(mutex);
    ++windows;
}

void ReleaseWindowRef() {
    {
        const std::lock_guard lock(mutex);
        --windows;
    }
    changed.notify_all();
}

void WaitForWindows() {
    std::unique_lock lock(mutex);
    changed.wait(lock, [] { return windows <= 0; });
}

}  // namespace Tamborel
