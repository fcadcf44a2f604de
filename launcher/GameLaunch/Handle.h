#pragma once

#include <windows.h>

namespace GameLaunch {

/// Owns a process handle, or another handle of the launch. Closed on destruction unless null or INVALID_HANDLE_VALUE.
/// Never copied, only shared.
struct Handle {
    HANDLE Process = nullptr;

    Handle() = default;
    explicit Handle(HANDLE process) : Process(process) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() {
        if (Process && Process != INVALID_HANDLE_VALUE) CloseHandle(Process);
    }
};

}  // namespace GameLaunch
