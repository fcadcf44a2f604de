#include "Platform/Interface/Paths.h"
#include "Platform/Linux/Files/FullPath.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

std::wstring FullPath(const std::wstring& name) {
    std::wstring buffer(40'000, L'\0');
    buffer.resize(GetFullPathNameW(name.c_str(), static_cast<DWORD>(buffer.size()), buffer.data(), nullptr));
    return buffer;
}

std::wstring WorkingFolder() {
    return Platform::TextFromPath(std::filesystem::current_path());
}

}  // namespace

TEST(FullPath, DotsAreResolvedByTheTextAlone) {
    EXPECT_EQ(FullPath(L"/x/a/.."), L"/x");
    EXPECT_EQ(FullPath(L"/x/a/."), L"/x/a");
    EXPECT_EQ(FullPath(L"/x/./a/../b"), L"/x/b");
    EXPECT_EQ(FullPath(L"/x/a/../.."), L"/");
    EXPECT_EQ(FullPath(L"/missing/../also missing"), L"/also missing");
}

TEST(FullPath, NothingLeadsAboveTheRoot) {
    EXPECT_EQ(FullPath(L"/.."), L"/");
    EXPECT_EQ(FullPath(L"/../../x"), L"/x");
}

TEST(FullPath, NamesOfDotsAndLettersAreNames) {
    EXPECT_EQ(FullPath(L"/x/.../y"), L"/x/.../y");
    EXPECT_EQ(FullPath(L"/x/..a/.b"), L"/x/..a/.b");
}

TEST(FullPath, ATrailingSeparatorStaysAndOnlyIfTheInputEndsInOne) {
    EXPECT_EQ(FullPath(L"/x/a/"), L"/x/a/");
    EXPECT_EQ(FullPath(L"/x/a/../"), L"/x/");
    EXPECT_EQ(FullPath(L"/x/a"), L"/x/a");
}

TEST(FullPath, RunsOfSeparatorsBecomeOne) {
    EXPECT_EQ(FullPath(L"//x///a//"), L"/x/a/");
    EXPECT_EQ(FullPath(L"///"), L"/");
}

TEST(FullPath, ARelativePathStartsAtTheWorkingFolder) {
    EXPECT_EQ(FullPath(L"a/b"), WorkingFolder() + L"/a/b");
    EXPECT_EQ(FullPath(L"."), WorkingFolder());
    EXPECT_EQ(FullPath(L"a/../"), WorkingFolder() + L"/");
}

TEST(FullPath, NonUtf8NamesSurvive) {
    const std::wstring name = Platform::TextFromPath(std::filesystem::path("/x/\xFFn/../\xFEm"));
    EXPECT_EQ(Platform::PathFromText(FullPath(name)).native(), "/x/\xFEm");
}

TEST(FullPath, PathsOf4000CharactersAndMoreAreResolved) {
    std::wstring name;
    for (int i = 0; i < 2000; ++i) name += L"/n";
    EXPECT_EQ(FullPath(name + L"/.."), name.substr(0, name.size() - 2));
    EXPECT_EQ(FullPath(L"/" + std::wstring(30'000, L'n')).size(), 30'001U);
}

TEST(FullPath, EmptyInputFails) {
    wchar_t buffer[8] = L"before";
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(GetFullPathNameW(L"", 8, buffer, nullptr), 0U);
    EXPECT_NE(GetLastError(), ERROR_SUCCESS);
    EXPECT_EQ(GetFullPathNameW(nullptr, 8, buffer, nullptr), 0U);
}

TEST(FullPath, ATooSmallBufferStaysAsItIsAndTheNeededSizeIsTold) {
    wchar_t buffer[5] = L"keep";
    EXPECT_EQ(GetFullPathNameW(L"/abcd", 5, buffer, nullptr), 6U);
    EXPECT_STREQ(buffer, L"keep");
    EXPECT_EQ(GetFullPathNameW(L"/abc", 5, buffer, nullptr), 4U);
    EXPECT_STREQ(buffer, L"/abc");
    EXPECT_EQ(GetFullPathNameW(L"/abc", 0, nullptr, nullptr), 5U);
}
