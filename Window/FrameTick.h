#pragma once

#include <windows.h>

#include <mutex>

namespace Tamborel {

/// The auto-reset event by which the render thread tells the UI thread that a frame of a size loop is finished. Closing
/// it on a third thread never pulls the handle from under a Signal.
class FrameTick {
public:
    FrameTick() = default;
    ~FrameTick() { Close(); }
    FrameTick(const FrameTick&) = delete;
    FrameTick& operator=(const FrameTick&) = delete;

    /// Makes the event anew, not signalled.
    void Open();

    /// Closes the event; after that Signal does nothing and Wait returns at once.
    void Close();

    /// Render thread, after it has counted a frame.
    void Signal();

    /// UI thread. Returns when signalled or after `milliseconds`, whichever comes first.
    void Wait(DWORD milliseconds);

private:
    std::mutex mutex_;
    HANDLE event_ = nullptr;  // guarded by mutex_
};

}  // namespace Tamborel
