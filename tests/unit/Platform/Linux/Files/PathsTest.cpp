#include "Platform/Interface/Paths.h"

#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;

namespace {

fs::path Canonical(const fs::path& path) {
    std::error_code error;
    fs::path result = Platform::WeaklyCanonical(path, error);
    EXPECT_FALSE(error) << error.message();
    return result;
}

}  // namespace

TEST(Paths, TextOfANonUtf8NameComesBackAsTheName) {
    for (const char* const name : {"/plain", "/\xC3\xA9", "/\xFF\xFE", "/a\xC3", "/\xED\xB2\x80"}) {
        EXPECT_EQ(Platform::PathFromText(Platform::TextFromPath(name)).native(), name);
    }
    EXPECT_EQ(Platform::TextFromPath("/\xC3\xA9\xFF"), std::wstring(L"/\u00E9") + static_cast<wchar_t>(0xDCFF));
}

TEST(Paths, ExistingSpellingIsTheFileSystems) {
    const TemporaryFolder folder;
    WriteBytes(folder / "BaseQ2" / "Pak0.pak", "");
    EXPECT_EQ(Platform::ExistingSpelling(folder / "baseq2" / "PAK0.PAK"), folder / "BaseQ2" / "Pak0.pak");
    EXPECT_EQ(Platform::ExistingSpelling(folder / "BASEQ2" / "Other"), folder / "BaseQ2" / "Other");
}

TEST(WeaklyCanonical, AnEmptyPathStaysEmpty) {
    EXPECT_EQ(Canonical(""), "");
}

TEST(WeaklyCanonical, AllSpellingsOfAFolderAreOne) {
    const TemporaryFolder folder;
    fs::create_directories(folder / "Quake2" / "baseq2");
    fs::create_directory_symlink(folder / "Quake2", folder / "link");
    const fs::path expected = folder / "Quake2";
    EXPECT_EQ(Canonical(folder / "Quake2"), expected);
    EXPECT_EQ(Canonical(folder / "QUAKE2"), expected);
    EXPECT_EQ(Canonical(folder / "quake2" / "baseq2" / ".."), expected);
    EXPECT_EQ(Canonical(folder / "." / "Quake2"), expected);
    EXPECT_EQ(Canonical(folder / "link"), expected);
    EXPECT_EQ(Canonical(folder / "LINK"), expected);
    EXPECT_EQ(Canonical(folder.Path().native() + "//Quake2"), expected);
    EXPECT_EQ(Canonical(folder.Path().native() + "/Quake2/"), expected);
}

TEST(WeaklyCanonical, TheMissingRestIsNormalised) {
    const TemporaryFolder folder;
    fs::create_directory(folder / "Real");
    fs::create_directory_symlink(folder / "Real", folder / "link");
    EXPECT_EQ(Canonical(folder / "link" / "missing" / ".." / "other"), folder / "Real" / "other");
    EXPECT_EQ(Canonical(folder / "REAL" / "Missing" / "." / "Deeper"), folder / "Real" / "Missing" / "Deeper");
}

TEST(WeaklyCanonical, ALoopOfLinksIsAnError) {
    const TemporaryFolder folder;
    fs::create_symlink(folder / "b", folder / "a");
    fs::create_symlink(folder / "a", folder / "b");
    std::error_code error;
    Platform::WeaklyCanonical(folder / "a" / "x", error);
    EXPECT_TRUE(error);
}

TEST(WeaklyCanonical, AComponentOfMoreThan255BytesIsAnErrorAndNoException) {
    std::error_code error;
    EXPECT_NO_THROW(Platform::WeaklyCanonical("/" + std::string(300, 'n'), error));
    EXPECT_TRUE(error);
}

TEST(WeaklyCanonical, NonUtf8NamesAreResolved) {
    const TemporaryFolder folder;
    fs::create_directory(folder / "na\xFFme");
    EXPECT_EQ(Canonical(folder / "NA\xFFME" / "."), folder / "na\xFFme");
}

TEST(PrepareProfileFile, MakesNothingHere) {
    const TemporaryFolder folder;
    Platform::PrepareProfileFile(folder / "launcher.ini");
    EXPECT_FALSE(fs::exists(folder / "launcher.ini"));
}
