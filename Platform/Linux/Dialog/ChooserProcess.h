// A dialog program as a child process.
#pragma once

#include "Platform/Linux/Base/FileDescriptor.h"

#include <sys/types.h>

#include <string>
#include <vector>

namespace Platform {

class OwnerWatch;

/// Runs a program with its standard output in a pipe and nothing to read, as the leader of a process group, so that a
/// wrapper script ends together with what it started. The child never outlives this object. One thread only.
class ChooserProcess {
public:
    enum class End {
        Exited,     ///< By itself: see ExitStatus and Output.
        Died,       ///< By a signal, or with more output than a path can be.
        OwnerGone,  ///< Killed, since the dialog's owner went.
    };

    /// Throws std::system_error when the program can't be started.
    ChooserProcess(const std::string& program, const std::vector<std::string>& arguments);
    ~ChooserProcess();
    ChooserProcess(const ChooserProcess&) = delete;
    ChooserProcess& operator=(const ChooserProcess&) = delete;

    /// Blocks until the program has ended or the owner has gone; the child is reaped either way.
    End Wait(OwnerWatch& owner);

    int ExitStatus() const { return exitStatus_; }
    const std::string& Output() const { return output_; }

private:
    enum class Hang { Yes, No };

    bool ReadOutput();
    bool Reap(Hang hang);
    void Kill();

    pid_t process_ = -1;  // -1 once reaped
    FileDescriptor pidfd_;
    FileDescriptor pipe_;
    std::string output_;
    int exitStatus_ = -1;
};

}  // namespace Platform
