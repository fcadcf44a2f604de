// Starts that can't be, and what is said about them.

#include "WineTest.h"

#include "Platform/Interface/Paths.h"
#include "tests/support/GameFiles.h"

#include <sys/stat.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>

namespace fs = std::filesystem;

namespace {

class WineFailure : public WineTest {
protected:
    /// A folder with a program called `wine` that runs these lines of shell.
    void PutWineOnPath(const std::string& script) {
        const fs::path folder = temporary_ / "bin";
        WriteBytes(folder / "wine", "#!/bin/sh\n" + script);
        fs::permissions(folder / "wine", fs::perms::owner_all);
        SetVariable(L"PATH", Platform::TextFromPath(folder) + L":/usr/bin:/bin");
    }

    DWORD ErrorOf(const LaunchOptions& options) {
        testing::internal::CaptureStderr();
        const LaunchedProgram program = Launch(options);
        said_ = testing::internal::GetCapturedStderr();
        EXPECT_FALSE(program.started);
        return program.error;
    }

    static bool HasWine32() { return fs::exists("/usr/lib/wine/wine"); }

    /// Of the prefix in the environment.
    static void StopWineserver() { ASSERT_EQ(std::system("wineserver --kill; wineserver --wait"), 0); }

    std::string said_;
};

TEST_F(WineFailure, WithoutWineTheCodeIs2AndStandardErrorSaysWhatToInstall) {
    SetVariable(L"PATH", Platform::TextFromPath(temporary_.Path()));
    EXPECT_EQ(ErrorOf(Options()), ERROR_FILE_NOT_FOUND);
    EXPECT_NE(said_.find("wine32:i386"), std::string::npos) << said_;
    EXPECT_EQ(std::count(said_.begin(), said_.end(), '\n'), 1);
}

TEST_F(WineFailure, WithAWineThatRunsNo32BitProgramsTheCodeIs193AndStandardErrorSaysWhatToInstall) {
    if (HasWine32()) GTEST_SKIP() << "this machine's Wine has its 32-bit half installed";
    SetVariable(L"WINEDLLPATH", std::nullopt);
    EXPECT_EQ(ErrorOf(Options()), ERROR_BAD_EXE_FORMAT);
    EXPECT_NE(said_.find("wine32:i386"), std::string::npos) << said_;
    EXPECT_EQ(std::count(said_.begin(), said_.end(), '\n'), 1);
}

TEST_F(WineFailure, APrefixMadeWithoutThe32BitHalfIsPutRightOnceTheHalfIsThere) {
    if (HasWine32() || !fs::exists(TEST_WINE_32BIT "/i386-windows")) GTEST_SKIP() << "the half can't be taken away";
    const fs::path prefix = temporary_ / "prefix";
    SetVariable(L"WINEPREFIX", Platform::TextFromPath(prefix));
    SetVariable(L"WINEDLLPATH", std::nullopt);
    EXPECT_EQ(ErrorOf(Options()), ERROR_BAD_EXE_FORMAT);
    EXPECT_TRUE(fs::exists(prefix / "drive_c" / "windows"));
    // As after some time without a program running: the old server knows no 32-bit half.
    StopWineserver();

    SetVariable(L"WINEDLLPATH", Platform::TextFromPath(TEST_WINE_32BIT));
    Tell(game_, u"exit 9");
    const LaunchedProgram program = Launch(Options());
    ASSERT_TRUE(program.started) << program.error;
    EXPECT_EQ(program.ExitCode(), 9U);
    StopWineserver();
}

TEST_F(WineFailure, AWineThatReturns0WithoutRunningAnythingIs193) {
    PutWineOnPath("exit 0\n");
    EXPECT_EQ(ErrorOf(Options()), ERROR_BAD_EXE_FORMAT);
}

TEST_F(WineFailure, AWineThatEndsAfterItWasReadyIsAFailedStart) {
    PutWineOnPath("echo engine_host ready\nexit 0\n");
    EXPECT_EQ(ErrorOf(Options()), ERROR_GEN_FAILURE);
}

TEST_F(WineFailure, TheCodeOfTheStartInsideWineIsTheCode) {
    PutWineOnPath("echo some noise\necho engine_host ready\necho engine_host failed 740\n");
    EXPECT_EQ(ErrorOf(Options()), 740U);
}

// On a busy machine the supervisor hears of both at once.
TEST_F(WineFailure, TheExitCodeOfAProgramThatEndsAsSoonAsItIsStartedIsNotLost) {
    PutWineOnPath(
        "echo engine_host ready\nhead -c 16 >/dev/null\n"
        "printf 'engine_host started\\nengine_host exit 3221225477\\n'\n");
    const LaunchedProgram program = Launch(Options());
    ASSERT_TRUE(program.started) << program.error;
    EXPECT_EQ(program.ExitCode(), 3221225477U);
}

TEST_F(WineFailure, AMissingEngineIs2) {
    fs::remove(engine_);
    EXPECT_EQ(ErrorOf(Options()), ERROR_FILE_NOT_FOUND);
}

TEST_F(WineFailure, AnEngineThatIsNoWindowsProgramIs193) {
    WriteBytes(engine_, "#!/bin/sh\n");
    EXPECT_EQ(ErrorOf(Options()), ERROR_BAD_EXE_FORMAT);
}

TEST_F(WineFailure, AnEngineOfHeadersOnlyIsRefusedByWineItself) {
    WriteBytes(engine_, PeBytes());
    EXPECT_EQ(ErrorOf(Options()), ERROR_BAD_EXE_FORMAT);
}

TEST_F(WineFailure, AFolderOrAFifoInTheEnginesPlaceIsRefusedAtOnce) {
    fs::remove(engine_);
    fs::create_directory(engine_);
    EXPECT_EQ(ErrorOf(Options()), ERROR_ACCESS_DENIED);
    fs::remove(engine_);
    ASSERT_EQ(mkfifo(engine_.c_str(), 0600), 0);
    EXPECT_EQ(ErrorOf(Options()), ERROR_ACCESS_DENIED);
}

TEST_F(WineFailure, AMissingWorkingDirectoryIs267) {
    LaunchOptions options = Options();
    options.folder = temporary_ / "nowhere";
    EXPECT_EQ(ErrorOf(options), ERROR_DIRECTORY);
}

TEST_F(WineFailure, AWorkingDirectoryWhoseNameIsNotUtf8Is267AndExplained) {
    LaunchOptions options = Options();
    options.folder = temporary_ / "game\xFF";
    fs::create_directory(options.folder);
    EXPECT_EQ(ErrorOf(options), ERROR_DIRECTORY);
    EXPECT_NE(said_.find("UTF-8"), std::string::npos) << said_;
}

TEST_F(WineFailure, APathOf4000CharactersFailsAtOnce) {
    LaunchOptions options = Options();
    options.folder = temporary_.Path();
    while (options.folder.native().size() < 4000) options.folder /= std::string(200, 'x');
    EXPECT_EQ(ErrorOf(options), ERROR_DIRECTORY);
}

TEST_F(WineFailure, APrefixThatCannotBeMadeIsExplained) {
    WriteBytes(temporary_ / "file", "");
    SetVariable(L"WINEPREFIX", Platform::TextFromPath(temporary_ / "file" / "prefix"));
    EXPECT_NE(ErrorOf(Options()), ERROR_BAD_EXE_FORMAT);
    EXPECT_NE(said_.find("prefix"), std::string::npos) << said_;
}

TEST_F(WineFailure, ACommandLineLongerThanWindowsAllowsIs206) {
    LaunchOptions options = Options();
    options.commandLine = std::wstring(32767, L'x');
    EXPECT_EQ(ErrorOf(options), ERROR_FILENAME_EXCED_RANGE);
}

TEST_F(WineFailure, AHandleThatIsNotInheritableCannotBePassedOn) {
    const TestHandle event(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    EXPECT_EQ(ErrorOf(Options(event.Get())), ERROR_INVALID_PARAMETER);
}

TEST_F(WineFailure, AHundredFailedStartsLeaveNoDescriptorAndNothingToReap) {
    const auto openDescriptors = [] {
        return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
    };
    const TestHandle lock(TakeLock(lockFile_));
    const auto before = openDescriptors();
    LaunchOptions missing = Options(lock.Get());
    missing.image = temporary_ / "Engine" / "missing.exe";
    SetVariable(L"PATH", Platform::TextFromPath(temporary_.Path()));
    for (int turn = 0; turn < 50; ++turn) {
        ASSERT_EQ(ErrorOf(missing), ERROR_FILE_NOT_FOUND);              // refused before anything is started
        ASSERT_EQ(ErrorOf(Options(lock.Get())), ERROR_FILE_NOT_FOUND);  // refused by the supervisor
    }
    EXPECT_EQ(openDescriptors(), before);
    errno = 0;
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

}  // namespace
