#include "launcher/GameLaunch/StateFolder.h"
#include "RunningProgram.h"

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

namespace fs = std::filesystem;

RunningProgram::RunningProgram(const fs::path& file) {
    fs::create_directories(file.parent_path());
    fs::copy_file(GameLaunch::LauncherFolder() / IDLE_PROGRAM, file);
    std::string name = file.string();
    char* const arguments[] = {name.data(), nullptr};
    pid_t child = 0;
    // Returns once the new program has taken the child over.
    if (posix_spawn(&child, name.c_str(), nullptr, nullptr, arguments, environ) != 0) {
        throw std::runtime_error("cannot start " + name);
    }
    id_ = static_cast<DWORD>(child);
}

RunningProgram::~RunningProgram() {
    kill(static_cast<pid_t>(id_), SIGKILL);
    waitpid(static_cast<pid_t>(id_), nullptr, 0);
}

void RunningProgram::End() {
    kill(static_cast<pid_t>(id_), SIGKILL);
    siginfo_t ended{};
    waitid(P_PID, id_, &ended, WEXITED | WNOWAIT);
}
