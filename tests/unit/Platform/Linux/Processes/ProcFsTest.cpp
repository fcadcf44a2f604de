#include "Platform/Linux/Processes/ProcFs.h"

#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace fs = std::filesystem;
using namespace std::string_literals;

namespace {

/// One process of a made-up /proc.
struct FakeProcess {
    std::string executable = {};  // empty for one that can't be read
    std::string commandLine = {};
    std::string environment = {};
    std::string folder = {};
    std::string maps = {};
    std::string name = "name";
    char state = 'S';
};

class ProcFsTest : public testing::Test {
protected:
    void Add(int id, const FakeProcess& process) {
        const fs::path folder = root_ / std::to_string(id);
        WriteBytes(folder / "stat", std::to_string(id) + " (" + process.name + ") " + process.state +
                                        " 17 0 0 0 -1 0 0 0 0 0 0 0 0 0 20 0 3 0 100\n");
        WriteBytes(folder / "cmdline", process.commandLine);
        WriteBytes(folder / "environ", process.environment);
        WriteBytes(folder / "maps", process.maps);
        if (!process.executable.empty()) fs::create_symlink(process.executable, folder / "exe");
        if (!process.folder.empty()) fs::create_symlink(process.folder, folder / "cwd");
    }

    std::string File(const FakeProcess& process) {
        static int id = 100;
        Add(++id, process);
        return proc_.ProgramFile(id).value_or("none").native();
    }

    std::string NameOf(const FakeProcess& process) {
        Add(5, process);
        const auto all = proc_.Processes();
        return all.size() == 1 ? all.front().fileName : std::to_string(all.size()) + " processes";
    }

    /// A prefix with the drives C and Z; its setting as a variable.
    std::string MakePrefix(const std::string& name) {
        const fs::path prefix = temporary_ / name;
        fs::create_directories(prefix / "dosdevices");
        fs::create_directories(prefix / "drive_c");
        fs::create_symlink("../drive_c", prefix / "dosdevices" / "c:");
        fs::create_symlink("/", prefix / "dosdevices" / "z:");
        return "WINEPREFIX=" + prefix.native();
    }

    /// An existing quake2.exe in a folder; its path.
    std::string MakeGame(const fs::path& folder) {
        WriteBytes(temporary_ / folder / "quake2.exe", "MZ");
        return (temporary_ / folder / "quake2.exe").native();
    }

    std::string ZPath(std::string path) {
        std::replace(path.begin(), path.end(), '/', '\\');
        return "Z:" + path;
    }

    TemporaryFolder temporary_;
    fs::path root_ = temporary_ / "proc";
    Platform::ProcFs proc_{root_};
};

const std::string wine = "/usr/lib/wine/wine64";

TEST_F(ProcFsTest, ANativeProgramIsItsExecutable) {
    EXPECT_EQ(File({.executable = "/games/quake2.exe", .commandLine = "anything\0"s}), "/games/quake2.exe");
}

TEST_F(ProcFsTest, AReplacedExecutableKeepsItsName) {
    EXPECT_EQ(File({.executable = "/games/quake2.exe (deleted)"}), "/games/quake2.exe");
}

TEST_F(ProcFsTest, AProcessThatCannotBeReadHasNoFile) {
    EXPECT_EQ(File({.executable = "", .commandLine = "quake2.exe\0"s}), "none");
    EXPECT_FALSE(proc_.ProgramFile(4242));
}

TEST_F(ProcFsTest, AWindowsPathIsTakenThroughThePrefixOfTheEnvironment) {
    const std::string prefix = MakePrefix("prefix");
    const std::string game = MakeGame("prefix/drive_c/Games ü");
    EXPECT_EQ(File({.executable = wine,
                    .commandLine = "C:\\Games ü\\quake2.exe\0+set\0"s,
                    .environment = "A=1\0"s + prefix + "\0B=2\0"s}),
              game);
    EXPECT_EQ(File({.executable = wine, .commandLine = "c:/games ü/QUAKE2.EXE\0"s, .environment = prefix}), game);
}

TEST_F(ProcFsTest, WithoutWineprefixThePrefixLiesInTheHomeFolder) {
    MakePrefix("home/.wine");
    const std::string game = MakeGame("home/.wine/drive_c/q2");
    EXPECT_EQ(File({.executable = wine,
                    .commandLine = "C:\\q2\\quake2.exe\0"s,
                    .environment = "XHOME=/x\0HOME="s + (temporary_ / "home").native()}),
              game);
}

TEST_F(ProcFsTest, AWindowsPathCountsWhateverTheLoaderIsCalled) {
    const std::string prefix = MakePrefix("prefix");
    const std::string game = MakeGame("q2");
    EXPECT_EQ(File({.executable = "/opt/proton/bin/some-preloader", .commandLine = ZPath(game), .environment = prefix}),
              game);
}

TEST_F(ProcFsTest, AWindowsPathOfAProcessWithoutReadableEnvironmentHasNoFile) {
    EXPECT_EQ(File({.executable = "", .commandLine = "C:\\q2\\quake2.exe\0"s}), "none");
}

TEST_F(ProcFsTest, LettersThatTheLocaleLostAreFoundInTheMemoryMap) {
    const std::string prefix = MakePrefix("prefix");
    const std::string game = MakeGame("spiele ü");
    EXPECT_EQ(File({.executable = wine,
                    .commandLine = ZPath((temporary_ / "spiele ?" / "quake2.exe").native()),
                    .environment = prefix,
                    .maps = "00400000-00401000 r--p 00000000 fe:00 42                 " + game + "\n"}),
              game);
}

TEST_F(ProcFsTest, APlainNameIsWhatItsStarterSaysInTheEnvironment) {
    EXPECT_EQ(File({.executable = wine,
                    .commandLine = "quake2.exe\0+set\0"s,
                    .environment = "VELORINTH_ENGINE_IMAGE=/opt/launcher/Engine/Quake2.exe\0"s,
                    .folder = "/games"}),
              "/opt/launcher/Engine/Quake2.exe");
}

TEST_F(ProcFsTest, TheStartersWordDoesNotCountForAnotherProgramOfItsTree) {
    EXPECT_EQ(File({.executable = wine,
                    .commandLine = "other.exe\0"s,
                    .environment = "VELORINTH_ENGINE_IMAGE=/opt/launcher/Engine/quake2.exe\0"s,
                    .folder = temporary_.Path()}),
              "none");
}

TEST_F(ProcFsTest, APlainNameIsFoundInTheMemoryMapWhateverTheWorkingDirectory) {
    EXPECT_EQ(File({.executable = wine,
                    .commandLine = "quake2.exe\0"s,
                    .folder = "/",
                    .maps = "7f0000000000-7f0000001000 r--p 00000000 00:00 0\n"
                            "00400000-00401000 r--p 00000000 fe:00 42      /games/my quake/Quake2.EXE\n"
                            "7f0000000000-7f0000001000 r--p 00000000 fe:00 43      /games/quake2.exe\n"}),
              "/games/my quake/Quake2.EXE");
}

TEST_F(ProcFsTest, APlainNameIsLookedUpInTheWorkingDirectoryLast) {
    const std::string game = MakeGame("q2");
    const std::string folder = (temporary_ / "q2").native();
    EXPECT_EQ(File({.executable = wine, .commandLine = "QUAKE2.exe\0"s, .folder = folder}), game);
    EXPECT_EQ(File({.executable = wine, .commandLine = "quake2\0"s, .folder = folder}), game);
    EXPECT_EQ(File({.executable = wine, .commandLine = "q2\\quake2.exe\0"s, .folder = temporary_.Path()}), game);
    EXPECT_EQ(File({.executable = wine, .commandLine = "./q2/quake2.exe\0"s, .folder = temporary_.Path()}), game);
    EXPECT_EQ(File({.executable = wine, .commandLine = "elsewhere.exe\0"s, .folder = folder}), "none");
}

TEST_F(ProcFsTest, WineGivenAPathOfThisSystemRunsThatFile) {
    const std::string game = MakeGame("q2");
    EXPECT_EQ(File({.executable = wine, .commandLine = game + "\0+set\0"s, .folder = "/"}), game);
}

TEST_F(ProcFsTest, ALoaderThatHasNotYetBecomeTheProgramIsItself) {
    EXPECT_EQ(File({.executable = wine, .commandLine = "/usr/lib/wine/wine64\0quake2.exe\0"s, .folder = "/"}), wine);
    EXPECT_EQ(File({.executable = wine, .commandLine = "wine\0quake2.exe\0"s, .folder = "/"}), wine);
}

TEST_F(ProcFsTest, WineserverIsItself) {
    EXPECT_EQ(File({.executable = "/usr/lib/wine/wineserver64", .commandLine = "/usr/lib/wine/wineserver64\0-p0\0"s}),
              "/usr/lib/wine/wineserver64");
}

TEST_F(ProcFsTest, AShellThatStartsWineIsItself) {
    EXPECT_EQ(File({.executable = "/usr/bin/dash", .commandLine = "/bin/sh\0/usr/bin/wine\0quake2.exe\0"s}),
              "/usr/bin/dash");
}

TEST_F(ProcFsTest, TheListNamesTheWindowsProgram) {
    EXPECT_EQ(NameOf({.executable = wine, .commandLine = "Z:\\games\\Quake2.exe\0"s}), "Quake2.exe");
}

TEST_F(ProcFsTest, TheListAddsTheExtensionThatWineAdds) {
    EXPECT_EQ(NameOf({.executable = wine, .commandLine = "games/quake2\0"s}), "quake2.exe");
}

TEST_F(ProcFsTest, TheListNamesANativeProgramByItsFile) {
    EXPECT_EQ(NameOf({.executable = "/games/a program with a long name", .name = "a program with "}),
              "a program with a long name");
}

TEST_F(ProcFsTest, TheListNamesWhatItCannotReadAsTheKernelDoes) {
    EXPECT_EQ(NameOf({.name = "kworker) R (x"}), "kworker) R (x");
}

TEST_F(ProcFsTest, AnEndedProcessIsNotListed) {
    EXPECT_EQ(NameOf({.executable = "/games/quake2.exe", .state = 'Z'}), "0 processes");
}

TEST_F(ProcFsTest, TheListIsByIdentifierAndKnowsParentAndThreads) {
    for (const int id : {30, 7, 200}) Add(id, {.executable = "/bin/x"});
    fs::create_directories(root_ / "self");
    fs::create_directories(root_ / "12x");
    fs::create_directories(root_ / "99999999999999999999");
    const auto all = proc_.Processes();
    ASSERT_EQ(all.size(), 3U);
    EXPECT_EQ(all[0].id, 7);
    EXPECT_EQ(all[1].id, 30);
    EXPECT_EQ(all[2].id, 200);
    EXPECT_EQ(all[0].parent, 17);
    EXPECT_EQ(all[0].threads, 3U);
}

TEST_F(ProcFsTest, TruncatedOrOddFilesAreNoProcessAndNeverHang) {
    for (const char* text : {"", "5", "5 (", "5 (x", "5 (x)", "5 (x) ", ")(", "\0\0\0"}) {
        WriteBytes(root_ / "5" / "stat", text);
        EXPECT_TRUE(proc_.Processes().empty()) << text;
    }
    fs::remove(root_ / "5" / "stat");
    ASSERT_EQ(mkfifo((root_ / "5" / "stat").c_str(), 0600), 0);
    EXPECT_TRUE(proc_.Processes().empty());
    EXPECT_TRUE(Platform::ProcFs(temporary_ / "nowhere").Processes().empty());
}

}  // namespace
