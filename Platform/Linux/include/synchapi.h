// Events and waits. A wait is one poll(2) over the objects' file descriptors. Implemented in Platform/Linux/Base.
#pragma once

#include <minwinbase.h>

constexpr DWORD WAIT_OBJECT_0 = 0;
constexpr DWORD WAIT_IO_COMPLETION = 0xC0;
constexpr DWORD WAIT_TIMEOUT = 258;
constexpr DWORD WAIT_FAILED = 0xFFFFFFFF;
constexpr DWORD INFINITE = 0xFFFFFFFF;
constexpr DWORD MAXIMUM_WAIT_OBJECTS = 64;

/// An event. With `manualReset` false a wait that is satisfied by it resets it. `name` must be null: events are private
/// to the process. Null on failure. Any thread.
HANDLE CreateEventW(LPSECURITY_ATTRIBUTES attributes, BOOL manualReset, BOOL initialState, LPCWSTR name) noexcept;
BOOL SetEvent(HANDLE event) noexcept;
BOOL ResetEvent(HANDLE event) noexcept;

/// Waits up to `milliseconds` (INFINITE for ever) until the object is signalled: an event that is set, a process that
/// has ended. WAIT_OBJECT_0, WAIT_TIMEOUT or WAIT_FAILED.
DWORD WaitForSingleObject(HANDLE object, DWORD milliseconds) noexcept;
DWORD WaitForSingleObjectEx(HANDLE object, DWORD milliseconds, BOOL alertable) noexcept;

/// Waits for one (`waitAll` false) or for all of up to 64 objects. With `waitAll` false the result is WAIT_OBJECT_0
/// plus the lowest index that is signalled, and only that object is reset. `alertable` has no effect: nothing here
/// queues user-mode calls.
DWORD WaitForMultipleObjects(DWORD count, const HANDLE* objects, BOOL waitAll, DWORD milliseconds) noexcept;
DWORD WaitForMultipleObjectsEx(DWORD count, const HANDLE* objects, BOOL waitAll, DWORD milliseconds,
                               BOOL alertable) noexcept;

/// Guards something that is to be done once. A static one needs no set-up.
struct RTL_RUN_ONCE {
    PVOID Ptr;
};
using INIT_ONCE = RTL_RUN_ONCE;
using LPINIT_ONCE = INIT_ONCE*;
#define INIT_ONCE_STATIC_INIT \
    { nullptr }

/// The first caller gets `pending` TRUE, does the work and then calls InitOnceComplete; the others wait until it has,
/// see all that it did, and get FALSE. `flags` must be 0. `context` may be null; otherwise it gets what the first
/// caller handed to InitOnceComplete.
BOOL InitOnceBeginInitialize(LPINIT_ONCE once, DWORD flags, BOOL* pending, LPVOID* context) noexcept;
/// `flags` must be 0: work that failed is done as well. The two lowest bits of `context` must be 0.
BOOL InitOnceComplete(LPINIT_ONCE once, DWORD flags, LPVOID context) noexcept;

/// Suspends the calling thread.
void Sleep(DWORD milliseconds) noexcept;
