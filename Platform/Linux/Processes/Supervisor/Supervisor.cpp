#include "Platform/Linux/Processes/Supervisor/Supervisor.h"

#include "Platform/Linux/Processes/Supervisor/ControlSocket.h"
#include "Platform/Linux/Processes/Supervisor/StartFailure.h"
#include "Platform/Linux/Processes/Supervisor/WineSetup.h"
#include "Platform/Text/Unicode.h"

#include <windows.h>

#include <poll.h>
#include <strings.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <exception>
#include <utility>

namespace fs = std::filesystem;

namespace Platform {

namespace {

constexpr const char* hostProgram = "engine_host.exe";
// Starts the host, sooner than a 64-bit Wine does by itself.
constexpr const char* bridgeProgram = "engine_bridge.exe";

constexpr const char* no32Bit =
    "This Wine can't run 32-bit Windows programs. Install its 32-bit half "
    "(on Debian: dpkg --add-architecture i386, apt-get update, apt-get install wine32:i386).";

/// The name that a Windows program's first thread shows: that of its file, cut as the kernel cuts names.
std::string KernelName(const std::string& image) {
    return fs::path(image).filename().string().substr(0, 15);
}

void RefuseNamesOutsideUnicode(const std::string& path, DWORD code) {
    try {
        (void)WideFromUtf8(path);
    } catch (const InvalidText&) {
        throw StartFailure(code,
                           "Wine can't reach " + Utf8FromWide(WideFromNative(path)) + ": the name is not valid UTF-8.");
    }
}

}  // namespace

Supervisor::Supervisor(FileDescriptor control, fs::path programs)
    : control_(std::move(control)), programs_(std::move(programs)) {}

void Supervisor::Run() {
    std::optional<ControlMessage> message = ReceiveControlMessage(control_.Get(), Wait::Yes);
    if (!message) return;
    held_ = std::move(message->descriptors);
    const std::optional<StartRequest> request = DecodeStartRequest(message->bytes);
    if (!request) return;
    try {
        Start(*request);
    } catch (const StartFailure& failure) {
        Report({.kind = SupervisorReport::Kind::Failed, .code = failure.Code(), .explanation = failure.what()});
    } catch (const std::exception& failure) {
        Report({.kind = SupervisorReport::Kind::Failed, .code = ERROR_GEN_FAILURE, .explanation = failure.what()});
    }
}

void Supervisor::Start(const StartRequest& request) {
    const std::string wine = FindWine();
    RefuseNamesOutsideUnicode(request.image, ERROR_BAD_PATHNAME);
    RefuseNamesOutsideUnicode(request.folder, ERROR_DIRECTORY);
    const fs::path prefix = ChoosePrefix(request.folder);
    PrepareEnvironment(prefix, request.image);
    PrefixSetup setup(children_, wine, prefix);
    setup.MakeIfMissing();

    engineName_ = KernelName(request.image);
    const auto start = [&](const char* program) {
        return StartEngine({wine, (programs_ / program).string()}, request);
    };
    const bool bridged = setup.Is64Bit() && fs::exists(programs_ / bridgeProgram);
    std::unique_ptr<EngineHost> host;
    if (bridged) host = start(bridgeProgram);
    if (!host) host = start(hostProgram);
    if (!host && setup.AddMissing32BitHalf()) host = start(bridged ? bridgeProgram : hostProgram);
    if (!host) throw StartFailure(ERROR_BAD_EXE_FORMAT, no32Bit);

    const FileDescriptor self(static_cast<int>(syscall(SYS_pidfd_open, getpid(), 0)));
    if (!self) throw StartFailure(ERROR_GEN_FAILURE, "This kernel has no process descriptors (Linux 5.3).");
    Report({.kind = SupervisorReport::Kind::Started, .code = 0, .explanation = {}}, {self.Get()});
    WatchEngine(*host);
}

std::unique_ptr<EngineHost> Supervisor::StartEngine(const std::vector<std::string>& command,
                                                    const StartRequest& request) {
    loaderEnded_ = false;
    auto host = std::make_unique<EngineHost>(children_, command);
    bool ready = false;
    for (;;) {
        const std::optional<HostReport> report = WaitForHost(*host);
        if (!report) {
            if (!loaderEnded_) continue;
            if (ready) throw StartFailure(ERROR_GEN_FAILURE, "Wine ended before the program was started.");
            return nullptr;
        }
        switch (report->kind) {
            case HostReport::Kind::Ready:
                ready = true;
                host->Order(request);
                break;
            case HostReport::Kind::Started:
                return host;
            case HostReport::Kind::Failed:
                throw StartFailure(report->number,
                                   "Wine could not start the program (error " + std::to_string(report->number) + ").");
            case HostReport::Kind::Exit:
                break;
        }
    }
}

void Supervisor::WatchEngine(EngineHost& host) {
    SupervisorReport end{.kind = SupervisorReport::Kind::Ended, .code = lostExitCode, .explanation = {}};
    for (;;) {
        const std::optional<HostReport> report = WaitForHost(host);
        if (!report && loaderEnded_) break;
        if (!report || report->kind != HostReport::Kind::Exit) continue;
        end.code = report->number;
        break;
    }
    // Of a process that a signal killed Wine says that it returned 0; what a shell would say of it tells more.
    if (end.code == 0) {
        if (const auto number = KillingSignal(host.Loader())) end.code = 128 + static_cast<std::uint32_t>(*number);
    }
    Report(end);
}

std::optional<HostReport> Supervisor::WaitForHost(EngineHost& host) {
    if (const auto said = host.NextReport(); said || loaderEnded_) return said;
    pollfd waits[] = {{.fd = host.Descriptor(), .events = POLLIN, .revents = 0},
                      {.fd = children_.Descriptor(), .events = POLLIN, .revents = 0}};
    poll(waits, 2, -1);
    ReapChildren(host.Loader());
    return host.NextReport();
}

void Supervisor::ReapChildren(pid_t loader) {
    for (const EndedChild& child : children_.Reap()) {
        if (child.id == loader) loaderEnded_ = true;
        // Wine detaches the engine from its tree, which makes this process its parent.
        else if (strcasecmp(child.name.c_str(), engineName_.c_str()) == 0)
            engineStatus_ = child.status;
    }
}

std::optional<int> Supervisor::KillingSignal(pid_t loader) {
    // The host hears of the end from wineserver, an instant before the kernel hands the status out. A Wine in a sandbox
    // of its own never hands it out: hence the limit.
    using Clock = std::chrono::steady_clock;
    const Clock::time_point limit = Clock::now() + std::chrono::milliseconds(50);
    for (ReapChildren(loader); !engineStatus_ && Clock::now() < limit; ReapChildren(loader)) {
        pollfd wait{.fd = children_.Descriptor(), .events = POLLIN, .revents = 0};
        poll(&wait, 1, 5);
    }
    if (!engineStatus_ || !WIFSIGNALED(*engineStatus_)) return std::nullopt;
    return WTERMSIG(*engineStatus_);
}

void Supervisor::Report(const SupervisorReport& report, const std::vector<int>& descriptors) const {
    // Whether the other end still listens makes no difference to the program.
    SendControlMessage(control_.Get(), Encode(report), descriptors);
}

}  // namespace Platform
