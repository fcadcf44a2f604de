#pragma once

#include "Platform/Linux/Search/Places/MountTable.h"

#include <windows.h>

#include <filesystem>

namespace Platform {

/// GetDriveTypeW over a mount table. The file systems that "/" and the home folder lie on count as fixed, whatever they
/// are: live systems run in memory, and some homes are on a server. `sys` is where the kernel's device tree is mounted.
UINT DriveTypeOf(const std::filesystem::path& root, const MountTable& mounts, const std::filesystem::path& home,
                 const std::filesystem::path& sys = "/sys");

}  // namespace Platform
