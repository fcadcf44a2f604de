// Work that can wait as long as its thread has something better to do.
#pragma once

#include <functional>

namespace Platform {

class HandleObject;

/// Something that a thread has put off. It is done when that thread is about to sleep in one of the wait functions for
/// handles, unless the sleep may end with the object that makes the work needless. A wait that only looks doesn't
/// sleep. Made, done and destroyed on one thread.
class PutOffWork {
public:
    /// `needlessWith` is compared and never used; null for work that has to be done in any case. `work` may destroy
    /// this object.
    PutOffWork(const HandleObject* needlessWith, std::function<void()> work);
    /// Work that wasn't done is forgotten.
    ~PutOffWork();
    PutOffWork(const PutOffWork&) = delete;
    PutOffWork& operator=(const PutOffWork&) = delete;

    /// Does what the calling thread has put off, but for what is needless with an object that `isWaitedFor`. False if
    /// there was nothing to do. For the wait functions.
    static bool DoBeforeSleep(const std::function<bool(const HandleObject*)>& isWaitedFor);

private:
    const HandleObject* needlessWith_;
    std::function<void()> work_;
};

}  // namespace Platform
