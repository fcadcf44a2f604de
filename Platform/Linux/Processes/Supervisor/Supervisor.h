#pragma once

#include "Platform/Linux/Base/FileDescriptor.h"
#include "Platform/Linux/Processes/Supervisor/ChildProcesses.h"
#include "Platform/Linux/Processes/Supervisor/EngineHost.h"
#include "Platform/Linux/Processes/Supervisor/Messages.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Platform {

/// Starts one program under Wine on the order of whoever is at the other end of the control socket, and lives exactly
/// as long as that program: what it holds on the program's behalf goes when the program does, however either ends. One
/// thread.
class Supervisor {
public:
    /// `programs` is the folder that holds engine_host.exe.
    Supervisor(FileDescriptor control, std::filesystem::path programs);

    /// Takes the order, starts the program, and returns when it has ended or could not be started.
    void Run();

private:
    void Start(const StartRequest& request);
    /// Runs the host until it has started the engine. Nothing when Wine ended without having run it.
    std::unique_ptr<EngineHost> StartEngine(const std::vector<std::string>& command, const StartRequest& request);
    void WatchEngine(EngineHost& host);

    /// The host's next report. Waits for it or for a child to end, and notes that; nothing then, and once the loader
    /// has ended and all that the host said is taken.
    std::optional<HostReport> WaitForHost(EngineHost& host);
    void ReapChildren(pid_t loader);
    /// The signal that killed the engine, if one did; the engine has ended, or is about to.
    std::optional<int> KillingSignal(pid_t loader);

    void Report(const SupervisorReport& report, const std::vector<int>& descriptors = {}) const;

    FileDescriptor control_;
    std::vector<FileDescriptor> held_;  // For as long as the program lives.
    std::filesystem::path programs_;
    ChildProcesses children_;
    std::string engineName_;  // As the kernel shows it.
    bool loaderEnded_ = false;
    std::optional<int> engineStatus_;  // As wait(2) gives it.
};

}  // namespace Platform
