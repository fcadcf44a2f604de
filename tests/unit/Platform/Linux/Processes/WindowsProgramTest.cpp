#include "Platform/Linux/Processes/WindowsProgram.h"

#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace fs = std::filesystem;
using Platform::JudgeWindowsProgram;

namespace {

class WindowsProgram : public testing::Test {
protected:
    DWORD Judge(const std::string& bytes) {
        WriteBytes(file_, bytes);
        return JudgeWindowsProgram(file_);
    }

    TemporaryFolder temporary_;
    fs::path file_ = temporary_ / "program.exe";
};

TEST_F(WindowsProgram, OneWithTheRightHeadersCanBeTried) {
    EXPECT_EQ(Judge(PeBytes()), ERROR_SUCCESS);
}

TEST_F(WindowsProgram, AProgramOfAnyMachineCanBeTried) {
    EXPECT_EQ(Judge(PeBytes({.machine = 0x8664, .optionalMagic = 0x020B})), ERROR_SUCCESS);
}

TEST_F(WindowsProgram, WrongMarksAre193) {
    EXPECT_EQ(Judge(PeBytes({.dosMagic = 0x4D5A})), ERROR_BAD_EXE_FORMAT);
    EXPECT_EQ(Judge(PeBytes({.signature = 0x00014550})), ERROR_BAD_EXE_FORMAT);
}

TEST_F(WindowsProgram, ATruncatedFileIs193) {
    EXPECT_EQ(Judge(""), ERROR_BAD_EXE_FORMAT);
    EXPECT_EQ(Judge(PeBytes().substr(0, 63)), ERROR_BAD_EXE_FORMAT);
    EXPECT_EQ(Judge(PeBytes().substr(0, 67)), ERROR_BAD_EXE_FORMAT);
}

TEST_F(WindowsProgram, AHeaderOffsetBeyondTheFileIs193) {
    std::string bytes = PeBytes();
    for (int i = 60; i < 64; ++i) bytes[static_cast<std::size_t>(i)] = '\xFF';
    EXPECT_EQ(Judge(bytes), ERROR_BAD_EXE_FORMAT);
}

TEST_F(WindowsProgram, WhatIsMissingOrNoRegularFileIsToldAtOnce) {
    EXPECT_EQ(JudgeWindowsProgram(file_), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(JudgeWindowsProgram(temporary_.Path()), ERROR_ACCESS_DENIED);
    EXPECT_EQ(JudgeWindowsProgram("/dev/zero"), ERROR_ACCESS_DENIED);
    ASSERT_EQ(mkfifo(file_.c_str(), 0600), 0);
    EXPECT_EQ(JudgeWindowsProgram(file_), ERROR_ACCESS_DENIED);
}

}  // namespace
