#include "Platform/Linux/Wine/Prefixes.h"

#include "Platform/Interface/Paths.h"
#include "tests/support/FakeHome.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <vector>

namespace fs = std::filesystem;

namespace {

std::vector<fs::path> KnownFolders() {
    std::vector<fs::path> folders;
    for (const Platform::WinePrefix& prefix : Platform::KnownPrefixes()) folders.push_back(prefix.Folder());
    return folders;
}

fs::path ContainingFolder(const fs::path& path) {
    const std::optional<Platform::WinePrefix> prefix = Platform::PrefixContaining(path);
    return prefix ? prefix->Folder() : fs::path();
}

}  // namespace

TEST(DefaultPrefix, IsBelowHomeUnlessAVariableNamesAnother) {
    const FakeHome home;
    EXPECT_EQ(Platform::DefaultPrefix().Folder(), home / ".wine");
    const ScopedEnvironment variable(L"WINEPREFIX", L"/some/where/");
    EXPECT_EQ(Platform::DefaultPrefix().Folder(), "/some/where");
}

TEST(DefaultPrefix, VariableThatIsRelativeOrEmptyDoesNotCount) {
    const FakeHome home;
    for (const wchar_t* const value : {L"relative", L""}) {
        setenv("WINEPREFIX", Platform::PathFromText(value).c_str(), 1);
        EXPECT_EQ(Platform::DefaultPrefix().Folder(), home / ".wine");
    }
}

TEST(KnownPrefixes, ComeInOrderOfTheirMakersAndThenByName) {
    const FakeHome home;
    const fs::path steam = home.MakeFolder(".local/share/Steam");
    const std::vector<fs::path> expected = {
        home.MakePrefix("chosen"),
        home.MakePrefix(".wine"),
        home.MakePrefix(".local/share/wineprefixes/a"),
        home.MakePrefix(".local/share/wineprefixes/b"),
        home.MakePrefix("Games/lutris"),
        home.MakePrefix(".local/share/bottles/bottles/One"),
        home.MakePrefix(".var/app/com.usebottles.bottles/data/bottles/bottles/Two"),
        home.MakePrefix(".PlayOnLinux/wineprefix/old"),
        home.MakePrefix("Games/Heroic/Prefixes/one"),
        home.MakePrefix("Games/Heroic/Prefixes/default/two"),
        home.MakePrefix(".local/share/Steam/steamapps/compatdata/10/pfx"),
        home.MakePrefix(".local/share/Steam/steamapps/compatdata/2320/pfx"),
        home.MakePrefix(".var/app/com.valvesoftware.Steam/.local/share/Steam/steamapps/compatdata/1/pfx"),
        home.MakePrefix("snap/steam/common/.local/share/Steam/steamapps/compatdata/1/pfx"),
    };
    home.MakeFolder("Games/no prefix");
    const ScopedEnvironment variable(L"WINEPREFIX", Platform::TextFromPath(home / "chosen"));
    EXPECT_EQ(KnownFolders(), expected);
}

TEST(KnownPrefixes, FollowTheDataFolder) {
    const FakeHome home;
    const fs::path prefix = home.MakePrefix("data/wineprefixes/a");
    home.MakePrefix(".local/share/wineprefixes/hidden");
    const ScopedEnvironment variable(L"XDG_DATA_HOME", Platform::TextFromPath(home / "data"));
    EXPECT_EQ(KnownFolders(), std::vector{prefix});
}

TEST(KnownPrefixes, NameOneThatIsReachedTwiceOnce) {
    const FakeHome home;
    const fs::path prefix = home.MakePrefix(".wine");
    fs::create_directories(home / "Games");
    fs::create_symlink(prefix, home / "Games" / "link");
    const ScopedEnvironment variable(L"WINEPREFIX", Platform::TextFromPath(prefix));
    EXPECT_EQ(KnownFolders(), std::vector{prefix});
}

TEST(KnownPrefixes, AreNoneInAnEmptyHome) {
    const FakeHome home;
    EXPECT_TRUE(KnownFolders().empty());
}

TEST(KnownPrefixes, SkipLinksThatLeadNowhere) {
    const FakeHome home;
    fs::create_directories(home / "Games");
    fs::create_symlink("loop", home / "Games" / "loop");
    fs::create_symlink("nothing", home / "Games" / "dangling");
    EXPECT_TRUE(KnownFolders().empty());
}

TEST(PrefixContaining, IsTheNearestOfNestedOnes) {
    const FakeHome home;
    const fs::path outer = home.MakePrefix("outer");
    const fs::path inner = home.MakePrefix("outer/drive_c/inner");
    EXPECT_EQ(ContainingFolder(inner / "drive_c" / "Games" / "missing"), inner);
    EXPECT_EQ(ContainingFolder(outer / "drive_c" / "Games"), outer);
    EXPECT_EQ(ContainingFolder(outer), outer);
}

TEST(PrefixContaining, FollowsLinksIntoAPrefix) {
    const FakeHome home;
    const fs::path prefix = home.MakePrefix("prefix");
    fs::create_directories(prefix / "drive_c" / "Quake2");
    fs::create_symlink(prefix / "drive_c" / "Quake2", home / "shortcut");
    EXPECT_EQ(ContainingFolder(home / "shortcut"), prefix);
}

TEST(PrefixContaining, KnowsADriveThatIsALinkOutOfItsPrefix) {
    const FakeHome home;
    const fs::path prefix = home.MakePrefix("prefix");
    const fs::path disk = home.MakeFolder("disk");
    fs::remove(prefix / "drive_c");
    fs::create_symlink(disk, prefix / "drive_c");
    EXPECT_EQ(ContainingFolder(prefix / "drive_c" / "Games"), prefix);
}

TEST(PrefixContaining, IsNoneForOtherFoldersAndForNoPath) {
    const FakeHome home;
    home.MakePrefix("prefix");
    EXPECT_EQ(ContainingFolder(home.MakeFolder("other")), fs::path());
    EXPECT_EQ(ContainingFolder(""), fs::path());
}
