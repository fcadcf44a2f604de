#include "Platform/Interface/Paths.h"
#include "Platform/Interface/SearchPlaces.h"
#include "tests/support/FakeHome.h"
#include "tests/support/GameFiles.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

std::vector<fs::path> Roots() {
    std::vector<fs::path> roots;
    for (const std::wstring& root : Platform::DriveRoots()) roots.push_back(Platform::PathFromText(root));
    return roots;
}

/// The first roots, as many as there are in `expected`, so that a failure shows both lists.
std::vector<fs::path> FirstRoots(std::size_t count) {
    std::vector<fs::path> roots = Roots();
    roots.resize(std::min(count, roots.size()));
    return roots;
}

}  // namespace

TEST(DriveRoots, PrefixesComeBeforeHomeAndMounts) {
    const FakeHome home;
    const fs::path first = home.MakePrefix(".wine");
    const fs::path second = home.MakePrefix("Games/other");
    const fs::path disk = home.MakeFolder("disk");
    const fs::path floppy = home.MakeFolder("floppy");
    AddDrive(first, 'd', disk);
    AddDrive(first, 'a', floppy);
    AddDrive(first, 'h', home.Path());
    AddDrive(second, 'e', disk);
    const std::vector<fs::path> expected = {first / "drive_c", floppy, disk, second / "drive_c", home.Path()};
    EXPECT_EQ(FirstRoots(expected.size()), expected);
}

TEST(DriveRoots, NameEachFolderOnceAndTheSystemsRootAmongTheMounts) {
    const FakeHome home;
    home.MakePrefix(".wine");
    const std::vector<fs::path> roots = Roots();
    EXPECT_EQ(std::set<fs::path>(roots.begin(), roots.end()).size(), roots.size());
    EXPECT_NE(std::find(roots.begin() + 2, roots.end(), fs::path("/")), roots.end());
}

TEST(DriveRoots, AreTheHomeFolderAndTheMountsWithoutAPrefix) {
    const FakeHome home;
    EXPECT_EQ(FirstRoots(1), std::vector<fs::path>{home.Path()});
}

TEST(DriveRoots, HomeIsNamedWithItsLinksResolved) {
    const FakeHome home;
    const fs::path real = home.MakeFolder("real");
    fs::create_symlink(real, home / "link");
    const ScopedEnvironment variable(L"HOME", Platform::TextFromPath(home / "link"));
    EXPECT_EQ(FirstRoots(1), std::vector<fs::path>{real});
}

TEST(DriveRoots, GogFolderInAPrefixLiesOnAFixedDrive) {
    const FakeHome home;
    const fs::path prefix = home.MakePrefix(".wine");
    MakeInstallation(prefix / "drive_c/GOG Games/Quake II");
    for (const std::wstring& root : Platform::DriveRoots()) {
        if (!fs::exists(Platform::PathFromText(root) / "GOG Games/Quake II/quake2.exe")) continue;
        EXPECT_EQ(root, Platform::TextFromPath(prefix / "drive_c"));
        EXPECT_EQ(GetDriveTypeW(root.c_str()), DRIVE_FIXED);
        return;
    }
    FAIL() << "no root leads to it";
}
