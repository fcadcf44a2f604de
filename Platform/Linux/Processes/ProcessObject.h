// What a process handle stands for.
#pragma once

#include "Platform/Linux/Base/FileDescriptor.h"
#include "Platform/Linux/Base/Handle.h"

#include <sys/types.h>

#include <mutex>
#include <optional>

namespace Platform {

/// A process, held by a process descriptor: signalled once it has ended, and never mistaken for a later process of the
/// same identifier.
class ProcessObject : public HandleObject {
public:
    ProcessObject(pid_t id, FileDescriptor descriptor) : id_(id), descriptor_(std::move(descriptor)) {}

    int WaitDescriptor() const noexcept override { return descriptor_.Get(); }
    pid_t Id() const noexcept { return id_; }

    /// Whether it has ended. False means, too, that the identifier still is this process's.
    bool Ended() const noexcept;

    /// The exit code, STILL_ACTIVE while it runs; nothing for a process that tells this one no code. Any thread.
    virtual std::optional<DWORD> ExitCode() noexcept { return std::nullopt; }

private:
    const pid_t id_;
    const FileDescriptor descriptor_;
};

/// A program under Wine that this process has started. The process behind it is the program's supervisor, which ends
/// with it and hands its exit code on.
class StartedProcess final : public ProcessObject {
public:
    StartedProcess(pid_t id, FileDescriptor descriptor, FileDescriptor control)
        : ProcessObject(id, std::move(descriptor)), control_(std::move(control)) {}

    std::optional<DWORD> ExitCode() noexcept override;

private:
    std::mutex mutex_;
    const FileDescriptor control_;
    std::optional<DWORD> code_;  // guarded by mutex_
};

/// The first thread of a started process: a handle that can only be closed.
class ThreadObject final : public HandleObject {};

}  // namespace Platform
