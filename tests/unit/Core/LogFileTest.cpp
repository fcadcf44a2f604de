// The log file, which lies beside the running program. Here the program lies where the test says.
#include "Core/Log.h"

#include "tests/fakes/LogCapture.h"
#include "tests/support/TemporaryFolder.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace {

std::wstring programPath;

}  // namespace

DWORD GetModuleFileNameW(HMODULE, LPWSTR buffer, DWORD size) noexcept {
    const std::size_t length = std::min<std::size_t>(programPath.size(), size);
    std::copy_n(programPath.begin(), length, buffer);
    if (length < size) buffer[length] = L'\0';
    return static_cast<DWORD>(length);
}

namespace {

class LogFile : public ::testing::Test {
protected:
    LogFile() { programPath = (folder_ / "program").wstring(); }
    ~LogFile() override {
        Tamborel::CloseLog();
        Tamborel::EnableClaudeMode(false);
    }

    std::filesystem::path Path() const { return folder_ / "tamborel_debug.log"; }
    std::string Content() const {
        std::stringstream text;
        text << std::ifstream(Path()).rdbuf();
        return text.str();
    }

    TemporaryFolder folder_;
    Fakes::LogCapture capture_;
};

TEST_F(LogFile, ClaudeModeOpensItBesideTheProgramAndSaysSoInBothPlaces) {
    Tamborel::EnableClaudeMode(true);
    EXPECT_TRUE(Tamborel::IsClaudeMode());
    EXPECT_EQ(Content(), "[Tamborel] Claude mode active. Log open.\n");
    EXPECT_EQ(capture_.Text(), "[Tamborel] Claude mode active. Log open.\n");
}

TEST_F(LogFile, EachLineIsThereAtOnce) {
    Tamborel::EnableClaudeMode(true);
    Tamborel::Log("one\n");
    EXPECT_EQ(Content(), "[Tamborel] Claude mode active. Log open.\none\n");
    Tamborel::Logf("%s\n", "two");
    EXPECT_EQ(Content(), "[Tamborel] Claude mode active. Log open.\none\ntwo\n");
}

TEST_F(LogFile, OpeningEmptiesAnOldLog) {
    std::ofstream(Path()) << "an old log\n";
    Tamborel::EnableClaudeMode(true);
    EXPECT_EQ(Content(), "[Tamborel] Claude mode active. Log open.\n");
}

TEST_F(LogFile, TurningTheModeOffLeavesItOpenAndStillWrittenTo) {
    Tamborel::EnableClaudeMode(true);
    Tamborel::EnableClaudeMode(false);
    EXPECT_FALSE(Tamborel::IsClaudeMode());
    Tamborel::Log("still here\n");
    EXPECT_EQ(Content(), "[Tamborel] Claude mode active. Log open.\nstill here\n");
}

TEST_F(LogFile, CloseLogWritesALastLineToBothPlacesAndEndsIt) {
    Tamborel::EnableClaudeMode(true);
    capture_.Take();
    Tamborel::CloseLog();
    EXPECT_EQ(capture_.Take(), "[Tamborel] Log closing.\n");
    Tamborel::Log("to the debug stream alone\n");
    EXPECT_EQ(Content(), "[Tamborel] Claude mode active. Log open.\n[Tamborel] Log closing.\n");
    EXPECT_EQ(capture_.Take(), "to the debug stream alone\n");
    Tamborel::CloseLog();
    EXPECT_EQ(capture_.Take(), "");
}

TEST_F(LogFile, WhenItCannotBeOpenedTheDebugStreamAloneCarriesTheLog) {
    programPath = (folder_ / "missing folder" / "program").wstring();
    Tamborel::EnableClaudeMode(true);
    EXPECT_TRUE(Tamborel::IsClaudeMode());
    Tamborel::Log("one\n");
    EXPECT_EQ(capture_.Take(), "[Tamborel] Claude mode active. Log open.\none\n");
    Tamborel::CloseLog();
    EXPECT_EQ(capture_.Take(), "");
}

TEST_F(LogFile, AProgramPathWithoutAFolderPutsItIntoTheCurrentFolder) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder_.Path());
    programPath = L"program";
    Tamborel::EnableClaudeMode(true);
    EXPECT_EQ(Content(), "[Tamborel] Claude mode active. Log open.\n");
    std::filesystem::current_path(before);
}

TEST_F(LogFile, WithoutTheModeNoFileComesIntoBeing) {
    Tamborel::EnableClaudeMode(false);
    Tamborel::Log("one\n");
    EXPECT_FALSE(std::filesystem::exists(Path()));
}

}  // namespace
