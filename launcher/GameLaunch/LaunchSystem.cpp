#include "launcher/GameLaunch/DriverInstall.h"
#include "launcher/GameLaunch/Start.h"
#include "launcher/GameLaunch/StateFolder.h"
#include "Platform/Interface/Paths.h"

#include <cstddef>
#include <stdexcept>
#include <vector>

namespace GameLaunch {

namespace {

/// The attributes of a process start: room for one.
class AttributeList {
public:
    AttributeList() {
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        memory_.resize(size);
        if (!InitializeProcThreadAttributeList(Get(), 1, 0, &size)) throw std::runtime_error("Process setup failed");
    }
    AttributeList(const AttributeList&) = delete;
    AttributeList& operator=(const AttributeList&) = delete;
    ~AttributeList() { DeleteProcThreadAttributeList(Get()); }

    LPPROC_THREAD_ATTRIBUTE_LIST Get() { return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory_.data()); }

private:
    std::vector<std::byte> memory_;
};

}  // namespace

std::filesystem::path LaunchSystem::LauncherFolder() {
    return GameLaunch::LauncherFolder();
}

std::shared_ptr<Handle> LaunchSystem::FindRunningProcess(const std::filesystem::path& imagePath,
                                                         DWORD excludedProcessId) {
    return GameLaunch::FindRunningProcess(imagePath, excludedProcessId);
}

bool LaunchSystem::HasSse41() {
    return GameLaunch::HasSse41();
}

HANDLE LaunchSystem::TakeInstallationLock(const std::filesystem::path& folder) {
    return GameLaunch::TakeInstallationLock(folder);
}

void LaunchSystem::InstallDriver(const std::filesystem::path& source, const std::filesystem::path& target) {
    GameLaunch::InstallDriver(source, target);
}

bool LaunchSystem::StartProcess(const std::filesystem::path& engine, std::wstring commandLine,
                                const std::filesystem::path& workingFolder, HANDLE lock, bool hidden, HANDLE& process,
                                DWORD& error) {
    constexpr WORD hide = 0;    // SW_HIDE
    constexpr WORD normal = 1;  // SW_SHOWNORMAL
    const std::wstring program = Platform::TextFromPath(engine);
    const std::wstring folder = Platform::TextFromPath(workingFolder);
    AttributeList attributes;
    STARTUPINFOEXW startup{};
    static_assert(sizeof startup == 112);
    startup.StartupInfo.cb = sizeof startup;
    startup.StartupInfo.dwFlags = STARTF_USESHOWWINDOW;
    startup.StartupInfo.wShowWindow = hidden ? hide : normal;
    startup.lpAttributeList = attributes.Get();

    PROCESS_INFORMATION started{};
    const bool ok = UpdateProcThreadAttribute(attributes.Get(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, &lock,
                                              sizeof lock, nullptr, nullptr) &&
                    CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE,
                                   EXTENDED_STARTUPINFO_PRESENT | CREATE_UNICODE_ENVIRONMENT, nullptr, folder.c_str(),
                                   &startup.StartupInfo, &started);
    error = ok ? ERROR_SUCCESS : GetLastError();
    if (!ok) return false;
    CloseHandle(started.hThread);
    process = started.hProcess;
    return true;
}

DWORD LaunchSystem::Wait(HANDLE process, DWORD milliseconds) {
    return WaitForSingleObject(process, milliseconds);
}

void LaunchSystem::Close(HANDLE handle) {
    CloseHandle(handle);
}

}  // namespace GameLaunch
