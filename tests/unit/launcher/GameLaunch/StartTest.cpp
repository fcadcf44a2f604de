#include "launcher/GameLaunch/CommandLine.h"
#include "launcher/GameLaunch/DriverInstall.h"
#include "launcher/GameLaunch/StateFolder.h"
#include "Platform/Interface/Paths.h"
#include "RecordingSystem.h"
#include "RunningProgram.h"
#include "tests/support/GameFiles.h"

#include <gtest/gtest.h>

#include <cwctype>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

using namespace GameLaunch;

constexpr const wchar_t* NotInstalled =
    L"Could not install the driver. Close Quake II and check write permission to its folder.";
constexpr const wchar_t* AlreadyRunning = L"Quake II is already running. Close it before changing drivers.";
constexpr const wchar_t* Launched = L"Quake II launched. Its settings will be saved normally.";
constexpr const wchar_t* ClosedEarly = L"Quake II closed during startup. Check baseq2/qconsole.log in the game folder.";

class Launch : public testing::Test {
protected:
    Result Start(bool modern = true, DWORD mode = 4) {
        return GameLaunch::Start(system_, folders_.Game(), modern, mode, true, false);
    }
    bool LockIsFree() const {
        const Handle lock(TakeInstallationLock(folders_.Game()));
        return lock.Process != INVALID_HANDLE_VALUE;
    }
    static int Backups(const std::set<std::string>& names) {
        int count = 0;
        for (const std::string& name : names) count += name.find(".backup-") != std::string::npos;
        return count;
    }

    LaunchFolders folders_;
    RecordingSystem system_{folders_};
};

TEST_F(Launch, SuccessReturnsTheGameItsFolderAndTheSentence) {
    const Result result = Start();
    ASSERT_TRUE(result.Process);
    EXPECT_EQ(result.Process->Process, system_.process);
    EXPECT_EQ(result.Message, Launched);
    EXPECT_EQ(result.Folder, folders_.Game().wstring());
    EXPECT_EQ(system_.calls, (std::vector<std::string>{"LauncherFolder", "FindRunningProcess", "FindRunningProcess",
                                                       "HasSse41", "TakeInstallationLock", "InstallDriver",
                                                       "StartProcess", "Wait", "Close lock"}));
}

TEST_F(Launch, EngineRunsInTheGameFolderWithTheLockAsItsHandle) {
    Start();
    EXPECT_EQ(system_.engine, folders_.Engine());
    EXPECT_EQ(system_.workingFolder, folders_.Game());
    EXPECT_EQ(system_.commandLine, BuildCommandLine(true, 4, true, false));
    EXPECT_NE(system_.inherited, INVALID_HANDLE_VALUE);
    EXPECT_EQ(system_.inherited, system_.lock);
    EXPECT_FALSE(system_.hidden);
}

TEST_F(Launch, RunningGameIsLookedForInTheGameFolderThenAtTheEnginesPath) {
    Start();
    EXPECT_EQ(system_.askedFor, (std::vector<fs::path>{folders_.Game() / "quake2.exe", folders_.Engine()}));
}

TEST_F(Launch, LaunchersOwnLockIsClosedOnceAfterTheFirstMoments) {
    Start();
    EXPECT_EQ(system_.Count("Close lock"), 1);
    EXPECT_EQ(system_.calls.back(), "Close lock");
    EXPECT_TRUE(LockIsFree());  // The game that would hold a copy is no real one.
}

TEST_F(Launch, GameThatQuitsWithCodeZeroWithin1500MillisecondsClosedDuringStartup) {
    for (const DWORD lifetime : {DWORD{0}, DWORD{1499}, DWORD{1500}}) {
        system_.lifetime = lifetime;
        const Result result = Start();
        EXPECT_FALSE(result.Process) << lifetime;
        EXPECT_EQ(result.Message, ClosedEarly) << lifetime;
        EXPECT_EQ(result.Folder, folders_.Game().wstring()) << lifetime;
    }
}

TEST_F(Launch, GameThatLives1501MillisecondsIsUpAndGetsTheSentenceOfItsEnd) {
    system_.lifetime = 1501;
    const Result result = Start();
    EXPECT_TRUE(result.Process);
    EXPECT_EQ(result.Message, Launched);
    EXPECT_EQ(EndMessage(0), L"Quake II closed.");
}

TEST_F(Launch, WaitThatFailsMeansThatTheGameIsUp) {
    system_.waitFailure = WAIT_FAILED;
    const Result result = Start();
    EXPECT_TRUE(result.Process);
    EXPECT_EQ(result.Message, Launched);
}

TEST_F(Launch, SmokeRunIsHiddenAndItsFirstMomentsAreNotWatched) {
    system_.lifetime = 0;
    const Result result = GameLaunch::Start(system_, folders_.Game(), true, 4, true, true);
    EXPECT_TRUE(result.Process);
    EXPECT_TRUE(system_.hidden);
    EXPECT_EQ(system_.Count("Wait"), 0);
    EXPECT_EQ(system_.commandLine, BuildCommandLine(true, 4, true, true));
}

TEST_F(Launch, DisplayModeNinePassesAndTenFails) {
    EXPECT_TRUE(Start(true, 9).Process);
    EXPECT_EQ(Start(true, 10).Message, L"Unsupported display mode.");
    EXPECT_EQ(Start(true, 0xFFFFFFFF).Message, L"Unsupported display mode.");
}

TEST_F(Launch, InvalidFolderReturnsTheValidationsSentenceAndTheEngineIsNotLookedAt) {
    fs::remove(folders_.Engine());
    const Result result = GameLaunch::Start(system_, {}, true, 4, true, false);
    EXPECT_EQ(result.Message, L"Select a Quake II installation folder.");
    EXPECT_EQ(result.Folder, L"");
    EXPECT_TRUE(system_.calls.empty());
}

TEST_F(Launch, InvalidEngineAndARunningGameGiveTheEnginesSentence) {
    WriteBytes(folders_.Engine(), "MZ");
    system_.running = {folders_.Game() / "quake2.exe", folders_.Engine()};
    EXPECT_EQ(Start().Message, L"The bundled Quake II engine is missing or invalid. Extract the complete package.");
}

TEST_F(Launch, ProcessorWithoutSse41RefusesTheModernDriverBeforeTheDriverFileIsInspected) {
    system_.sse41 = false;
    fs::remove(folders_.Driver("KVR2.dll"));
    EXPECT_EQ(Start(true).Message, L"This KVR2 package requires a processor with SSE4.1 support.");
}

TEST_F(Launch, ClassicDriverNeedsNoProcessorTest) {
    system_.sse41 = false;
    EXPECT_TRUE(Start(false).Process);
    EXPECT_EQ(system_.Count("HasSse41"), 0);
}

TEST_F(Launch, GameStartedByHandFromTheGameFolderBlocksThatFolderOnly) {
    MakeInstallation(folders_ / "Other");
    system_.running = {folders_.Game() / "quake2.exe"};
    EXPECT_EQ(Start().Message, AlreadyRunning);
    EXPECT_TRUE(GameLaunch::Start(system_, folders_ / "Other", true, 4, true, false).Process);
}

TEST_F(Launch, EngineRunningForAnotherInstallationBlocksByTheScanAndNotByTheLock) {
    system_.running = {folders_.Engine()};
    EXPECT_EQ(Start().Message, AlreadyRunning);
    EXPECT_EQ(system_.Count("TakeInstallationLock"), 0);
}

TEST_F(Launch, ProcessStartThatFailsWithCodeTwoNamesItFreesTheLockAndLeavesTheDriver) {
    system_.startError = ERROR_FILE_NOT_FOUND;
    const Result result = Start();
    EXPECT_EQ(result.Message, L"Windows could not launch Quake II (error 2).");
    EXPECT_EQ(result.Folder, folders_.Game().wstring());
    EXPECT_FALSE(result.Process);
    EXPECT_TRUE(LockIsFree());
    EXPECT_EQ(ReadBytes(folders_.Game() / "KVR2.dll"), ReadBytes(folders_.Driver("KVR2.dll")));
}

TEST_F(Launch, LockFileOfAFailedLaunchStaysAndALaterLaunchOpensIt) {
    system_.startError = ERROR_FILE_NOT_FOUND;
    Start();
    EXPECT_TRUE(fs::exists(LockFileFor(folders_.Game())));
    system_.startError = ERROR_SUCCESS;
    EXPECT_TRUE(Start().Process);
}

TEST_F(Launch, HeldLockRefusesAndTheGameFolderStaysAsItIs) {
    const Handle lock(TakeInstallationLock(folders_.Game()));
    const std::set<std::string> before = folders_.GameFiles();
    EXPECT_EQ(Start().Message, L"This installation is already running, or its runtime folder is unavailable.");
    EXPECT_EQ(folders_.GameFiles(), before);
    EXPECT_EQ(system_.Count("Close lock"), 0);
}

TEST_F(Launch, WithoutLocalAppDataTheSentenceIsThatOfAFailedInstallationAndNotTheLocks) {
    const ScopedEnvironment local(L"LOCALAPPDATA", std::nullopt);
    const ScopedEnvironment data(L"XDG_DATA_HOME", std::nullopt);
    const ScopedEnvironment home(L"HOME", std::nullopt);
    const Result result = Start();
    EXPECT_EQ(result.Message, NotInstalled);
    EXPECT_FALSE(result.Process);
    EXPECT_EQ(result.Folder, L"");
    EXPECT_EQ(system_.Count("InstallDriver"), 0);
}

TEST_F(Launch, FirstLaunchWithoutADriverInTheGameFolderMakesNoBackup) {
    const std::set<std::string> before = folders_.GameFiles();
    EXPECT_TRUE(Start().Process);
    std::set<std::string> expected = before;
    expected.insert("KVR2.dll");
    EXPECT_EQ(folders_.GameFiles(), expected);
}

TEST_F(Launch, SwitchingBetweenClassicAndModernLeavesBothFilesAndMakesNoBackup) {
    EXPECT_TRUE(Start(true).Process);
    EXPECT_TRUE(Start(false).Process);
    EXPECT_TRUE(Start(true).Process);
    EXPECT_EQ(Backups(folders_.GameFiles()), 0);
    EXPECT_EQ(ReadBytes(folders_.Game() / "KVR.dll"), PeBytes() + "classic");
    EXPECT_EQ(ReadBytes(folders_.Game() / "KVR2.dll"), PeBytes() + "modern");
}

TEST_F(Launch, TargetThatCanBeReadButNotWrittenIsBackedUpAndTheGameIsNotStarted) {
    // The file of a running program can't be written, not even by an administrator.
    const RunningProgram program(folders_.Game() / "KVR2.dll");
    const Result result = Start();
    EXPECT_EQ(result.Message, NotInstalled);
    EXPECT_FALSE(result.Process);
    EXPECT_EQ(Backups(folders_.GameFiles()), 1);
    EXPECT_EQ(system_.Count("StartProcess"), 0);
    EXPECT_TRUE(LockIsFree());
}

TEST_F(Launch, ExceptionsOfEveryKindBecomeTheOneSentenceAndFreeTheLock) {
    const std::vector<std::function<void()>> throwing = {
        [] { throw std::runtime_error("Process setup failed"); },
        [] { throw fs::filesystem_error("copy_file", std::make_error_code(std::errc::io_error)); },
        [] { throw std::bad_alloc(); },
        [] { throw 42; },
    };
    for (const auto& thrower : throwing) {
        system_.beforeInstall = thrower;
        const Result result = Start();
        EXPECT_EQ(result.Message, NotInstalled);
        EXPECT_FALSE(result.Process);
        EXPECT_EQ(result.Folder, L"");
        EXPECT_TRUE(LockIsFree());
    }
}

TEST_F(Launch, RelativeGameFolderIsReturnedAbsolute) {
    const fs::path before = fs::current_path();
    fs::current_path(folders_ / ".");
    const Result result = GameLaunch::Start(system_, "Game Folder", true, 4, true, false);
    fs::current_path(before);
    EXPECT_EQ(result.Folder, folders_.Game().wstring());
    EXPECT_EQ(system_.workingFolder, folders_.Game());
}

TEST_F(Launch, GameFolderWithBlanksStandsNowhereOnTheCommandLine) {
    ASSERT_NE(folders_.Game().filename().string().find(' '), std::string::npos);
    Start();
    EXPECT_EQ(system_.commandLine.find(L"Folder"), std::wstring::npos);
    EXPECT_EQ(system_.commandLine.find(L'"'), std::wstring::npos);
}

}  // namespace
