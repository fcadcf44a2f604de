#pragma once

#include <windows.h>

#include <filesystem>

namespace Platform {

/// Whether Wine can be asked to run a file: ERROR_SUCCESS, or the code that Windows gives for such a file. Reads its
/// headers only; never waits on what is no regular file.
DWORD JudgeWindowsProgram(const std::filesystem::path& file);

}  // namespace Platform
