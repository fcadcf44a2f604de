// The program inside Wine that starts the engine, seen from outside.
#pragma once

#include "Platform/Linux/Base/FileDescriptor.h"
#include "Platform/Linux/Processes/Supervisor/ChildProcesses.h"
#include "Platform/Linux/Processes/Supervisor/Messages.h"

#include <cstdint>
#include <deque>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Platform {

/// A line of the host.
struct HostReport {
    enum class Kind { Ready, Started, Failed, Exit };

    Kind kind = Kind::Ready;
    std::uint32_t number = 0;  ///< The error code of Failed, the exit code of Exit.
};

/// The reports in the complete lines of `text`, which are taken from it. Lines of anybody else are passed over.
std::vector<HostReport> TakeHostReports(std::string& text);

/// engine_host.exe, running under Wine. The engine ends when this object does.
class EngineHost {
public:
    /// Runs `command`, which must lead to the host. Throws std::system_error.
    EngineHost(ChildProcesses& children, const std::vector<std::string>& command);

    /// The process that was started: Wine's loader. It ends soon after the host.
    pid_t Loader() const { return loader_; }

    /// Readable when the host has said something; -1 once it can't say any more.
    int Descriptor() const { return reports_.Get(); }

    /// Hands the order to the host; call it once, when it is ready.
    void Order(const StartRequest& request);

    /// The first report that was not taken yet; nothing when the host has said no more. Never waits.
    std::optional<HostReport> NextReport();

private:
    void Read();

    FileDescriptor orders_;
    FileDescriptor reports_;
    std::string unread_;
    std::deque<HostReport> reported_;  // A program that ends at once is told of along with its start.
    pid_t loader_ = 0;
};

}  // namespace Platform
