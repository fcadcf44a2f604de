#include "launcher/GameDiscovery/Search.h"

#include "launcher/GameDiscovery/QuotedValues.h"
#include "launcher/GameDiscovery/Validation.h"
#include "Platform/Interface/Paths.h"
#include "Platform/Interface/SearchPlaces.h"
#include "Platform/Text/Unicode.h"

#include <cwchar>

namespace fs = std::filesystem;

namespace GameDiscovery {

namespace {

using Paths = std::vector<fs::path>;

class RealSources final : public SearchSources {
public:
    std::vector<std::wstring> RegistryStrings(HKEY root, const wchar_t* subkey, const wchar_t* value) override {
        return Platform::RegistryStrings(root, subkey, value);
    }
    std::vector<std::wstring> FolderVariables(const wchar_t* name) override { return Platform::FolderVariables(name); }
    std::vector<std::wstring> DriveRoots() override { return Platform::DriveRoots(); }
    UINT DriveType(const wchar_t* root) override { return GetDriveTypeW(root); }
};

constexpr const wchar_t* programFiles = L"ProgramFiles";
constexpr const wchar_t* programFilesX86 = L"ProgramFiles(x86)";

/// The values of `key` in one of Steam's files, which are UTF-8.
std::vector<std::wstring> StoredTexts(const fs::path& file, std::string_view key) {
    std::vector<std::wstring> texts;
    for (const std::string& value : ReadQuotedValues(file, key)) texts.push_back(Platform::WideFromUtf8(value));
    return texts;
}

Paths SteamRoots(SearchSources& sources) {
    Paths roots;
    const auto add = [&roots](const std::vector<std::wstring>& folders, const fs::path& below) {
        for (const std::wstring& folder : folders) {
            if (folder.empty()) continue;
            const fs::path path = Platform::PathFromText(folder);
            roots.push_back(below.empty() ? path : path / below);
        }
    };
    add(sources.RegistryStrings(HKEY_CURRENT_USER, L"Software\\Valve\\Steam", L"SteamPath"), {});
    add(sources.RegistryStrings(HKEY_LOCAL_MACHINE, L"SOFTWARE\\WOW6432Node\\Valve\\Steam", L"InstallPath"), {});
    add(sources.FolderVariables(programFilesX86), "Steam");
    return roots;
}

/// A library is not joined to the Steam folder whose file names it: a relative one counts from the working directory.
/// Only what an absolute path means may depend on that folder.
fs::path Library(const fs::path& root, const std::wstring& text) {
    const auto isSeparator = [](wchar_t character) { return character == L'/' || character == L'\\'; };
    const bool absolute = (!text.empty() && isSeparator(text[0])) || (text.size() > 1 && text[1] == L':');
    return Platform::JoinStoredPath(absolute ? root : fs::path(), text);
}

Paths Libraries(const Paths& roots) {
    Paths libraries = roots;
    for (const fs::path& root : roots) {
        for (const std::wstring& text : StoredTexts(root / "steamapps" / "libraryfolders.vdf", "path")) {
            libraries.push_back(Library(root, text));
        }
    }
    return libraries;
}

void AddSteamCandidates(SearchSources& sources, Paths& candidates) {
    for (const fs::path& library : Libraries(SteamRoots(sources))) {
        const fs::path apps = library / "steamapps";
        // The store's number of the classic game.
        for (const std::wstring& text : StoredTexts(apps / "appmanifest_2320.acf", "installdir")) {
            candidates.push_back(Platform::JoinStoredPath(apps / "common", text));
        }
        candidates.push_back(apps / "common" / "Quake 2");
    }
}

void AddDriveCandidates(SearchSources& sources, Paths& candidates) {
    for (const std::wstring& text : sources.DriveRoots()) {
        if (sources.DriveType(text.c_str()) != DRIVE_FIXED) continue;
        const fs::path root = Platform::PathFromText(text);
        candidates.push_back(root / "Quake2");
        candidates.push_back(root / "Quake 2");
        candidates.push_back(root / "Games" / "Quake2");
        candidates.push_back(root / "Games" / "Quake II");
        candidates.push_back(root / "GOG Games" / "Quake II");
    }
}

void AddProgramFolderCandidates(SearchSources& sources, Paths& candidates) {
    for (const wchar_t* const name : {programFiles, programFilesX86}) {
        for (const std::wstring& text : sources.FolderVariables(name)) {
            if (text.empty()) continue;
            const fs::path folder = Platform::PathFromText(text);
            candidates.push_back(folder / "Quake2");
            candidates.push_back(folder / "Quake II");
            candidates.push_back(folder / "Quake 2");
        }
    }
}

}  // namespace

SearchSources& SystemSources() {
    static RealSources sources;
    return sources;
}

Paths Candidates(SearchSources& sources) {
    Paths candidates;
    AddSteamCandidates(sources, candidates);
    AddDriveCandidates(sources, candidates);
    AddProgramFolderCandidates(sources, candidates);
    return candidates;
}

Result FindGame(const fs::path& preferred, SearchSources& sources) {
    if (!preferred.empty()) {
        Result result = ValidateFolder(preferred);
        if (!result.Folder.empty()) return result;
    }
    for (const fs::path& candidate : Candidates(sources)) {
        Result result = ValidateFolder(candidate);
        if (!result.Folder.empty()) return result;
    }
    Result result;
    result.Message = L"No classic Quake II installation found. Use Browse for game.";
    return result;
}

std::wstring ReadRegistryString(HKEY root, const std::wstring& subkey, const std::wstring& value) {
    std::wstring buffer(65536 / sizeof(wchar_t), L'\0');
    auto bytes = static_cast<DWORD>(buffer.size() * sizeof(wchar_t));
    if (RegGetValueW(root, subkey.c_str(), value.c_str(), RRF_RT_REG_SZ, nullptr, buffer.data(), &bytes) != 0)
        return {};
    buffer.resize(std::wcslen(buffer.c_str()));
    return buffer;
}

std::wstring ReadEnvironment(const std::wstring& name) {
    std::wstring buffer(32768, L'\0');
    const DWORD length = GetEnvironmentVariableW(name.c_str(), buffer.data(), static_cast<DWORD>(buffer.size()));
    if (length >= buffer.size()) return {};
    buffer.resize(length);
    return buffer;
}

}  // namespace GameDiscovery
