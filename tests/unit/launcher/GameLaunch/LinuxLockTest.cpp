#include "launcher/GameLaunch/Handle.h"
#include "launcher/GameLaunch/StateFolder.h"
#include "Platform/Interface/Paths.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>

namespace fs = std::filesystem;

namespace {

using namespace GameLaunch;

class LinuxInstallationLock : public testing::Test {
protected:
    LinuxInstallationLock() { fs::create_directory(game_); }

    TemporaryFolder folder_;
    ScopedEnvironment data_{L"LOCALAPPDATA", Platform::TextFromPath(folder_ / "Local")};
    fs::path game_ = folder_ / "Game";
};

TEST_F(LinuxInstallationLock, SymbolicLinkToTheFolderHasTheSameLockFile) {
    fs::create_directory_symlink(game_, folder_ / "link");
    EXPECT_EQ(LockFileFor(folder_ / "link"), LockFileFor(game_));
    EXPECT_EQ(LockFileFor(folder_ / "LINK"), LockFileFor(game_));
}

TEST_F(LinuxInstallationLock, FolderNameThatIsNotUtf8HasALockLikeAnyOther) {
    const fs::path odd = folder_ / "Spiele \xE4\xF6";
    fs::create_directory(odd);
    const Handle lock(TakeInstallationLock(odd));
    EXPECT_NE(lock.Process, INVALID_HANDLE_VALUE);
    EXPECT_NE(LockFileFor(odd), LockFileFor(game_));
}

TEST_F(LinuxInstallationLock, LoopOfLinksThrowsNamedWeaklyCanonical) {
    fs::create_symlink("loop", folder_ / "loop");
    try {
        RuntimePathFor(folder_ / "loop" / "game");
        FAIL();
    } catch (const fs::filesystem_error& error) {
        EXPECT_NE(std::string(error.what()).find("weakly_canonical"), std::string::npos) << error.what();
    }
}

TEST_F(LinuxInstallationLock, IsAnExclusiveLockOnTheOpenFile) {
    const Handle lock(TakeInstallationLock(game_));
    const int file = open(LockFileFor(game_).c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_GE(file, 0);
    EXPECT_EQ(flock(file, LOCK_SH | LOCK_NB), -1);
    close(file);
}

TEST_F(LinuxInstallationLock, ProcessThatIsKilledLeavesItFreeWithoutCleanUp) {
    int ready[2] = {};
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    if (child == 0) {
        const char taken = TakeInstallationLock(game_) == INVALID_HANDLE_VALUE ? 'n' : 'y';
        if (write(ready[1], &taken, 1) != 1) _exit(1);
        pause();
        _exit(0);
    }
    char taken = 0;
    EXPECT_EQ(read(ready[0], &taken, 1), 1);
    EXPECT_EQ(taken, 'y');
    EXPECT_EQ(TakeInstallationLock(game_), INVALID_HANDLE_VALUE);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    EXPECT_NE(Handle(TakeInstallationLock(game_)).Process, INVALID_HANDLE_VALUE);
    close(ready[0]);
    close(ready[1]);
}

TEST_F(LinuxInstallationLock, FifoInThePlaceOfTheFileRefusesWithoutBlocking) {
    ASSERT_EQ(mkfifo(LockFileFor(game_).c_str(), 0600), 0);
    EXPECT_EQ(TakeInstallationLock(game_), INVALID_HANDLE_VALUE);
}

}  // namespace
