// The processes below the supervisor: those it starts, and those that Wine detaches from them.
#pragma once

#include "Platform/Linux/Base/FileDescriptor.h"

#include <sys/types.h>

#include <string>
#include <vector>

namespace Platform {

/// What becomes of a started process when this one dies.
enum class OnDeath : bool { Stay, Kill };

/// A process that has ended.
struct EndedChild {
    pid_t id = 0;
    std::string name;  ///< As the kernel keeps it: cut to 15 bytes.
    int status = 0;    ///< As wait(2) gives it.
};

/// Makes this process the reaper of everything below it, so that the end of a process that Wine detached can be seen
/// here with its signal. One object a process, used by one thread.
class ChildProcesses {
public:
    /// Throws std::system_error.
    ChildProcesses();

    /// Readable while an ended child may wait to be reaped.
    int Descriptor() const { return signals_.Get(); }

    /// Starts a program with nothing of this process but standard error and the two given descriptors as its standard
    /// input and output (-1 for the null device). Throws std::system_error.
    pid_t Start(const std::vector<std::string>& command, int input, int output, OnDeath onDeath);

    /// Reaps all that have ended by now.
    std::vector<EndedChild> Reap();

    /// Reaps until `id` has ended; returns its status.
    int WaitFor(pid_t id);

private:
    FileDescriptor signals_;
};

}  // namespace Platform
