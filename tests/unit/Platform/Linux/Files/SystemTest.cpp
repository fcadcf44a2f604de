#include "Platform/Interface/Paths.h"
#include "tests/support/TemporaryFolder.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace fs = std::filesystem;

TEST(TickCount, RunsWithTheClockThatCountsFromTheSystemsStart) {
    double upTime = 0;
    std::ifstream("/proc/uptime") >> upTime;
    EXPECT_NEAR(static_cast<double>(GetTickCount64()), upTime * 1000, 5000);
    const ULONGLONG before = GetTickCount64();
    Sleep(20);
    EXPECT_GE(GetTickCount64() - before, 19U);
}

TEST(ModuleFileName, IsThePathOfTheRunningProgram) {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    EXPECT_EQ(Platform::PathFromText(path), fs::canonical("/proc/self/exe"));
}

TEST(ModuleFileName, ATooSmallBufferIsFilledAndItsSizeGivenBack) {
    wchar_t buffer[4] = {L'x', L'x', L'x', L'x'};
    EXPECT_EQ(GetModuleFileNameW(nullptr, buffer, 4), 4U);
    EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(std::wstring(buffer), Platform::TextFromPath(fs::canonical("/proc/self/exe")).substr(0, 3));
}

TEST(ModuleFileName, NoBufferFails) {
    wchar_t buffer[1];
    EXPECT_EQ(GetModuleFileNameW(nullptr, buffer, 0), 0U);
    EXPECT_EQ(GetModuleFileNameW(nullptr, nullptr, 100), 0U);
}
