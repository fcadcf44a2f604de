// Where a search for the game may look. Windows has one registry, one set of variables and lettered drives; Linux has
// several Steam installations and Wine prefixes, each with its own. Implemented in
// Platform/Linux/Search and in Platform/Windows.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

namespace Platform {

/// All values that stand for a registry string value, best first; at most one on Windows. Paths come back as paths of
/// this system: those of a Wine prefix are taken through its drives.
///
/// For the user's "Software\Valve\Steam" "SteamPath" these are the native, Flatpak and Snap installations of Steam,
/// then the values in the prefixes' user.reg; for the machine's keys the values in their system.reg.
std::vector<std::wstring> RegistryStrings(HKEY root, const wchar_t* subkey, const wchar_t* value);

/// All folders that stand for an environment variable that names a folder: the variable as set, then, for
/// "ProgramFiles" and "ProgramFiles(x86)", those folders of the Wine prefixes. Existing ones only.
std::vector<std::wstring> FolderVariables(const wchar_t* name);

/// Roots of drives in the order to search them, to be asked of GetDriveTypeW: "A:\" to "Z:\" on Windows; on Linux the
/// drives of the Wine prefixes (the system drive of each first), the home folder, and the local mounts.
std::vector<std::wstring> DriveRoots();

/// The path that a text in one of Steam's files means. `base` is the folder that a relative text is joined to; an
/// absolute text replaces it. On Linux a Windows path is taken through the drives of the Wine prefix that `base` lies
/// in, else of the user's own prefix, and backslashes separate components.
std::filesystem::path JoinStoredPath(const std::filesystem::path& base, const std::wstring& text);

}  // namespace Platform
