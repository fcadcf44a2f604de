// Validation on what only a Linux file system holds: names in any case, names of any bytes, links, special files.
#include "CurrentFolder.h"
#include "launcher/GameDiscovery/FileReader.h"
#include "launcher/GameDiscovery/QuotedValues.h"
#include "launcher/GameDiscovery/Validation.h"
#include "Platform/Interface/Paths.h"
#include "Sentences.h"
#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>

namespace fs = std::filesystem;
using GameDiscovery::ValidateFolder;
using testing::HasSubstr;

namespace {

/// Puts something in a file's place that is no file: reading it may never end.
struct Special {
    const char* name;
    std::function<void(const fs::path&)> make;
};

void MakeFifo(const fs::path& path) {
    if (mkfifo(path.c_str(), 0600) != 0) throw std::runtime_error("mkfifo");
}

class SpecialFiles : public testing::TestWithParam<Special> {
protected:
    SpecialFiles() { MakeInstallation(game_); }

    void PutAt(const fs::path& path) {
        fs::remove_all(path);
        GetParam().make(path);
    }

    TemporaryFolder temporary_;
    fs::path game_ = temporary_ / "game";
};

INSTANTIATE_TEST_SUITE_P(
    All, SpecialFiles,
    testing::Values(Special{"Fifo", MakeFifo},
                    Special{"Directory", [](const fs::path& path) { fs::create_directory(path); }},
                    Special{"LinkToDevZero", [](const fs::path& path) { fs::create_symlink("/dev/zero", path); }},
                    Special{"LinkToDevTty", [](const fs::path& path) { fs::create_symlink("/dev/tty", path); }},
                    Special{"LinkToFifo",
                            [](const fs::path& path) {
                                MakeFifo(path.string() + ".fifo");
                                fs::create_symlink(path.string() + ".fifo", path);
                            }}),
    [](const auto& info) { return info.param.name; });

class LinuxValidation : public testing::Test {
protected:
    LinuxValidation() { MakeInstallation(game_); }

    TemporaryFolder temporary_;
    fs::path game_ = temporary_ / "game";
};

}  // namespace

TEST_P(SpecialFiles, InPlaceOfQuake2ExeIsNotClassic) {
    PutAt(game_ / "quake2.exe");
    EXPECT_EQ(ValidateFolder(game_).Message, Sentences::notClassic);
}

TEST_P(SpecialFiles, InPlaceOfTheRendererIsNone) {
    PutAt(game_ / "ref_gl.dll");
    EXPECT_EQ(ValidateFolder(game_).Message, Sentences::noRenderer);
}

TEST_P(SpecialFiles, InPlaceOfThePakIsNoData) {
    PutAt(game_ / "baseq2" / "pak0.pak");
    EXPECT_EQ(ValidateFolder(game_).Message, Sentences::noData);
}

TEST_P(SpecialFiles, DoNotOpen) {
    PutAt(game_ / "file");
    EXPECT_FALSE(GameDiscovery::FileReader(game_ / "file").IsOpen());
}

TEST_P(SpecialFiles, HoldNoQuotedValues) {
    PutAt(game_ / "file.vdf");
    EXPECT_TRUE(GameDiscovery::ReadQuotedValues(game_ / "file.vdf", "path").empty());
}

TEST_F(LinuxValidation, NamesAreMatchedWithoutRegardToCase) {
    fs::rename(game_ / "quake2.exe", game_ / "QUAKE2.EXE");
    fs::rename(game_ / "ref_gl.dll", game_ / "Ref_GL.dll");
    fs::rename(game_ / "baseq2", game_ / "BaseQ2");
    fs::rename(game_ / "BaseQ2" / "pak0.pak", game_ / "BaseQ2" / "PAK0.pak");
    EXPECT_EQ(ValidateFolder(game_).Message, Sentences::verified);
}

TEST_F(LinuxValidation, TheExactNameWinsOverAnotherSpelling) {
    WriteBytes(game_ / "QUAKE2.EXE", "not a program");
    EXPECT_EQ(ValidateFolder(game_).Message, Sentences::verified);
}

TEST_F(LinuxValidation, TheFolderItselfIsMatchedWithoutRegardToCase) {
    EXPECT_EQ(ValidateFolder(temporary_ / "GAME").Message, Sentences::verified);
}

TEST_F(LinuxValidation, AFolderNameThatIsNotUtf8IsVerifiedAndComesBackAsItWas) {
    const fs::path folder = temporary_ / "Qu\xE4ke \xFF";
    MakeInstallation(folder);
    const GameDiscovery::Result result = ValidateFolder(folder);
    EXPECT_EQ(result.Message, Sentences::verified);
    EXPECT_EQ(Platform::PathFromText(result.Folder), folder);
}

TEST_F(LinuxValidation, ALinkToTheFolderStaysAsItIsSpelled) {
    fs::create_directory_symlink(game_, temporary_ / "link");
    const GameDiscovery::Result result = ValidateFolder(temporary_ / "link");
    EXPECT_EQ(result.Message, Sentences::verified);
    EXPECT_EQ(Platform::PathFromText(result.Folder), temporary_ / "link");
}

TEST_F(LinuxValidation, LinksToTheFilesAreFollowed) {
    fs::rename(game_ / "quake2.exe", temporary_ / "elsewhere.exe");
    fs::create_symlink("../elsewhere.exe", game_ / "quake2.exe");
    EXPECT_EQ(ValidateFolder(game_).Message, Sentences::verified);
}

TEST_F(LinuxValidation, ADanglingLinkIsMissing) {
    fs::remove(game_ / "quake2.exe");
    fs::create_symlink("nowhere", game_ / "quake2.exe");
    EXPECT_EQ(ValidateFolder(game_).Message, Sentences::missing);
}

TEST_F(LinuxValidation, ALoopOfLinksIsAnErrorOfTheExistenceTest) {
    fs::remove(game_ / "quake2.exe");
    fs::create_symlink("quake2.exe", game_ / "quake2.exe");
    try {
        ValidateFolder(game_);
        FAIL() << "nothing was thrown";
    } catch (const fs::filesystem_error& error) {
        EXPECT_THAT(error.what(), HasSubstr("exists"));
        EXPECT_EQ(error.path1(), game_ / "quake2.exe");
    }
}

TEST_F(LinuxValidation, APathLongerThan260CharactersIsVerified) {
    fs::path deep = temporary_.Path();
    for (int i = 0; i < 10; ++i) deep /= std::string(100, static_cast<char>('a' + i));
    MakeInstallation(deep);
    const GameDiscovery::Result result = ValidateFolder(deep);
    EXPECT_EQ(result.Message, Sentences::verified);
    EXPECT_EQ(Platform::PathFromText(result.Folder), deep);
}

TEST_F(LinuxValidation, ARelativeInputInARemovedWorkingDirectoryAsksForAFolder) {
    fs::create_directory(temporary_ / "gone");
    const CurrentFolder current(temporary_ / "gone");
    fs::remove(temporary_ / "gone");
    EXPECT_EQ(ValidateFolder("game").Message, L"Select a Quake II installation folder.");
}

// The superuser reads everything, so another user has to try.
TEST_F(LinuxValidation, UnreadableFilesGiveTheirChecksSentence) {
    if (geteuid() != 0) GTEST_SKIP() << "needs the right to become another user";
    fs::permissions(temporary_.Path(), fs::perms::all);
    const auto messageAsNobody = [this] {
        const pid_t child = fork();
        if (child == 0) {
            constexpr uid_t nobody = 65534;
            if (setgid(nobody) != 0 || setuid(nobody) != 0) _exit(100);
            const std::wstring message = ValidateFolder(game_).Message;
            _exit(message == Sentences::notClassic   ? 1
                  : message == Sentences::noRenderer ? 2
                  : message == Sentences::noData     ? 3
                                                     : 4);
        }
        int status = 0;
        while (waitpid(child, &status, 0) < 0 && errno == EINTR) {}
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    };
    fs::permissions(game_ / "baseq2" / "pak0.pak", fs::perms::none);
    EXPECT_EQ(messageAsNobody(), 3);
    fs::permissions(game_ / "ref_gl.dll", fs::perms::none);
    EXPECT_EQ(messageAsNobody(), 2);
    fs::permissions(game_ / "quake2.exe", fs::perms::none);
    EXPECT_EQ(messageAsNobody(), 1);
}
