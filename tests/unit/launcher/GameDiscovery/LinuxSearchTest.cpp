// The search over the places where Linux keeps Steam, Wine's drives and program folders, below a home folder made for
// it.
#include "FakeSources.h"
#include "launcher/GameDiscovery/Search.h"
#include "Platform/Interface/Paths.h"
#include "Platform/Text/Unicode.h"
#include "Sentences.h"
#include "tests/support/GameFiles.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace fs = std::filesystem;
using GameDiscovery::Candidates;
using GameDiscovery::FindGame;
using testing::Contains;
using testing::ElementsAre;

namespace {

class LinuxSearch : public testing::Test {
protected:
    LinuxSearch() { fs::create_directories(home_); }

    static std::wstring Text(const fs::path& path) { return Platform::TextFromPath(path); }
    static fs::path Quake2In(const fs::path& steam) { return steam / "steamapps" / "common" / "Quake 2"; }

    /// A Wine prefix with the drives C and D.
    void MakePrefix() {
        fs::create_directories(driveC_ / "Program Files");
        fs::create_directories(driveC_ / "Program Files (x86)");
        fs::create_directories(driveD_);
        fs::create_directories(prefix_ / "dosdevices");
        fs::create_directory_symlink("../drive_c", prefix_ / "dosdevices" / "c:");
        fs::create_directory_symlink(driveD_, prefix_ / "dosdevices" / "d:");
    }

    void WriteRegistry(const char* file, const std::string& key, const std::string& value) {
        WriteBytes(prefix_ / file,
                   "WINE REGISTRY Version 2\n;; All keys relative to REGISTRY\\\\Whatever\n\n#arch=win64\n\n[" + key +
                       "] 1690000000\n#time=1d9bf0f4d6f2f00\n" + value + "\n");
    }

    /// The place of a folder among the candidates; a large number when it is none.
    static std::size_t RankOf(const fs::path& folder) {
        const std::vector<fs::path> candidates = Candidates();
        const auto same = [&folder](const fs::path& candidate) {
            std::error_code ignored;
            return fs::equivalent(candidate, folder, ignored);
        };
        return static_cast<std::size_t>(std::find_if(candidates.begin(), candidates.end(), same) - candidates.begin());
    }

    TemporaryFolder temporary_;
    fs::path home_ = temporary_ / "home";
    fs::path prefix_ = home_ / ".wine";
    fs::path driveC_ = prefix_ / "drive_c";
    fs::path driveD_ = temporary_ / "disk";
    fs::path nativeSteam_ = home_ / ".local" / "share" / "Steam";
    fs::path flatpakSteam_ = home_ / ".var" / "app" / "com.valvesoftware.Steam" / ".local" / "share" / "Steam";
    fs::path snapSteam_ = home_ / "snap" / "steam" / "common" / ".local" / "share" / "Steam";
    ScopedEnvironment homeVariable_{L"HOME", Text(home_)};
    ScopedEnvironment dataVariable_{L"XDG_DATA_HOME", std::nullopt};
    ScopedEnvironment prefixVariable_{L"WINEPREFIX", std::nullopt};
    ScopedEnvironment programFiles_{L"ProgramFiles", std::nullopt};
    ScopedEnvironment programFilesX86_{L"ProgramFiles(x86)", std::nullopt};
};

}  // namespace

TEST_F(LinuxSearch, EverySourceIsFoundInTheToldOrder) {
    MakePrefix();
    WriteRegistry("user.reg", R"(Software\\Valve\\Steam)", R"("SteamPath"="c:/users steam")");
    WriteRegistry("system.reg", R"(Software\\Wow6432Node\\Valve\\Steam)", R"("InstallPath"="D:\\Steam")");
    fs::create_directories(home_ / ".steam" / "debian-installation");
    fs::create_directory_symlink("debian-installation", home_ / ".steam" / "root");
    const fs::path nativeLibrary = temporary_ / "second disk";
    const fs::path prefixLibrary = driveD_ / "Library";
    WriteBytes(nativeSteam_ / "steamapps" / "libraryfolders.vdf",
               "\"libraryfolders\" { \"1\" { \"path\" \"" + nativeLibrary.string() + "\" } }");
    WriteBytes(driveC_ / "users steam" / "steamapps" / "libraryfolders.vdf",
               R"("libraryfolders" { "1" { "path" "D:\\library" } })");
    const std::vector<fs::path> inOrder{
        Quake2In(home_ / ".steam" / "debian-installation"),
        Quake2In(nativeSteam_),
        Quake2In(flatpakSteam_),
        Quake2In(snapSteam_),
        Quake2In(driveC_ / "users steam"),
        Quake2In(driveD_ / "Steam"),
        Quake2In(driveC_ / "Program Files (x86)" / "Steam"),
        Quake2In(nativeLibrary),
        Quake2In(prefixLibrary),
        driveC_ / "Quake2",
        driveC_ / "GOG Games" / "Quake II",
        driveD_ / "Games" / "Quake2",
        home_ / "Games" / "Quake II",
        driveC_ / "Program Files" / "Quake2",
        driveC_ / "Program Files (x86)" / "Quake II",
    };
    // The Steam folders themselves exist from the start, as only existing ones are searched.
    for (const fs::path& steam : {flatpakSteam_, snapSteam_}) fs::create_directories(steam);
    for (auto game = inOrder.rbegin(); game != inOrder.rend(); ++game) {
        MakeInstallation(*game);
        const GameDiscovery::Result result = FindGame({});
        ASSERT_EQ(result.Message, Sentences::verified) << *game;
        ASSERT_TRUE(fs::equivalent(Platform::PathFromText(result.Folder), *game))
            << "expected " << *game << ", found " << Platform::PathFromText(result.Folder);
    }
    for (std::size_t i = 1; i < inOrder.size(); ++i)
        EXPECT_LT(RankOf(inOrder[i - 1]), RankOf(inOrder[i])) << inOrder[i];
}

TEST_F(LinuxSearch, NamesInASteamFolderAreMatchedWithoutRegardToCase) {
    const fs::path game = nativeSteam_ / "SteamApps" / "Common" / "QUAKE 2";
    MakeInstallation(game);
    fs::rename(game / "quake2.exe", game / "Quake2.EXE");
    const GameDiscovery::Result result = FindGame({});
    EXPECT_EQ(result.Message, Sentences::verified);
    EXPECT_EQ(Platform::ExistingSpelling(Platform::PathFromText(result.Folder)), game);
}

TEST_F(LinuxSearch, AManifestInAFolderOfOtherCaseIsRead) {
    WriteBytes(nativeSteam_ / "SteamApps" / "appmanifest_2320.acf", "\"installdir\" \"Classic\"");
    EXPECT_THAT(Candidates(), Contains(nativeSteam_ / "steamapps" / "common" / "Classic"));
}

TEST_F(LinuxSearch, AnInstalldirOnAWindowsDriveIsTakenThroughThePrefix) {
    MakePrefix();
    WriteRegistry("user.reg", R"(Software\\Valve\\Steam)", R"("SteamPath"="c:/Steam")");
    WriteBytes(driveC_ / "Steam" / "steamapps" / "appmanifest_2320.acf", R"("installdir" "D:\\Spiele\\Q2")");
    MakeInstallation(driveD_ / "Spiele" / "Q2");
    const GameDiscovery::Result result = FindGame({});
    EXPECT_EQ(result.Message, Sentences::verified);
    EXPECT_TRUE(fs::equivalent(Platform::PathFromText(result.Folder), driveD_ / "Spiele" / "Q2"));
}

TEST_F(LinuxSearch, AHomeFolderThatIsNotUtf8IsSearched) {
    const fs::path home = temporary_ / "h\xF6me";
    const ScopedEnvironment variable(L"HOME", Text(home));
    MakeInstallation(Quake2In(home / ".local" / "share" / "Steam"));
    const GameDiscovery::Result result = FindGame({});
    EXPECT_EQ(Platform::PathFromText(result.Folder), Quake2In(home / ".local" / "share" / "Steam"));
}

TEST_F(LinuxSearch, SpecialFilesInPlaceOfSteamsContributeNothingAtOnce) {
    FakeSources sources;
    sources.registry[L"HKCU\\Software\\Valve\\Steam:SteamPath"] = {Text(temporary_ / "fifo"),
                                                                   Text(temporary_ / "zero")};
    for (const char* const name : {"libraryfolders.vdf", "appmanifest_2320.acf"}) {
        for (const char* const steam : {"fifo", "zero"}) fs::create_directories(temporary_ / steam / "steamapps");
        ASSERT_EQ(mkfifo((temporary_ / "fifo" / "steamapps" / name).c_str(), 0600), 0);
        fs::create_symlink("/dev/zero", temporary_ / "zero" / "steamapps" / name);
    }
    EXPECT_THAT(Candidates(sources), ElementsAre(Quake2In(temporary_ / "fifo"), Quake2In(temporary_ / "zero")));
}

TEST_F(LinuxSearch, TheRegistryAnswersWithTheFirstSteamFolder) {
    fs::create_directories(nativeSteam_);
    fs::create_directories(snapSteam_);
    EXPECT_EQ(GameDiscovery::ReadRegistryString(HKEY_CURRENT_USER, L"Software\\Valve\\Steam", L"SteamPath"),
              Text(nativeSteam_));
}

// Windows itself keeps no variables of these lengths.

TEST(ReadEnvironment, AVariableOf32767CharactersIsRead) {
    const ScopedEnvironment variable(L"VELORINTH_TEST", std::wstring(32'767, L'x'));
    EXPECT_EQ(GameDiscovery::ReadEnvironment(L"VELORINTH_TEST"), std::wstring(32'767, L'x'));
}

TEST(ReadEnvironment, AVariableOfMoreThan32767CharactersIsEmpty) {
    const ScopedEnvironment variable(L"VELORINTH_TEST", std::wstring(32'768, L'x'));
    EXPECT_EQ(GameDiscovery::ReadEnvironment(L"VELORINTH_TEST"), L"");
}
