#include "Platform/Linux/Wine/Prefixes.h"

#include "Platform/Interface/Paths.h"
#include "Platform/Linux/Search/Places/FolderList.h"
#include "Platform/Linux/Search/Places/MountKind.h"
#include "Platform/Linux/Search/Places/MountTable.h"
#include "Platform/Linux/Search/Places/SteamFolders.h"
#include "Platform/Linux/Search/Places/UserFolders.h"

#include <system_error>

namespace fs = std::filesystem;

namespace Platform {

namespace {

std::optional<WinePrefix> NearestAbove(fs::path folder) {
    while (true) {
        WinePrefix prefix(folder);
        if (prefix.Exists()) return prefix;
        const fs::path parent = folder.parent_path();
        if (parent == folder || parent.empty()) return std::nullopt;
        folder = parent;
    }
}

/// Looks for prefixes, and not on network mounts, which may be dead, unless the home folder itself is on one.
class PrefixFinder {
public:
    explicit PrefixFinder(const fs::path& home)
        : mounts_(MountTable::Current()), homeMount_(mounts_.Holding(mounts_.Resolve(home).value_or(home))) {}

    /// Adds the folder if it is a prefix.
    void Add(const fs::path& folder) {
        if (MayTouch(folder) && WinePrefix(folder).Exists()) found_.Add(folder);
    }

    /// Adds the prefixes among `parent`'s folders, or what is called `below` in each of these.
    void AddEach(const fs::path& parent, const fs::path& below = {}) {
        if (!MayTouch(parent)) return;
        for (const fs::path& name : SortedNames(parent)) Add(below.empty() ? parent / name : parent / name / below);
    }

    /// Adds a prefix that the user chose, wherever it is.
    void AddChosen(const fs::path& folder) {
        if (WinePrefix(folder).Exists()) found_.Add(folder);
    }

    std::vector<WinePrefix> Prefixes() const { return {found_.Folders().begin(), found_.Folders().end()}; }

private:
    bool MayTouch(const fs::path& path) const {
        const std::optional<fs::path> resolved = mounts_.Resolve(path);
        if (!resolved) return false;
        const Mount* const mount = mounts_.Holding(*resolved);
        return !mount || mount == homeMount_ || !IsRemote(*mount);
    }

    MountTable mounts_;
    const Mount* homeMount_;
    FolderList found_;
};

}  // namespace

WinePrefix DefaultPrefix() {
    fs::path chosen = AbsolutePathVariable("WINEPREFIX");
    if (!chosen.empty()) return WinePrefix(std::move(chosen));
    const fs::path home = HomeFolder();
    return WinePrefix(home.empty() ? home : home / ".wine");
}

std::optional<WinePrefix> PrefixContaining(const fs::path& path) {
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    if (path.empty() || error) return std::nullopt;
    const fs::path resolved = WeaklyCanonical(absolute, error);
    if (!error) {
        std::optional<WinePrefix> prefix = NearestAbove(resolved);
        if (prefix) return prefix;
    }
    return NearestAbove(absolute.lexically_normal());
}

std::vector<WinePrefix> KnownPrefixes() {
    const fs::path home = HomeFolder();
    PrefixFinder finder(home);
    finder.AddChosen(DefaultPrefix().Folder());
    if (home.empty()) return finder.Prefixes();
    const fs::path data = DataFolder();
    finder.Add(home / ".wine");
    finder.AddEach(data / "wineprefixes");
    finder.AddEach(home / "Games");
    finder.AddEach(data / "bottles" / "bottles");
    finder.AddEach(home / ".var" / "app" / "com.usebottles.bottles" / "data" / "bottles" / "bottles");
    finder.AddEach(home / ".PlayOnLinux" / "wineprefix");
    finder.AddEach(home / "Games" / "Heroic" / "Prefixes");
    finder.AddEach(home / "Games" / "Heroic" / "Prefixes" / "default");
    for (const fs::path& steam : SteamFolders()) finder.AddEach(steam / "steamapps" / "compatdata", "pfx");
    return finder.Prefixes();
}

}  // namespace Platform
