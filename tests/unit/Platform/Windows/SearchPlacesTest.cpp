#include "Platform/Interface/SearchPlaces.h"

#include "tests/support/ScopedEnvironment.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr const wchar_t* testKey = L"Software\\VelorinthTest\\SearchPlaces";

/// A key of the user's registry that goes at the end of the test.
class SearchPlaces : public testing::Test {
protected:
    ~SearchPlaces() override { RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\VelorinthTest"); }

    static void Set(DWORD type, const std::wstring& text) {
        const auto size = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
        ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, testKey, L"Value", type, text.c_str(), size), ERROR_SUCCESS);
    }
    static std::vector<std::wstring> Get() { return Platform::RegistryStrings(HKEY_CURRENT_USER, testKey, L"Value"); }
};

}  // namespace

TEST_F(SearchPlaces, ARegistryStringIsTheOneValue) {
    Set(REG_SZ, L"C:\\Steam \u00E4");
    EXPECT_EQ(Get(), std::vector<std::wstring>{L"C:\\Steam \u00E4"});
}

TEST_F(SearchPlaces, AMissingAnEmptyAndAForeignValueAreNone) {
    EXPECT_TRUE(Get().empty());
    Set(REG_SZ, L"");
    EXPECT_TRUE(Get().empty());
    Set(REG_BINARY, L"C:\\Steam");
    EXPECT_TRUE(Get().empty());
}

TEST_F(SearchPlaces, AValueTooLongForTheBufferIsNone) {
    Set(REG_SZ, std::wstring(32'767, L'x'));
    EXPECT_EQ(Get(), std::vector<std::wstring>{std::wstring(32'767, L'x')});
    Set(REG_SZ, std::wstring(32'768, L'x'));
    EXPECT_TRUE(Get().empty());
}

TEST_F(SearchPlaces, AFolderVariableIsTheVariableIfItIsSet) {
    {
        const ScopedEnvironment variable(L"VELORINTH_TEST", L"C:\\Programs");
        EXPECT_EQ(Platform::FolderVariables(L"VELORINTH_TEST"), std::vector<std::wstring>{L"C:\\Programs"});
    }
    const ScopedEnvironment variable(L"VELORINTH_TEST", std::nullopt);
    EXPECT_TRUE(Platform::FolderVariables(L"VELORINTH_TEST").empty());
}

TEST_F(SearchPlaces, DriveRootsGoFromAToZ) {
    const std::vector<std::wstring> roots = Platform::DriveRoots();
    ASSERT_EQ(roots.size(), 26U);
    EXPECT_EQ(roots.front(), L"A:\\");
    EXPECT_EQ(roots[2], L"C:\\");
    EXPECT_EQ(roots.back(), L"Z:\\");
}

TEST_F(SearchPlaces, AnAbsoluteStoredPathReplacesTheBase) {
    EXPECT_EQ(Platform::JoinStoredPath(L"C:\\Steam", L"steamapps"), L"C:\\Steam\\steamapps");
    EXPECT_EQ(Platform::JoinStoredPath(L"C:\\Steam", L"D:\\Library"), L"D:\\Library");
}
