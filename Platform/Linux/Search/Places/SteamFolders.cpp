#include "Platform/Linux/Search/Places/SteamFolders.h"

#include "Platform/Linux/Search/Places/FolderList.h"
#include "Platform/Linux/Search/Places/UserFolders.h"

namespace fs = std::filesystem;

namespace Platform {

std::vector<fs::path> SteamFolders() {
    const fs::path home = HomeFolder();
    if (home.empty()) return {};
    FolderList list;
    // Steam keeps this link up to date; the data folder is where it installs by default.
    list.Add(home / ".steam" / "root");
    list.Add(DataFolder() / "Steam");
    // The sandboxes have data folders of their own, whatever XDG_DATA_HOME says outside.
    const fs::path flatpak = home / ".var" / "app" / "com.valvesoftware.Steam";
    list.Add(flatpak / ".local" / "share" / "Steam");
    list.Add(flatpak / "data" / "Steam");
    list.Add(home / "snap" / "steam" / "common" / ".local" / "share" / "Steam");
    return list.Folders();
}

}  // namespace Platform
