#include "Platform/Linux/Search/Places/MountKind.h"

#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;
using Platform::Mount;
using Platform::MountKind;

namespace {

Mount MountOf(const std::string& type, const std::string& source, unsigned major = 0, unsigned minor = 40) {
    Mount mount;
    mount.type = type;
    mount.source = source;
    mount.major = major;
    mount.minor = minor;
    return mount;
}

/// A device tree with a built-in disk sda and a removable one sdb, each with one partition.
class DeviceTree {
public:
    DeviceTree() {
        AddDisk("sda", "8:0", "8:1", "0\n");
        AddDisk("sdb", "8:16", "8:17", "1\n");
    }
    const fs::path& Path() const { return folder_.Path(); }

private:
    void AddDisk(const std::string& name, const std::string& number, const std::string& partition,
                 const std::string& removable) {
        const fs::path disk = folder_ / "devices/block" / name;
        WriteBytes(disk / "removable", removable);
        WriteBytes(disk / (name + "1") / "partition", "1\n");
        fs::create_directories(folder_ / "dev/block");
        fs::create_directories(folder_ / "class/block");
        fs::create_symlink(disk, folder_ / "dev/block" / number);
        fs::create_symlink(disk / (name + "1"), folder_ / "dev/block" / partition);
        fs::create_symlink(disk, folder_ / "class/block" / name);
        fs::create_symlink(disk / (name + "1"), folder_ / "class/block" / (name + "1"));
    }

    TemporaryFolder folder_;
};

}  // namespace

TEST(MountKind, NetworkFileSystemsAreRemote) {
    for (const char* const type : {"nfs", "nfs4", "cifs", "smb3", "smbfs", "9p", "afs", "ceph", "autofs", "fuse",
                                   "fuse.sshfs", "fuse.rclone", "fuse.gvfsd-fuse", "virtiofs", "vboxsf"}) {
        EXPECT_EQ(KindOf(MountOf(type, "server:/x")), MountKind::Remote) << type;
        EXPECT_TRUE(IsRemote(MountOf(type, "server:/x"))) << type;
    }
}

TEST(MountKind, DisksWithoutADeviceNumberAreFixed) {
    for (const char* const type : {"overlay", "btrfs", "zfs", "bcachefs", "fuse.mergerfs", "fuse.gocryptfs"}) {
        EXPECT_EQ(KindOf(MountOf(type, "pool/games")), MountKind::Fixed) << type;
        EXPECT_FALSE(IsRemote(MountOf(type, "pool/games"))) << type;
    }
}

TEST(MountKind, DiscsAreOpticalAndMemoryIsMemory) {
    EXPECT_EQ(KindOf(MountOf("iso9660", "/dev/sr0", 11, 0)), MountKind::Optical);
    EXPECT_EQ(KindOf(MountOf("udf", "/dev/sr0", 11, 0)), MountKind::Optical);
    EXPECT_EQ(KindOf(MountOf("tmpfs", "tmpfs")), MountKind::Memory);
    EXPECT_EQ(KindOf(MountOf("ramfs", "ramfs")), MountKind::Memory);
}

TEST(MountKind, KernelViewsAndProgramPackagesAreOther) {
    for (const char* const type : {"proc", "sysfs", "devtmpfs", "cgroup2", "efivarfs", "nsfs", "whatever"}) {
        EXPECT_EQ(KindOf(MountOf(type, type)), MountKind::Other) << type;
    }
    EXPECT_EQ(KindOf(MountOf("squashfs", "/dev/loop3", 7, 3)), MountKind::Other);
}

TEST(MountKind, DeviceTreeTellsRemovableDisksFromFixedOnes) {
    const DeviceTree tree;
    EXPECT_EQ(KindOf(MountOf("ext4", "/dev/sda1", 8, 1), tree.Path()), MountKind::Fixed);
    EXPECT_EQ(KindOf(MountOf("vfat", "/dev/sdb1", 8, 17), tree.Path()), MountKind::Removable);
    EXPECT_EQ(KindOf(MountOf("vfat", "/dev/sdb", 8, 16), tree.Path()), MountKind::Removable);
    EXPECT_EQ(KindOf(MountOf("fuseblk", "/dev/sda1", 8, 1), tree.Path()), MountKind::Fixed);
    EXPECT_EQ(KindOf(MountOf("fuseblk", "/dev/sdb1", 8, 17), tree.Path()), MountKind::Removable);
    EXPECT_EQ(KindOf(MountOf("btrfs", "/dev/sda1"), tree.Path()), MountKind::Fixed);
    EXPECT_EQ(KindOf(MountOf("btrfs", "/dev/sdb1"), tree.Path()), MountKind::Removable);
}

TEST(MountKind, DiskThatTheDeviceTreeLacksIsFixed) {
    const TemporaryFolder empty;
    EXPECT_EQ(KindOf(MountOf("ext4", "/dev/root", 254, 0), empty.Path()), MountKind::Fixed);
    EXPECT_EQ(KindOf(MountOf("ntfs3", "/dev/nvme0n1p3", 259, 3), empty.Path()), MountKind::Fixed);
}
