// What a start hands to the program, and what comes back of it.

#include "WineTest.h"

#include "Platform/Text/Unicode.h"
#include "tests/support/GameFiles.h"

#include <sys/wait.h>

namespace fs = std::filesystem;

namespace {

std::string Narrow(const std::u16string& text) {
    return Platform::Utf8FromWide(Platform::WideFromUtf16(text));
}

class WineStart : public WineTest {
protected:
    DWORD ExitCodeOf(const std::u16string& code) {
        Tell(game_, u"exit " + code);
        const LaunchedProgram program = Launch(Options());
        EXPECT_TRUE(program.started) << program.error;
        return program.ExitCode();
    }
};

TEST_F(WineStart, ExitCodeZeroComesBack) {
    EXPECT_EQ(ExitCodeOf(u"0"), 0U);
}

TEST_F(WineStart, ExitCodeOneComesBack) {
    EXPECT_EQ(ExitCodeOf(u"1"), 1U);
}

TEST_F(WineStart, ExitCodeOfAnAccessViolationComesBackInFull32Bits) {
    EXPECT_EQ(ExitCodeOf(u"3221225477"), 3221225477U);
}

TEST_F(WineStart, ExitCodeAbove255ThatLooksLikeZeroInEightBitsComesBack) {
    EXPECT_EQ(ExitCodeOf(u"256"), 256U);
}

TEST_F(WineStart, ARunningProgramIsStillActiveAndNotSignalled) {
    const LaunchedProgram program = Launch(Options());
    ASSERT_TRUE(program.started) << program.error;
    DWORD code = 0;
    EXPECT_TRUE(GetExitCodeProcess(program.process.Get(), &code));
    EXPECT_EQ(code, STILL_ACTIVE);
    EXPECT_EQ(WaitForSingleObject(program.process.Get(), 0), WAIT_TIMEOUT);
}

TEST_F(WineStart, TheExitCodeCanBeReadAgain) {
    Tell(game_, u"exit 7");
    const LaunchedProgram program = Launch(Options());
    ASSERT_TRUE(program.started);
    EXPECT_EQ(program.ExitCode(), 7U);
    EXPECT_EQ(program.ExitCode(), 7U);
}

TEST_F(WineStart, TheCommandLineArrivesCharacterForCharacter) {
    LaunchOptions options = Options();
    options.commandLine = LR"(quake2.exe  +set "a b"  \"x\\ 'y' $HOME `z` %PATH% * ü €  )";
    const LaunchedProgram program = Launch(options);
    ASSERT_TRUE(program.started) << program.error;
    EXPECT_EQ(Narrow(Told(game_ / "command")), Platform::Utf8FromWide(options.commandLine));
}

TEST_F(WineStart, TheLongestCommandLineArrivesWhole) {
    LaunchOptions options = Options();
    options.commandLine = L"quake2.exe " + std::wstring(32766 - 11, L'x');
    const LaunchedProgram program = Launch(options);
    ASSERT_TRUE(program.started) << program.error;
    EXPECT_EQ(Told(game_ / "command").size(), 32766U);
}

TEST_F(WineStart, FoldersWithBlanksAndUmlautsAreTheProgramsWorkingDirectoryAndPlace) {
    LaunchOptions options = Options();
    engine_ = options.image = temporary_ / "Mein Spiel ä" / "Engine  ö" / "quake2.exe";
    options.folder = temporary_ / "Spiele ü" / "Quake  II ß €";
    fs::create_directories(options.folder);
    fs::create_directories(options.image.parent_path());
    fs::copy_file(TEST_PROBE, options.image);
    const LaunchedProgram program = Launch(options);
    ASSERT_TRUE(program.started) << program.error;
    EXPECT_TRUE(Narrow(Told(options.folder / "folder")).ends_with(R"(\Spiele ü\Quake  II ß €)"));
    EXPECT_NE(EngineProcess(), 0U);
}

TEST_F(WineStart, ALocaleThatIsNotUtf8MakesNoDifferenceToUmlauts) {
    SetVariable(L"LANG", L"C");
    SetVariable(L"LC_ALL", L"C");
    LaunchOptions options = Options();
    options.folder = temporary_ / "Spiele ü";
    options.commandLine = L"quake2.exe +set name Jürgen";
    fs::create_directories(options.folder);
    const LaunchedProgram program = Launch(options);
    ASSERT_TRUE(program.started) << program.error;
    EXPECT_EQ(Narrow(Told(options.folder / "command")), "quake2.exe +set name Jürgen");
    EXPECT_TRUE(Narrow(Told(options.folder / "folder")).ends_with(R"(\Spiele ü)"));
}

TEST_F(WineStart, NamesInAnotherCaseLeadToTheSameFiles) {
    LaunchOptions options = Options();
    options.image = temporary_ / "engine" / "QUAKE2.EXE";
    options.folder = temporary_ / "GAME";
    const LaunchedProgram program = Launch(options);
    ASSERT_TRUE(program.started) << program.error;
    EXPECT_NE(EngineProcess(), 0U);
    EXPECT_FALSE(Told(game_ / "folder").empty());
}

TEST_F(WineStart, AFolderInsideAnotherPrefixIsRunInThatPrefix) {
    // Not the prefix that the environment names: a link to it, which is as good as another.
    const fs::path prefix = temporary_ / "other prefix";
    fs::create_directory(prefix);
    for (const char* name : {"dosdevices", "system.reg", "user.reg", "userdef.reg", ".update-timestamp"}) {
        fs::copy(fs::path(TEST_WINE_PREFIX) / name, prefix / name,
                 fs::copy_options::copy_symlinks | fs::copy_options::recursive);
    }
    fs::create_directory(prefix / "drive_c");
    fs::create_directory_symlink(fs::path(TEST_WINE_PREFIX) / "drive_c" / "windows", prefix / "drive_c" / "windows");
    LaunchOptions options = Options();
    options.folder = prefix / "drive_c" / "Games";
    fs::create_directory(options.folder);
    const LaunchedProgram program = Launch(options);
    ASSERT_TRUE(program.started) << program.error;
    EXPECT_EQ(Narrow(Told(options.folder / "folder")), R"(C:\Games)");
}

TEST_F(WineStart, TheCallersOwnWineSettingsReachTheEngine) {
    SetVariable(L"WINEDLLOVERRIDES", L"ddraw=n,b;mshtml=b");
    const LaunchedProgram program = Launch(Options());
    ASSERT_TRUE(program.started) << program.error;
    const std::string environment = ReadBytes("/proc/" + std::to_string(EngineProcess()) + "/environ");
    EXPECT_NE(environment.find("WINEDLLOVERRIDES=ddraw=n,b;mshtml=b;mscoree="), std::string::npos);
}

TEST_F(WineStart, NothingIsLeftToReapAndNoDescriptorStaysOpen) {
    const auto openDescriptors = [] {
        return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
    };
    const auto before = openDescriptors();
    for (int turn = 0; turn < 3; ++turn) {
        LaunchedProgram program = Launch(Options());
        ASSERT_TRUE(program.started) << program.error;
        // Closed while the program runs, and closed after its end.
        if (turn == 0) program.process.Close();
        kill(static_cast<pid_t>(EngineProcess()), SIGKILL);
        if (turn != 0) program.ExitCode();
        ASSERT_TRUE(Eventually([&] { return ProcessesRunning(engine_).empty(); }));
    }
    EXPECT_EQ(openDescriptors(), before);
    errno = 0;
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST_F(WineStart, ACallerThatIgnoresAndBlocksSignalsCanStart) {
    signal(SIGCHLD, SIG_IGN);
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, &before);
    Tell(game_, u"exit 5");
    const LaunchedProgram program = Launch(Options());
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    signal(SIGCHLD, SIG_DFL);
    ASSERT_TRUE(program.started) << program.error;
    EXPECT_EQ(program.ExitCode(), 5U);
}

}  // namespace
