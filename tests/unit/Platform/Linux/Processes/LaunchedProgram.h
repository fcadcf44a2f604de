// Starting programs in tests the way that callers of the platform do.
#pragma once

#include <windows.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Owns a handle.
class TestHandle {
public:
    TestHandle() = default;
    explicit TestHandle(HANDLE handle) : handle_(handle) {}
    TestHandle(TestHandle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    TestHandle& operator=(TestHandle&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~TestHandle() { Close(); }

    HANDLE Get() const { return handle_; }
    void Close();

private:
    HANDLE handle_ = nullptr;
};

/// What a start came to.
struct LaunchedProgram {
    bool started = false;
    DWORD error = 0;
    DWORD id = 0;
    TestHandle process;

    /// Waits for the end; the exit code.
    DWORD ExitCode() const;
};

struct LaunchOptions {
    std::filesystem::path image = {};
    std::wstring commandLine = L"quake2.exe";
    std::filesystem::path folder = {};
    HANDLE lock = nullptr;  ///< Passed on when not null.
    DWORD showWindow = 1;
};

LaunchedProgram Launch(const LaunchOptions& options);

/// Takes an exclusive, inheritable lock on a file; INVALID_HANDLE_VALUE when somebody has it.
HANDLE TakeLock(const std::filesystem::path& file);
bool IsLocked(const std::filesystem::path& file);

/// The identifiers of running processes whose program is this file, as the process list tells.
std::vector<DWORD> ProcessesRunning(const std::filesystem::path& image);

/// Asks until the answer is yes or the time is over; the last answer. The longer it has waited the less often it asks,
/// for many a question reads of all processes: a yes comes late by an eighth of the wait at most, and by 25 ms.
bool Eventually(const std::function<bool()>& condition,
                std::chrono::milliseconds limit = std::chrono::milliseconds(20000));
