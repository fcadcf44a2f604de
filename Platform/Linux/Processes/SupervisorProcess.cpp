#include "Platform/Linux/Processes/SupervisorProcess.h"

#include "Platform/Linux/Base/Errors.h"
#include "Platform/Linux/Processes/Supervisor/ControlSocket.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace Platform {

namespace {

constexpr int controlDescriptor = 3;  // Mirrors Supervisor/Main.cpp.

fs::path SupervisorProgram() {
    const char* const name = "wine_supervisor";
    std::error_code error;
    fs::path beside = fs::read_symlink("/proc/self/exe", error).parent_path() / name;
    if (fs::exists(beside, error)) return beside;
    return fs::path(VELORINTH_SUPERVISOR_FOLDER) / name;
}

/// Wine's processes outlive the game, and a caller's error stream with them: whoever reads it to its end would wait for
/// them. So it is passed on only to those who ask Wine for output.
bool CallerWantsWineOutput() {
    const char* const channels = std::getenv("WINEDEBUG");
    return channels && *channels != '\0' && std::string_view(channels) != "-all";
}

class SpawnSettings {
public:
    SpawnSettings(int control, bool keepErrors) {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        if (!keepErrors) posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_adddup2(&actions_, control, controlDescriptor);
        posix_spawn_file_actions_addclosefrom_np(&actions_, controlDescriptor + 1);
        // The calling thread may block signals, and the program may ignore some: neither is meant for the game.
        sigset_t signals;
        posix_spawnattr_init(&attributes_);
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnSettings() {
        posix_spawnattr_destroy(&attributes_);
        posix_spawn_file_actions_destroy(&actions_);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;

    int Spawn(pid_t& child, const fs::path& program) const {
        char* const arguments[] = {const_cast<char*>(program.c_str()), nullptr};
        return posix_spawn(&child, program.c_str(), &actions_, &attributes_, arguments, environ);
    }

private:
    posix_spawn_file_actions_t actions_;
    posix_spawnattr_t attributes_;
};

/// The identifier of the process behind a process descriptor; 0 if it can't be told.
pid_t IdOf(int descriptor) {
    const FileDescriptor file(open(("/proc/self/fdinfo/" + std::to_string(descriptor)).c_str(), O_RDONLY | O_CLOEXEC));
    std::string text(512, '\0');
    const ssize_t size = file ? read(file.Get(), text.data(), text.size()) : 0;
    text.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    const std::size_t found = text.find("\nPid:");
    return found == std::string::npos ? 0 : static_cast<pid_t>(std::strtol(text.c_str() + found + 5, nullptr, 10));
}

}  // namespace

StartOutcome StartUnderSupervisor(const StartRequest& request, const std::vector<int>& descriptors) {
    auto [ours, theirs] = MakeControlSocket();
    if (!ours) return {.process = {}, .error = ErrorFromErrno(errno), .explanation = {}};
    const fs::path program = SupervisorProgram();
    pid_t child = 0;
    if (const int error = SpawnSettings(theirs.Get(), CallerWantsWineOutput()).Spawn(child, program)) {
        return {.process = {}, .error = ErrorFromErrno(error), .explanation = program.string() + " can't be started."};
    }
    theirs.Reset();
    // The process that was spawned ends at once, having left the work to one of its own.
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {}
    if (!SendControlMessage(ours.Get(), Encode(request), descriptors)) {
        const int error = errno;
        return {.process = {},
                .error = error == EMSGSIZE ? ERROR_FILENAME_EXCED_RANGE : ErrorFromErrno(error),
                .explanation = program.string() + " did not take the order."};
    }

    std::optional<ControlMessage> message = ReceiveControlMessage(ours.Get(), Wait::Yes);
    const auto report = message ? DecodeSupervisorReport(message->bytes) : std::nullopt;
    if (!report) {
        return {.process = {}, .error = ERROR_GEN_FAILURE, .explanation = program.string() + " ended unexpectedly."};
    }
    if (report->kind != SupervisorReport::Kind::Started || message->descriptors.empty()) {
        return {.process = {}, .error = report->code, .explanation = report->explanation};
    }
    FileDescriptor process = std::move(message->descriptors.front());
    const pid_t id = IdOf(process.Get());
    return {.process = std::make_shared<StartedProcess>(id, std::move(process), std::move(ours)),
            .error = 0,
            .explanation = {}};
}

}  // namespace Platform
