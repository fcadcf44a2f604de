#include "RecordingSystem.h"

#include "Platform/Interface/Paths.h"
#include "tests/support/GameFiles.h"

#include <algorithm>

namespace fs = std::filesystem;

LaunchFolders::LaunchFolders() : data_(L"LOCALAPPDATA", Platform::TextFromPath(folder_ / "Local")) {
    WriteBytes(Engine(), PeBytes());
    WriteBytes(Driver("KVR.dll"), PeBytes() + "classic");
    WriteBytes(Driver("KVR2.dll"), PeBytes() + "modern");
    MakeInstallation(Game());
}

std::set<std::string> LaunchFolders::GameFiles() const {
    std::set<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(Game())) {
        if (!entry.is_directory()) names.insert(entry.path().filename().string());
    }
    return names;
}

RecordingSystem::~RecordingSystem() = default;

fs::path RecordingSystem::LauncherFolder() {
    calls.emplace_back("LauncherFolder");
    return launcherFolder;
}

std::shared_ptr<GameLaunch::Handle> RecordingSystem::FindRunningProcess(const fs::path& imagePath,
                                                                        DWORD excludedProcessId) {
    calls.emplace_back("FindRunningProcess");
    askedFor.push_back(imagePath);
    const bool runs = excludedProcessId == 0 && running.contains(imagePath);
    return runs ? std::make_shared<GameLaunch::Handle>() : nullptr;
}

bool RecordingSystem::HasSse41() {
    calls.emplace_back("HasSse41");
    return sse41;
}

HANDLE RecordingSystem::TakeInstallationLock(const fs::path& folder) {
    calls.emplace_back("TakeInstallationLock");
    lock = lockFree ? LaunchSystem::TakeInstallationLock(folder) : INVALID_HANDLE_VALUE;
    return lock;
}

void RecordingSystem::InstallDriver(const fs::path& source, const fs::path& target) {
    calls.emplace_back("InstallDriver");
    if (beforeInstall) beforeInstall();
    LaunchSystem::InstallDriver(source, target);
}

bool RecordingSystem::StartProcess(const fs::path& program, std::wstring line, const fs::path& folder, HANDLE passedOn,
                                   bool hide, HANDLE& started, DWORD& error) {
    calls.emplace_back("StartProcess");
    engine = program;
    commandLine = std::move(line);
    workingFolder = folder;
    inherited = passedOn;
    hidden = hide;
    error = startError;
    if (startError != ERROR_SUCCESS) return false;
    process = CreateEventW(nullptr, TRUE, FALSE, nullptr);  // A real handle, since its new owner closes it.
    started = process;
    return true;
}

DWORD RecordingSystem::Wait(HANDLE, DWORD milliseconds) {
    calls.emplace_back("Wait");
    if (waitFailure != WAIT_OBJECT_0) return waitFailure;
    return lifetime <= milliseconds ? WAIT_OBJECT_0 : DWORD{WAIT_TIMEOUT};
}

void RecordingSystem::Close(HANDLE handle) {
    calls.emplace_back(handle == lock ? "Close lock" : "Close other");
    LaunchSystem::Close(handle);
}

int RecordingSystem::Count(const std::string& call) const {
    return static_cast<int>(std::ranges::count(calls, call));
}
