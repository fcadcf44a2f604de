#include "Platform/Linux/Base/Errors.h"
#include "Platform/Linux/Base/FileDescriptor.h"
#include "Platform/Linux/Base/Handle.h"

#include <sys/eventfd.h>

#include <atomic>
#include <new>
#include <utility>

namespace Platform {

namespace {

enum class AfterWait : bool { StaysSet, Resets };

/// An event is set while the counter of its eventfd is not zero.
class EventObject : public HandleObject {
public:
    EventObject(FileDescriptor counter, AfterWait afterWait) : counter_(std::move(counter)), afterWait_(afterWait) {}

    int WaitDescriptor() const noexcept override { return counter_.Get(); }

    void OnWaited() noexcept override {
        if (afterWait_ == AfterWait::Resets) Clear();
        static_cast<void>(sets_.load(std::memory_order_acquire));  // pairs with Set
    }

    void Set() noexcept {
        // A wait that sees the descriptor readable sees all that the setter did before. The kernel orders it so in
        // fact; this says it in the language's terms.
        sets_.fetch_add(1, std::memory_order_release);
        // Fails only when the counter is at its end, and then the event is set anyway.
        eventfd_write(counter_.Get(), 1);
    }

    /// With the signals locked.
    void Clear() noexcept {
        eventfd_t value = 0;
        eventfd_read(counter_.Get(), &value);  // without blocking: EAGAIN when the event wasn't set
    }

private:
    const FileDescriptor counter_;
    const AfterWait afterWait_;
    std::atomic<unsigned> sets_{0};
};

}  // namespace

}  // namespace Platform

HANDLE CreateEventW(LPSECURITY_ATTRIBUTES, BOOL manualReset, BOOL initialState, LPCWSTR name) noexcept try {
    if (name) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    Platform::FileDescriptor counter(eventfd(initialState ? 1 : 0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (!counter) {
        Platform::SetLastErrorFromErrno();
        return nullptr;
    }
    const auto afterWait = manualReset ? Platform::AfterWait::StaysSet : Platform::AfterWait::Resets;
    return Platform::AddHandle(std::make_shared<Platform::EventObject>(std::move(counter), afterWait));
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

BOOL SetEvent(HANDLE event) noexcept {
    const auto object = Platform::FindHandle<Platform::EventObject>(event);
    if (!object) return FALSE;
    object->Set();
    return TRUE;
}

BOOL ResetEvent(HANDLE event) noexcept {
    const auto object = Platform::FindHandle<Platform::EventObject>(event);
    if (!object) return FALSE;
    const auto lock = Platform::LockSignals();
    object->Clear();
    return TRUE;
}
