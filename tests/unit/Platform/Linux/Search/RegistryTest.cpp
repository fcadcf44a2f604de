#include "Platform/Interface/Paths.h"
#include "Platform/Interface/SearchPlaces.h"
#include "tests/support/FakeHome.h"
#include "tests/support/GameFiles.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string>
#include <vector>

namespace fs = std::filesystem;
using Platform::RegistryStrings;
using Platform::TextFromPath;

namespace {

constexpr const wchar_t* UserKey = L"Software\\Valve\\Steam";
constexpr const wchar_t* MachineKey = L"SOFTWARE\\WOW6432Node\\Valve\\Steam";

std::vector<std::wstring> UserSteam() {
    return RegistryStrings(HKEY_CURRENT_USER, UserKey, L"SteamPath");
}
std::vector<std::wstring> MachineSteam() {
    return RegistryStrings(HKEY_LOCAL_MACHINE, MachineKey, L"InstallPath");
}

std::vector<std::wstring> Texts(const std::vector<fs::path>& paths) {
    std::vector<std::wstring> texts(paths.size());
    std::transform(paths.begin(), paths.end(), texts.begin(), TextFromPath);
    return texts;
}

}  // namespace

TEST(RegistryStrings, SteamOfTheUserComesNativeThenFlatpakThenSnapThenPrefixes) {
    const FakeHome home;
    const fs::path prefix = home.MakePrefix(".wine");
    const fs::path lutris = home.MakePrefix("Games/steam");
    fs::create_directories(prefix / "drive_c/Program Files (x86)/Steam");
    WriteRegistry(prefix / "user.reg", "Software\\\\Valve\\\\Steam", "SteamPath", "c:/program files (x86)/steam");
    WriteRegistry(lutris / "user.reg", "Software\\\\Valve\\\\Steam", "SteamPath", "C:\\\\Steam");
    const std::vector<fs::path> expected = {
        home.MakeFolder(".steam/root"),
        home.MakeFolder(".local/share/Steam"),
        home.MakeFolder(".var/app/com.valvesoftware.Steam/.local/share/Steam"),
        home.MakeFolder(".var/app/com.valvesoftware.Steam/data/Steam"),
        home.MakeFolder("snap/steam/common/.local/share/Steam"),
        prefix / "drive_c/Program Files (x86)/Steam",
        lutris / "drive_c/Steam",
    };
    EXPECT_EQ(UserSteam(), Texts(expected));
}

TEST(RegistryStrings, SteamThatIsReachedByTwoNamesComesOnce) {
    const FakeHome home;
    const fs::path steam = home.MakeFolder(".local/share/Steam");
    home.MakeFolder(".steam");
    fs::create_symlink(steam, home / ".steam/root");
    EXPECT_EQ(UserSteam(), Texts({home / ".steam/root"}));
}

TEST(RegistryStrings, SteamFollowsTheDataFolderButSandboxesDoNot) {
    const FakeHome home;
    home.MakeFolder(".local/share/Steam");
    const std::vector<fs::path> expected = {home.MakeFolder("data/Steam"),
                                            home.MakeFolder("snap/steam/common/.local/share/Steam")};
    const ScopedEnvironment variable(L"XDG_DATA_HOME", TextFromPath(home / "data"));
    EXPECT_EQ(UserSteam(), Texts(expected));
}

TEST(RegistryStrings, NoSteamIsNoValue) {
    const FakeHome home;
    home.MakeFolder(".steam");
    WriteBytes(home / ".local/share/Steam", "a file");
    fs::create_symlink("nowhere", home / ".steam/root");
    home.MakePrefix(".wine");
    EXPECT_TRUE(UserSteam().empty());
    EXPECT_TRUE(MachineSteam().empty());
}

TEST(RegistryStrings, SteamOnASecondDiskIsTakenThroughThePrefixsDrive) {
    const FakeHome home;
    const fs::path prefix = home.MakePrefix(".wine");
    const fs::path disk = home.MakeFolder("second disk");
    fs::create_directories(disk / "Steam");
    AddDrive(prefix, 'd', disk);
    WriteRegistry(prefix / "system.reg", "Software\\\\Wow6432Node\\\\Valve\\\\Steam", "InstallPath", "D:\\\\STEAM");
    EXPECT_EQ(MachineSteam(), Texts({disk / "Steam"}));
}

TEST(RegistryStrings, PathOnADriveThatThePrefixLacksIsLeftOut) {
    const FakeHome home;
    const fs::path prefix = home.MakePrefix(".wine");
    WriteRegistry(prefix / "user.reg", "Software\\\\Valve\\\\Steam", "SteamPath", "q:/steam");
    EXPECT_TRUE(UserSteam().empty());
}

TEST(RegistryStrings, A32BitPrefixKeepsTheMachinesKeyWithoutTheView) {
    const FakeHome home;
    const fs::path prefix = home.MakePrefix(".wine");
    WriteRegistry(prefix / "system.reg", "Software\\\\Valve\\\\Steam", "InstallPath", "C:\\\\Steam");
    EXPECT_EQ(MachineSteam(), Texts({prefix / "drive_c/Steam"}));
}

TEST(RegistryStrings, UserAndMachineHaveFilesOfTheirOwn) {
    const FakeHome home;
    const fs::path prefix = home.MakePrefix(".wine");
    WriteRegistry(prefix / "user.reg", "Software\\\\Wow6432Node\\\\Valve\\\\Steam", "InstallPath", "C:\\\\User");
    WriteRegistry(prefix / "system.reg", "Software\\\\Valve\\\\Steam", "SteamPath", "C:\\\\Machine");
    EXPECT_TRUE(UserSteam().empty());
    EXPECT_TRUE(MachineSteam().empty());
}

TEST(RegistryStrings, AnyOtherValueIsLookedUpInThePrefixes) {
    const FakeHome home;
    home.MakeFolder(".steam/root");
    const fs::path prefix = home.MakePrefix(".wine");
    WriteRegistry(prefix / "user.reg", "Software\\\\Valve\\\\Steam", "Language", "english");
    EXPECT_EQ(RegistryStrings(HKEY_CURRENT_USER, UserKey, L"Language"), std::vector<std::wstring>{L"english"});
    EXPECT_TRUE(RegistryStrings(nullptr, UserKey, L"Language").empty());
    EXPECT_TRUE(RegistryStrings(HKEY_CURRENT_USER, nullptr, nullptr).empty());
}

TEST(RegistryStrings, FilesThatAreNoRegistryAreNoValueAtOnce) {
    const FakeHome home;
    fs::create_symlink("/dev/zero", home.MakePrefix("Games/a") / "user.reg");
    ASSERT_EQ(mkfifo((home.MakePrefix("Games/b") / "user.reg").c_str(), 0600), 0);
    fs::create_directories(home.MakePrefix("Games/c") / "user.reg");
    WriteBytes(home.MakePrefix("Games/d") / "user.reg", "WINE REGISTRY Version 2\n[Software\\\\Valve\\\\Ste");
    const fs::path good = home.MakePrefix("Games/e");
    WriteRegistry(good / "user.reg", "Software\\\\Valve\\\\Steam", "SteamPath", "c:/steam");
    EXPECT_EQ(UserSteam(), Texts({good / "drive_c/steam"}));
}

TEST(RegGetValue, GivesTheFirstValueAndItsSizeInBytes) {
    const FakeHome home;
    const std::wstring steam = TextFromPath(home.MakeFolder(".steam/root"));
    home.MakeFolder(".local/share/Steam");
    std::array<wchar_t, 1024> buffer{};
    DWORD size = sizeof buffer;
    DWORD type = 0;
    ASSERT_EQ(RegGetValueW(HKEY_CURRENT_USER, UserKey, L"SteamPath", RRF_RT_REG_SZ, &type, buffer.data(), &size), 0);
    EXPECT_EQ(buffer.data(), steam);
    EXPECT_EQ(size, (steam.size() + 1) * sizeof(wchar_t));
    EXPECT_EQ(type, 1U);
}

TEST(RegGetValue, TellsTheSizeThatABufferNeeds) {
    const FakeHome home;
    const std::wstring steam = TextFromPath(home.MakeFolder(".steam/root"));
    const auto needed = static_cast<DWORD>((steam.size() + 1) * sizeof(wchar_t));
    std::vector<wchar_t> buffer(steam.size() + 1, L'#');
    DWORD size = needed - 1;
    EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, UserKey, L"SteamPath", RRF_RT_REG_SZ, nullptr, buffer.data(), &size),
              static_cast<LSTATUS>(ERROR_MORE_DATA));
    EXPECT_EQ(size, needed);
    EXPECT_EQ(buffer[0], L'#');
    size = 0;
    EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, UserKey, L"SteamPath", RRF_RT_REG_SZ, nullptr, nullptr, &size), 0);
    EXPECT_EQ(size, needed);
    EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, UserKey, L"SteamPath", RRF_RT_REG_SZ, nullptr, buffer.data(), &size), 0);
    EXPECT_EQ(buffer.data(), steam);
}

TEST(RegGetValue, MissingValueIsNotFound) {
    const FakeHome home;
    DWORD size = 0;
    EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, UserKey, L"SteamPath", RRF_RT_REG_SZ, nullptr, nullptr, &size),
              static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND));
}
