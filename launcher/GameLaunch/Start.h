// The one routine behind the launch button.
#pragma once

#include "launcher/GameLaunch/Handle.h"

#include <windows.h>

#include <filesystem>
#include <memory>
#include <string>

namespace GameLaunch {

/// What a launch came to.
struct Result {
    std::shared_ptr<Handle> Process;  ///< The running game; empty when no game runs, the only sign of failure.
    std::wstring Message;             ///< One sentence for the status line, set on every path.
    std::wstring Folder;              ///< The validated game folder, on the paths that got that far; else empty.
};

/// What Start asks of the system beside plain files. The tests put failing and recording ones in its place.
class LaunchSystem {
public:
    virtual ~LaunchSystem() = default;
    virtual std::filesystem::path LauncherFolder();
    virtual std::shared_ptr<Handle> FindRunningProcess(const std::filesystem::path& imagePath, DWORD excludedProcessId);
    virtual bool HasSse41();
    virtual HANDLE TakeInstallationLock(const std::filesystem::path& folder);
    virtual void InstallDriver(const std::filesystem::path& source, const std::filesystem::path& target);
    /// Starts the engine with `lock` as its only inherited handle. False with the code of the failure in `error`.
    virtual bool StartProcess(const std::filesystem::path& engine, std::wstring commandLine,
                              const std::filesystem::path& workingFolder, HANDLE lock, bool hidden, HANDLE& process,
                              DWORD& error);
    virtual DWORD Wait(HANDLE process, DWORD milliseconds);
    virtual void Close(HANDLE handle);
};

/// Judges `folder` anew, makes every check, takes the installation's lock, installs the driver, starts the engine in
/// the game folder and watches its first 1500 ms. Never throws. Blocks meanwhile: a worker thread of its own only.
///
/// `displayMode` is 0 to 9 and given to the game as it is. `smoke` is an unattended check run, hidden and without the
/// look at the first moments.
Result Start(const std::filesystem::path& folder, bool modern, DWORD displayMode, bool fullscreen, bool smoke) noexcept;
Result Start(LaunchSystem& system, const std::filesystem::path& folder, bool modern, DWORD displayMode, bool fullscreen,
             bool smoke) noexcept;

}  // namespace GameLaunch
