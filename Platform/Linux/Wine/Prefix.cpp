#include "Platform/Linux/Wine/Prefix.h"

#include "Platform/Interface/Paths.h"
#include "Platform/Linux/Search/Places/MountKind.h"
#include "Platform/Linux/Search/Places/MountTable.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace Platform {

namespace {

constexpr std::wstring_view Separators = L"\\/";

bool IsSeparator(wchar_t c) {
    return c == L'\\' || c == L'/';
}

/// 'A' to 'Z' for a letter of either case; 0 for anything else.
wchar_t DriveLetter(wchar_t c) {
    if (c >= L'a' && c <= L'z') return static_cast<wchar_t>(c - L'a' + L'A');
    return c >= L'A' && c <= L'Z' ? c : L'\0';
}

bool IsFolder(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

/// The folder that a drive's link leads to; nothing where it leads nowhere.
std::optional<fs::path> LinkedFolder(const fs::path& link, const MountTable& mounts) {
    std::error_code error;
    const fs::path absolute = fs::absolute(link, error);
    if (error || !fs::exists(fs::symlink_status(absolute, error))) return std::nullopt;
    std::optional<fs::path> folder = mounts.Resolve(absolute);
    if (!folder) return std::nullopt;
    const Mount* const mount = mounts.Holding(*folder);
    if (mount && IsRemote(*mount)) return folder;
    return IsFolder(*folder) ? folder : std::nullopt;
}

std::optional<fs::path> FindDriveRoot(const fs::path& prefix, wchar_t letter, const MountTable& mounts) {
    const char upper = static_cast<char>(letter);
    const char lower = static_cast<char>(letter - L'A' + L'a');
    // Wine makes the links in lower case.
    for (const char name : {lower, upper}) {
        std::optional<fs::path> folder = LinkedFolder(prefix / "dosdevices" / (std::string(1, name) + ':'), mounts);
        if (folder) return folder;
    }
    if (letter == L'C') return LinkedFolder(prefix / "drive_c", mounts);
    return std::nullopt;
}

/// The components of a Windows path's rest, "." and ".." resolved without leaving its root.
fs::path RelativePath(std::wstring_view rest) {
    std::vector<std::wstring_view> components;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find_first_of(Separators), rest.size());
        const std::wstring_view component = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (component == L"..") {
            if (!components.empty()) components.pop_back();
        } else if (!component.empty() && component != L".") {
            components.push_back(component);
        }
    }
    fs::path relative;
    for (const std::wstring_view component : components) relative /= PathFromText(component);
    return relative;
}

/// Takes a prefix off the front of `text`: ASCII letters in either case, either separator for a backslash.
bool TakePrefix(std::wstring_view& text, std::wstring_view prefix) {
    if (text.size() < prefix.size()) return false;
    for (std::size_t i = 0; i < prefix.size(); ++i) {
        const bool same = prefix[i] == L'\\' ? IsSeparator(text[i])
                                             : text[i] == prefix[i] || (DriveLetter(text[i]) != L'\0' &&
                                                                        DriveLetter(text[i]) == DriveLetter(prefix[i]));
        if (!same) return false;
    }
    text.remove_prefix(prefix.size());
    return true;
}

/// Whether a name means the same file in a path on a drive. Windows drops dots and blanks at a name's end.
bool FitsDrive(const std::wstring& name) {
    return name.find_first_of(L"<>:\"|?*") == std::wstring::npos && name.back() != L'.' && name.back() != L' ' &&
           std::none_of(name.begin(), name.end(), [](wchar_t c) { return c < L' '; });
}

/// The names in `path` below `folder`, which holds it.
std::vector<std::wstring> NamesBelow(const fs::path& path, const fs::path& folder) {
    std::vector<std::wstring> names;
    auto component = path.begin();
    std::advance(component, std::distance(folder.begin(), folder.end()));
    for (; component != path.end(); ++component) {
        if (!component->empty()) names.push_back(TextFromPath(*component));
    }
    return names;
}

std::wstring Joined(std::wstring text, const std::vector<std::wstring>& names) {
    for (const std::wstring& name : names) {
        if (text.back() != L'\\') text += L'\\';
        text += name;
    }
    return text;
}

bool HasBackslash(const std::wstring& name) {
    return name.find(L'\\') != std::wstring::npos;
}

}  // namespace

WinePrefix::WinePrefix(fs::path folder) : folder_(std::move(folder)) {}

bool WinePrefix::Exists() const {
    return !folder_.empty() && (IsFolder(folder_ / "dosdevices") || IsFolder(folder_ / "drive_c"));
}

std::vector<WineDrive> WinePrefix::Drives() const {
    std::vector<WineDrive> drives;
    const MountTable mounts = MountTable::Current();
    for (wchar_t letter = L'A'; letter <= L'Z'; ++letter) {
        std::optional<fs::path> root = FindDriveRoot(folder_, letter, mounts);
        if (root) drives.push_back({letter, std::move(*root)});
    }
    return drives;
}

std::optional<fs::path> WinePrefix::DriveRoot(wchar_t letter) const {
    const wchar_t upper = DriveLetter(letter);
    if (upper == L'\0') return std::nullopt;
    return FindDriveRoot(folder_, upper, MountTable::Current());
}

std::optional<fs::path> WinePrefix::UnixPath(std::wstring_view windowsPath) const {
    if (windowsPath.find(L'\0') != std::wstring_view::npos) return std::nullopt;
    // Both spellings of the prefix that switches the parsing of Windows paths off.
    const bool literal = TakePrefix(windowsPath, L"\\\\?\\") || TakePrefix(windowsPath, L"\\??\\");
    if (literal && TakePrefix(windowsPath, L"unix\\")) return ExistingSpelling("/" / RelativePath(windowsPath));
    if (windowsPath.size() < 2 || windowsPath[1] != L':') return std::nullopt;
    const std::optional<fs::path> root = DriveRoot(windowsPath[0]);
    if (!root) return std::nullopt;
    // A drive's current folder is its root: nobody here has changed it.
    const fs::path relative = RelativePath(windowsPath.substr(2));
    return relative.empty() ? *root : ExistingSpelling(*root / relative);
}

std::optional<std::wstring> WinePrefix::WindowsPath(const fs::path& unixPath) const {
    std::error_code error;
    const fs::path absolute = fs::absolute(unixPath, error);
    if (unixPath.empty() || error) return std::nullopt;
    fs::path path = WeaklyCanonical(absolute, error);
    if (error) path = absolute.lexically_normal();

    const std::vector<WineDrive> drives = Drives();
    const WineDrive* nearest = nullptr;
    for (const WineDrive& drive : drives) {
        if (!IsWithin(path, drive.root)) continue;
        if (!nearest || drive.root.native().size() > nearest->root.native().size()) nearest = &drive;
    }
    if (nearest) {
        const std::vector<std::wstring> names = NamesBelow(path, nearest->root);
        if (std::any_of(names.begin(), names.end(), HasBackslash)) return std::nullopt;
        if (std::all_of(names.begin(), names.end(), FitsDrive)) {
            return Joined(std::wstring(1, nearest->letter) + L":\\", names);
        }
    }
    const std::vector<std::wstring> names = NamesBelow(path, "/");
    if (std::any_of(names.begin(), names.end(), HasBackslash)) return std::nullopt;
    return Joined(L"\\\\?\\unix\\", names);
}

}  // namespace Platform
