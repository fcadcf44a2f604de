#include "Platform/Interface/Paths.h"
#include "Platform/Interface/SearchPlaces.h"
#include "Platform/Linux/Files/CaseFolding.h"
#include "Platform/Linux/Search/Places/SteamFolders.h"
#include "Platform/Linux/Wine/Prefixes.h"
#include "Platform/Linux/Wine/RegistryFile.h"

#include <windows.h>

#include <cstring>
#include <exception>
#include <filesystem>
#include <optional>
#include <string_view>

namespace fs = std::filesystem;

namespace {

constexpr DWORD RegSz = 1;

/// The file of a prefix that keeps a root's keys; null for roots that no caller asks for.
const char* RegistryFileName(HKEY root) {
    if (root == HKEY_CURRENT_USER) return "user.reg";
    if (root == HKEY_LOCAL_MACHINE) return "system.reg";
    return nullptr;
}

/// The names that a key may have in a prefix: as given and, since a 32-bit prefix has no view for 32-bit programs apart
/// from the machine's own keys, without that view's name.
std::vector<std::wstring> KeySpellings(std::wstring_view key) {
    constexpr std::wstring_view view = L"Software\\Wow6432Node\\";
    std::vector<std::wstring> spellings{std::wstring(key)};
    if (Platform::EqualIgnoringCase(key.substr(0, view.size()), view)) {
        spellings.push_back(L"Software\\" + std::wstring(key.substr(view.size())));
    }
    return spellings;
}

/// A Windows path as one of this system, any other text as it is. Empty for a path on a drive that the prefix lacks.
std::wstring LocalText(const Platform::WinePrefix& prefix, const std::wstring& text) {
    const std::optional<fs::path> path = prefix.UnixPath(text);
    if (path) return Platform::TextFromPath(*path);
    return text.size() >= 2 && text[1] == L':' ? std::wstring() : text;
}

bool IsSteamPath(HKEY root, std::wstring_view key, std::wstring_view name) {
    return root == HKEY_CURRENT_USER && Platform::EqualIgnoringCase(key, L"Software\\Valve\\Steam") &&
           Platform::EqualIgnoringCase(name, L"SteamPath");
}

}  // namespace

std::vector<std::wstring> Platform::RegistryStrings(HKEY root, const wchar_t* subkey, const wchar_t* value) {
    const char* const fileName = RegistryFileName(root);
    if (!fileName) return {};
    const std::wstring_view key = subkey ? subkey : L"";
    const std::wstring_view name = value ? value : L"";
    std::vector<std::wstring> strings;
    if (IsSteamPath(root, key, name)) {
        for (const fs::path& folder : SteamFolders()) strings.push_back(TextFromPath(folder));
    }
    const std::vector<std::wstring> spellings = KeySpellings(key);
    for (const WinePrefix& prefix : KnownPrefixes()) {
        for (const std::wstring& spelling : spellings) {
            const std::optional<std::wstring> stored = ReadRegistryString(prefix.Folder() / fileName, spelling, name);
            if (!stored) continue;
            std::wstring text = LocalText(prefix, *stored);
            if (!text.empty()) strings.push_back(std::move(text));
            break;
        }
    }
    return strings;
}

LSTATUS RegGetValueW(HKEY root, LPCWSTR subkey, LPCWSTR value, DWORD flags, LPDWORD type, PVOID data,
                     LPDWORD size) noexcept try {
    if ((flags & RRF_RT_REG_SZ) == 0 || (data && !size)) return static_cast<LSTATUS>(ERROR_INVALID_PARAMETER);
    const std::vector<std::wstring> strings = Platform::RegistryStrings(root, subkey, value);
    if (strings.empty()) return static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND);
    const std::wstring& text = strings.front();
    const auto needed = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    const DWORD room = size ? *size : 0;
    if (type) *type = RegSz;
    if (size) *size = needed;
    if (!data) return static_cast<LSTATUS>(ERROR_SUCCESS);
    if (room < needed) return static_cast<LSTATUS>(ERROR_MORE_DATA);
    std::memcpy(data, text.c_str(), needed);
    return static_cast<LSTATUS>(ERROR_SUCCESS);
} catch (const std::exception&) {
    return static_cast<LSTATUS>(ERROR_NOT_ENOUGH_MEMORY);
}
