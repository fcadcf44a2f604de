// What kind of place a mount is, judged by the mount table and the kernel's device tree, never by the file system
// itself.
#pragma once

#include "Platform/Linux/Search/Places/MountTable.h"

#include <filesystem>

namespace Platform {

enum class MountKind {
    /// A disk of this machine, or layers over one.
    Fixed,
    /// A disk that can be taken out.
    Removable,
    /// On another machine, or behind a program that may not answer.
    Remote,
    Optical,
    Memory,
    /// Holds no files of the user's: the kernel's own views, packages of programs.
    Other,
};

/// `sys` is where the kernel's device tree is mounted; for tests.
MountKind KindOf(const Mount& mount, const std::filesystem::path& sys = "/sys");

/// Whether the mount is of MountKind::Remote, by its type alone.
bool IsRemote(const Mount& mount);

}  // namespace Platform
