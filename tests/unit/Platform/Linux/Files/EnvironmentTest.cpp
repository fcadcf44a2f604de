#include "Platform/Text/Unicode.h"
#include "tests/support/ScopedEnvironment.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace {

std::optional<std::wstring> Get(const wchar_t* name) {
    std::wstring value(32768, L'\0');
    SetLastError(ERROR_GEN_FAILURE);
    const DWORD length = GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size()));
    if (length == 0 && GetLastError() == ERROR_ENVVAR_NOT_FOUND) return std::nullopt;
    value.resize(length);
    return value;
}

}  // namespace

TEST(Environment, AVariableIsSetReadAndRemoved) {
    const ScopedEnvironment restore(L"VELORINTH_TEST", std::nullopt);
    EXPECT_EQ(Get(L"VELORINTH_TEST"), std::nullopt);
    EXPECT_TRUE(SetEnvironmentVariableW(L"VELORINTH_TEST", L"w\u00E4rt"));
    EXPECT_EQ(Get(L"VELORINTH_TEST"), L"w\u00E4rt");
    EXPECT_STREQ(std::getenv("VELORINTH_TEST"), "w\xC3\xA4rt");
    EXPECT_TRUE(SetEnvironmentVariableW(L"VELORINTH_TEST", nullptr));
    EXPECT_EQ(Get(L"VELORINTH_TEST"), std::nullopt);
}

TEST(Environment, AnEmptyVariableIsNotAMissingOne) {
    const ScopedEnvironment variable(L"VELORINTH_TEST", L"");
    EXPECT_EQ(Get(L"VELORINTH_TEST"), L"");
}

TEST(Environment, NonUtf8ValuesSurvive) {
    const ScopedEnvironment restore(L"VELORINTH_TEST", std::nullopt);
    setenv("VELORINTH_TEST", "/a\xFF", 1);
    EXPECT_EQ(Platform::NativeFromWide(Get(L"VELORINTH_TEST").value_or(L"")), "/a\xFF");
}

TEST(Environment, ATooSmallBufferGivesTheSizeNeeded) {
    const ScopedEnvironment variable(L"VELORINTH_TEST", L"12345");
    wchar_t buffer[6] = L"keep";
    EXPECT_EQ(GetEnvironmentVariableW(L"VELORINTH_TEST", buffer, 5), 6U);
    EXPECT_STREQ(buffer, L"keep");
    EXPECT_EQ(GetEnvironmentVariableW(L"VELORINTH_TEST", nullptr, 0), 6U);
    EXPECT_EQ(GetEnvironmentVariableW(L"VELORINTH_TEST", buffer, 6), 5U);
    EXPECT_STREQ(buffer, L"12345");
}

TEST(Environment, NamesThatCannotBeAreRefused) {
    for (const wchar_t* const name : {L"", L"a=b", static_cast<const wchar_t*>(nullptr)}) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_FALSE(SetEnvironmentVariableW(name, L"x"));
        EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    }
    EXPECT_EQ(Get(L""), std::nullopt);
    EXPECT_EQ(Get(nullptr), std::nullopt);
}

TEST(LocalAppData, AsSetItWins) {
    const ScopedEnvironment local(L"LOCALAPPDATA", L"/set");
    const ScopedEnvironment data(L"XDG_DATA_HOME", L"/data");
    EXPECT_EQ(Get(L"LOCALAPPDATA"), L"/set");
}

TEST(LocalAppData, UnsetOrEmptyItIsTheUsersDataFolder) {
    const ScopedEnvironment data(L"XDG_DATA_HOME", L"/data");
    const ScopedEnvironment home(L"HOME", L"/home/player");
    {
        const ScopedEnvironment local(L"LOCALAPPDATA", std::nullopt);
        EXPECT_EQ(Get(L"LOCALAPPDATA"), L"/data");
    }
    const ScopedEnvironment local(L"LOCALAPPDATA", L"");
    EXPECT_EQ(Get(L"LOCALAPPDATA"), L"/data");
}

TEST(LocalAppData, ARelativeDataFolderCountsAsUnset) {
    const ScopedEnvironment local(L"LOCALAPPDATA", std::nullopt);
    const ScopedEnvironment data(L"XDG_DATA_HOME", L"data");
    const ScopedEnvironment home(L"HOME", L"/home/player");
    EXPECT_EQ(Get(L"LOCALAPPDATA"), L"/home/player/.local/share");
}

TEST(LocalAppData, WithoutADataFolderItLiesBelowHome) {
    const ScopedEnvironment local(L"LOCALAPPDATA", std::nullopt);
    const ScopedEnvironment data(L"XDG_DATA_HOME", std::nullopt);
    {
        const ScopedEnvironment home(L"HOME", L"/home/player");
        EXPECT_EQ(Get(L"LOCALAPPDATA"), L"/home/player/.local/share");
    }
    const ScopedEnvironment home(L"HOME", L"/");
    EXPECT_EQ(Get(L"LOCALAPPDATA"), L"/.local/share");
}

TEST(LocalAppData, WithoutAHomeItIsMissing) {
    const ScopedEnvironment local(L"LOCALAPPDATA", std::nullopt);
    const ScopedEnvironment data(L"XDG_DATA_HOME", std::nullopt);
    {
        const ScopedEnvironment home(L"HOME", std::nullopt);
        EXPECT_EQ(Get(L"LOCALAPPDATA"), std::nullopt);
    }
    const ScopedEnvironment home(L"HOME", L"");
    EXPECT_EQ(Get(L"LOCALAPPDATA"), std::nullopt);
}

TEST(Environment, ThreadsReadAndWriteAtOnce) {
    const ScopedEnvironment variable(L"VELORINTH_TEST", L"0");
    std::atomic<bool> torn{false};
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&, thread] {
            const std::wstring own = std::wstring(static_cast<std::size_t>(1000 * (thread + 1)), L'a' + thread);
            for (int i = 0; i < 500; ++i) {
                SetEnvironmentVariableW(L"VELORINTH_TEST", own.c_str());
                const std::optional<std::wstring> value = Get(L"VELORINTH_TEST");
                if (!value || value->find_first_not_of(value->front()) != std::wstring::npos) torn = true;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_FALSE(torn);
}
