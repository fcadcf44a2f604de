#include "launcher/GameLaunch/StateFolder.h"
#include "Platform/Interface/Paths.h"
#include "Platform/Text/Unicode.h"
#include "tests/support/GameFiles.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <clocale>
#include <stdexcept>
#include <string>

namespace fs = std::filesystem;

namespace {

using namespace GameLaunch;

class StateFolderTest : public testing::Test {
protected:
    /// The name an installation gets when its canonical path, in lower case, is `text`.
    static std::string NameFor(const fs::path& lowerCasePath) {
        return "Quake2-" +
               std::to_string(HashInstallation(Platform::Utf16FromWide(Platform::TextFromPath(lowerCasePath))));
    }

    TemporaryFolder folder_;
    ScopedEnvironment data_{L"LOCALAPPDATA", Platform::TextFromPath(folder_ / "Local")};
};

TEST(HashInstallation, EmptyTextHashesToTheBasis) {
    EXPECT_EQ(HashInstallation(u""), 14695981039346656037U);
}

TEST(HashInstallation, AsciiTextAgreesWithThePublishedVectorOfTheByteHash) {
    EXPECT_EQ(HashInstallation(u"a"), 0xAF63DC4C8601EC8CU);
    EXPECT_EQ(HashInstallation(u"foobar"), 0x85944171F73967E8U);
}

TEST(HashInstallation, AUnitIsOneStepWithAllItsSixteenBits) {
    EXPECT_EQ(HashInstallation(u"\u0416"), (0xCBF29CE484222325U ^ 0x0416U) * 0x100000001B3U);
    EXPECT_NE(HashInstallation(u"\u0416"), HashInstallation(u"\u0016\u0004"));
}

TEST(HashInstallation, CharacterBeyondTheBasicPlaneIsTwoSteps) {
    const std::uint64_t high = (0xCBF29CE484222325U ^ 0xD83CU) * 0x100000001B3U;
    EXPECT_EQ(HashInstallation(u"\U0001F3AE"), (high ^ 0xDFAEU) * 0x100000001B3U);
}

TEST(LauncherFolder, IsTheFolderOfTheRunningProgram) {
    EXPECT_TRUE(LauncherFolder().is_absolute());
    EXPECT_TRUE(fs::exists(LauncherFolder() / IDLE_PROGRAM));
}

TEST_F(StateFolderTest, LiesInLocalAppDataAndIsMadeWithItsParents) {
    EXPECT_EQ(StateFolder(), folder_ / "Local" / "VelorinthLauncher");
    EXPECT_TRUE(fs::is_directory(folder_ / "Local" / "VelorinthLauncher"));
}

TEST_F(StateFolderTest, ComesBackWhenSomebodyDeletedIt) {
    StateFolder();
    fs::remove_all(folder_ / "Local");
    StateFolder();
    EXPECT_TRUE(fs::is_directory(folder_ / "Local" / "VelorinthLauncher"));
}

TEST_F(StateFolderTest, WithoutLocalAppDataThrows) {
    const ScopedEnvironment local(L"LOCALAPPDATA", std::nullopt);
    const ScopedEnvironment data(L"XDG_DATA_HOME", std::nullopt);
    const ScopedEnvironment home(L"HOME", std::nullopt);
    try {
        StateFolder();
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "LocalAppData unavailable");
    }
}

TEST_F(StateFolderTest, FileInItsPlaceThrowsNamedCreateDirectories) {
    WriteBytes(folder_ / "Local", "no folder");
    try {
        StateFolder();
        FAIL();
    } catch (const fs::filesystem_error& error) {
        EXPECT_NE(std::string(error.what()).find("create_directories"), std::string::npos) << error.what();
    }
}

TEST_F(StateFolderTest, LocalAppDataOfFourThousandCharactersThrowsAtOnce) {
    const ScopedEnvironment local(L"LOCALAPPDATA",
                                  Platform::TextFromPath(folder_.Path()) + L"/" + std::wstring(4000, L'x'));
    EXPECT_THROW(StateFolder(), fs::filesystem_error);
}

TEST_F(StateFolderTest, RuntimePathIsTheDecimalHashOfTheLowerCasePath) {
    fs::create_directory(folder_ / "Game Folder");
    std::wstring lower = Platform::TextFromPath(folder_ / "Game Folder");
    for (wchar_t& character : lower) {
        if (character >= L'A' && character <= L'Z') character = static_cast<wchar_t>(character - L'A' + L'a');
    }
    EXPECT_EQ(RuntimePathFor(folder_ / "Game Folder"),
              folder_ / "Local" / "VelorinthLauncher" / NameFor(Platform::PathFromText(lower)));
}

TEST_F(StateFolderTest, EmptyFolderHashesToTheBasis) {
    EXPECT_EQ(RuntimePathFor({}).filename(), "Quake2-14695981039346656037");
    EXPECT_EQ(LockFileFor({}).filename(), "Quake2-14695981039346656037.lock");
}

TEST_F(StateFolderTest, NoFolderOfTheRuntimePathsNameIsMade) {
    const fs::path runtime = RuntimePathFor(folder_.Path());
    EXPECT_FALSE(fs::exists(runtime));
    EXPECT_TRUE(fs::is_empty(runtime.parent_path()));
}

TEST_F(StateFolderTest, FolderWhoseNameDiffersOnlyInCaseHasTheSameLockFile) {
    fs::create_directory(folder_ / "Quake II");
    EXPECT_EQ(LockFileFor(folder_ / "Quake II"), LockFileFor(folder_ / "QUAKE ii"));
}

TEST_F(StateFolderTest, ParentStepsForwardSlashesAndTrailingSeparatorGiveTheSameLockFile) {
    fs::create_directories(folder_ / "Games" / "Quake II");
    const fs::path lock = LockFileFor(folder_ / "Games" / "Quake II");
    EXPECT_EQ(LockFileFor(folder_ / "Games" / "Quake II" / ".." / "." / "Quake II"), lock);
    EXPECT_EQ(LockFileFor((folder_ / "Games" / "Quake II").generic_string()), lock);
    EXPECT_EQ(LockFileFor(folder_ / "Games" / "Quake II" / ""), lock);
}

TEST_F(StateFolderTest, TwoFoldersHaveTwoLockFiles) {
    fs::create_directory(folder_ / "a");
    fs::create_directory(folder_ / "b");
    EXPECT_NE(LockFileFor(folder_ / "a"), LockFileFor(folder_ / "b"));
}

TEST_F(StateFolderTest, LettersBeyondAsciiAreNotLowered) {
    EXPECT_NE(RuntimePathFor(folder_ / Platform::PathFromText(L"\u00C4")),
              RuntimePathFor(folder_ / Platform::PathFromText(L"\u00E4")));
}

TEST_F(StateFolderTest, LocaleOfTheProcessDoesNotChangeTheName) {
    const fs::path before = RuntimePathFor(folder_ / Platform::PathFromText(L"Spiele \u00C4"));
    const std::string locale = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "C.UTF-8");
    EXPECT_EQ(RuntimePathFor(folder_ / Platform::PathFromText(L"Spiele \u00C4")), before);
    std::setlocale(LC_ALL, locale.c_str());
}

}  // namespace
