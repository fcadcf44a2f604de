#pragma once

#include "Platform/Linux/Search/Places/MountTable.h"

#include <filesystem>
#include <vector>

namespace Platform {

/// The mount points that a user may keep games on, in the table's order: "/" and disks, fixed or not. Left out are
/// network mounts, the kernel's own file systems, memory, program packages, the system's own places such as /boot,
/// single files, mounts that another one covers, and folders that an earlier one in the list shows already. Touches
/// only fixed disks. `sys` is where the kernel's device tree is mounted.
std::vector<std::filesystem::path> LocalMounts(const MountTable& mounts, const std::filesystem::path& sys = "/sys");

}  // namespace Platform
