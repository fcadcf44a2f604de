#include "CountingSource.h"
#include "launcher/GameDiscovery/FileFormats.h"
#include "launcher/GameDiscovery/Validation.h"
#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace {

bool PassesAsPe(const std::string& bytes) {
    CountingSource source(bytes);
    return GameDiscovery::HasClassicPeHeaders(source);
}

bool PassesWithHeaderOffset(std::uint32_t offset) {
    return PassesAsPe(PeBytes({.headerOffset = offset}));
}

/// Valid headers at 64, whatever the DOS header says of their place.
std::string BytesClaiming(std::uint32_t headerOffset) {
    std::string bytes = PeBytes();
    for (std::size_t i = 0; i < 4; ++i) bytes[60 + i] = static_cast<char>(headerOffset >> (8 * i) & 0xFF);
    return bytes;
}

}  // namespace

TEST(ClassicPe, A32BitProgramPasses) {
    EXPECT_TRUE(PassesAsPe(PeBytes()));
}

TEST(ClassicPe, WithoutTheDosMagicFails) {
    EXPECT_FALSE(PassesAsPe(PeBytes({.dosMagic = 0x4D5A})));
}

TEST(ClassicPe, WithoutTheSignatureFails) {
    EXPECT_FALSE(PassesAsPe(PeBytes({.signature = 0x00014550})));
    EXPECT_FALSE(PassesAsPe(PeBytes({.signature = 0x0000454E})));
}

TEST(ClassicPe, A64BitProgramFailsByItsMachine) {
    EXPECT_FALSE(PassesAsPe(PeBytes({.machine = 0x8664})));
}

TEST(ClassicPe, AnotherOptionalHeaderMagicFails) {
    EXPECT_FALSE(PassesAsPe(PeBytes({.optionalMagic = 0x020B})));
}

TEST(ClassicPe, A64ByteFileWithAValidDosHeaderFails) {
    const std::string dosHeader = PeBytes().substr(0, 64);
    EXPECT_FALSE(PassesAsPe(dosHeader));
}

TEST(ClassicPe, HeaderOffset63Fails) {
    EXPECT_FALSE(PassesAsPe(BytesClaiming(63)));
}

TEST(ClassicPe, HeaderOffset64Passes) {
    EXPECT_TRUE(PassesWithHeaderOffset(64));
}

TEST(ClassicPe, HeaderOffset16777216Passes) {
    EXPECT_TRUE(PassesWithHeaderOffset(16'777'216));
}

TEST(ClassicPe, HeaderOffset16777217FailsThoughTheHeadersAreThere) {
    EXPECT_FALSE(PassesWithHeaderOffset(16'777'217));
}

TEST(ClassicPe, HeadersInsideTheDosHeaderFail) {
    std::string bytes = PeBytes().substr(64);
    bytes.insert(0, "MZ" + std::string(14, '\0'));
    bytes.resize(60);
    bytes += std::string("\x10\0\0\0", 4) + std::string(64, '\0');
    EXPECT_FALSE(PassesAsPe(bytes));
}

TEST(ClassicPe, HeaderOffsetIsComparedUnsigned) {
    EXPECT_FALSE(PassesAsPe(BytesClaiming(0x80000040)));
    EXPECT_FALSE(PassesAsPe(BytesClaiming(0xFFFFFFFF)));
}

TEST(ClassicPe, TruncatedAnywhereFails) {
    const std::string whole = PeBytes({.headerOffset = 80});
    ASSERT_TRUE(PassesAsPe(whole));
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_FALSE(PassesAsPe(whole.substr(0, size))) << size << " bytes";
    }
}

TEST(ClassicPe, HeadersAloneAreRead) {
    CountingSource source(PeBytes({.headerOffset = 4096}) + std::string(100'000, 'x'));
    EXPECT_TRUE(GameDiscovery::HasClassicPeHeaders(source));
    EXPECT_LE(source.BytesRead(), 64U + 4U + 20U + 2U);
}

TEST(ClassicPe, AFailingReadOrSeekFails) {
    for (int working = 0; working < 3; ++working) {
        CountingSource source(PeBytes());
        source.FailAfter(working);
        EXPECT_FALSE(GameDiscovery::HasClassicPeHeaders(source)) << working << " working calls";
    }
}

TEST(ClassicPe, AFileIsJudgedByItsContent) {
    const TemporaryFolder folder;
    WriteBytes(folder / "classic.exe", PeBytes());
    WriteBytes(folder / "remaster.exe", PeBytes({.machine = 0x8664, .optionalMagic = 0x020B}));
    EXPECT_TRUE(GameDiscovery::IsClassicPe(folder / "classic.exe"));
    EXPECT_FALSE(GameDiscovery::IsClassicPe(folder / "remaster.exe"));
}

TEST(ClassicPe, A32BitFileOfAnyOtherKindPasses) {
    const TemporaryFolder folder;
    WriteBytes(folder / "screensaver.scr", PeBytes({.headerOffset = 248}) + "whatever follows");
    EXPECT_TRUE(GameDiscovery::IsClassicPe(folder / "screensaver.scr"));
}

TEST(ClassicPe, WhatCannotBeReadFails) {
    const TemporaryFolder folder;
    WriteBytes(folder / "empty.exe", "");
    std::filesystem::create_directory(folder / "directory.exe");
    EXPECT_FALSE(GameDiscovery::IsClassicPe(folder / "empty.exe"));
    EXPECT_FALSE(GameDiscovery::IsClassicPe(folder / "directory.exe"));
    EXPECT_FALSE(GameDiscovery::IsClassicPe(folder / "missing.exe"));
    EXPECT_FALSE(GameDiscovery::IsClassicPe(folder / "missing" / "quake2.exe"));
    EXPECT_FALSE(GameDiscovery::IsClassicPe({}));
}
