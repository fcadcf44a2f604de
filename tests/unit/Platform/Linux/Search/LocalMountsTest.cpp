#include "Platform/Linux/Search/LocalMounts.h"

#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace fs = std::filesystem;
using Platform::MountTable;

namespace {

/// Builds a table whose mounts below "/" are folders of the test's own.
class Table {
public:
    Table() : text_("1 0 8:1 / / rw - ext4 /dev/velorinth-none1 rw\n") {}

    void Add(const fs::path& point, const std::string& type, const std::string& source,
             const std::string& fileSystemRoot = "/", const std::string& device = {}) {
        const std::string number = device.empty() ? "0:" + std::to_string(++next_) : device;
        text_ += std::to_string(++next_) + " 1 " + number + ' ' + fileSystemRoot + ' ' + point.native() + " rw - " +
                 type + ' ' + source + " rw\n";
    }

    std::vector<fs::path> Points() const { return Platform::LocalMounts(MountTable(text_)); }

private:
    std::string text_;
    int next_ = 1;
};

}  // namespace

TEST(LocalMounts, ComeInTheTablesOrder) {
    const TemporaryFolder folder;
    fs::create_directories(folder / "b");
    fs::create_directories(folder / "a");
    Table table;
    table.Add(folder / "b", "xfs", "/dev/velorinth-none2");
    table.Add(folder / "a", "btrfs", "/dev/velorinth-none3");
    const std::vector<fs::path> expected = {"/", folder / "b", folder / "a"};
    EXPECT_EQ(table.Points(), expected);
}

TEST(LocalMounts, LeaveOutWhatIsNoDiskOfTheUsers) {
    const TemporaryFolder folder;
    for (const char* const name : {"nas", "ram", "snap", "proc"}) fs::create_directories(folder / name);
    Table table;
    table.Add(folder / "nas", "nfs4", "server:/");
    table.Add(folder / "ram", "tmpfs", "tmpfs");
    table.Add(folder / "snap", "squashfs", "/dev/loop1");
    table.Add(folder / "proc", "proc", "proc");
    EXPECT_EQ(table.Points(), std::vector<fs::path>{"/"});
}

TEST(LocalMounts, LeaveOutTheSystemsOwnPlaces) {
    Table table;
    for (const char* const point : {"/boot", "/dev", "/proc", "/run", "/sys", "/run/lock"}) {
        table.Add(point, "ext4", "/dev/velorinth-none2");
    }
    EXPECT_EQ(table.Points(), std::vector<fs::path>{"/"});
}

TEST(LocalMounts, KeepDiscsThatTheDesktopMounted) {
    Table table;
    table.Add("/run/media/user/GAMES", "iso9660", "/dev/sr0");
    const std::vector<fs::path> expected = {"/", "/run/media/user/GAMES"};
    EXPECT_EQ(table.Points(), expected);
}

TEST(LocalMounts, LeaveOutBindMountsOfSingleFiles) {
    const TemporaryFolder folder;
    WriteBytes(folder / "file", "x");
    Table table;
    table.Add(folder / "file", "ext4", "/dev/velorinth-none2", "/etc/file");
    EXPECT_EQ(table.Points(), std::vector<fs::path>{"/"});
}

TEST(LocalMounts, NameAFolderThatIsMountedTwiceOnce) {
    const TemporaryFolder folder;
    fs::create_directories(folder / "a");
    fs::create_directories(folder / "b");
    fs::create_directories(folder / "c");
    Table table;
    table.Add(folder / "a", "ext4", "/dev/velorinth-none2", "/games", "8:2");
    table.Add(folder / "b", "ext4", "/dev/velorinth-none2", "/games", "8:2");
    table.Add(folder / "c", "ext4", "/dev/velorinth-none2", "/other", "8:2");
    const std::vector<fs::path> expected = {"/", folder / "a", folder / "c"};
    EXPECT_EQ(table.Points(), expected);
}

TEST(LocalMounts, LeaveOutMountsThatAreCovered) {
    const TemporaryFolder folder;
    fs::create_directories(folder / "outer/inner");
    Table table;
    table.Add(folder / "outer/inner", "ext4", "/dev/velorinth-none2");
    table.Add(folder / "outer", "ext4", "/dev/velorinth-none3");
    const std::vector<fs::path> expected = {"/", folder / "outer"};
    EXPECT_EQ(table.Points(), expected);
}
