#include "Platform/Interface/Paths.h"

#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <cwctype>
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

/// The temporary folder may itself be reached by a link or a short name, so its final path is what the others start
/// with.
fs::path Base(const TemporaryFolder& folder) {
    return Canonical(folder.Path());
}

std::wstring UpperCase(std::wstring text) {
    for (wchar_t& each : text) each = static_cast<wchar_t>(std::towupper(each));
    return text;
}

}  // namespace

TEST(Paths, TextOfAPathComesBackAsThePath) {
    const std::wstring text = L"C:\\games\\\u00E4\U0001F600";
    EXPECT_EQ(Platform::TextFromPath(text), text);
    EXPECT_EQ(Platform::PathFromText(text), fs::path(text));
}

TEST(Paths, ExistingSpellingIsThePathItself) {
    const TemporaryFolder folder;
    WriteBytes(folder / "BaseQ2" / "pak0.pak", "");
    EXPECT_EQ(Platform::ExistingSpelling(folder / "BASEQ2" / "PAK0.PAK"), folder / "BASEQ2" / "PAK0.PAK");
}

TEST(WeaklyCanonical, AnEmptyPathStaysEmpty) {
    EXPECT_EQ(Canonical(L""), L"");
}

TEST(WeaklyCanonical, HasNoPrefixOfTheObjectManager) {
    const TemporaryFolder folder;
    EXPECT_FALSE(Base(folder).wstring().starts_with(L"\\\\?\\")) << Base(folder);
    EXPECT_TRUE(Base(folder).is_absolute());
}

TEST(WeaklyCanonical, AllSpellingsOfAFolderAreOneButForCase) {
    const TemporaryFolder folder;
    fs::create_directories(folder / "Quake2" / "baseq2");
    const fs::path expected = Base(folder) / "Quake2";
    EXPECT_EQ(Canonical(folder / "Quake2"), expected);
    EXPECT_EQ(Canonical(folder / "Quake2" / "baseq2" / ".."), expected);
    EXPECT_EQ(Canonical(folder.Path().generic_wstring() + L"/./Quake2"), expected);
    EXPECT_EQ(Canonical(folder.Path().wstring() + L"\\Quake2\\"), expected);
    EXPECT_EQ(UpperCase(Canonical(folder / "QUAKE2").wstring()), UpperCase(expected.wstring()));
}

TEST(WeaklyCanonical, TheMissingRestIsNormalised) {
    const TemporaryFolder folder;
    fs::create_directory(folder / "Real");
    const fs::path expected = Base(folder) / "Real" / "other" / "file";
    EXPECT_EQ(Canonical(folder / "Real" / "missing" / ".." / "other" / "." / "file"), expected);
}

TEST(WeaklyCanonical, ADriveThatIsNotThereIsOnlyNormalised) {
    // A letter that no drive has, going from the end.
    const DWORD drives = GetLogicalDrives();
    for (wchar_t letter = L'Y'; letter > L'C'; --letter) {
        if ((drives & (1U << (letter - L'A'))) != 0) continue;
        const std::wstring root = std::wstring(1, letter) + L":\\";
        EXPECT_EQ(Canonical(root + L"games\\..\\quake"), root + L"quake");
        return;
    }
    GTEST_SKIP() << "every letter is a drive";
}

TEST(PrepareProfileFile, ANewFileHoldsTextOfAnyLanguage) {
    const TemporaryFolder folder;
    const fs::path file = folder / "launcher.ini";
    Platform::PrepareProfileFile(file);
    EXPECT_EQ(ReadBytes(file), "\xFF\xFE");
    const std::wstring value = L"C:\\\u0416\u4E2D\U0001F600";
    ASSERT_TRUE(WritePrivateProfileStringW(L"Launcher", L"Folder", value.c_str(), file.c_str()));
    std::wstring read(64, L'\0');
    read.resize(GetPrivateProfileStringW(L"Launcher", L"Folder", L"", read.data(), 64, file.c_str()));
    EXPECT_EQ(read, value);
}

TEST(PrepareProfileFile, AnExistingFileStaysAsItIs) {
    const TemporaryFolder folder;
    WriteBytes(folder / "launcher.ini", "[Launcher]\r\n");
    Platform::PrepareProfileFile(folder / "launcher.ini");
    EXPECT_EQ(ReadBytes(folder / "launcher.ini"), "[Launcher]\r\n");
}

TEST(PrepareProfileFile, AMissingFolderIsLeftToTheWritesThatFollow) {
    const TemporaryFolder folder;
    Platform::PrepareProfileFile(folder / "none" / "launcher.ini");
    EXPECT_FALSE(fs::exists(folder / "none"));
}
