#include "Platform/Linux/Profile/ProfileFile.h"
#include "TestProfile.h"

#include <sys/stat.h>

#include <algorithm>

namespace fs = std::filesystem;
using namespace std::string_literals;

class ProfileRead : public ProfileTest {};

TEST_F(ProfileRead, AMissingFileSectionOrKeyGivesTheDefault) {
    EXPECT_EQ(Read(L"Folder"), L"(default)");
    EXPECT_EQ(ReadInt(L"Mode"), 4U);
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
    WriteBytes(path, "[Other]\nFolder=x\nMode=1\n");
    EXPECT_EQ(Read(L"Folder"), L"(default)");
    WriteBytes(path, "[Launcher]\nOther=x\n");
    EXPECT_EQ(Read(L"Folder"), L"(default)");
    EXPECT_EQ(ReadInt(L"Mode"), 4U);
}

TEST_F(ProfileRead, TheDefaultLosesTheBlanksAtItsEnd) {
    EXPECT_EQ(Read(L"Folder", L" a b  "), L" a b");
    EXPECT_EQ(Read(L"Folder", L"  "), L"");
    wchar_t buffer[4] = L"old";
    EXPECT_EQ(GetPrivateProfileStringW(L"Launcher", L"Folder", nullptr, buffer, 4, Name().c_str()), 0U);
    EXPECT_STREQ(buffer, L"");
}

TEST_F(ProfileRead, AnEmptyValueIsNotAMissingOne) {
    WriteBytes(path, "[Launcher]\nFolder=\n");
    EXPECT_EQ(Read(L"Folder"), L"");
}

TEST_F(ProfileRead, ALongValueIsCutToTheBuffer) {
    WriteBytes(path, "[Launcher]\nFolder=123456789\n");
    wchar_t buffer[6] = L"";
    EXPECT_EQ(GetPrivateProfileStringW(L"Launcher", L"Folder", L"", buffer, 6, Name().c_str()), 5U);
    EXPECT_STREQ(buffer, L"12345");
    EXPECT_EQ(GetPrivateProfileStringW(L"Launcher", L"None", L"abcdefgh", buffer, 6, Name().c_str()), 5U);
    EXPECT_STREQ(buffer, L"abcde");
    EXPECT_EQ(GetPrivateProfileStringW(L"Launcher", L"Folder", L"", buffer, 1, Name().c_str()), 0U);
    EXPECT_STREQ(buffer, L"");
    EXPECT_EQ(GetPrivateProfileStringW(L"Launcher", L"Folder", L"", buffer, 0, Name().c_str()), 0U);
    EXPECT_EQ(GetPrivateProfileStringW(L"Launcher", L"Folder", L"", nullptr, 6, Name().c_str()), 0U);
}

TEST_F(ProfileRead, AValueOfOneMebibyteIsCutToTheBuffer) {
    std::string content = "[Launcher]\nFolder=";
    content.append(1 << 20, 'x').append("\nMode=7\n");
    WriteBytes(path, content);
    EXPECT_EQ(Read(L"Folder"), std::wstring(32767, L'x'));
    EXPECT_EQ(ReadInt(L"Mode"), 7U);
}

TEST_F(ProfileRead, AValueEndsAtANul) {
    WriteBytes(path, "[Launcher]\nFolder=ab\0cd\nMode=7\n"s);
    EXPECT_EQ(Read(L"Folder"), L"ab");
    EXPECT_EQ(ReadInt(L"Mode"), 7U);
}

TEST_F(ProfileRead, NonUtf8BytesOfAFolderSurvive) {
    WriteBytes(path, "[Launcher]\nFolder=/games/\xFF\xC3\n");
    EXPECT_EQ(Platform::PathFromText(Read(L"Folder")).native(), "/games/\xFF\xC3");
}

TEST_F(ProfileRead, NumbersAreReadAsFarAsTheyGo) {
    const struct {
        const char* text;
        UINT number;
    } cases[] = {
        {"12", 12},      {"-1", 0xFFFFFFFF}, {"+3", 3},
        {"7 apples", 7}, {"0x10", 0},        {"007", 7},
        {"\"5\"", 5},    {"4294967297", 1},  {"-2147483648", 0x80000000},
        {"--1", 0},      {"- 1", 0},         {"1.9", 1},
        {"\" 6\"", 6},
    };
    for (const auto& each : cases) {
        WriteBytes(path, "[Launcher]\nMode="s + each.text + "\n");
        EXPECT_EQ(ReadInt(L"Mode"), each.number) << each.text;
    }
}

TEST_F(ProfileRead, TextThatHoldsNoNumberReadsAs0) {
    WriteBytes(path, "[Launcher]\nMode=fast\n");
    EXPECT_EQ(ReadInt(L"Mode"), 0U);
}

TEST_F(ProfileRead, AnEmptyNumberIsTheDefault) {
    WriteBytes(path, "[Launcher]\nMode=\n");
    EXPECT_EQ(ReadInt(L"Mode"), 4U);
    EXPECT_EQ(ReadInt(L"Mode", -1), 0xFFFFFFFFU);
}

TEST_F(ProfileRead, TheFileIsFoundInAnotherCase) {
    WriteBytes(folder / "LAUNCHER.INI", "[Launcher]\nMode=7\n");
    EXPECT_EQ(ReadInt(L"Mode"), 7U);
}

TEST_F(ProfileRead, AFifoAFolderAndADeviceAreAsMissing) {
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    fs::create_directory(folder / "sub");
    for (const fs::path& each : {folder / "pipe", folder / "sub", fs::path("/dev/zero")}) {
        path = each;
        EXPECT_EQ(Read(L"Folder"), L"(default)") << each;
        EXPECT_EQ(ReadInt(L"Mode"), 4U) << each;
    }
}

TEST_F(ProfileRead, AFileUpTo16MebibytesIsReadAndALargerOneIsAsMissing) {
    std::string content = "[Launcher]\nMode=7\n;";
    content.resize(Platform::largestProfileFile, ' ');
    WriteBytes(path, content);
    EXPECT_EQ(ReadInt(L"Mode"), 7U);
    WriteBytes(path, content + ' ');
    EXPECT_EQ(ReadInt(L"Mode"), 4U);
}

TEST_F(ProfileRead, NamesThatCannotBeFilesAreAsMissing) {
    std::string longPath = "/";
    longPath.append(4500, 'n');
    for (const fs::path& each : {folder / std::string(256, 'n'), fs::path(longPath), fs::path()}) {
        path = each;
        EXPECT_EQ(Read(L"Folder"), L"(default)");
    }
    EXPECT_EQ(GetPrivateProfileIntW(nullptr, L"Mode", 3, Name().c_str()), 3U);
    EXPECT_EQ(GetPrivateProfileIntW(L"Launcher", nullptr, 3, Name().c_str()), 3U);
    EXPECT_EQ(GetPrivateProfileIntW(L"Launcher", L"Mode", 3, nullptr), 3U);
}
