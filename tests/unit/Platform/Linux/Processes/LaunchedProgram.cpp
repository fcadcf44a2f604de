#include "LaunchedProgram.h"

#include "Platform/Interface/Paths.h"

#include <tlhelp32.h>

#include <strings.h>

#include <algorithm>
#include <cwchar>
#include <thread>
#include <vector>

namespace fs = std::filesystem;

void TestHandle::Close() {
    if (handle_ && handle_ != INVALID_HANDLE_VALUE) CloseHandle(handle_);
    handle_ = nullptr;
}

DWORD LaunchedProgram::ExitCode() const {
    DWORD code = STILL_ACTIVE;
    WaitForSingleObject(process.Get(), INFINITE);
    GetExitCodeProcess(process.Get(), &code);
    return code;
}

LaunchedProgram Launch(const LaunchOptions& options) {
    STARTUPINFOEXW startup{};
    startup.StartupInfo.cb = sizeof startup;
    startup.StartupInfo.dwFlags = STARTF_USESHOWWINDOW;
    startup.StartupInfo.wShowWindow = static_cast<WORD>(options.showWindow);
    SIZE_T size = 0;
    InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
    std::vector<BYTE> memory(size);
    startup.lpAttributeList = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory.data());
    InitializeProcThreadAttributeList(startup.lpAttributeList, 1, 0, &size);
    HANDLE lock = options.lock;
    if (lock) {
        UpdateProcThreadAttribute(startup.lpAttributeList, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, &lock, sizeof lock,
                                  nullptr, nullptr);
    }
    std::wstring commandLine = options.commandLine;
    PROCESS_INFORMATION information{};
    LaunchedProgram result;
    result.started =
        CreateProcessW(Platform::TextFromPath(options.image).c_str(), commandLine.data(), nullptr, nullptr,
                       lock ? TRUE : FALSE, EXTENDED_STARTUPINFO_PRESENT | CREATE_UNICODE_ENVIRONMENT, nullptr,
                       Platform::TextFromPath(options.folder).c_str(), &startup.StartupInfo, &information) != FALSE;
    result.error = result.started ? 0 : GetLastError();
    DeleteProcThreadAttributeList(startup.lpAttributeList);
    if (result.started) CloseHandle(information.hThread);
    result.id = information.dwProcessId;
    result.process = TestHandle(information.hProcess);
    return result;
}

HANDLE TakeLock(const fs::path& file) {
    SECURITY_ATTRIBUTES attributes{
        .nLength = sizeof attributes, .lpSecurityDescriptor = nullptr, .bInheritHandle = TRUE};
    return CreateFileW(Platform::TextFromPath(file).c_str(), GENERIC_READ | GENERIC_WRITE, 0, &attributes, OPEN_ALWAYS,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

bool IsLocked(const fs::path& file) {
    const HANDLE lock = TakeLock(file);
    if (lock == INVALID_HANDLE_VALUE) return true;
    CloseHandle(lock);
    return false;
}

std::vector<DWORD> ProcessesRunning(const fs::path& image) {
    std::vector<DWORD> found;
    const std::wstring wanted = Platform::TextFromPath(image);
    const std::wstring wantedName = Platform::TextFromPath(image.filename());
    const TestHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(snapshot.Get(), &entry); more; more = Process32NextW(snapshot.Get(), &entry)) {
        if (wcscasecmp(entry.szExeFile, wantedName.c_str()) != 0) continue;
        const TestHandle process(
            OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, entry.th32ProcessID));
        std::wstring path(32768, L'\0');
        auto size = static_cast<DWORD>(path.size());
        if (!process.Get() || !QueryFullProcessImageNameW(process.Get(), 0, path.data(), &size)) continue;
        path.resize(size);
        if (wcscasecmp(path.c_str(), wanted.c_str()) == 0 && WaitForSingleObject(process.Get(), 0) == WAIT_TIMEOUT) {
            found.push_back(entry.th32ProcessID);
        }
    }
    return found;
}

bool Eventually(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
    using Milliseconds = std::chrono::milliseconds;
    const auto start = std::chrono::steady_clock::now();
    while (!condition()) {
        const auto waited = std::chrono::duration_cast<Milliseconds>(std::chrono::steady_clock::now() - start);
        if (waited > limit) return condition();
        std::this_thread::sleep_for(std::clamp(waited / 8, Milliseconds(1), Milliseconds(25)));
    }
    return true;
}
