#include "launcher/GameLaunch/Start.h"

#include "launcher/GameDiscovery/Validation.h"
#include "launcher/GameLaunch/CommandLine.h"
#include "Platform/Interface/Paths.h"

#include <exception>
#include <utility>

namespace fs = std::filesystem;

namespace GameLaunch {

namespace {

constexpr DWORD HighestDisplayMode = 9;
constexpr DWORD FirstMomentsMilliseconds = 1500;

/// Closes the launcher's own copy of the lock on every way out. The game has its own.
class LockHolder {
public:
    LockHolder(LaunchSystem& system, HANDLE lock) : system_(system), lock_(lock) {}
    LockHolder(const LockHolder&) = delete;
    LockHolder& operator=(const LockHolder&) = delete;
    ~LockHolder() {
        if (IsHeld()) system_.Close(lock_);
    }

    bool IsHeld() const { return lock_ != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return lock_; }

private:
    LaunchSystem& system_;
    HANDLE lock_;
};

Result Refused(std::wstring message, std::wstring folder = {}) {
    return {nullptr, std::move(message), std::move(folder)};
}

Result Launch(LaunchSystem& system, const fs::path& folder, bool modern, DWORD displayMode, bool fullscreen,
              bool smoke) {
    const GameDiscovery::Result installation = GameDiscovery::ValidateFolder(folder);
    if (installation.Folder.empty()) return Refused(installation.Message);
    const fs::path gameFolder = Platform::PathFromText(installation.Folder);

    const fs::path launcherFolder = system.LauncherFolder();
    const fs::path engine = launcherFolder / L"Engine" / L"quake2.exe";
    if (!GameDiscovery::IsClassicPe(engine)) {
        return Refused(L"The bundled Quake II engine is missing or invalid. Extract the complete package.");
    }
    if (system.FindRunningProcess(gameFolder / L"quake2.exe", 0) || system.FindRunningProcess(engine, 0)) {
        return Refused(L"Quake II is already running. Close it before changing drivers.", installation.Folder);
    }
    if (displayMode > HighestDisplayMode) return Refused(L"Unsupported display mode.");
    if (modern && !system.HasSse41()) {
        return Refused(L"This KVR2 package requires a processor with SSE4.1 support.");
    }
    const std::wstring driverName = DriverFileName(modern);
    const fs::path driver = launcherFolder / L"Drivers" / driverName;
    if (!GameDiscovery::IsClassicPe(driver)) {
        return Refused(L"The selected bundled driver is missing or invalid.");
    }
    if (!GameDiscovery::IsClassicPe(gameFolder / L"baseq2" / L"gamex86.dll")) {
        return Refused(L"The classic game DLL baseq2/gamex86.dll is missing or incompatible.", installation.Folder);
    }

    const LockHolder lock(system, system.TakeInstallationLock(gameFolder));
    if (!lock.IsHeld()) {
        return Refused(L"This installation is already running, or its runtime folder is unavailable.",
                       installation.Folder);
    }
    system.InstallDriver(driver, gameFolder / driverName);

    // What the success is told with is made before the start: once the game runs, nothing may be thrown.
    Result result{std::make_shared<Handle>(), L"Quake II launched. Its settings will be saved normally.",
                  installation.Folder};
    DWORD error = ERROR_SUCCESS;
    if (!system.StartProcess(engine, BuildCommandLine(modern, displayMode, fullscreen, smoke), gameFolder, lock.Get(),
                             smoke, result.Process->Process, error)) {
        return Refused(L"Windows could not launch Quake II (error " + std::to_wstring(error) + L").",
                       installation.Folder);
    }
    if (!smoke && system.Wait(result.Process->Process, FirstMomentsMilliseconds) == WAIT_OBJECT_0) {
        return Refused(L"Quake II closed during startup. Check baseq2/qconsole.log in the game folder.",
                       installation.Folder);
    }
    return result;
}

Result NotInstalled() noexcept {
    try {
        return Refused(L"Could not install the driver. Close Quake II and check write permission to its folder.");
    } catch (const std::exception&) {
        return {};  // Not even memory for the sentence is left.
    }
}

}  // namespace

Result Start(LaunchSystem& system, const fs::path& folder, bool modern, DWORD displayMode, bool fullscreen,
             bool smoke) noexcept {
    try {
        return Launch(system, folder, modern, displayMode, fullscreen, smoke);
    } catch (const std::exception&) {
        return NotInstalled();
    } catch (...) {
        // Nothing here throws anything else, but a worker thread that lets something out ends the program.
        return NotInstalled();
    }
}

Result Start(const fs::path& folder, bool modern, DWORD displayMode, bool fullscreen, bool smoke) noexcept {
    LaunchSystem system;
    return Start(system, folder, modern, displayMode, fullscreen, smoke);
}

}  // namespace GameLaunch
