#pragma once

#include "launcher/GameLaunch/Start.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <vector>

/// A package, a game folder and a state folder, all private and all in order.
class LaunchFolders {
public:
    LaunchFolders();

    std::filesystem::path Launcher() const { return folder_ / "Launcher"; }
    std::filesystem::path Engine() const { return Launcher() / "Engine" / "quake2.exe"; }
    std::filesystem::path Driver(const char* name) const { return Launcher() / "Drivers" / name; }
    std::filesystem::path Game() const { return folder_ / "Game Folder"; }
    /// Names of the files that stand directly in the game folder.
    std::set<std::string> GameFiles() const;
    std::filesystem::path operator/(const char* name) const { return folder_ / name; }

private:
    TemporaryFolder folder_;
    ScopedEnvironment data_;
};

/// A system without processes whose game lives as long as told. It notes every call; lock and driver installation are
/// real unless told otherwise.
class RecordingSystem : public GameLaunch::LaunchSystem {
public:
    explicit RecordingSystem(const LaunchFolders& folders) : launcherFolder(folders.Launcher()) {}
    ~RecordingSystem() override;
    RecordingSystem(const RecordingSystem&) = delete;
    RecordingSystem& operator=(const RecordingSystem&) = delete;

    std::filesystem::path LauncherFolder() override;
    std::shared_ptr<GameLaunch::Handle> FindRunningProcess(const std::filesystem::path& imagePath,
                                                           DWORD excludedProcessId) override;
    bool HasSse41() override;
    HANDLE TakeInstallationLock(const std::filesystem::path& folder) override;
    void InstallDriver(const std::filesystem::path& source, const std::filesystem::path& target) override;
    bool StartProcess(const std::filesystem::path& engine, std::wstring commandLine,
                      const std::filesystem::path& workingFolder, HANDLE lock, bool hidden, HANDLE& process,
                      DWORD& error) override;
    DWORD Wait(HANDLE process, DWORD milliseconds) override;
    void Close(HANDLE handle) override;

    /// How often an operation was called.
    int Count(const std::string& call) const;

    // What the system is told to be like.
    std::filesystem::path launcherFolder;
    std::set<std::filesystem::path> running;  // program files of running processes
    bool sse41 = true;
    bool lockFree = true;
    std::function<void()> beforeInstall;
    DWORD startError = ERROR_SUCCESS;
    DWORD lifetime = INFINITE;  // of the started game, in milliseconds
    DWORD waitFailure = WAIT_OBJECT_0;

    // What it has noted.
    std::vector<std::string> calls;
    std::vector<std::filesystem::path> askedFor;
    std::filesystem::path engine;
    std::wstring commandLine;
    std::filesystem::path workingFolder;
    bool hidden = false;
    HANDLE lock = INVALID_HANDLE_VALUE;
    HANDLE inherited = INVALID_HANDLE_VALUE;
    HANDLE process = nullptr;
};
