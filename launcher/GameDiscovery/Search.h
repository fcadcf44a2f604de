// The search behind "Find automatically".
#pragma once

#include "launcher/GameDiscovery/Result.h"

#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

namespace GameDiscovery {

/// Where a search may look. The tests put recorded places in the system's stead.
class SearchSources {
public:
    virtual ~SearchSources() = default;
    /// See Platform::RegistryStrings.
    virtual std::vector<std::wstring> RegistryStrings(HKEY root, const wchar_t* subkey, const wchar_t* value) = 0;
    /// See Platform::FolderVariables.
    virtual std::vector<std::wstring> FolderVariables(const wchar_t* name) = 0;
    /// See Platform::DriveRoots.
    virtual std::vector<std::wstring> DriveRoots() = 0;
    /// See GetDriveTypeW.
    virtual UINT DriveType(const wchar_t* root) = 0;
};

/// The system's own places.
SearchSources& SystemSources();

/// The folders that a search validates, in order: Steam's libraries, the fixed drives, the program folders. A folder
/// may stand several times. Throws Platform::InvalidText when one of Steam's files holds a path that isn't UTF-8.
std::vector<std::filesystem::path> Candidates(SearchSources& sources = SystemSources());

/// Returns the validation of `preferred` (may be empty) when it is valid, without looking any further; else that of the
/// first valid candidate; else a Result that says that none was found. Throws what Candidates and ValidateFolder throw:
/// one bad manifest ends the whole search. Takes as long as the file systems take: worker threads only.
Result FindGame(const std::filesystem::path& preferred, SearchSources& sources = SystemSources());

/// A registry string value, empty on any failure; the first where there are several.
std::wstring ReadRegistryString(HKEY root, const std::wstring& subkey, const std::wstring& value);

/// An environment variable, empty when it is missing or longer than 32,767 characters.
std::wstring ReadEnvironment(const std::wstring& name);

}  // namespace GameDiscovery
