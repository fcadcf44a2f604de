#include "launcher/GameLaunch/Handle.h"
#include "launcher/GameLaunch/StateFolder.h"
#include "Platform/Interface/Paths.h"
#include "tests/support/GameFiles.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <barrier>
#include <thread>
#include <vector>

namespace fs = std::filesystem;

namespace {

using namespace GameLaunch;

class InstallationLock : public testing::Test {
protected:
    InstallationLock() { fs::create_directory(game_); }

    static bool Held(const Handle& lock) { return lock.Process != INVALID_HANDLE_VALUE; }

    TemporaryFolder folder_;
    ScopedEnvironment data_{L"LOCALAPPDATA", Platform::TextFromPath(folder_ / "Local")};
    fs::path game_ = folder_ / "Game";
};

TEST_F(InstallationLock, SecondTakerIsRefusedAtOnceAndAThirdSucceedsAfterTheEnd) {
    {
        const Handle first(TakeInstallationLock(game_));
        ASSERT_TRUE(Held(first));
        EXPECT_FALSE(Held(Handle(TakeInstallationLock(game_))));
    }
    EXPECT_TRUE(Held(Handle(TakeInstallationLock(game_))));
}

TEST_F(InstallationLock, OtherInstallationHasALockOfItsOwn) {
    fs::create_directory(folder_ / "Other");
    const Handle first(TakeInstallationLock(game_));
    EXPECT_TRUE(Held(Handle(TakeInstallationLock(folder_ / "Other"))));
}

TEST_F(InstallationLock, OtherSpellingsOfTheFolderMeetTheSameLock) {
    const Handle lock(TakeInstallationLock(game_));
    ASSERT_TRUE(Held(lock));
    EXPECT_FALSE(Held(Handle(TakeInstallationLock(folder_ / "gAME"))));
    EXPECT_FALSE(Held(Handle(TakeInstallationLock(game_ / ".." / "Game"))));
    EXPECT_FALSE(Held(Handle(TakeInstallationLock(game_ / ""))));
}

TEST_F(InstallationLock, FileStaysEmptyAndMeansNothing) {
    CloseHandle(TakeInstallationLock(game_));
    EXPECT_TRUE(fs::is_regular_file(LockFileFor(game_)));
    EXPECT_EQ(fs::file_size(LockFileFor(game_)), 0U);
    EXPECT_TRUE(Held(Handle(TakeInstallationLock(game_))));
}

TEST_F(InstallationLock, DeletingTheFileWhileNobodyHoldsTheLockChangesNothing) {
    CloseHandle(TakeInstallationLock(game_));
    fs::remove(LockFileFor(game_));
    const Handle lock(TakeInstallationLock(game_));
    EXPECT_TRUE(Held(lock));
    EXPECT_FALSE(Held(Handle(TakeInstallationLock(game_))));
}

TEST_F(InstallationLock, FolderInThePlaceOfTheFileRefuses) {
    fs::create_directories(LockFileFor(game_));
    EXPECT_FALSE(Held(Handle(TakeInstallationLock(game_))));
}

TEST_F(InstallationLock, OfThirtyTwoThreadsExactlyOneTakesIt) {
    for (int round = 0; round < 20; ++round) {
        std::vector<HANDLE> locks(32, INVALID_HANDLE_VALUE);
        std::barrier start(32);
        std::vector<std::jthread> starters;
        starters.reserve(locks.size());
        for (HANDLE& lock : locks) {
            starters.emplace_back([&] {
                start.arrive_and_wait();
                lock = TakeInstallationLock(game_);
            });
        }
        starters.clear();
        int taken = 0;
        for (const HANDLE lock : locks) {
            if (lock == INVALID_HANDLE_VALUE) continue;
            ++taken;
            CloseHandle(lock);
        }
        EXPECT_EQ(taken, 1);
    }
}

}  // namespace
