// A thread made before it is needed.
#pragma once

#include <functional>

namespace Platform {

/// While the linker loads a library it makes no thread: glibc's lock for that is held until all of the library is
/// relocated, which takes a driver's compiler as long as all else that a program's start does. Whoever is about to have
/// such a library loaded keeps a thread for what comes meanwhile.
class SpareThread {
public:
    /// Makes a thread that waits for work, and ends without any after a while. One is enough: with one waiting, does
    /// nothing. Without a thread to be had there is none. Any thread.
    static void Keep() noexcept;

    /// Has `work` done on that thread. False when none is waiting; `work` is not taken then. It may not throw, and
    /// somebody must wait for its end before the process ends. Any thread.
    static bool Hand(std::function<void()>& work);
};

}  // namespace Platform
