#include "Platform/Interface/Paths.h"
#include "Platform/Interface/SearchPlaces.h"
#include "tests/support/FakeHome.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;
using Platform::JoinStoredPath;

TEST(StoredPath, RelativeTextIsJoinedWithEitherSeparator) {
    const FakeHome home;
    EXPECT_EQ(JoinStoredPath("/steam/common", L"Quake 2"), "/steam/common/Quake 2");
    EXPECT_EQ(JoinStoredPath("/steam/common", L"id\\Quake 2"), "/steam/common/id/Quake 2");
    EXPECT_EQ(JoinStoredPath("/steam/common", L"id/Quake 2"), "/steam/common/id/Quake 2");
    EXPECT_EQ(JoinStoredPath("/steam/common", L".."), "/steam/common/..");
    EXPECT_EQ(JoinStoredPath("/steam/common", L""), "/steam/common/");
}

TEST(StoredPath, AbsoluteTextReplacesTheBase) {
    const FakeHome home;
    EXPECT_EQ(JoinStoredPath("/steam/common", L"/mnt/second disk/Steam"), "/mnt/second disk/Steam");
    EXPECT_EQ(JoinStoredPath("/steam/common", L"\\mnt\\Steam"), "/mnt/Steam");
}

TEST(StoredPath, WindowsPathIsTakenThroughThePrefixAroundTheBase) {
    const FakeHome home;
    const fs::path own = home.MakePrefix(".wine");
    const fs::path other = home.MakePrefix("Games/other");
    const fs::path disk = home.MakeFolder("disk");
    AddDrive(other, 'd', disk);
    fs::create_directories(disk / "SteamLibrary");
    const fs::path base = other / "drive_c/Steam";
    EXPECT_EQ(JoinStoredPath(base, L"D:\\steamlibrary"), disk / "SteamLibrary");
    EXPECT_EQ(JoinStoredPath(base, L"c:/Games"), other / "drive_c/Games");
    EXPECT_EQ(JoinStoredPath(base, L"\\\\?\\C:\\Games"), other / "drive_c/Games");
    EXPECT_EQ(JoinStoredPath(base, L"\\\\?\\unix\\mnt\\Games"), "/mnt/Games");
}

TEST(StoredPath, WindowsPathOutsideAPrefixIsTakenThroughTheUsersOwn) {
    const FakeHome home;
    const fs::path own = home.MakePrefix(".wine");
    home.MakePrefix("Games/other");
    EXPECT_EQ(JoinStoredPath(home / "steam", L"C:\\Games"), own / "drive_c/Games");
}

TEST(StoredPath, WindowsPathOutsideAPrefixFallsBackToTheFirstThatHasTheDrive) {
    const FakeHome home;
    home.MakePrefix(".wine");
    const fs::path other = home.MakePrefix("Games/other");
    const fs::path disk = home.MakeFolder("disk");
    AddDrive(other, 'd', disk);
    EXPECT_EQ(JoinStoredPath(home / "steam", L"D:\\Games"), disk / "Games");
}

TEST(StoredPath, PathOnAMissingDriveOrAnotherMachineStaysTheText) {
    const FakeHome home;
    home.MakePrefix(".wine");
    EXPECT_EQ(JoinStoredPath(home / "steam", L"Q:\\Games"), "Q:\\Games");
    EXPECT_EQ(JoinStoredPath(home / "steam", L"\\\\server\\share"), "\\\\server\\share");
}

TEST(StoredPath, ADriveOfAnotherPrefixDoesNotCountInsideOne) {
    const FakeHome home;
    const fs::path own = home.MakePrefix(".wine");
    const fs::path other = home.MakePrefix("Games/other");
    AddDrive(own, 'd', home.MakeFolder("disk"));
    EXPECT_EQ(JoinStoredPath(other / "drive_c/Steam", L"D:\\Games"), "D:\\Games");
}

TEST(StoredPath, LeadingSeparatorInsideAPrefixIsTheRootOfTheBasesDrive) {
    const FakeHome home;
    const fs::path prefix = home.MakePrefix(".wine");
    const fs::path disk = home.MakeFolder(".wine/disk");
    AddDrive(prefix, 'd', disk);
    fs::create_directories(prefix / "drive_c/Steam");
    fs::create_directories(disk / "Games");
    EXPECT_EQ(JoinStoredPath(prefix / "drive_c/Steam", L"\\Games\\Quake2"), prefix / "drive_c/Games/Quake2");
    EXPECT_EQ(JoinStoredPath(prefix / "drive_c/Steam", L"/Games"), prefix / "drive_c/Games");
    EXPECT_EQ(JoinStoredPath(disk / "Steam", L"\\games"), disk / "Games");
}

TEST(StoredPath, TextsOf4000CharactersAndOddNamesAreAnswered) {
    const FakeHome home;
    const fs::path prefix = home.MakePrefix(".wine");
    const std::wstring name(4000, L'x');
    EXPECT_EQ(JoinStoredPath("/steam", name), fs::path("/steam") / std::string(4000, 'x'));
    EXPECT_EQ(JoinStoredPath("/steam", L"C:\\" + name), prefix / "drive_c" / std::string(4000, 'x'));
    EXPECT_EQ(JoinStoredPath("/steam\xFF", L"a\\b"), "/steam\xFF/a/b");
}
