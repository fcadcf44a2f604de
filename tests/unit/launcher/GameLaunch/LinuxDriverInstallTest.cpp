#include "launcher/GameLaunch/DriverInstall.h"
#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <windows.h>

#include <set>
#include <stdexcept>
#include <string>

namespace fs = std::filesystem;

namespace {

using GameLaunch::InstallDriver;

class LinuxDriverInstall : public testing::Test {
protected:
    LinuxDriverInstall() {
        WriteBytes(source_, "the new driver");
        fs::create_directory(game_);
    }

    std::set<std::string> Names() const {
        std::set<std::string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(game_)) names.insert(entry.path().filename());
        return names;
    }
    std::string Failure() const {
        try {
            InstallDriver(source_, target_);
            return {};
        } catch (const std::exception& error) {
            return error.what();
        }
    }

    TemporaryFolder folder_;
    fs::path source_ = folder_ / "KVR2.dll";
    fs::path game_ = folder_ / "Game";
    fs::path target_ = game_ / "KVR2.dll";
};

TEST_F(LinuxDriverInstall, ExistingFileInOtherCaseIsTheOneReplaced) {
    WriteBytes(game_ / "kvr2.dll", "the old driver");
    InstallDriver(source_, target_);
    EXPECT_EQ(ReadBytes(game_ / "kvr2.dll"), "the new driver");
    const std::set<std::string> names = Names();
    EXPECT_EQ(names.size(), 2U);
    EXPECT_TRUE(names.rbegin()->starts_with("kvr2.dll.backup-")) << *names.rbegin();
}

TEST_F(LinuxDriverInstall, BackupOfThatNameThatExistsAlreadyStopsItAndBothFilesStay) {
    WriteBytes(target_, "the old driver");
    const fs::path earlier = folder_ / "backup";
    WriteBytes(earlier, "an earlier backup");
    // Whichever of the next ticks the call falls into, its backup is there already: they are names of one file, which
    // takes no time to make.
    constexpr ULONGLONG ticks = 10'000;
    const ULONGLONG now = GetTickCount64();
    for (ULONGLONG tick = now; tick < now + ticks; ++tick) {
        fs::create_hard_link(earlier, game_ / ("KVR2.dll.backup-" + std::to_string(tick)));
    }
    const std::string failure = Failure();
    ASSERT_LT(GetTickCount64(), now + ticks);
    EXPECT_NE(failure.find("copy_file"), std::string::npos) << failure;
    EXPECT_EQ(ReadBytes(target_), "the old driver");
    EXPECT_EQ(ReadBytes(earlier), "an earlier backup");
    EXPECT_EQ(Names().size(), ticks + 1);
}

TEST_F(LinuxDriverInstall, OfTwoSpellingsTheExactOneIsReplaced) {
    WriteBytes(target_, "the old driver");
    WriteBytes(game_ / "kvr2.dll", "another file");
    InstallDriver(source_, target_);
    EXPECT_EQ(ReadBytes(target_), "the new driver");
    EXPECT_EQ(ReadBytes(game_ / "kvr2.dll"), "another file");
}

TEST_F(LinuxDriverInstall, FifoInTheTargetsPlaceCanNotBeOpenedAndDoesNotBlock) {
    ASSERT_EQ(mkfifo(target_.c_str(), 0600), 0);
    EXPECT_EQ(Failure(), "Cannot open driver");
    EXPECT_EQ(Names().size(), 1U);
}

TEST_F(LinuxDriverInstall, FifoInTheSourcesPlaceCanNotBeOpenedAndDoesNotBlock) {
    fs::remove(source_);
    ASSERT_EQ(mkfifo(source_.c_str(), 0600), 0);
    WriteBytes(target_, "the old driver");
    EXPECT_EQ(Failure(), "Cannot open driver");
    EXPECT_EQ(ReadBytes(target_), "the old driver");
}

TEST_F(LinuxDriverInstall, LinkToAnEndlessDeviceCanNotBeOpened) {
    fs::create_symlink("/dev/zero", target_);
    EXPECT_EQ(Failure(), "Cannot open driver");
    EXPECT_TRUE(fs::is_symlink(target_));
}

TEST_F(LinuxDriverInstall, TargetIsWrittenInPlaceSoLinksAndPermissionsStay) {
    WriteBytes(target_, "the old driver");
    fs::permissions(target_, fs::perms::owner_read | fs::perms::owner_write);
    fs::create_hard_link(target_, game_ / "second name");
    InstallDriver(source_, target_);
    EXPECT_EQ(ReadBytes(game_ / "second name"), "the new driver");
    EXPECT_EQ(fs::status(target_).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(LinuxDriverInstall, LinkInTheTargetsPlaceStaysALink) {
    WriteBytes(folder_ / "elsewhere.dll", "the old driver");
    fs::create_symlink(folder_ / "elsewhere.dll", target_);
    InstallDriver(source_, target_);
    EXPECT_TRUE(fs::is_symlink(target_));
    EXPECT_EQ(ReadBytes(folder_ / "elsewhere.dll"), "the new driver");
}

TEST_F(LinuxDriverInstall, LinkToNothingGetsItsFileWhereItLeads) {
    fs::create_symlink(folder_ / "elsewhere.dll", target_);
    InstallDriver(source_, target_);
    EXPECT_TRUE(fs::is_symlink(target_));
    EXPECT_EQ(ReadBytes(folder_ / "elsewhere.dll"), "the new driver");
    EXPECT_EQ(Names().size(), 1U);
}

TEST_F(LinuxDriverInstall, FolderNameThatIsNotUtf8IsNoObstacle) {
    const fs::path odd = folder_ / "Spiele \xE4";
    WriteBytes(odd / "KVR2.dll", "the old driver");
    InstallDriver(source_, odd / "KVR2.dll");
    EXPECT_EQ(ReadBytes(odd / "KVR2.dll"), "the new driver");
}

TEST_F(LinuxDriverInstall, TargetOfFourThousandCharactersFailsAtOnce) {
    target_ = game_ / std::string(4000, 'x');
    EXPECT_NE(Failure(), "");
    EXPECT_TRUE(Names().empty());
}

}  // namespace
