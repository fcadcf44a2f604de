#include "Platform/Interface/Paths.h"
#include "Platform/Linux/Base/Errors.h"
#include "Platform/Linux/Base/Handle.h"
#include "Platform/Linux/Processes/AttributeList.h"
#include "Platform/Linux/Processes/Supervisor/ControlSocket.h"
#include "Platform/Linux/Processes/SupervisorProcess.h"
#include "Platform/Linux/Processes/WindowsProgram.h"
#include "Platform/Text/Unicode.h"

#include <windows.h>

#include <cstdio>
#include <exception>
#include <memory>
#include <new>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace fs = std::filesystem;

namespace {

// What a Windows program can be given, terminator not counted.
constexpr std::size_t longestCommandLine = 32766;

/// The objects that the list names, so that they outlive the start; nothing if one can't be passed on.
std::optional<std::vector<std::shared_ptr<Platform::HandleObject>>> PassedObjects(std::span<const HANDLE> handles) {
    if (handles.size() > Platform::maximumPassedDescriptors) return std::nullopt;
    std::vector<std::shared_ptr<Platform::HandleObject>> objects;
    for (const HANDLE handle : handles) {
        auto object = Platform::FindHandleObject(handle);
        if (!object || !Platform::IsInheritable(handle) || object->PassedDescriptor() < 0) return std::nullopt;
        objects.push_back(std::move(object));
    }
    return objects;
}

fs::path AbsoluteSpelling(std::wstring_view text) {
    return Platform::ExistingSpelling(fs::absolute(Platform::PathFromText(text)));
}

void Explain(const std::string& explanation) {
    if (!explanation.empty()) std::fprintf(stderr, "%s\n", explanation.c_str());
}

/// Both handles, or none and ERROR_NOT_ENOUGH_MEMORY.
BOOL HandOut(std::shared_ptr<Platform::ProcessObject> process, PROCESS_INFORMATION& information) {
    const DWORD id = static_cast<DWORD>(process->Id());
    const HANDLE processHandle = Platform::AddHandle(std::move(process));
    if (!processHandle) return FALSE;
    const HANDLE threadHandle = Platform::AddHandle(std::make_shared<Platform::ThreadObject>());
    if (!threadHandle) {
        CloseHandle(processHandle);
        return Platform::Fail(ERROR_NOT_ENOUGH_MEMORY);
    }
    information = {.hProcess = processHandle, .hThread = threadHandle, .dwProcessId = id, .dwThreadId = id};
    return TRUE;
}

}  // namespace

BOOL CreateProcessW(LPCWSTR applicationName, LPWSTR commandLine, LPSECURITY_ATTRIBUTES processAttributes,
                    LPSECURITY_ATTRIBUTES threadAttributes, BOOL inheritHandles, DWORD creationFlags,
                    LPVOID environment, LPCWSTR currentDirectory, LPSTARTUPINFOW startupInfo,
                    LPPROCESS_INFORMATION processInformation) noexcept try {
    constexpr DWORD knownFlags = EXTENDED_STARTUPINFO_PRESENT | CREATE_UNICODE_ENVIRONMENT;
    const bool extended = (creationFlags & EXTENDED_STARTUPINFO_PRESENT) != 0;
    if (!applicationName || !commandLine || !startupInfo || !processInformation || processAttributes ||
        threadAttributes || environment || (creationFlags & ~knownFlags) != 0 ||
        (extended && startupInfo->cb != sizeof(STARTUPINFOEXW))) {
        return Platform::Fail(ERROR_INVALID_PARAMETER);
    }
    const auto handles =
        Platform::HandlesOf(extended ? reinterpret_cast<const STARTUPINFOEXW*>(startupInfo)->lpAttributeList : nullptr);
    const auto objects = PassedObjects(handles);
    // Without a list all inheritable handles would have to pass, and nobody here wants that.
    if (!objects || (inheritHandles != FALSE) == handles.empty()) return Platform::Fail(ERROR_INVALID_PARAMETER);
    std::vector<int> descriptors;
    for (const auto& object : *objects) descriptors.push_back(object->PassedDescriptor());

    const std::wstring_view words(commandLine);
    const fs::path image = AbsoluteSpelling(applicationName);
    const fs::path folder = currentDirectory ? AbsoluteSpelling(currentDirectory) : fs::current_path();
    if (const DWORD error = Platform::JudgeWindowsProgram(image)) return Platform::Fail(error);
    std::error_code error;
    if (!fs::is_directory(folder, error)) return Platform::Fail(ERROR_DIRECTORY);

    Platform::StartRequest request{.image = image.native(),
                                   .commandLine = Platform::Utf16FromWide(words),
                                   .folder = folder.native(),
                                   .showWindow = Platform::StartRequest::noShowWindow};
    if (request.commandLine.size() > longestCommandLine) return Platform::Fail(ERROR_FILENAME_EXCED_RANGE);
    if ((startupInfo->dwFlags & STARTF_USESHOWWINDOW) != 0) request.showWindow = startupInfo->wShowWindow;

    Platform::StartOutcome outcome = Platform::StartUnderSupervisor(request, descriptors);
    if (!outcome.process) {
        Explain(outcome.explanation);
        return Platform::Fail(outcome.error);
    }
    return HandOut(std::move(outcome.process), *processInformation);
} catch (const std::bad_alloc&) {
    return Platform::Fail(ERROR_NOT_ENOUGH_MEMORY);
} catch (const std::exception&) {
    return Platform::Fail(ERROR_GEN_FAILURE);
}
