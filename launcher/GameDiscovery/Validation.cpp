#include "launcher/GameDiscovery/Validation.h"

#include "launcher/GameDiscovery/FileFormats.h"
#include "launcher/GameDiscovery/FileReader.h"
#include "Platform/Interface/Paths.h"

#include <windows.h>

#include <system_error>

namespace fs = std::filesystem;

namespace GameDiscovery {

namespace {

/// Absolute against the working directory and normalised by its text alone; empty when that can't be done.
fs::path AbsoluteNormal(const fs::path& path) {
    const std::wstring text = Platform::TextFromPath(path);
    if (text.empty()) return {};
    std::wstring buffer(260, L'\0');
    for (;;) {
        const auto capacity = static_cast<DWORD>(buffer.size());
        const DWORD length = GetFullPathNameW(text.c_str(), capacity, buffer.data(), nullptr);
        if (length == 0) return {};
        if (length < capacity) {
            buffer.resize(length);
            return Platform::PathFromText(buffer).lexically_normal();
        }
        // The size needed, terminator included. It may have grown since, with another working directory.
        buffer.resize(std::size_t{length} + 1);
    }
}

Result Refusal(const wchar_t* message) {
    Result result;
    result.Message = message;
    return result;
}

}  // namespace

Result ValidateFolder(const fs::path& folder) {
    const fs::path absolute = AbsoluteNormal(folder);
    if (absolute.empty()) return Refusal(L"Select a Quake II installation folder.");
    const fs::path game = absolute / "quake2.exe";
    if (!EntryExists(game)) return Refusal(L"Quake II was not found in this folder (quake2.exe is missing).");
    if (!IsClassicPe(game)) return Refusal(L"Choose classic 32-bit Quake II (quake2.exe), not the remaster.");
    if (!IsClassicPe(absolute / "ref_gl.dll")) {
        return Refusal(L"The classic OpenGL renderer (ref_gl.dll) is missing or incompatible.");
    }
    if (!IsValidPak(absolute / "baseq2" / "pak0.pak")) {
        return Refusal(L"Quake II game data is missing or invalid: baseq2\\pak0.pak.");
    }
    Result result;
    result.Folder = Platform::TextFromPath(absolute);
    result.Message = L"Quake II installation verified.";
    return result;
}

bool IsClassicPe(const fs::path& path) {
    FileReader file(path);
    return HasClassicPeHeaders(file);
}

bool IsValidPak(const fs::path& path) {
    FileReader file(path);
    return HasPakHeader(file);
}

bool EntryExists(const fs::path& path) {
    if (GetFileAttributesW(Platform::TextFromPath(path).c_str()) != INVALID_FILE_ATTRIBUTES) return true;
    const DWORD error = GetLastError();
    switch (error) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_BAD_NETPATH:
        case ERROR_INVALID_NAME:
        case ERROR_BAD_PATHNAME:
        case ERROR_FILENAME_EXCED_RANGE:
        case ERROR_DIRECTORY:
            return false;
        default:
            throw fs::filesystem_error("exists", path,
                                       std::error_code(static_cast<int>(error), std::system_category()));
    }
}

}  // namespace GameDiscovery
