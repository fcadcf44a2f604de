#include "launcher/GameDiscovery/FileReader.h"
#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <limits>
#include <string>

using GameDiscovery::FileReader;

namespace {

std::string ReadText(GameDiscovery::ByteSource& source, std::size_t size) {
    std::string text(size, '\0');
    const auto read = source.Read(std::as_writable_bytes(std::span(text)));
    if (!read) return "<failed>";
    text.resize(*read);
    return text;
}

}  // namespace

TEST(FileReader, ReadsInOrderAndShortAtTheEnd) {
    const TemporaryFolder folder;
    WriteBytes(folder / "file", "0123456789");
    FileReader file(folder / "file");
    ASSERT_TRUE(file.IsOpen());
    EXPECT_EQ(file.Size(), 10U);
    EXPECT_EQ(ReadText(file, 4), "0123");
    EXPECT_EQ(ReadText(file, 100), "456789");
    EXPECT_EQ(ReadText(file, 1), "");
}

TEST(FileReader, SeeksFromTheStartAndBeyondTheEnd) {
    const TemporaryFolder folder;
    WriteBytes(folder / "file", "0123456789");
    FileReader file(folder / "file");
    EXPECT_TRUE(file.Seek(7));
    EXPECT_EQ(ReadText(file, 2), "78");
    EXPECT_TRUE(file.Seek(0));
    EXPECT_EQ(ReadText(file, 2), "01");
    EXPECT_TRUE(file.Seek(5'000'000'000));
    EXPECT_EQ(ReadText(file, 2), "");
    EXPECT_FALSE(file.Seek(std::numeric_limits<std::uint64_t>::max()));
}

TEST(FileReader, ExactReadsFailOnlyWhenShort) {
    const TemporaryFolder folder;
    WriteBytes(folder / "file", "0123");
    FileReader file(folder / "file");
    std::array<std::byte, 3> three{};
    EXPECT_TRUE(file.ReadExactly(three));
    EXPECT_FALSE(file.ReadExactly(three));
}

TEST(FileReader, AFileThatIsNotOpenFailsEverything) {
    const TemporaryFolder folder;
    FileReader file(folder / "missing");
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(file.Size(), std::nullopt);
    EXPECT_FALSE(file.Seek(0));
    EXPECT_EQ(ReadText(file, 1), "<failed>");
}

TEST(FileReader, TheFileCanBeWrittenRenamedAndRemovedMeanwhile) {
    const TemporaryFolder folder;
    WriteBytes(folder / "file", "old");
    {
        FileReader file(folder / "file");
        WriteBytes(folder / "file", "new");
        EXPECT_EQ(ReadText(file, 3), "new");
        std::filesystem::rename(folder / "file", folder / "renamed");
        EXPECT_TRUE(std::filesystem::remove(folder / "renamed"));
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(MemorySource, BehavesLikeAFile) {
    const std::string text = "0123456789";
    GameDiscovery::MemorySource source(std::as_bytes(std::span(text)));
    EXPECT_EQ(source.Size(), 10U);
    EXPECT_EQ(ReadText(source, 4), "0123");
    EXPECT_TRUE(source.Seek(8));
    EXPECT_EQ(ReadText(source, 4), "89");
    EXPECT_TRUE(source.Seek(std::numeric_limits<std::uint64_t>::max()));
    EXPECT_EQ(ReadText(source, 4), "");
}
