#include "CountingSource.h"
#include "launcher/GameDiscovery/FileFormats.h"
#include "launcher/GameDiscovery/Validation.h"
#include "Platform/Interface/Paths.h"
#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <limits>
#include <stdexcept>
#include <string>

namespace {

bool PassesAsPak(const std::string& bytes) {
    CountingSource source(bytes);
    return GameDiscovery::HasPakHeader(source);
}

/// Judges a header as if it stood in a file of `size` bytes.
bool PassesWithSize(std::int32_t offset, std::int32_t length, std::uint64_t size) {
    CountingSource source(PakBytes(offset, length, 12));
    source.ClaimSize(size);
    return GameDiscovery::HasPakHeader(source);
}

/// A file with `start` at its start and `size` bytes in all. What lies between takes no room where the file system can
/// do without.
void WriteSparse(const std::filesystem::path& path, const std::string& start, std::int64_t size) {
    const HANDLE file = CreateFileW(Platform::TextFromPath(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                    CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) throw std::runtime_error("cannot create a file");
    DWORD written = 0;
    LARGE_INTEGER last{};
    last.QuadPart = size - 1;
    const bool done = WriteFile(file, start.data(), static_cast<DWORD>(start.size()), &written, nullptr) &&
                      SetFilePointerEx(file, last, nullptr, FILE_BEGIN) && WriteFile(file, "", 1, &written, nullptr);
    CloseHandle(file);
    if (!done) throw std::runtime_error("cannot write a sparse file");
}

}  // namespace

TEST(Pak, DirectoryLength64UpToTheEndOfTheFilePasses) {
    EXPECT_TRUE(PassesAsPak(PakBytes(12, 64, 76)));
}

TEST(Pak, DirectoryOneByteBeyondTheEndFails) {
    EXPECT_FALSE(PassesAsPak(PakBytes(12, 64, 75)));
}

TEST(Pak, DirectoryLength0FailsAlthoughWellFormed) {
    EXPECT_FALSE(PassesAsPak(PakBytes(12, 0, 76)));
}

TEST(Pak, DirectoryLength65Fails) {
    EXPECT_FALSE(PassesAsPak(PakBytes(12, 65, 1000)));
}

TEST(Pak, DirectoryLength63Fails) {
    EXPECT_FALSE(PassesAsPak(PakBytes(12, 63, 1000)));
}

TEST(Pak, DirectoryOfSeveralEntriesBehindTheDataPasses) {
    EXPECT_TRUE(PassesAsPak(PakBytes(500, 640, 1140)));
}

TEST(Pak, DirectoryOffset11Fails) {
    EXPECT_FALSE(PassesAsPak(PakBytes(11, 64, 1000)));
}

TEST(Pak, NegativeDirectoryOffsetFails) {
    EXPECT_FALSE(PassesAsPak(PakBytes(-64, 128, 1000)));
    EXPECT_FALSE(PassesAsPak(PakBytes(std::numeric_limits<std::int32_t>::min(), 64, 1000)));
}

TEST(Pak, NegativeDirectoryLengthFails) {
    EXPECT_FALSE(PassesAsPak(PakBytes(500, -64, 1000)));
}

TEST(Pak, SumThatOverflows32BitsIsJudgedIn64) {
    constexpr std::int32_t offset = 0x7FFFFFFF;
    constexpr std::int32_t length = 0x7FFFFFC0;
    constexpr std::uint64_t end = 0xFFFFFFBF;
    EXPECT_FALSE(PassesWithSize(offset, length, 1000));
    EXPECT_FALSE(PassesWithSize(offset, length, end - 1));
    EXPECT_TRUE(PassesWithSize(offset, length, end));
}

TEST(Pak, FileOfMoreThan4GiBIsComparedIn64Bits) {
    EXPECT_TRUE(PassesWithSize(12, 128, 0x100000000));
}

TEST(Pak, AnotherMagicFails) {
    EXPECT_FALSE(PassesAsPak(PakBytes(12, 64, 76, "PAKC")));
    EXPECT_FALSE(PassesAsPak(PakBytes(12, 64, 76, "pack")));
}

TEST(Pak, ShortHeaderFails) {
    const std::string whole = PakBytes(12, 64, 76);
    for (std::size_t size = 0; size < 12; ++size) {
        CountingSource source(whole.substr(0, size));
        source.ClaimSize(76);
        EXPECT_FALSE(GameDiscovery::HasPakHeader(source)) << size << " bytes";
    }
}

TEST(Pak, TwelveBytesAreRead) {
    CountingSource source(PakBytes(12, 640, 100'000));
    EXPECT_TRUE(GameDiscovery::HasPakHeader(source));
    EXPECT_EQ(source.BytesRead(), 12U);
}

TEST(Pak, AFailingCallFails) {
    for (int working = 0; working < 3; ++working) {
        CountingSource source(PakBytes(12, 64, 76));
        source.FailAfter(working);
        EXPECT_FALSE(GameDiscovery::HasPakHeader(source)) << working << " working calls";
    }
}

TEST(Pak, AFileLargerThan2GiBIsMeasuredCorrectly) {
    const TemporaryFolder folder;
    constexpr std::int32_t offset = 0x7FFFFF00;
    constexpr std::int32_t length = 6400;
    constexpr std::int64_t end = std::int64_t{offset} + length;
    WriteSparse(folder / "exact.pak", PakBytes(offset, length, 12), end);
    WriteSparse(folder / "short.pak", PakBytes(offset, length, 12), end - 1);
    EXPECT_TRUE(GameDiscovery::IsValidPak(folder / "exact.pak"));
    EXPECT_FALSE(GameDiscovery::IsValidPak(folder / "short.pak"));
}

TEST(Pak, WhatCannotBeReadFails) {
    const TemporaryFolder folder;
    WriteBytes(folder / "empty.pak", "");
    std::filesystem::create_directory(folder / "directory.pak");
    EXPECT_FALSE(GameDiscovery::IsValidPak(folder / "empty.pak"));
    EXPECT_FALSE(GameDiscovery::IsValidPak(folder / "directory.pak"));
    EXPECT_FALSE(GameDiscovery::IsValidPak(folder / "missing.pak"));
    EXPECT_FALSE(GameDiscovery::IsValidPak({}));
}
