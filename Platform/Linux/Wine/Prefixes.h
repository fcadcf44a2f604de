// Which Wine prefixes there are. HOME, XDG_DATA_HOME and WINEPREFIX are read at each call.
#pragma once

#include "Platform/Linux/Wine/Prefix.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace Platform {

/// The user's own prefix, whether it exists or not: WINEPREFIX if that is an absolute path, else .wine in the home
/// folder. Its folder is empty when there is no home folder.
WinePrefix DefaultPrefix();

/// The nearest prefix above `path` (or `path` itself): first above the path with its links resolved, then above the
/// path as given, for a drive that is a link out of its prefix. `path` need not exist.
std::optional<WinePrefix> PrefixContaining(const std::filesystem::path& path);

/// All existing prefixes, each once: the user's own, .wine, then those of winetricks, Lutris, Bottles, PlayOnLinux,
/// Heroic and Steam's Proton; by name within each of these.
std::vector<WinePrefix> KnownPrefixes();

}  // namespace Platform
