#include "Platform/Interface/Paths.h"
#include "Platform/Interface/SearchPlaces.h"
#include "tests/support/FakeHome.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace fs = std::filesystem;
using Platform::FolderVariables;
using Platform::TextFromPath;

TEST(FolderVariables, VariableAsSetComesBeforeThePrefixesFolders) {
    const FakeHome home;
    const fs::path first = home.MakePrefix(".wine");
    const fs::path second = home.MakePrefix("Games/other");
    fs::create_directories(first / "drive_c/Program Files");
    fs::create_directories(first / "drive_c/Program Files (x86)");
    fs::create_directories(second / "drive_c/program files");
    const ScopedEnvironment variable(L"ProgramFiles", L"/opt/my programs");
    const std::vector<std::wstring> expected = {L"/opt/my programs", TextFromPath(first / "drive_c/Program Files"),
                                                TextFromPath(second / "drive_c/program files")};
    EXPECT_EQ(FolderVariables(L"ProgramFiles"), expected);
    const std::vector<std::wstring> expected32 = {TextFromPath(first / "drive_c/Program Files (x86)")};
    EXPECT_EQ(FolderVariables(L"ProgramFiles(x86)"), expected32);
}

TEST(FolderVariables, OtherVariablesAreOnlyTheEnvironments) {
    const FakeHome home;
    home.MakePrefix(".wine");
    const ScopedEnvironment variable(L"VELORINTH_TEST_FOLDER", L"/opt/x");
    EXPECT_EQ(FolderVariables(L"VELORINTH_TEST_FOLDER"), std::vector<std::wstring>{L"/opt/x"});
    EXPECT_TRUE(FolderVariables(L"VELORINTH_TEST_NOTHING").empty());
}

TEST(FolderVariables, PrefixWithoutTheFolderAddsNothing) {
    const FakeHome home;
    home.MakePrefix(".wine");
    EXPECT_TRUE(FolderVariables(L"ProgramFiles").empty());
}
