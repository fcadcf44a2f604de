#include "Platform/Linux/Files/NameLookup.h"

#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

using Platform::ExistingNativeSpelling;
namespace fs = std::filesystem;

namespace {

class NameLookup : public testing::Test {
protected:
    std::string In(const std::string& name) const { return folder_.Path().native() + "/" + name; }
    void MakeFile(const std::string& name) const { WriteBytes(In(name), "x"); }

    TemporaryFolder folder_;
};

}  // namespace

TEST_F(NameLookup, AnExistingSpellingStaysAsItIs) {
    MakeFile("File.txt");
    MakeFile("FILE.TXT");
    EXPECT_EQ(ExistingNativeSpelling(In("File.txt")), In("File.txt"));
    EXPECT_EQ(ExistingNativeSpelling(In("FILE.TXT")), In("FILE.TXT"));
}

TEST_F(NameLookup, EachComponentIsFoundWithoutRegardToCase) {
    MakeFile("BaseQ2/Video/PAK0.pak");
    EXPECT_EQ(ExistingNativeSpelling(In("baseq2/VIDEO/pak0.PAK")), In("BaseQ2/Video/PAK0.pak"));
}

TEST_F(NameLookup, TheExactNameOfAFolderWinsEvenIfOnlyAnotherHoldsTheFile) {
    MakeFile("baseq2/other");
    MakeFile("BASEQ2/pak0.pak");
    EXPECT_EQ(ExistingNativeSpelling(In("baseq2/pak0.pak")), In("baseq2/pak0.pak"));
}

TEST_F(NameLookup, WithoutAnExactMatchTheFirstInByteOrderWins) {
    MakeFile("file.TXT");
    MakeFile("FILE.txt");
    MakeFile("File.txt");
    EXPECT_EQ(ExistingNativeSpelling(In("fIlE.tXt")), In("FILE.txt"));
}

TEST_F(NameLookup, NonAsciiLettersFoldToo) {
    MakeFile("\xC3\x84pfel.txt");
    EXPECT_EQ(ExistingNativeSpelling(In("\xC3\xA4PFEL.TXT")), In("\xC3\x84pfel.txt"));
}

TEST_F(NameLookup, NonUtf8NamesAreFound) {
    MakeFile("Na\xFFme");
    EXPECT_EQ(ExistingNativeSpelling(In("nA\xFFME")), In("Na\xFFme"));
    EXPECT_EQ(ExistingNativeSpelling(In("nA\xFEME")), In("nA\xFEME"));
}

TEST_F(NameLookup, FromTheFirstMissingComponentOnTheTextStays) {
    MakeFile("BaseQ2/pak0.pak");
    EXPECT_EQ(ExistingNativeSpelling(In("BASEQ2/Missing/Deeper")), In("BaseQ2/Missing/Deeper"));
    EXPECT_EQ(ExistingNativeSpelling(In("BASEQ2/PAK0.PAK/below a file")), In("BaseQ2/pak0.pak/below a file"));
}

TEST_F(NameLookup, DotsAndSeparatorsPassThrough) {
    MakeFile("BaseQ2/pak0.pak");
    EXPECT_EQ(ExistingNativeSpelling(In("baseq2/.././BASEQ2//PAK0.pak")), In("BaseQ2/.././BaseQ2//pak0.pak"));
    EXPECT_EQ(ExistingNativeSpelling(In("baseq2/")), In("BaseQ2/"));
}

TEST_F(NameLookup, ALinkToAFolderIsWalkedThrough) {
    MakeFile("Real/File");
    fs::create_directory_symlink(In("Real"), In("Link"));
    EXPECT_EQ(ExistingNativeSpelling(In("LINK/FILE")), In("Link/File"));
}

TEST_F(NameLookup, ADanglingLinkCountsAsExisting) {
    fs::create_symlink(In("nowhere"), In("Link"));
    EXPECT_EQ(ExistingNativeSpelling(In("LINK")), In("Link"));
}

TEST_F(NameLookup, RelativePathsStartAtTheWorkingFolder) {
    MakeFile("Sub/File");
    const fs::path before = fs::current_path();
    fs::current_path(folder_.Path());
    const std::string nested = ExistingNativeSpelling("SUB/FILE");
    const std::string single = ExistingNativeSpelling("sub");
    const std::string missing = ExistingNativeSpelling("Nothing/Here");
    fs::current_path(before);
    EXPECT_EQ(nested, "Sub/File");
    EXPECT_EQ(single, "Sub");
    EXPECT_EQ(missing, "Nothing/Here");
}

TEST_F(NameLookup, EmptyAndRootPathsStay) {
    EXPECT_EQ(ExistingNativeSpelling(""), "");
    EXPECT_EQ(ExistingNativeSpelling("/"), "/");
    EXPECT_EQ(ExistingNativeSpelling("//"), "//");
}

TEST_F(NameLookup, AFifoInTheWayDoesNotBlock) {
    ASSERT_EQ(mkfifo(In("pipe").c_str(), 0600), 0);
    EXPECT_EQ(ExistingNativeSpelling(In("PIPE/file")), In("pipe/file"));
}

TEST_F(NameLookup, AComponentOfMoreThan255BytesStays) {
    const std::string longName(300, 'n');
    EXPECT_EQ(ExistingNativeSpelling(In(longName)), In(longName));
}

TEST_F(NameLookup, APathOf4000CharactersIsFoundInAnotherCase) {
    const std::string component(200, 'n');
    std::string deep;
    while (folder_.Path().native().size() + deep.size() < 3750) deep += component + "/";
    fs::create_directories(In(deep));
    MakeFile(deep + "File");
    EXPECT_EQ(ExistingNativeSpelling(In(deep + "FILE")), In(deep + "File"));
    std::string upper = deep;
    for (char& each : upper) each = each == 'n' ? 'N' : each;
    EXPECT_EQ(ExistingNativeSpelling(In(upper + "FILE")), In(deep + "File"));
}
