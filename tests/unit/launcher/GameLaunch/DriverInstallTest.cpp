#include "launcher/GameLaunch/DriverInstall.h"
#include "RunningProgram.h"
#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

using GameLaunch::InstallDriver;

class DriverInstall : public testing::Test {
protected:
    DriverInstall() {
        WriteBytes(source_, "the new driver");
        fs::create_directory(game_);
    }

    std::vector<fs::path> Backups() const {
        std::vector<fs::path> found;
        for (const fs::directory_entry& entry : fs::directory_iterator(game_)) {
            if (entry.path().filename().string().starts_with("KVR2.dll.backup-")) found.push_back(entry.path());
        }
        return found;
    }
    std::ptrdiff_t FileCount() const { return std::distance(fs::directory_iterator(game_), fs::directory_iterator()); }
    /// What the call throws; empty when it doesn't.
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

TEST_F(DriverInstall, WithoutADriverInTheGameFolderNoBackupIsMade) {
    InstallDriver(source_, target_);
    EXPECT_EQ(ReadBytes(target_), "the new driver");
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(DriverInstall, IdenticalDriverIsNotTouched) {
    WriteBytes(target_, "the new driver");
    const auto date = fs::file_time_type::clock::now() - std::chrono::hours(48);
    fs::last_write_time(target_, date);
    const auto before = fs::last_write_time(target_);
    InstallDriver(source_, target_);
    EXPECT_EQ(fs::last_write_time(target_), before);
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(DriverInstall, IdenticalDriverThatCanNotBeWrittenIsAsGood) {
    // Its folder may be read-only as well: nothing is opened for writing.
    const RunningProgram program(target_);
    WriteBytes(source_, ReadBytes(target_));
    InstallDriver(source_, target_);
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(DriverInstall, DifferentDriverIsReplacedAndBackedUpOnce) {
    WriteBytes(target_, "the old driver");
    InstallDriver(source_, target_);
    EXPECT_EQ(ReadBytes(target_), "the new driver");
    ASSERT_EQ(Backups().size(), 1U);
    EXPECT_EQ(ReadBytes(Backups()[0]), "the old driver");
}

TEST_F(DriverInstall, BackupIsNamedAfterTheTickCount) {
    WriteBytes(target_, "the old driver");
    const ULONGLONG before = GetTickCount64();
    InstallDriver(source_, target_);
    const ULONGLONG after = GetTickCount64();
    ASSERT_EQ(Backups().size(), 1U);
    const std::string ticks = Backups()[0].filename().string().substr(std::string("KVR2.dll.backup-").size());
    EXPECT_TRUE(std::ranges::all_of(ticks, [](char digit) { return digit >= '0' && digit <= '9'; })) << ticks;
    EXPECT_GE(std::stoull(ticks), before);
    EXPECT_LE(std::stoull(ticks), after);
}

TEST_F(DriverInstall, LongerShorterAndEmptyOldFilesAreReplacedWhole) {
    for (const std::string& old : {std::string("the new driver and more"), std::string("the new"), std::string()}) {
        fs::remove_all(game_);
        WriteBytes(target_, old);
        InstallDriver(source_, target_);
        EXPECT_EQ(ReadBytes(target_), "the new driver");
        ASSERT_EQ(Backups().size(), 1U);
        EXPECT_EQ(ReadBytes(Backups()[0]), old);
    }
}

TEST_F(DriverInstall, FilesOfManyMebibytesThatDifferInTheLastByteAreTold) {
    std::string content(std::size_t{5} << 20U, 'x');
    WriteBytes(source_, content);
    content.back() = 'y';
    WriteBytes(target_, content);
    InstallDriver(source_, target_);
    EXPECT_EQ(ReadBytes(target_), ReadBytes(source_));
    ASSERT_EQ(Backups().size(), 1U);
    EXPECT_EQ(ReadBytes(Backups()[0]), content);
}

TEST_F(DriverInstall, EachReplacementLeavesOneMoreBackup) {
    WriteBytes(target_, "the first driver");
    InstallDriver(source_, target_);
    // The next backup needs a name of its own, so the clock has to move on.
    const ULONGLONG ticks = GetTickCount64();
    while (GetTickCount64() == ticks) Sleep(1);
    WriteBytes(source_, "the third driver");
    InstallDriver(source_, target_);
    EXPECT_EQ(Backups().size(), 2U);
}

TEST_F(DriverInstall, TargetThatCanBeReadButNotWrittenIsBackedUpAndStays) {
    const RunningProgram program(target_);
    const std::string old = ReadBytes(target_);
    const std::string failure = Failure();
    EXPECT_NE(failure.find("copy_file"), std::string::npos) << failure;
    EXPECT_EQ(ReadBytes(target_), old);
    ASSERT_EQ(Backups().size(), 1U);
    EXPECT_EQ(ReadBytes(Backups()[0]), old);
}

TEST_F(DriverInstall, FolderInTheTargetsPlaceCanNotBeOpened) {
    fs::create_directory(target_);
    EXPECT_EQ(Failure(), "Cannot open driver");
    EXPECT_TRUE(Backups().empty());
}

TEST_F(DriverInstall, MissingSourceCanNotBeOpenedAndTheTargetStays) {
    WriteBytes(target_, "the old driver");
    fs::remove(source_);
    EXPECT_EQ(Failure(), "Cannot open driver");
    EXPECT_EQ(ReadBytes(target_), "the old driver");
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(DriverInstall, MissingSourceAndNoTargetThrowsNamedCopyFileAndMakesNothing) {
    fs::remove(source_);
    const std::string failure = Failure();
    EXPECT_NE(failure.find("copy_file"), std::string::npos) << failure;
    EXPECT_EQ(FileCount(), 0);
}

TEST_F(DriverInstall, MissingGameFolderThrowsNamedCopyFile) {
    fs::remove(game_);
    const std::string failure = Failure();
    EXPECT_NE(failure.find("copy_file"), std::string::npos) << failure;
    EXPECT_FALSE(fs::exists(game_));
}

TEST_F(DriverInstall, SourceThatIsTheTargetItselfIsIdentical) {
    InstallDriver(source_, source_);
    EXPECT_EQ(ReadBytes(source_), "the new driver");
}

}  // namespace
