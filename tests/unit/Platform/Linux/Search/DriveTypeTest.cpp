#include "Platform/Linux/Search/DriveType.h"

#include "Platform/Interface/Paths.h"
#include "tests/support/FakeHome.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;
using Platform::DriveTypeOf;
using Platform::MountTable;

namespace {

const MountTable& Sample() {
    static const MountTable table(
        "1 0 8:1 / / rw - ext4 /dev/velorinth-none1 rw\n"
        "2 1 0:30 / /tmp rw - tmpfs tmpfs rw\n"
        "3 1 0:31 / /velorinth/nas rw - nfs4 nas:/games rw\n"
        "4 1 11:0 / /velorinth/cd ro - iso9660 /dev/sr0 ro\n"
        "5 1 8:2 / /velorinth/disk rw - ext4 /dev/velorinth-none2 rw\n"
        "6 1 0:32 / /velorinth/home rw - nfs4 nas:/home rw\n"
        "7 1 0:33 / /proc rw - proc proc rw\n");
    return table;
}

}  // namespace

TEST(DriveType, IsThatOfTheHoldingMount) {
    EXPECT_EQ(DriveTypeOf("/velorinth/disk/Games", Sample(), "/root"), DRIVE_FIXED);
    EXPECT_EQ(DriveTypeOf("/velorinth/nas/Games", Sample(), "/root"), DRIVE_REMOTE);
    EXPECT_EQ(DriveTypeOf("/velorinth/cd", Sample(), "/root"), DRIVE_CDROM);
    EXPECT_EQ(DriveTypeOf("/tmp", Sample(), "/root"), DRIVE_RAMDISK);
    EXPECT_EQ(DriveTypeOf("/proc/velorinth", Sample(), "/root"), DRIVE_UNKNOWN);
}

TEST(DriveType, RootAndHomeAreFixedWhateverTheyAre) {
    EXPECT_EQ(DriveTypeOf("/velorinth/home/user/Games", Sample(), "/velorinth/home/user"), DRIVE_FIXED);
    EXPECT_EQ(DriveTypeOf("/velorinth/home/user", Sample(), "/root"), DRIVE_REMOTE);
    EXPECT_EQ(DriveTypeOf("/tmp/home/Games", Sample(), "/tmp/home"), DRIVE_FIXED);
    const MountTable live(
        "1 0 0:1 / / rw - tmpfs tmpfs rw\n"
        "2 1 8:1 / /velorinth rw - ext4 /dev/velorinth-none1 rw\n");
    EXPECT_EQ(DriveTypeOf("/", live, "/velorinth/home"), DRIVE_FIXED);
    EXPECT_EQ(DriveTypeOf("/games", live, "/velorinth/home"), DRIVE_FIXED);
}

TEST(DriveType, DeadNetworkMountIsNotTouched) {
    const TemporaryFolder folder;
    fs::create_directories(folder / "nas");
    // Followed, this would lead to a fixed disk.
    fs::create_symlink("/velorinth/disk", folder / "nas/link");
    fs::create_symlink("nas", folder / "to nas");
    const MountTable table("1 0 8:1 / / rw - ext4 /dev/velorinth-none1 rw\n2 1 0:31 / " + (folder / "nas").native() +
                           " rw - nfs4 dead:/ rw\n");
    EXPECT_EQ(DriveTypeOf(folder / "nas/link", table, "/root"), DRIVE_REMOTE);
    EXPECT_EQ(DriveTypeOf(folder / "to nas/Games", table, "/root"), DRIVE_REMOTE);
}

TEST(DriveType, PathsThatAreNoRootHaveNone) {
    const TemporaryFolder folder;
    fs::create_symlink("loop", folder / "loop");
    EXPECT_EQ(DriveTypeOf("", Sample(), "/root"), DRIVE_NO_ROOT_DIR);
    EXPECT_EQ(DriveTypeOf("C:\\", Sample(), "/root"), DRIVE_NO_ROOT_DIR);
    EXPECT_EQ(DriveTypeOf(folder / "loop", Sample(), "/root"), DRIVE_NO_ROOT_DIR);
}

TEST(GetDriveType, AsksTheSystemsOwnTable) {
    const FakeHome home;
    EXPECT_EQ(GetDriveTypeW(L"/"), DRIVE_FIXED);
    EXPECT_EQ(GetDriveTypeW(Platform::TextFromPath(home.Path()).c_str()), DRIVE_FIXED);
    EXPECT_EQ(GetDriveTypeW(L"/proc"), DRIVE_UNKNOWN);
    EXPECT_EQ(GetDriveTypeW(nullptr), DRIVE_NO_ROOT_DIR);
    EXPECT_EQ(GetDriveTypeW((L"/" + std::wstring(4000, L'x')).c_str()), DRIVE_FIXED);
}
