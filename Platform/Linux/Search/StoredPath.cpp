#include "Platform/Interface/Paths.h"
#include "Platform/Interface/SearchPlaces.h"
#include "Platform/Linux/Wine/Prefixes.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace fs = std::filesystem;

namespace Platform {

namespace {

bool IsSeparator(wchar_t c) {
    return c == L'\\' || c == L'/';
}

bool HasDrive(std::wstring_view text) {
    if (text.size() < 2 || text[1] != L':') return false;
    return (text[0] >= L'a' && text[0] <= L'z') || (text[0] >= L'A' && text[0] <= L'Z');
}

fs::path WithSeparators(std::wstring text) {
    std::replace(text.begin(), text.end(), L'\\', L'/');
    return PathFromText(text);
}

/// A path that names a drive, or the whole of another machine. In a prefix only its own drives count: a letter means
/// something else in the next one.
fs::path FromWindowsPath(const fs::path& base, const std::wstring& text) {
    std::optional<fs::path> path;
    if (const std::optional<WinePrefix> around = PrefixContaining(base)) {
        path = around->UnixPath(text);
    } else {
        path = DefaultPrefix().UnixPath(text);
        if (!path) {
            for (const WinePrefix& prefix : KnownPrefixes()) {
                path = prefix.UnixPath(text);
                if (path) break;
            }
        }
    }
    return path ? *path : PathFromText(text);
}

/// A path from the root of the drive that `base` lies on, where that is a drive of a prefix around it.
fs::path FromRootedPath(const fs::path& base, const std::wstring& text) {
    if (const std::optional<WinePrefix> around = PrefixContaining(base)) {
        const std::optional<std::wstring> onDrive = around->WindowsPath(base);
        if (onDrive && HasDrive(*onDrive)) {
            const std::optional<fs::path> path = around->UnixPath(onDrive->substr(0, 2) + text);
            if (path) return *path;
        }
    }
    return WithSeparators(text);
}

}  // namespace

fs::path JoinStoredPath(const fs::path& base, const std::wstring& text) {
    const bool isRooted = !text.empty() && IsSeparator(text[0]);
    if (HasDrive(text) || text.starts_with(L"\\\\") || text.starts_with(L"\\??\\")) return FromWindowsPath(base, text);
    return isRooted ? FromRootedPath(base, text) : base / WithSeparators(text);
}

}  // namespace Platform
