// The objects behind HANDLE values. For the folders of Platform/Linux only.
#pragma once

#include <windows.h>

#include <memory>
#include <mutex>

namespace Platform {

/// Base of what a HANDLE can stand for. An object lives until its last handle is closed and nobody uses it any more, so
/// closing a handle on one thread never pulls the object from under another.
class HandleObject {
public:
    HandleObject() = default;
    virtual ~HandleObject() = default;
    HandleObject(const HandleObject&) = delete;
    HandleObject& operator=(const HandleObject&) = delete;

    /// The descriptor that poll(2) reports as readable, or as hung up, exactly while the object is signalled. -1 for an
    /// object that can't be waited for. It must stay valid for the object's life.
    virtual int WaitDescriptor() const noexcept { return -1; }

    /// Called when a wait ends with this object. An object that resets itself takes its signal back here. Calls are
    /// serialised with each other and with LockSignals(), across all objects.
    virtual void OnWaited() noexcept {}

    /// The descriptor that carries the object into another process. -1 for an object that can't be passed on.
    virtual int PassedDescriptor() const noexcept { return -1; }
};

/// Holds back every change of a signal to "not signalled", so that a wait for several objects can look at all of them
/// and take them together. Setting a signal needs no lock. Leaf lock: nothing else is locked while it is held.
[[nodiscard]] std::unique_lock<std::mutex> LockSignals();

/// Whether a process start may pass a handle on.
enum class Inherit : bool { No, Yes };

/// Makes a handle for the object. Values are never used twice, so one that was closed stays invalid.
/// Null, and ERROR_NOT_ENOUGH_MEMORY, when there is no memory. Any thread.
HANDLE AddHandle(std::shared_ptr<HandleObject> object, Inherit inherit = Inherit::No) noexcept;

/// The object of an open handle; null, and ERROR_INVALID_HANDLE as the last error, for any other value. Any thread.
std::shared_ptr<HandleObject> FindHandleObject(HANDLE handle) noexcept;

/// The object of an open handle if it is a `T`; else null, and ERROR_INVALID_HANDLE as the last error.
template <class T>
std::shared_ptr<T> FindHandle(HANDLE handle) noexcept {
    std::shared_ptr<T> object = std::dynamic_pointer_cast<T>(FindHandleObject(handle));
    if (!object) SetLastError(ERROR_INVALID_HANDLE);
    return object;
}

/// Whether the handle was made inheritable. False for a value that is no open handle. Any thread.
bool IsInheritable(HANDLE handle) noexcept;

}  // namespace Platform
