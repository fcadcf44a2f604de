#include "Platform/Linux/Search/Places/MountKind.h"

#include "Platform/Linux/Base/FileDescriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <system_error>

namespace fs = std::filesystem;

namespace Platform {

namespace {

// An automount point (autofs) counts as remote until something is mounted on it: a look would mount it, or hang trying.
constexpr std::array RemoteTypes = {
    std::string_view("9p"),     std::string_view("afs"),   std::string_view("autofs"),  std::string_view("ceph"),
    std::string_view("cifs"),   std::string_view("coda"),  std::string_view("fuse"),    std::string_view("gfs2"),
    std::string_view("lustre"), std::string_view("ncpfs"), std::string_view("nfs"),     std::string_view("nfs4"),
    std::string_view("ocfs2"),  std::string_view("pvfs2"), std::string_view("vboxsf"),  std::string_view("virtiofs"),
    std::string_view("vmhgfs"), std::string_view("gpfs"),  std::string_view("orangefs")};

// File systems in programs that lay local folders out anew. Any other one may wait for a network.
constexpr std::array LocalFuseTypes = {std::string_view("fuse.bindfs"), std::string_view("fuse.cryfs"),
                                       std::string_view("fuse.encfs"), std::string_view("fuse.gocryptfs"),
                                       std::string_view("fuse.mergerfs")};

// Without a block device of their own, or with several.
constexpr std::array FixedTypes = {
    std::string_view("aufs"),    std::string_view("bcachefs"), std::string_view("btrfs"), std::string_view("ecryptfs"),
    std::string_view("overlay"), std::string_view("ubifs"),    std::string_view("zfs")};

// Packages of programs, mounted through loop devices.
constexpr std::array PackageTypes = {std::string_view("squashfs"), std::string_view("erofs"),
                                     std::string_view("cramfs")};

template <std::size_t Count>
bool Contains(const std::array<std::string_view, Count>& list, std::string_view text) {
    return std::find(list.begin(), list.end(), text) != list.end();
}

bool ReadsOne(const fs::path& file) {
    const FileDescriptor descriptor(open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    char digit = 0;
    return descriptor && read(descriptor.Get(), &digit, 1) == 1 && digit == '1';
}

/// Whether the device tree calls the mount's disk removable. A partition's own folder lies in that of its disk, which
/// is what holds the attribute.
bool IsOnRemovableDisk(const Mount& mount, const fs::path& sys) {
    // A btrfs mount has a device number of no device; the name of its (first) device is told as the source.
    const fs::path link =
        mount.major != 0 ? sys / "dev" / "block" / (std::to_string(mount.major) + ':' + std::to_string(mount.minor))
                         : sys / "class" / "block" / fs::path(mount.source).filename();
    std::error_code error;
    const fs::path device = fs::canonical(link, error);
    if (error) return false;
    return ReadsOne(device / "removable") || ReadsOne(device.parent_path() / "removable");
}

}  // namespace

bool IsRemote(const Mount& mount) {
    const std::string_view type = mount.type;
    if (type.starts_with("fuse.")) return !Contains(LocalFuseTypes, type);
    return type.starts_with("smb") || Contains(RemoteTypes, type);
}

MountKind KindOf(const Mount& mount, const fs::path& sys) {
    const std::string_view type = mount.type;
    if (IsRemote(mount)) return MountKind::Remote;
    if (type == "iso9660" || type == "udf") return MountKind::Optical;
    if (type == "tmpfs" || type == "ramfs") return MountKind::Memory;
    if (Contains(PackageTypes, type)) return MountKind::Other;
    const bool onDevice = mount.source.starts_with("/dev/");
    if (onDevice && IsOnRemovableDisk(mount, sys)) return MountKind::Removable;
    if (onDevice || Contains(FixedTypes, type) || Contains(LocalFuseTypes, type)) return MountKind::Fixed;
    return MountKind::Other;
}

}  // namespace Platform
