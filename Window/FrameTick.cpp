#include "Window/FrameTick.h"

#include <utility>

namespace Tamborel {

void FrameTick::Open() {
    Close();
    const std::lock_guard lock(mutex_);
    event_ = CreateEventW(nullptr, FALSE, FALSE, nullptr);
}

void FrameTick::Close() {
    const std::lock_guard lock(mutex_);
    if (event_) CloseHandle(std::exchange(event_, nullptr));
}

void FrameTick::Signal() {
    const std::lock_guard lock(mutex_);
    if (event_) SetEvent(event_);
}

void FrameTick::Wait(DWORD milliseconds) {
    HANDLE event = nullptr;
    {
        const std::lock_guard lock(mutex_);
        event = event_;
    }
    // Not under the lock, which Signal needs. An event closed meanwhile ends the wait at the latest with its time.
    WaitForSingleObjectEx(event, milliseconds, FALSE);
}

}  // namespace Tamborel
