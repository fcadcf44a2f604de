#include "Platform/Interface/Paths.h"
#include "Platform/Interface/SearchPlaces.h"
#include "Platform/Linux/Wine/Prefixes.h"
#include "Platform/Text/Unicode.h"

#include <cstdlib>
#include <optional>
#include <string_view>
#include <system_error>

namespace fs = std::filesystem;

namespace Platform {

namespace {

/// Where a prefix has the folder of a variable; null for variables that prefixes have no folder for.
const wchar_t* WindowsFolder(std::wstring_view name) {
    if (name == L"ProgramFiles") return L"C:\\Program Files";
    if (name == L"ProgramFiles(x86)") return L"C:\\Program Files (x86)";
    return nullptr;
}

}  // namespace

std::vector<std::wstring> FolderVariables(const wchar_t* name) {
    std::vector<std::wstring> folders;
    const char* const set = std::getenv(NativeFromWide(name).c_str());
    if (set && *set) folders.push_back(WideFromNative(set));
    const wchar_t* const folder = WindowsFolder(name);
    if (!folder) return folders;
    for (const WinePrefix& prefix : KnownPrefixes()) {
        const std::optional<fs::path> path = prefix.UnixPath(folder);
        std::error_code error;
        if (path && fs::is_directory(*path, error)) folders.push_back(TextFromPath(*path));
    }
    return folders;
}

}  // namespace Platform
