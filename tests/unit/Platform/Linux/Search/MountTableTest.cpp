#include "Platform/Linux/Search/Places/MountTable.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;
using Platform::Mount;
using Platform::MountTable;

namespace {

/// The type of the mount that holds a path; "none" where the table doesn't say.
std::string HolderOf(const MountTable& table, const fs::path& path) {
    const Mount* const mount = table.Holding(path);
    return mount ? mount->type : "none";
}

}  // namespace

TEST(MountTable, ReadsTheFieldsOfALine) {
    const MountTable table(
        "36 35 98:17 /sub /mnt/disk rw,noatime master:1 shared:2 - ext4 /dev/sdb1 rw,errors=continue\n"
        "37 35 0:42 / /tmp rw - tmpfs tmpfs rw");
    ASSERT_EQ(table.Mounts().size(), 2U);
    const Mount& mount = table.Mounts()[0];
    EXPECT_EQ(mount.id, 36);
    EXPECT_EQ(mount.parent, 35);
    EXPECT_EQ(mount.major, 98U);
    EXPECT_EQ(mount.minor, 17U);
    EXPECT_EQ(mount.root, "/sub");
    EXPECT_EQ(mount.point, "/mnt/disk");
    EXPECT_EQ(mount.type, "ext4");
    EXPECT_EQ(mount.source, "/dev/sdb1");
    EXPECT_EQ(table.Mounts()[1].type, "tmpfs");
}

TEST(MountTable, OctalEscapesAreUndone) {
    const MountTable table(
        "1 0 8:1 / / rw - ext4 /dev/sda1 rw\n"
        "2 1 0:9 / /mnt/My\\040Games\\011\\134x\\12 rw - nfs server:/a\\040b rw\n");
    ASSERT_EQ(table.Mounts().size(), 2U);
    EXPECT_EQ(table.Mounts()[1].point, "/mnt/My Games\t\\x\\12");
    EXPECT_EQ(table.Mounts()[1].source, "server:/a b");
}

TEST(MountTable, MalformedLinesArePassedOver) {
    const MountTable table(
        "\n"
        "garbage\n"
        "1 x 8:1 / / rw - ext4 /dev/sda1 rw\n"
        "2 1 81 / / rw - ext4 /dev/sda1 rw\n"
        "3 1 8:1 / relative rw - ext4 /dev/sda1 rw\n"
        "4 1 8:1 / /no/separator rw ext4 /dev/sda1 rw\n"
        "5 1 8:1 / /cut rw -\n"
        "99999999999999999999 1 8:1 / / rw - ext4 /dev/sda1 rw\n"
        "6 1 8:1 / /good rw - ext4 /dev/sda1 rw\n");
    ASSERT_EQ(table.Mounts().size(), 1U);
    EXPECT_EQ(table.Mounts()[0].id, 6);
}

TEST(MountTable, TheInnermostMountHoldsAPath) {
    const MountTable table(
        "23 27 0:22 / /sys rw - sysfs sysfs rw\n"
        "27 1 254:0 / / rw - ext4 /dev/vda rw\n"
        "40 27 0:50 / /mnt rw - btrfs /dev/sdb rw\n"
        "41 40 0:51 / /mnt/nas rw - nfs4 nas:/ rw\n");
    EXPECT_EQ(HolderOf(table, "/"), "ext4");
    EXPECT_EQ(HolderOf(table, "/home/user"), "ext4");
    EXPECT_EQ(HolderOf(table, "/system"), "ext4");
    EXPECT_EQ(HolderOf(table, "/mnt"), "btrfs");
    EXPECT_EQ(HolderOf(table, "/mnt/nasty"), "btrfs");
    EXPECT_EQ(HolderOf(table, "/mnt/nas"), "nfs4");
    EXPECT_EQ(HolderOf(table, "/mnt/nas/a/b"), "nfs4");
}

TEST(MountTable, AMountOnTheSamePointHidesTheFirst) {
    const MountTable table(
        "1 0 8:1 / / rw - ext4 /dev/sda1 rw\n"
        "2 1 0:5 / /net rw - autofs systemd-1 rw\n"
        "3 2 0:6 / /net rw - nfs server:/ rw\n");
    EXPECT_EQ(HolderOf(table, "/net/x"), "nfs");
}

TEST(MountTable, ACoveredMountHoldsNothing) {
    const MountTable table(
        "1 0 8:1 / / rw - ext4 /dev/sda1 rw\n"
        "2 1 8:2 / /mnt/disk rw - xfs /dev/sda2 rw\n"
        "3 1 0:6 / /mnt rw - nfs server:/ rw\n");
    EXPECT_EQ(HolderOf(table, "/mnt/disk/x"), "nfs");
}

TEST(MountTable, TableWithoutARootOrWithARingOfParentsIsAnswered) {
    const MountTable rootless("5 4 8:2 / /data rw - xfs /dev/sda2 rw\n");
    EXPECT_EQ(HolderOf(rootless, "/data/x"), "xfs");
    EXPECT_EQ(HolderOf(rootless, "/home"), "none");
    const MountTable ring(
        "1 9 8:1 / / rw - ext4 /dev/sda1 rw\n"
        "2 3 8:1 / /a rw - ext4 /dev/sda1 rw\n"
        "3 2 8:1 / /a rw - xfs /dev/sda1 rw\n"
        "4 4 8:1 / /b rw - xfs /dev/sda1 rw\n");
    EXPECT_EQ(HolderOf(ring, "/a"), "ext4");
    EXPECT_EQ(HolderOf(MountTable(""), "/"), "none");
}

TEST(MountTable, OwnTableHasARoot) {
    EXPECT_NE(MountTable::Current().Holding("/"), nullptr);
}

TEST(MountTable, ResolvesLinks) {
    const TemporaryFolder folder;
    fs::create_directories(folder / "real/sub");
    fs::create_symlink(folder / "real", folder / "absolute");
    fs::create_symlink("absolute/../real", folder / "relative");
    const MountTable table("1 0 8:1 / / rw - ext4 /dev/sda1 rw\n");
    EXPECT_EQ(table.Resolve(folder / "absolute" / "sub"), folder / "real/sub");
    EXPECT_EQ(table.Resolve(folder / "relative" / "sub/"), folder / "real/sub");
    EXPECT_EQ(table.Resolve(folder / "real/./sub/.."), folder / "real");
    EXPECT_EQ(table.Resolve(folder / "missing/x"), folder / "missing/x");
    EXPECT_EQ(table.Resolve("/../.."), "/");
}

TEST(MountTable, LoopOfLinksResolvesToNothing) {
    const TemporaryFolder folder;
    fs::create_symlink("b", folder / "a");
    fs::create_symlink("a", folder / "b");
    EXPECT_EQ(MountTable("").Resolve(folder / "a"), std::nullopt);
}

TEST(MountTable, LinksOnANetworkMountAreNotAskedFor) {
    const TemporaryFolder folder;
    fs::create_directories(folder / "nas");
    fs::create_directories(folder / "local");
    // Whoever looks at it follows it; the table says that nobody may look.
    fs::create_symlink(folder / "local", folder / "nas/link");
    fs::create_symlink(folder / "nas", folder / "to nas");
    const MountTable table("1 0 8:1 / / rw - ext4 /dev/sda1 rw\n2 1 0:6 / " + folder.Path().native() +
                           "/nas rw - nfs4 server:/ rw\n");
    EXPECT_EQ(table.Resolve(folder / "nas/link"), folder / "nas/link");
    EXPECT_EQ(table.Resolve(folder / "to nas/link/x"), folder / "nas/link/x");
}
