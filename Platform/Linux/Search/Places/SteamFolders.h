// Where Steam for Linux is installed. The environment is read at each call.
#pragma once

#include <filesystem>
#include <vector>

namespace Platform {

/// The existing root folders of Steam, each once: of the distribution's own package, then of Flatpak, then of Snap.
std::vector<std::filesystem::path> SteamFolders();

}  // namespace Platform
