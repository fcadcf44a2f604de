// Putting the chosen driver into the game folder, and what is tested before.
#pragma once

#include "launcher/GameLaunch/Handle.h"

#include <filesystem>
#include <memory>

namespace GameLaunch {

/// Makes `target` equal to `source`. A target with the same bytes isn't touched; a different one is first copied to
/// `<target>.backup-<ticks>` and then overwritten, so that until the overwrite starts a complete old file always lies
/// under its name or as the backup. Backups are never read or removed. Throws std::runtime_error "Cannot open driver"
/// or "Cannot read driver", or std::filesystem::filesystem_error named "copy_file".
void InstallDriver(const std::filesystem::path& source, const std::filesystem::path& target);

/// The first running process whose program file is `imagePath` (compared as text, ignoring case) and whose file name is
/// quake2.exe; empty when there is none. `excludedProcessId` is passed over; 0 excludes none. Processes that can't be
/// opened don't count.
std::shared_ptr<Handle> FindRunningProcess(const std::filesystem::path& imagePath, DWORD excludedProcessId);

/// Whether this processor has SSE4.1: `cpuid` leaf 1, bit 19 of ECX.
bool HasSse41();

}  // namespace GameLaunch
