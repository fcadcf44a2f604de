#include "launcher/Settings/Settings.h"
#include "Platform/Interface/Paths.h"
#include "tests/support/GameFiles.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <stdexcept>
#include <string>

namespace fs = std::filesystem;
using namespace std::string_literals;

namespace {

class Settings : public testing::Test {
protected:
    void WriteFile(const std::string& bytes) { WriteBytes(file_, bytes); }

    /// Loads a file of these lines in the launcher's section.
    LauncherSettings LoadLines(const std::string& lines) {
        WriteFile("[Launcher]\r\n" + lines);
        return LoadSettings();
    }

    /// A value as it stands in the file.
    std::wstring Stored(const wchar_t* key) {
        std::wstring buffer(40'000, L'\0');
        buffer.resize(GetPrivateProfileStringW(L"Launcher", key, L"<missing>", buffer.data(),
                                               static_cast<DWORD>(buffer.size()),
                                               Platform::TextFromPath(file_).c_str()));
        return buffer;
    }

    std::wstring FolderAfterSaving(const std::wstring& folder) {
        SaveSettings({.Folder = folder});
        return LoadSettings().Folder;
    }

    TemporaryFolder temporary_;
    fs::path state_ = temporary_ / "VelorinthLauncher";
    fs::path file_ = state_ / "launcher.ini";
    ScopedEnvironment localAppData_{L"LOCALAPPDATA", Platform::TextFromPath(temporary_.Path())};
};

}  // namespace

TEST_F(Settings, NoFileGivesTheDefaults) {
    const LauncherSettings settings = LoadSettings();
    EXPECT_EQ(settings.Folder, L"");
    EXPECT_TRUE(settings.Modern);
    EXPECT_TRUE(settings.Fullscreen);
    EXPECT_EQ(settings.Mode, 4);
}

TEST_F(Settings, LoadingMakesTheStateFolderAndNoFile) {
    LoadSettings();
    EXPECT_TRUE(fs::is_directory(state_));
    EXPECT_FALSE(fs::exists(file_));
}

TEST_F(Settings, WhatIsSavedIsLoaded) {
    const LauncherSettings saved{.Folder = L"C:\\Games\\Quake2", .Modern = false, .Fullscreen = false, .Mode = 9};
    SaveSettings(saved);
    EXPECT_EQ(LoadSettings(), saved);
    const LauncherSettings other{.Folder = L"/srv/games/quake 2", .Modern = true, .Fullscreen = false, .Mode = 0};
    SaveSettings(other);
    EXPECT_EQ(LoadSettings(), other);
}

TEST_F(Settings, TheFirstSaveWritesAllDefaults) {
    SaveSettings({});
    EXPECT_EQ(Stored(L"Folder"), L"");
    EXPECT_EQ(Stored(L"Modern"), L"1");
    EXPECT_EQ(Stored(L"Fullscreen"), L"1");
    EXPECT_EQ(Stored(L"Mode"), L"4");
    EXPECT_EQ(LoadSettings(), LauncherSettings());
}

TEST_F(Settings, ValuesAreWrittenAsTold) {
    SaveSettings({.Folder = L"D:\\q2", .Modern = false, .Fullscreen = false, .Mode = -7});
    EXPECT_EQ(Stored(L"Folder"), L"D:\\q2");
    EXPECT_EQ(Stored(L"Modern"), L"0");
    EXPECT_EQ(Stored(L"Fullscreen"), L"0");
    EXPECT_EQ(Stored(L"Mode"), L"-7");
}

TEST_F(Settings, SavingBringsAMissingStateFolderBack) {
    SaveSettings({});
    fs::remove_all(state_);
    SaveSettings({.Folder = {}, .Mode = 7});
    EXPECT_EQ(LoadSettings().Mode, 7);
}

TEST_F(Settings, SavingKeepsWhatElseIsInTheFile) {
    WriteFile("[Other]\r\nMode=3\r\n[Launcher]\r\nFuture=kept\r\nMode=5\r\n");
    SaveSettings({.Folder = L"C:\\q2", .Mode = 6});
    EXPECT_EQ(Stored(L"Future"), L"kept");
    EXPECT_EQ(LoadSettings().Mode, 6);
    EXPECT_EQ(GetPrivateProfileIntW(L"Other", L"Mode", 0, Platform::TextFromPath(file_).c_str()), 3U);
}

TEST_F(Settings, Mode12Gives9) {
    EXPECT_EQ(LoadLines("Mode=12\r\n").Mode, 9);
}

TEST_F(Settings, ModeMinus1Gives0) {
    EXPECT_EQ(LoadLines("Mode=-1\r\n").Mode, 0);
}

TEST_F(Settings, ModeWithoutANumberGives0) {
    EXPECT_EQ(LoadLines("Mode=abc\r\n").Mode, 0);
}

TEST_F(Settings, ModesFrom0To9StayAsTheyAre) {
    for (int mode = 0; mode <= 9; ++mode) EXPECT_EQ(LoadLines("Mode=" + std::to_string(mode)).Mode, mode);
}

TEST_F(Settings, ModeOfManyDigitsIsClamped) {
    EXPECT_EQ(LoadLines("Mode=2147483647\r\n").Mode, 9);
    const std::int32_t mode = LoadLines("Mode=" + std::string(1000, '9') + "\r\n").Mode;
    EXPECT_GE(mode, 0);
    EXPECT_LE(mode, 9);
}

TEST_F(Settings, Modern2IsTrueAndWrittenBackAs1) {
    const LauncherSettings settings = LoadLines("Modern=2\r\nFullscreen=-3\r\n");
    EXPECT_TRUE(settings.Modern);
    EXPECT_TRUE(settings.Fullscreen);
    SaveSettings(settings);
    EXPECT_EQ(Stored(L"Modern"), L"1");
    EXPECT_EQ(Stored(L"Fullscreen"), L"1");
}

TEST_F(Settings, Modern0IsFalse) {
    const LauncherSettings settings = LoadLines("Modern=0\r\nFullscreen=0\r\n");
    EXPECT_FALSE(settings.Modern);
    EXPECT_FALSE(settings.Fullscreen);
}

TEST_F(Settings, EachMissingKeyGivesItsDefault) {
    LauncherSettings expected;
    expected.Fullscreen = false;
    EXPECT_EQ(LoadLines("Fullscreen=0\r\n"), expected);
}

TEST_F(Settings, KeysOfAnotherSectionDoNotCount) {
    WriteFile("Mode=1\r\n[Other]\r\nMode=2\r\nModern=0\r\n");
    EXPECT_EQ(LoadSettings(), LauncherSettings());
}

TEST_F(Settings, TheFirstOfTwoSectionsCounts) {
    WriteFile("[Launcher]\r\nMode=2\r\n[Other]\r\nx=y\r\n[Launcher]\r\nMode=8\r\n");
    EXPECT_EQ(LoadSettings().Mode, 2);
}

TEST_F(Settings, TheFirstOfTwoKeysCounts) {
    EXPECT_EQ(LoadLines("Mode=2\r\nMode=8\r\n").Mode, 2);
}

TEST_F(Settings, EveryKindOfLineEndIsRead) {
    for (const std::string end : {"\n", "\r\n"}) {
        WriteFile("[Launcher]" + end + "Folder=C:\\q2" + end + "Modern=0" + end + "Fullscreen=0" + end + "Mode=6" +
                  end);
        const LauncherSettings expected{.Folder = L"C:\\q2", .Modern = false, .Fullscreen = false, .Mode = 6};
        EXPECT_EQ(LoadSettings(), expected);
    }
}

TEST_F(Settings, AByteOrderMarkOfUtf16IsUnderstood) {
    std::string bytes = "\xFF\xFE";
    for (const char character : "[Launcher]\r\nMode=6\r\nFolder=C:\\q2\r\n"s) {
        bytes += character;
        bytes += '\0';
    }
    WriteFile(bytes);
    EXPECT_EQ(LoadSettings().Mode, 6);
    EXPECT_EQ(LoadSettings().Folder, L"C:\\q2");
}

TEST_F(Settings, LinesOf1MiBDoNotHideTheOthers) {
    const std::string line(1 << 20, 'x');
    const LauncherSettings settings = LoadLines(line + "\r\n;" + line + "\r\nOther=" + line + "\r\nMode=6\r\n");
    EXPECT_EQ(settings.Mode, 6);
    EXPECT_TRUE(settings.Modern);
}

TEST_F(Settings, AFolderOf1MiBIsCutAt32767Characters) {
    const LauncherSettings settings = LoadLines("Folder=" + std::string(1 << 20, 'x') + "\r\nMode=6\r\n");
    EXPECT_EQ(settings.Folder, std::wstring(32'767, L'x'));
    EXPECT_EQ(settings.Mode, 6);
}

TEST_F(Settings, AFolderOf32767CharactersSurvives) {
    const std::wstring folder(32'767, L'x');
    EXPECT_EQ(FolderAfterSaving(folder), folder);
}

TEST_F(Settings, ANonAsciiFolderSurvives) {
    for (const std::wstring& folder :
         {L"C:\\Spiele\\Qu\u00E4ke \u2161"s, L"/srv/\u96F7\u795E/\u0416"s, L"D:\\\U0001F3AE\\Quake2"s}) {
        EXPECT_EQ(FolderAfterSaving(folder), folder);
    }
}

TEST_F(Settings, ANonAsciiFolderReplacesAnAsciiOne) {
    EXPECT_EQ(FolderAfterSaving(L"C:\\Quake2"), L"C:\\Quake2");
    EXPECT_EQ(FolderAfterSaving(L"C:\\\u96F7"), L"C:\\\u96F7");
    EXPECT_EQ(FolderAfterSaving(L"C:\\Quake2"), L"C:\\Quake2");
}

TEST_F(Settings, LeadingAndTrailingBlanksOfAFolderAreLost) {
    EXPECT_EQ(FolderAfterSaving(L"  C:\\Quake 2"), L"C:\\Quake 2");
    EXPECT_EQ(FolderAfterSaving(L"C:\\Quake 2  "), L"C:\\Quake 2");
}

TEST_F(Settings, ATrailingSeparatorOfAFolderStays) {
    EXPECT_EQ(FolderAfterSaving(L"C:\\Quake2\\"), L"C:\\Quake2\\");
    EXPECT_EQ(FolderAfterSaving(L"/srv/quake2/"), L"/srv/quake2/");
}

TEST_F(Settings, FoldersWithTheFormatsOwnCharactersSurvive) {
    for (const std::wstring& folder : {L"C:\\a=b;c"s, L"C:\\[Launcher]"s, L"C:\\it's \"here\" now"s, L";C:\\x"s}) {
        EXPECT_EQ(FolderAfterSaving(folder), folder);
    }
}

TEST_F(Settings, ADirectoryInPlaceOfTheFileGivesDefaultsAndSavingGoesUnnoticed) {
    fs::create_directories(file_);
    EXPECT_EQ(LoadSettings(), LauncherSettings());
    EXPECT_NO_THROW(SaveSettings({.Folder = {}, .Mode = 1}));
    EXPECT_EQ(LoadSettings(), LauncherSettings());
}

TEST_F(Settings, AStateFolderThatCannotBeMadeGivesDefaultsAndSavingThrows) {
    WriteBytes(state_, "a file in the folder's place");
    EXPECT_EQ(LoadSettings(), LauncherSettings());
    EXPECT_THROW(SaveSettings({}), fs::filesystem_error);
}

TEST_F(Settings, WithoutAPlaceForTheUsersDataDefaultsAreLoadedAndSavingThrows) {
    const ScopedEnvironment local(L"LOCALAPPDATA", std::nullopt);
    // Elsewhere these stand in for it.
    const ScopedEnvironment data(L"XDG_DATA_HOME", std::nullopt);
    const ScopedEnvironment home(L"HOME", std::nullopt);
    EXPECT_EQ(LoadSettings(), LauncherSettings());
    try {
        SaveSettings({});
        FAIL() << "nothing was thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "LocalAppData unavailable");
    }
}
