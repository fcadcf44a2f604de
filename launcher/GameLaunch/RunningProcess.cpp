#include "launcher/GameLaunch/DriverInstall.h"
#include "Platform/Interface/Paths.h"

#include <tlhelp32.h>

#include <string>

namespace GameLaunch {

namespace {

bool EqualIgnoringCase(const std::wstring& left, const std::wstring& right) {
    return CompareStringOrdinal(left.c_str(), -1, right.c_str(), -1, TRUE) == CSTR_EQUAL;
}

/// Path of the program that a process runs; empty when it can't be told.
std::wstring ImagePath(HANDLE process) {
    std::wstring image(32768, L'\0');
    auto length = static_cast<DWORD>(image.size());
    if (!QueryFullProcessImageNameW(process, 0, image.data(), &length)) return {};
    image.resize(length);
    return image;
}

}  // namespace

std::shared_ptr<Handle> FindRunningProcess(const std::filesystem::path& imagePath, DWORD excludedProcessId) {
    const Handle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    if (snapshot.Process == INVALID_HANDLE_VALUE) return nullptr;
    const std::wstring wanted = Platform::TextFromPath(imagePath);

    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(snapshot.Process, &entry); more; more = Process32NextW(snapshot.Process, &entry)) {
        // The name comes first: most processes are passed over without being opened.
        if (entry.th32ProcessID == excludedProcessId || !EqualIgnoringCase(entry.szExeFile, L"quake2.exe")) continue;
        auto candidate = std::make_shared<Handle>();
        candidate->Process = OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, entry.th32ProcessID);
        if (!candidate->Process) continue;
        const std::wstring image = ImagePath(candidate->Process);
        if (image.empty() || !EqualIgnoringCase(image, wanted)) continue;
        if (WaitForSingleObject(candidate->Process, 0) != WAIT_TIMEOUT) continue;
        return candidate;
    }
    return nullptr;
}

}  // namespace GameLaunch
