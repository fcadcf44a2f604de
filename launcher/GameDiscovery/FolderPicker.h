// The folder picker behind "Browse for game…", and the body of the discovery task.
#pragma once

#include "launcher/GameDiscovery/Result.h"

#include <windows.h>

#include <filesystem>

namespace GameDiscovery {

/// Shows the system's folder dialog, opened at `folder` when that exists and modal to `owner`, and validates what the
/// user picked. Blocks until they are done: a worker thread of its own only. Throws what ValidateFolder throws.
Result BrowseForGame(HWND owner, const std::filesystem::path& folder);

/// The body of the discovery task: BrowseForGame when `browse`, else FindGame. Never throws: whatever goes wrong
/// becomes one sentence.
Result Discover(bool browse, HWND owner, const std::filesystem::path& folder) noexcept;

}  // namespace GameDiscovery
