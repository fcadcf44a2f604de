#include "CurrentFolder.h"
#include "launcher/GameDiscovery/Validation.h"
#include "Platform/Interface/Paths.h"
#include "Sentences.h"
#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;
using GameDiscovery::Result;
using GameDiscovery::ValidateFolder;

namespace {

constexpr const wchar_t* selectFolder = L"Select a Quake II installation folder.";

std::string X64Bytes() {
    return PeBytes({.machine = 0x8664, .optionalMagic = 0x020B});
}

void ExpectRefused(const Result& result, const wchar_t* message) {
    EXPECT_EQ(result.Message, message);
    EXPECT_EQ(result.Folder, L"");
    EXPECT_FALSE(result.Cancelled);
    EXPECT_EQ(result.SelectedFolder, L"");
}

void ExpectVerified(const Result& result, const std::wstring& folder) {
    EXPECT_EQ(result.Message, Sentences::verified);
    EXPECT_EQ(result.Folder, folder);
    EXPECT_FALSE(result.Cancelled);
    EXPECT_EQ(result.SelectedFolder, L"");
}

class Validation : public testing::Test {
protected:
    Validation() { MakeInstallation(game_); }

    TemporaryFolder temporary_;
    fs::path game_ = temporary_ / "game";
    std::wstring text_ = Platform::TextFromPath(game_);
};

}  // namespace

TEST(DiscoveryResult, ADefaultMadeOneIsEmptyAndNotCancelled) {
    const Result result;
    EXPECT_EQ(result.Folder, L"");
    EXPECT_EQ(result.Message, L"");
    EXPECT_FALSE(result.Cancelled);
    EXPECT_EQ(result.SelectedFolder, L"");
}

TEST_F(Validation, AnInstallationIsVerified) {
    ExpectVerified(ValidateFolder(game_), text_);
}

TEST_F(Validation, AnEmptyInputAsksForAFolderWithoutALookAtTheWorkingDirectory) {
    const CurrentFolder current(game_);
    ExpectRefused(ValidateFolder({}), selectFolder);
}

TEST_F(Validation, ARelativeInputComesBackAbsolute) {
    const CurrentFolder current(temporary_.Path());
    ExpectVerified(ValidateFolder("game"), text_);
}

TEST_F(Validation, ADotIsTheWorkingDirectory) {
    const CurrentFolder current(game_);
    ExpectVerified(ValidateFolder("."), text_);
}

TEST_F(Validation, DotDotComponentsAreResolved) {
    ExpectVerified(ValidateFolder(temporary_ / "not there" / ".." / "game"), text_);
    fs::create_directory(game_ / "baseq2" / "maps");
    ExpectVerified(ValidateFolder(game_ / "baseq2" / "maps" / ".." / ".."), text_);
}

TEST_F(Validation, ForwardSlashesBecomeThePlatformsSeparators) {
    ExpectVerified(ValidateFolder(game_.generic_string()), text_);
}

TEST_F(Validation, ATrailingSeparatorStays) {
    const std::wstring withSeparator = text_ + static_cast<wchar_t>(fs::path::preferred_separator);
    ExpectVerified(ValidateFolder(Platform::PathFromText(withSeparator)), withSeparator);
    ExpectVerified(ValidateFolder(Platform::PathFromText(text_ + L"/")), withSeparator);
}

TEST_F(Validation, RepeatedSeparatorsBecomeOne) {
    ExpectVerified(ValidateFolder(temporary_.Path().string() + "//game"), text_);
}

TEST_F(Validation, AFolderNameOfAnyLanguageIsVerified) {
    const fs::path folder = Platform::PathFromText(Platform::TextFromPath(temporary_.Path()) + L"/Übung \u96F7\u795E");
    MakeInstallation(folder);
    ExpectVerified(ValidateFolder(folder), Platform::TextFromPath(fs::path(folder).make_preferred()));
}

TEST_F(Validation, AFolderThatIsMissingHasNoGame) {
    ExpectRefused(ValidateFolder(temporary_ / "nowhere" / "deeper"), Sentences::missing);
}

TEST_F(Validation, AFileInPlaceOfTheFolderHasNoGame) {
    ExpectRefused(ValidateFolder(game_ / "ref_gl.dll"), Sentences::missing);
}

TEST_F(Validation, AFolderWithoutQuake2ExeHasNoGame) {
    fs::remove(game_ / "quake2.exe");
    ExpectRefused(ValidateFolder(game_), Sentences::missing);
}

TEST_F(Validation, ADirectoryNamedQuake2ExeExistsAndIsNotClassic) {
    fs::remove(game_ / "quake2.exe");
    fs::create_directory(game_ / "quake2.exe");
    ExpectRefused(ValidateFolder(game_), Sentences::notClassic);
}

TEST_F(Validation, TheRemastersProgramIsNotClassic) {
    WriteBytes(game_ / "quake2.exe", X64Bytes());
    ExpectRefused(ValidateFolder(game_), Sentences::notClassic);
}

TEST_F(Validation, ATruncatedProgramIsNotClassic) {
    WriteBytes(game_ / "quake2.exe", PeBytes().substr(0, 64));
    ExpectRefused(ValidateFolder(game_), Sentences::notClassic);
}

TEST_F(Validation, AMissingAndAWrongRendererGiveTheSameWords) {
    WriteBytes(game_ / "ref_gl.dll", X64Bytes());
    ExpectRefused(ValidateFolder(game_), Sentences::noRenderer);
    fs::remove(game_ / "ref_gl.dll");
    ExpectRefused(ValidateFolder(game_), Sentences::noRenderer);
}

TEST_F(Validation, AMissingAndAWrongPakGiveTheSameWords) {
    WriteBytes(game_ / "baseq2" / "pak0.pak", PakBytes(12, 0, 12));
    ExpectRefused(ValidateFolder(game_), Sentences::noData);
    fs::remove_all(game_ / "baseq2");
    ExpectRefused(ValidateFolder(game_), Sentences::noData);
}

TEST_F(Validation, GameLibraryIsNotPartOfTheCheck) {
    fs::remove(game_ / "baseq2" / "gamex86.dll");
    ExpectVerified(ValidateFolder(game_), text_);
}

TEST_F(Validation, TheFirstFailureInOrderIsTold) {
    fs::remove(game_ / "baseq2" / "pak0.pak");
    ExpectRefused(ValidateFolder(game_), Sentences::noData);
    fs::remove(game_ / "ref_gl.dll");
    ExpectRefused(ValidateFolder(game_), Sentences::noRenderer);
    WriteBytes(game_ / "quake2.exe", X64Bytes());
    ExpectRefused(ValidateFolder(game_), Sentences::notClassic);
    fs::remove(game_ / "quake2.exe");
    ExpectRefused(ValidateFolder(game_), Sentences::missing);
}

TEST_F(Validation, APathOf4000CharactersHasNoGame) {
    ExpectRefused(ValidateFolder(temporary_ / std::string(4000, 'a')), Sentences::missing);
    fs::path deep = temporary_.Path();
    while (deep.native().size() < 4000) deep /= std::string(99, 'b');
    ExpectRefused(ValidateFolder(deep), Sentences::missing);
}

TEST_F(Validation, ALongWayToAShortPathIsVerified) {
    fs::path roundabout = temporary_.Path();
    for (int i = 0; i < 400; ++i) roundabout = roundabout / "side" / "..";
    ExpectVerified(ValidateFolder(roundabout / "game"), text_);
}

TEST(EntryExists, AnyKindOfEntryCounts) {
    const TemporaryFolder folder;
    WriteBytes(folder / "file", "");
    EXPECT_TRUE(GameDiscovery::EntryExists(folder / "file"));
    EXPECT_TRUE(GameDiscovery::EntryExists(folder.Path()));
}

TEST(EntryExists, WhatIsNotThereIsNoError) {
    const TemporaryFolder folder;
    WriteBytes(folder / "file", "");
    EXPECT_FALSE(GameDiscovery::EntryExists(folder / "missing"));
    EXPECT_FALSE(GameDiscovery::EntryExists(folder / "missing" / "deeper"));
    EXPECT_FALSE(GameDiscovery::EntryExists(folder / "file" / "below"));
    EXPECT_FALSE(GameDiscovery::EntryExists(folder / std::string(300, 'a')));
}
