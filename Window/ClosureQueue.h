#pragma once

#include <functional>
#include <mutex>
#include <vector>

namespace Tamborel {

/// Work that any thread hands to the render thread, which runs it in the order of posting at the top of a frame.
class ClosureQueue {
public:
    using Closure = std::function<void()>;

    /// Any thread. Wakes nobody: the render thread looks at least every 16 milliseconds. An empty closure ends the
    /// program when it is run.
    void Post(Closure closure);

    /// Render thread: runs what has been posted so far, then destroys it. What a closure posts waits for the next call.
    /// Whether there was any.
    bool RunPending();

private:
    std::mutex mutex_;
    std::vector<Closure> pending_;  // guarded by mutex_
    std::vector<Closure> running_;  // render thread; empty between calls
};

}  // namespace Tamborel
