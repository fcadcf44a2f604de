#include "launcher/GameLaunch/StateFolder.h"
#include "RunningProgram.h"

#include <stdexcept>

namespace fs = std::filesystem;

RunningProgram::RunningProgram(const fs::path& file) {
    fs::create_directories(file.parent_path());
    fs::copy_file(GameLaunch::LauncherFolder() / IDLE_PROGRAM, file);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(file.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &started)) {
        throw std::runtime_error("cannot start " + file.string());
    }
    CloseHandle(started.hThread);
    process_ = started.hProcess;
    id_ = started.dwProcessId;
}

RunningProgram::~RunningProgram() {
    End();
    CloseHandle(process_);
}

void RunningProgram::End() {
    TerminateProcess(process_, 0);
    WaitForSingleObject(process_, INFINITE);
}
