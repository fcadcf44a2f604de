#include "Platform/Linux/Wine/Prefix.h"

#include "Platform/Interface/Paths.h"
#include "tests/support/FakeHome.h"
#include "tests/support/GameFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>

namespace fs = std::filesystem;
using Platform::WinePrefix;

namespace {

/// The drives as text: a letter and the root's path each.
std::vector<std::pair<wchar_t, fs::path>> DrivesOf(const WinePrefix& prefix) {
    std::vector<std::pair<wchar_t, fs::path>> drives;
    for (const Platform::WineDrive& drive : prefix.Drives()) drives.emplace_back(drive.letter, drive.root);
    return drives;
}

class PrefixTest : public testing::Test {
protected:
    FakeHome home_;
    fs::path folder_ = home_.MakePrefix("prefix");
    fs::path driveC_ = folder_ / "drive_c";
    WinePrefix prefix_{folder_};
};

}  // namespace

TEST_F(PrefixTest, DrivesComeByLetterWithLinksResolved) {
    const fs::path disk = home_.MakeFolder("disk");
    fs::create_symlink(disk, home_ / "link");
    AddDrive(folder_, 'd', home_ / "link");
    const std::vector<std::pair<wchar_t, fs::path>> expected = {{L'C', driveC_}, {L'D', disk}, {L'Z', "/"}};
    EXPECT_EQ(DrivesOf(prefix_), expected);
}

TEST_F(PrefixTest, PrefixWithoutDosdevicesHasDriveC) {
    fs::remove_all(folder_ / "dosdevices");
    EXPECT_TRUE(prefix_.Exists());
    const std::vector<std::pair<wchar_t, fs::path>> expected = {{L'C', driveC_}};
    EXPECT_EQ(DrivesOf(prefix_), expected);
    EXPECT_EQ(prefix_.UnixPath(L"C:\\"), driveC_);
}

TEST_F(PrefixTest, PrefixThatIsMissingHasNoDrives) {
    const WinePrefix missing(home_ / "missing");
    EXPECT_FALSE(missing.Exists());
    EXPECT_TRUE(missing.Drives().empty());
    EXPECT_EQ(missing.UnixPath(L"C:\\"), std::nullopt);
    EXPECT_FALSE(WinePrefix(fs::path()).Exists());
}

TEST_F(PrefixTest, LinksThatLeadToNoFolderAreNoDrives) {
    AddDrive(folder_, 'd', "d:");  // a loop of one
    AddDrive(folder_, 'e', "f:");  // a loop of two
    AddDrive(folder_, 'f', "e:");
    AddDrive(folder_, 'g', home_ / "nothing");  // dangling
    WriteBytes(home_ / "file", "x");
    AddDrive(folder_, 'h', home_ / "file");
    fs::create_symlink("/dev/null", folder_ / "dosdevices" / "i::");  // a device, as Wine names those
    const std::vector<std::pair<wchar_t, fs::path>> expected = {{L'C', driveC_}, {L'Z', "/"}};
    EXPECT_EQ(DrivesOf(prefix_), expected);
    EXPECT_EQ(prefix_.UnixPath(L"D:\\x"), std::nullopt);
}

TEST_F(PrefixTest, ReturnsTheExistingSpelling) {
    fs::create_directories(driveC_ / "Program Files (x86)" / "Steam");
    const fs::path steam = driveC_ / "Program Files (x86)" / "Steam";
    EXPECT_EQ(prefix_.UnixPath(L"C:\\Program Files (x86)\\Steam"), steam);
    EXPECT_EQ(prefix_.UnixPath(L"c:/program files (x86)/steam"), steam);
    EXPECT_EQ(prefix_.UnixPath(L"C:\\PROGRAM FILES (X86)\\STEAM\\"), steam);
}

TEST_F(PrefixTest, KeepsWhatDoesNotExist) {
    fs::create_directories(driveC_ / "Games");
    EXPECT_EQ(prefix_.UnixPath(L"C:\\games\\Quake2\\Missing"), driveC_ / "Games" / "Quake2" / "Missing");
}

TEST_F(PrefixTest, LiteralPathsAreOnTheSameDrives) {
    fs::create_directories(driveC_ / "Games");
    EXPECT_EQ(prefix_.UnixPath(L"\\\\?\\C:\\games"), driveC_ / "Games");
    EXPECT_EQ(prefix_.UnixPath(L"\\??\\c:\\games"), driveC_ / "Games");
}

TEST_F(PrefixTest, UnixNamespaceIsThisSystemsRoot) {
    fs::create_directories(home_ / "Some Folder");
    std::wstring text = L"\\\\?\\unix" + Platform::TextFromPath(home_ / "Some Folder");
    EXPECT_EQ(prefix_.UnixPath(text), home_ / "Some Folder");
    for (wchar_t& c : text) c = c == L'/' ? L'\\' : c;
    EXPECT_EQ(prefix_.UnixPath(text), home_ / "Some Folder");
}

TEST_F(PrefixTest, DotDotDoesNotLeaveTheDrive) {
    fs::create_directories(driveC_ / "Games");
    EXPECT_EQ(prefix_.UnixPath(L"C:\\..\\..\\Games\\.\\x\\.."), driveC_ / "Games");
}

TEST_F(PrefixTest, OtherKindsOfPathHaveNoPathHere) {
    for (const std::wstring text :
         {L"", L"C", L"Games", L"\\Games", L"/home", L"\\\\server\\share", L"1:\\x", L"Y:\\x"}) {
        EXPECT_EQ(prefix_.UnixPath(text), std::nullopt) << Platform::PathFromText(text);
    }
    EXPECT_EQ(prefix_.UnixPath(std::wstring_view(L"C:\\a\0b", 6)), std::nullopt);
}

TEST_F(PrefixTest, NamesThatAreNotUtf8ComeBackAsTheyWere) {
    const fs::path odd = driveC_ / "Gam\xE9s";
    fs::create_directories(odd);
    const std::optional<std::wstring> text = prefix_.WindowsPath(odd);
    ASSERT_TRUE(text);
    EXPECT_EQ(*text, L"C:\\Gam\xDCE9s");
    EXPECT_EQ(prefix_.UnixPath(*text), odd);
}

TEST_F(PrefixTest, PathsOf4000CharactersAreAnswered) {
    std::wstring text = L"C:";
    for (int i = 0; i < 40; ++i) text += L"\\" + std::wstring(99, L'a');
    const std::optional<fs::path> path = prefix_.UnixPath(text);
    ASSERT_TRUE(path);
    EXPECT_EQ(path->native().size(), driveC_.native().size() + 4000);
    EXPECT_EQ(prefix_.WindowsPath(*path), text);
    EXPECT_TRUE(prefix_.UnixPath(L"C:\\" + std::wstring(4000, L'b')));
}

TEST_F(PrefixTest, WindowsPathIsOnTheNearestDrive) {
    const fs::path disk = home_.MakeFolder("disk");
    const fs::path games = home_.MakeFolder("disk/games");
    AddDrive(folder_, 'd', disk);
    AddDrive(folder_, 'e', games);
    EXPECT_EQ(prefix_.WindowsPath(games / "Quake2"), L"E:\\Quake2");
    EXPECT_EQ(prefix_.WindowsPath(disk / "gamesmore"), L"D:\\gamesmore");
    EXPECT_EQ(prefix_.WindowsPath(driveC_ / "x" / "y"), L"C:\\x\\y");
    EXPECT_EQ(prefix_.WindowsPath("/nowhere/x"), L"Z:\\nowhere\\x");
}

TEST_F(PrefixTest, WindowsPathTakesTheFirstOfTwoLettersForOneFolder) {
    AddDrive(folder_, 'b', driveC_);
    EXPECT_EQ(prefix_.WindowsPath(driveC_ / "x"), L"B:\\x");
}

TEST_F(PrefixTest, WindowsPathOfADrivesRootEndsInABackslash) {
    EXPECT_EQ(prefix_.WindowsPath(driveC_), L"C:\\");
    EXPECT_EQ(prefix_.WindowsPath("/"), L"Z:\\");
}

TEST_F(PrefixTest, WindowsPathComparesWithLinksResolved) {
    const fs::path disk = home_.MakeFolder("disk");
    fs::create_symlink(disk, home_ / "link");
    fs::create_symlink(driveC_, home_ / "shortcut");
    AddDrive(folder_, 'd', home_ / "link");
    EXPECT_EQ(prefix_.WindowsPath(disk / "x"), L"D:\\x");
    EXPECT_EQ(prefix_.WindowsPath(home_ / "shortcut" / "x"), L"C:\\x");
}

TEST_F(PrefixTest, WindowsPathWithoutADriveIsInTheUnixNamespace) {
    fs::remove(folder_ / "dosdevices" / "z:");
    EXPECT_EQ(prefix_.WindowsPath("/nowhere/x"), L"\\\\?\\unix\\nowhere\\x");
    EXPECT_EQ(prefix_.UnixPath(L"\\\\?\\unix\\nowhere\\x"), fs::path("/nowhere/x"));
}

TEST_F(PrefixTest, NamesThatWindowsCannotHoldAreInTheUnixNamespace) {
    for (const char* const name : {"a:b", "what?", "dot.", "blank ", "a\tb"}) {
        const std::optional<std::wstring> text = prefix_.WindowsPath(driveC_ / name);
        ASSERT_TRUE(text) << name;
        EXPECT_TRUE(text->starts_with(L"\\\\?\\unix\\")) << name;
        EXPECT_EQ(prefix_.UnixPath(*text), driveC_ / name);
    }
    EXPECT_EQ(prefix_.WindowsPath(driveC_ / "a\\b"), std::nullopt);
}
