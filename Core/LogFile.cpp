// The log file: when it opens, where it lies, and when it closes.

#include "Core/Log.h"
#include "Core/LogStream.h"
#include "Platform/Interface/Paths.h"

#include <windows.h>

#include <array>
#include <exception>

namespace Tamborel {

namespace {

bool claudeMode = false;  // a plain variable, for the same reason as the stream

/// Beside the program, or in the current folder when the program's path names no folder.
std::filesystem::path LogPath() {
    std::array<wchar_t, MAX_PATH> program{};
    GetModuleFileNameW(nullptr, program.data(), MAX_PATH);
    program.back() = L'\0';
    return Platform::PathFromText(program.data()).replace_filename("tamborel_debug.log");
}

void OpenLog() noexcept {
    if (logStream) std::fclose(logStream);
    logStream = nullptr;
    try {
        logStream = Platform::OpenForWriting(LogPath());
    } catch (const std::exception&) {
        // As for a file that can't be opened: the debug stream alone carries the log.
    }
}

}  // namespace

void EnableClaudeMode(bool enable) noexcept {
    claudeMode = enable;
    if (!enable) return;
    OpenLog();
    Log("[Tamborel] Claude mode active. Log open.\n");
}

bool IsClaudeMode() noexcept {
    return claudeMode;
}

void CloseLog() noexcept {
    if (!logStream) return;
    Log("[Tamborel] Log closing.\n");
    std::fclose(logStream);
    logStream = nullptr;
}

}  // namespace Tamborel
