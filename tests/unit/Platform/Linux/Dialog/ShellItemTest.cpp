#include "Platform/Interface/Paths.h"
#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <shobjidl.h>
#include <sys/stat.h>
#include <wrl/client.h>

#include <filesystem>
#include <string>

namespace {

using Microsoft::WRL::ComPtr;
namespace fs = std::filesystem;

// What an item made of `path` says it is; the failure as text when there is no item.
std::wstring ItemPath(const fs::path& path) {
    ComPtr<IShellItem> item;
    const HRESULT made =
        SHCreateItemFromParsingName(Platform::TextFromPath(path).c_str(), nullptr, IID_PPV_ARGS(item.GetAddressOf()));
    if (FAILED(made)) return L"failed: " + std::to_wstring(static_cast<std::uint32_t>(made));
    LPWSTR name = nullptr;
    EXPECT_EQ(item->GetDisplayName(SIGDN_FILESYSPATH, &name), S_OK);
    std::wstring text = name ? name : L"";
    CoTaskMemFree(name);
    return text;
}

std::wstring FailedWith(DWORD code) {
    return L"failed: " + std::to_wstring(static_cast<std::uint32_t>(HRESULT_FROM_WIN32(code)));
}

TEST(ShellItemTest, AnExistingFolderComesBackAsItsPath) {
    TemporaryFolder temporary;
    fs::create_directory(temporary / "Spiele für Jürgen");
    EXPECT_EQ(ItemPath(temporary / "Spiele für Jürgen"), Platform::TextFromPath(temporary / "Spiele für Jürgen"));
}

TEST(ShellItemTest, TheExistingSpellingIsFoundWithoutRegardToCase) {
    TemporaryFolder temporary;
    fs::create_directories(temporary / "Games" / "QUAKE2");
    EXPECT_EQ(ItemPath(temporary / "games" / "Quake2"), Platform::TextFromPath(temporary / "Games" / "QUAKE2"));
}

TEST(ShellItemTest, AnExactSpellingWinsOverAnotherOne) {
    TemporaryFolder temporary;
    fs::create_directory(temporary / "GAME");
    fs::create_directory(temporary / "game");
    EXPECT_EQ(ItemPath(temporary / "game"), Platform::TextFromPath(temporary / "game"));
}

TEST(ShellItemTest, NamesThatAreNotUtf8SurviveTheWay) {
    TemporaryFolder temporary;
    const fs::path folder = temporary / "quake\xE4\xFF";
    fs::create_directory(folder);
    EXPECT_EQ(Platform::PathFromText(ItemPath(folder)), folder);
}

TEST(ShellItemTest, ARelativePathBecomesAbsolute) {
    EXPECT_EQ(ItemPath("."), Platform::TextFromPath(fs::absolute(".")));
}

TEST(ShellItemTest, AMissingPathHasNoItem) {
    TemporaryFolder temporary;
    EXPECT_EQ(ItemPath(temporary / "gone"), FailedWith(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(ItemPath(temporary / "gone" / "further"), FailedWith(ERROR_FILE_NOT_FOUND));
}

TEST(ShellItemTest, APathOf4000CharactersHasNoItem) {
    EXPECT_TRUE(ItemPath("/" + std::string(4000, 'x')).starts_with(L"failed: "));
    std::string nested;
    for (int i = 0; i < 2000; ++i) nested += "/x";
    EXPECT_TRUE(ItemPath(nested).starts_with(L"failed: "));
}

TEST(ShellItemTest, ALoopOfLinksHasNoItem) {
    TemporaryFolder temporary;
    fs::create_directory_symlink(temporary / "loop", temporary / "loop");
    EXPECT_TRUE(ItemPath(temporary / "loop").starts_with(L"failed: "));
}

TEST(ShellItemTest, AFifoIsAnItemLikeAnyOtherAndIsNotOpened) {
    TemporaryFolder temporary;
    ASSERT_EQ(::mkfifo((temporary / "fifo").c_str(), 0600), 0);
    EXPECT_EQ(ItemPath(temporary / "fifo"), Platform::TextFromPath(temporary / "fifo"));
}

TEST(ShellItemTest, MissingArgumentsAreRefused) {
    void* object = &object;
    EXPECT_EQ(SHCreateItemFromParsingName(nullptr, nullptr, __uuidof(IShellItem), &object), E_INVALIDARG);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(SHCreateItemFromParsingName(L"", nullptr, __uuidof(IShellItem), &object), E_INVALIDARG);
    EXPECT_EQ(SHCreateItemFromParsingName(L"/", nullptr, __uuidof(IShellItem), nullptr), E_POINTER);
    EXPECT_EQ(SHCreateItemFromParsingName(L"/", nullptr, __uuidof(IFileDialog), &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
}

TEST(ShellItemTest, OtherFormsOfTheNameAndOtherMethodsAreNotImplemented) {
    ComPtr<IShellItem> item;
    ASSERT_EQ(SHCreateItemFromParsingName(L"/", nullptr, IID_PPV_ARGS(item.GetAddressOf())), S_OK);
    wchar_t text[] = L"before";
    LPWSTR name = text;
    EXPECT_EQ(item->GetDisplayName(SIGDN_NORMALDISPLAY, &name), E_NOTIMPL);
    EXPECT_EQ(name, nullptr);
    EXPECT_EQ(item->GetDisplayName(SIGDN_FILESYSPATH, nullptr), E_POINTER);
    EXPECT_EQ(item->BindToHandler(nullptr, GUID{}, IID{}, nullptr), E_NOTIMPL);
    EXPECT_EQ(item->GetParent(nullptr), E_NOTIMPL);
    EXPECT_EQ(item->GetAttributes(0, nullptr), E_NOTIMPL);
    EXPECT_EQ(item->Compare(nullptr, 0, nullptr), E_NOTIMPL);
}

}  // namespace
