#include "CurrentFolder.h"
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

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace fs = std::filesystem;
using GameDiscovery::Candidates;
using GameDiscovery::FindGame;
using GameDiscovery::Result;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

namespace {

constexpr const wchar_t* userSteam = L"HKCU\\Software\\Valve\\Steam:SteamPath";
constexpr const wchar_t* machineSteam = L"HKLM\\SOFTWARE\\WOW6432Node\\Valve\\Steam:InstallPath";
constexpr const wchar_t* noneFound = L"No classic Quake II installation found. Use Browse for game.";

/// A text in quotes, as Steam's files hold it.
std::string Quoted(const std::string& text) {
    std::string quoted = "\"";
    for (const char character : text) {
        if (character == '\\' || character == '"') quoted += '\\';
        quoted += character;
    }
    return quoted + '"';
}

std::string QuotedPath(const fs::path& path) {
    return Quoted(Platform::Utf8FromWide(Platform::TextFromPath(path)));
}

class Search : public testing::Test {
protected:
    /// The user's Steam folder, known to the registry.
    Search() { sources_.registry[userSteam] = {Text(steam_)}; }

    static std::wstring Text(const fs::path& path) { return Platform::TextFromPath(path); }
    static fs::path Common(const fs::path& library) { return library / "steamapps" / "common"; }
    static void WriteLibraries(const fs::path& root, const std::string& content) {
        WriteBytes(root / "steamapps" / "libraryfolders.vdf", content);
    }
    static void WriteManifest(const fs::path& library, const std::string& quotedValue) {
        WriteBytes(library / "steamapps" / "appmanifest_2320.acf",
                   "\"AppState\"\n{\n\t\"appid\"\t\t\"2320\"\n\t\"installdir\"\t\t" + quotedValue + "\n}\n");
    }

    void ExpectFound(const fs::path& folder) {
        const Result result = FindGame({}, sources_);
        EXPECT_EQ(result.Folder, Text(folder));
        EXPECT_EQ(result.Message, Sentences::verified);
        EXPECT_FALSE(result.Cancelled);
        EXPECT_EQ(result.SelectedFolder, L"");
    }

    TemporaryFolder temporary_;
    fs::path steam_ = temporary_ / "steam";
    FakeSources sources_;
};

}  // namespace

TEST_F(Search, WithAValidPreferredFolderNothingElseIsRead) {
    MakeInstallation(temporary_ / "preferred");
    MakeInstallation(Common(steam_) / "Quake 2");
    const Result result = FindGame(temporary_ / "preferred", sources_);
    EXPECT_EQ(result.Folder, Text(temporary_ / "preferred"));
    EXPECT_EQ(result.Message, Sentences::verified);
    EXPECT_THAT(sources_.questions, ElementsAre());
}

TEST_F(Search, WithAnInvalidPreferredFolderTheSearchRuns) {
    MakeInstallation(Common(steam_) / "Quake 2");
    EXPECT_EQ(FindGame(temporary_ / "invalid", sources_).Folder, Text(Common(steam_) / "Quake 2"));
}

TEST_F(Search, AnInvalidPreferredFolderIsNoCandidate) {
    fs::create_directory(temporary_ / "invalid");
    EXPECT_EQ(FindGame(temporary_ / "invalid", sources_).Message, noneFound);
    EXPECT_THAT(Candidates(sources_), Not(Contains(temporary_ / "invalid")));
}

TEST_F(Search, NothingFoundLeavesAllEmptyButTheMessage) {
    const Result result = FindGame({}, sources_);
    EXPECT_EQ(result.Message, noneFound);
    EXPECT_EQ(result.Folder, L"");
    EXPECT_FALSE(result.Cancelled);
    EXPECT_EQ(result.SelectedFolder, L"");
}

TEST_F(Search, SourcesAreAskedInOrder) {
    Candidates(sources_);
    EXPECT_THAT(sources_.questions, ElementsAre(userSteam, machineSteam, L"%ProgramFiles(x86)%", L"drives",
                                                L"%ProgramFiles%", L"%ProgramFiles(x86)%"));
}

TEST_F(Search, RootsThenDrivesThenProgramFoldersInOrder) {
    sources_.registry[machineSteam] = {Text(temporary_ / "machine")};
    sources_.variables[L"ProgramFiles"] = {Text(temporary_ / "pf")};
    sources_.variables[L"ProgramFiles(x86)"] = {Text(temporary_ / "pf86")};
    sources_.driveRoots = {Text(temporary_ / "c"), Text(temporary_ / "d")};
    const auto in = [this](const char* root, const fs::path& name) { return temporary_ / root / name; };
    EXPECT_THAT(Candidates(sources_),
                ElementsAre(Common(steam_) / "Quake 2", Common(temporary_ / "machine") / "Quake 2",
                            Common(temporary_ / "pf86" / "Steam") / "Quake 2", in("c", "Quake2"), in("c", "Quake 2"),
                            in("c", fs::path("Games") / "Quake2"), in("c", fs::path("Games") / "Quake II"),
                            in("c", fs::path("GOG Games") / "Quake II"), in("d", "Quake2"), in("d", "Quake 2"),
                            in("d", fs::path("Games") / "Quake2"), in("d", fs::path("Games") / "Quake II"),
                            in("d", fs::path("GOG Games") / "Quake II"), in("pf", "Quake2"), in("pf", "Quake II"),
                            in("pf", "Quake 2"), in("pf86", "Quake2"), in("pf86", "Quake II"), in("pf86", "Quake 2")));
}

TEST_F(Search, EveryCandidateIsFoundWhenTheOnesBeforeItAreNot) {
    sources_.registry[machineSteam] = {Text(temporary_ / "machine")};
    sources_.variables[L"ProgramFiles"] = {Text(temporary_ / "pf")};
    sources_.variables[L"ProgramFiles(x86)"] = {Text(temporary_ / "pf86")};
    sources_.driveRoots = {Text(temporary_ / "c")};
    std::vector<fs::path> candidates = Candidates(sources_);
    ASSERT_EQ(candidates.size(), 14U);
    // From the last to the first, each new one wins over those behind it.
    std::reverse(candidates.begin(), candidates.end());
    for (const fs::path& candidate : candidates) {
        MakeInstallation(candidate);
        ExpectFound(candidate);
    }
}

TEST_F(Search, EmptyStringsAreNoFolders) {
    sources_.registry[userSteam] = {L""};
    sources_.registry[machineSteam] = {L""};
    sources_.variables[L"ProgramFiles"] = {L""};
    sources_.variables[L"ProgramFiles(x86)"] = {L""};
    EXPECT_THAT(Candidates(sources_), ElementsAre());
}

TEST_F(Search, OnlyFixedDrivesAreSearched) {
    sources_.registry.clear();
    const std::vector<UINT> types{DRIVE_UNKNOWN, DRIVE_NO_ROOT_DIR, DRIVE_REMOVABLE, DRIVE_REMOTE,
                                  DRIVE_CDROM,   DRIVE_RAMDISK,     DRIVE_FIXED};
    for (const UINT type : types) {
        const std::wstring root = Text(temporary_ / ("drive" + std::to_string(type)));
        sources_.driveRoots.push_back(root);
        sources_.driveTypes[root] = type;
    }
    const std::vector<fs::path> candidates = Candidates(sources_);
    ASSERT_EQ(candidates.size(), 5U);
    EXPECT_EQ(candidates[0], temporary_ / "drive3" / "Quake2");
}

TEST_F(Search, SeveralPlacesOfOneSourceKeepTheirOrder) {
    sources_.registry[userSteam] = {Text(steam_), L"", Text(temporary_ / "flatpak")};
    EXPECT_THAT(Candidates(sources_),
                ElementsAre(Common(steam_) / "Quake 2", Common(temporary_ / "flatpak") / "Quake 2"));
}

TEST_F(Search, LibrariesFollowTheRoots) {
    sources_.registry[machineSteam] = {Text(temporary_ / "machine")};
    WriteLibraries(steam_, "\"0\" { \"path\" " + QuotedPath(temporary_ / "second disk") + " }");
    WriteLibraries(temporary_ / "machine", "\"0\" { \"path\" " + QuotedPath(temporary_ / "third disk") + " }");
    EXPECT_THAT(
        Candidates(sources_),
        ElementsAre(Common(steam_) / "Quake 2", Common(temporary_ / "machine") / "Quake 2",
                    Common(temporary_ / "second disk") / "Quake 2", Common(temporary_ / "third disk") / "Quake 2"));
}

TEST_F(Search, AGameOnASecondDiskIsFound) {
    const fs::path library = temporary_ / "second disk" / "Übung";
    WriteLibraries(steam_, "\"libraryfolders\"\n{\n\t\"0\"\n\t{\n\t\t\"path\"\t\t" + QuotedPath(steam_) +
                               "\n\t}\n\t\"1\"\n\t{\n\t\t\"path\"\t\t" + QuotedPath(library) + "\n\t}\n}\n");
    WriteManifest(library, Quoted("Quake II Classic"));
    MakeInstallation(Common(library) / "Quake II Classic");
    ExpectFound(Common(library) / "Quake II Classic");
}

TEST_F(Search, ALibraryNamedByTwoRootsStandsTwice) {
    const fs::path library = temporary_ / "library";
    sources_.registry[machineSteam] = {Text(temporary_ / "machine")};
    WriteLibraries(steam_, "\"path\" " + QuotedPath(library));
    WriteLibraries(temporary_ / "machine", "\"path\" " + QuotedPath(library));
    WriteManifest(library, Quoted("Q2"));
    EXPECT_THAT(
        Candidates(sources_),
        ElementsAre(Common(steam_) / "Quake 2", Common(temporary_ / "machine") / "Quake 2", Common(library) / "Q2",
                    Common(library) / "Quake 2", Common(library) / "Q2", Common(library) / "Quake 2"));
}

TEST_F(Search, OnlyTheRootsAreAskedForLibraries) {
    WriteLibraries(steam_, "\"path\" " + QuotedPath(temporary_ / "library"));
    WriteLibraries(temporary_ / "library", "\"path\" " + QuotedPath(temporary_ / "hidden"));
    EXPECT_THAT(Candidates(sources_),
                ElementsAre(Common(steam_) / "Quake 2", Common(temporary_ / "library") / "Quake 2"));
}

TEST_F(Search, LibraryFileOf4194305BytesContributesNothing) {
    std::string content = "\"path\" " + QuotedPath(temporary_ / "library");
    content.resize(4'194'305, ' ');
    WriteLibraries(steam_, content);
    EXPECT_THAT(Candidates(sources_), ElementsAre(Common(steam_) / "Quake 2"));
    content.pop_back();
    WriteLibraries(steam_, content);
    EXPECT_THAT(Candidates(sources_),
                ElementsAre(Common(steam_) / "Quake 2", Common(temporary_ / "library") / "Quake 2"));
}

TEST_F(Search, ThePathKeyOfAnotherBlockIsALibraryAllTheSame) {
    WriteLibraries(steam_, "\"contentstats\" { \"path\" " + QuotedPath(temporary_ / "stats") + " }");
    EXPECT_THAT(Candidates(sources_), Contains(Common(temporary_ / "stats") / "Quake 2"));
}

TEST_F(Search, ALibraryWithoutAManifestYieldsItsQuake2Folder) {
    WriteLibraries(steam_, "\"path\" " + QuotedPath(temporary_ / "library"));
    MakeInstallation(Common(temporary_ / "library") / "Quake 2");
    ExpectFound(Common(temporary_ / "library") / "Quake 2");
}

TEST_F(Search, AManifestThatSaysQuake2YieldsThatFolderTwice) {
    WriteManifest(steam_, Quoted("Quake 2"));
    EXPECT_THAT(Candidates(sources_), ElementsAre(Common(steam_) / "Quake 2", Common(steam_) / "Quake 2"));
}

TEST_F(Search, EveryInstalldirOfAManifestIsTakenInOrder) {
    WriteManifest(steam_, Quoted("One") + " \"installdir\" " + Quoted("Two"));
    EXPECT_THAT(Candidates(sources_),
                ElementsAre(Common(steam_) / "One", Common(steam_) / "Two", Common(steam_) / "Quake 2"));
}

TEST_F(Search, AnAbsoluteInstalldirIsThatFolderItself) {
    WriteManifest(steam_, QuotedPath(temporary_ / "elsewhere"));
    EXPECT_THAT(Candidates(sources_), ElementsAre(temporary_ / "elsewhere", Common(steam_) / "Quake 2"));
}

TEST_F(Search, BackslashesOfAnInstalldirSeparateFolders) {
    WriteManifest(steam_, Quoted("id\\Quake"));
    EXPECT_EQ(Candidates(sources_).at(0), Common(steam_) / "id" / "Quake");
}

TEST_F(Search, ARelativeLibraryCountsFromTheWorkingDirectory) {
    WriteLibraries(steam_, "\"path\" \"library\"");
    EXPECT_EQ(Candidates(sources_).at(1), Common("library") / "Quake 2");
    MakeInstallation(Common(temporary_ / "library") / "Quake 2");
    const CurrentFolder current(temporary_.Path());
    ExpectFound(Common(temporary_ / "library") / "Quake 2");
}

TEST_F(Search, ALibraryWithOnlyTheRemasterIsPassedOverWithoutItsSentence) {
    MakeInstallation(Common(steam_) / "Quake 2");
    WriteBytes(Common(steam_) / "Quake 2" / "quake2.exe", PeBytes({.machine = 0x8664, .optionalMagic = 0x020B}));
    EXPECT_EQ(FindGame({}, sources_).Message, noneFound);
    sources_.variables[L"ProgramFiles"] = {Text(temporary_ / "pf")};
    MakeInstallation(temporary_ / "pf" / "Quake 2");
    ExpectFound(temporary_ / "pf" / "Quake 2");
}

TEST_F(Search, DriveFoldersWinOverProgramFoldersAndSteamOverBoth) {
    sources_.driveRoots = {Text(temporary_ / "c")};
    sources_.variables[L"ProgramFiles"] = {Text(temporary_ / "c" / "Program Files")};
    MakeInstallation(temporary_ / "c" / "Program Files" / "Quake II");
    ExpectFound(temporary_ / "c" / "Program Files" / "Quake II");
    MakeInstallation(temporary_ / "c" / "Quake2");
    ExpectFound(temporary_ / "c" / "Quake2");
    MakeInstallation(Common(steam_) / "Quake 2");
    ExpectFound(Common(steam_) / "Quake 2");
}

TEST_F(Search, TextThatIsNotUtf8EndsTheWholeSearch) {
    MakeInstallation(Common(steam_) / "Quake 2");
    WriteLibraries(steam_, "\"path\" " + QuotedPath(temporary_ / "library"));
    WriteManifest(temporary_ / "library", "\"Quake \xFF\"");
    EXPECT_THROW(FindGame({}, sources_), Platform::InvalidText);
    fs::remove(temporary_ / "library" / "steamapps" / "appmanifest_2320.acf");
    ExpectFound(Common(steam_) / "Quake 2");
    WriteLibraries(steam_, "\"path\" \"\xC3\"");
    EXPECT_THROW(FindGame({}, sources_), Platform::InvalidText);
}

TEST_F(Search, DirectoriesInPlaceOfSteamsFilesContributeNothing) {
    fs::create_directories(steam_ / "steamapps" / "libraryfolders.vdf");
    fs::create_directories(steam_ / "steamapps" / "appmanifest_2320.acf");
    EXPECT_THAT(Candidates(sources_), ElementsAre(Common(steam_) / "Quake 2"));
}

TEST_F(Search, AnInstalldirOf4000CharactersIsNotFound) {
    WriteManifest(steam_, Quoted(std::string(4000, 'q')));
    EXPECT_EQ(FindGame({}, sources_).Message, noneFound);
}

TEST(ReadEnvironment, AVariableIsReadAsItIs) {
    const ScopedEnvironment variable(L"VELORINTH_TEST", L" Übung \u96F7 ");
    EXPECT_EQ(GameDiscovery::ReadEnvironment(L"VELORINTH_TEST"), L" Übung \u96F7 ");
}

TEST(ReadEnvironment, AMissingVariableIsEmpty) {
    const ScopedEnvironment variable(L"VELORINTH_TEST", std::nullopt);
    EXPECT_EQ(GameDiscovery::ReadEnvironment(L"VELORINTH_TEST"), L"");
}

TEST(ReadEnvironment, AVariableOf32766CharactersIsRead) {
    const ScopedEnvironment variable(L"VELORINTH_TEST", std::wstring(32'766, L'x'));
    EXPECT_EQ(GameDiscovery::ReadEnvironment(L"VELORINTH_TEST"), std::wstring(32'766, L'x'));
}

TEST(ReadRegistryString, AMissingKeyIsEmpty) {
    EXPECT_EQ(GameDiscovery::ReadRegistryString(HKEY_CURRENT_USER, L"Software\\Velorinth Test\\None", L"Value"), L"");
}
