#include "Platform/Linux/Search/DriveType.h"

#include "Platform/Linux/Search/Places/MountKind.h"

#include <optional>

namespace fs = std::filesystem;

namespace Platform {

UINT DriveTypeOf(const fs::path& root, const MountTable& mounts, const fs::path& home, const fs::path& sys) {
    if (!root.is_absolute()) return DRIVE_NO_ROOT_DIR;
    const std::optional<fs::path> resolved = mounts.Resolve(root);
    if (!resolved) return DRIVE_NO_ROOT_DIR;
    const Mount* const mount = mounts.Holding(*resolved);
    // In a changed root that is no mount point itself the table has no line for "/".
    if (!mount || mount->point == "/") return DRIVE_FIXED;
    if (home.is_absolute() && mount == mounts.Holding(mounts.Resolve(home).value_or(home))) return DRIVE_FIXED;
    switch (KindOf(*mount, sys)) {
        case MountKind::Fixed:
            return DRIVE_FIXED;
        case MountKind::Removable:
            return DRIVE_REMOVABLE;
        case MountKind::Remote:
            return DRIVE_REMOTE;
        case MountKind::Optical:
            return DRIVE_CDROM;
        case MountKind::Memory:
            return DRIVE_RAMDISK;
        case MountKind::Other:
            break;
    }
    return DRIVE_UNKNOWN;
}

}  // namespace Platform
