#include "Platform/Linux/Wine/RegistryFile.h"

#include "tests/support/FakeHome.h"
#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdint>
#include <filesystem>
#include <optional>

namespace fs = std::filesystem;

namespace {

std::optional<std::wstring> Read(const fs::path& file) {
    return Platform::ReadRegistryString(file, L"Software\\Valve\\Steam", L"SteamPath");
}

/// A registry file of that size, nearly all of it a hole.
void WriteSized(const fs::path& file, std::uintmax_t size) {
    WriteRegistry(file, "Software\\\\Valve\\\\Steam", "SteamPath", "c:/steam");
    fs::resize_file(file, size);
}

}  // namespace

TEST(RegistryFile, ReadsAValue) {
    const TemporaryFolder folder;
    WriteRegistry(folder / "user.reg", "Software\\\\Valve\\\\Steam", "SteamPath", "c:/steam");
    EXPECT_EQ(Read(folder / "user.reg"), L"c:/steam");
}

TEST(RegistryFile, FileNameThatIsNotUtf8IsRead) {
    const TemporaryFolder folder;
    WriteRegistry(folder / "\xFF.reg", "Software\\\\Valve\\\\Steam", "SteamPath", "c:/steam");
    EXPECT_EQ(Read(folder / "\xFF.reg"), L"c:/steam");
}

TEST(RegistryFile, WhatIsNoRegularFileIsRefusedAtOnce) {
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo((folder / "fifo").c_str(), 0600), 0);
    fs::create_symlink("loop", folder / "loop");
    EXPECT_EQ(Read(folder / "fifo"), std::nullopt);
    EXPECT_EQ(Read(folder / "loop"), std::nullopt);
    EXPECT_EQ(Read(folder.Path()), std::nullopt);
    EXPECT_EQ(Read("/dev/zero"), std::nullopt);
    EXPECT_EQ(Read(folder / "missing"), std::nullopt);
    EXPECT_EQ(Read(folder / std::string(4000, 'x')), std::nullopt);
}

TEST(RegistryFile, FilesAbove64MiBAreRefused) {
    const TemporaryFolder folder;
    constexpr std::uintmax_t limit = 64U << 20U;
    WriteSized(folder / "large", limit);
    WriteSized(folder / "too large", limit + 1);
    EXPECT_EQ(Read(folder / "large"), L"c:/steam");
    EXPECT_EQ(Read(folder / "too large"), std::nullopt);
}
