// The real start of a process, and the passing on of the lock, where the system itself does both.
#include "launcher/GameLaunch/CommandLine.h"
#include "launcher/GameLaunch/Handle.h"
#include "launcher/GameLaunch/Start.h"
#include "launcher/GameLaunch/StateFolder.h"
#include "tests/support/GameFiles.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

using namespace GameLaunch;

class WindowsStartProcess : public testing::Test {
protected:
    WindowsStartProcess() { fs::create_directory(game_); }

    bool LockIsFree() const { return Handle(TakeInstallationLock(game_)).Process != INVALID_HANDLE_VALUE; }
    /// Waits up to half a minute for the probe's file.
    bool ProbeHasReported() const {
        for (int turn = 0; turn < 3000 && !fs::exists(game_ / "probe.txt"); ++turn) Sleep(10);
        return fs::exists(game_ / "probe.txt");
    }

    TemporaryFolder folder_;
    ScopedEnvironment data_{L"LOCALAPPDATA", (folder_ / "Local").wstring()};
    fs::path game_ = folder_ / "Game Folder";
    fs::path probe_ = LauncherFolder() / "launch_probe.exe";
    LaunchSystem system_;
};

TEST_F(WindowsStartProcess, ProgramGetsCommandLineAndFolderAndHoldsTheLockUntilItIsKilled) {
    HANDLE lock = TakeInstallationLock(game_);
    ASSERT_NE(lock, INVALID_HANDLE_VALUE);
    Handle process;
    DWORD error = 0;
    ASSERT_TRUE(
        system_.StartProcess(probe_, BuildCommandLine(true, 4, true, false), game_, lock, true, process.Process, error))
        << error;
    CloseHandle(lock);
    EXPECT_TRUE(ProbeHasReported());
    EXPECT_EQ(ReadBytes(game_ / "probe.txt"),
              "quake2.exe +set vid_ref gl +set gl_driver KVR2.dll +set gl_mode 4 +set vid_fullscreen 1 +set logfile 1");
    EXPECT_FALSE(LockIsFree());

    TerminateProcess(process.Process, 0xC0000005);
    ASSERT_EQ(WaitForSingleObject(process.Process, 10000), DWORD{WAIT_OBJECT_0});
    DWORD code = 0;
    ASSERT_TRUE(GetExitCodeProcess(process.Process, &code));
    EXPECT_EQ(code, 0xC0000005);
    EXPECT_TRUE(LockIsFree());
}

TEST_F(WindowsStartProcess, NothingButTheLockIsInherited) {
    HANDLE lock = TakeInstallationLock(game_);
    fs::create_directory(folder_ / "Other");
    HANDLE other = TakeInstallationLock(folder_ / "Other");
    Handle process;
    DWORD error = 0;
    ASSERT_TRUE(system_.StartProcess(probe_, L"quake2.exe", game_, lock, true, process.Process, error)) << error;
    CloseHandle(lock);
    CloseHandle(other);
    EXPECT_TRUE(ProbeHasReported());
    EXPECT_FALSE(LockIsFree());
    EXPECT_NE(Handle(TakeInstallationLock(folder_ / "Other")).Process, INVALID_HANDLE_VALUE);
    TerminateProcess(process.Process, 0);
    WaitForSingleObject(process.Process, 10000);
}

TEST_F(WindowsStartProcess, MissingProgramFailsWithCodeTwo) {
    HANDLE lock = TakeInstallationLock(game_);
    HANDLE process = nullptr;
    DWORD error = 0;
    EXPECT_FALSE(system_.StartProcess(folder_ / "missing.exe", L"quake2.exe", game_, lock, false, process, error));
    EXPECT_EQ(error, DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(process, nullptr);
    CloseHandle(lock);
    EXPECT_TRUE(LockIsFree());
}

}  // namespace
