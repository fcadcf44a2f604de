#include "TestFile.h"
#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <limits>
#include <string>

namespace fs = std::filesystem;

namespace {

class File : public testing::Test {
protected:
    TemporaryFolder folder;
    const fs::path path = folder / "file";
};

std::string Read(HANDLE file, DWORD size) {
    std::string text(size, '\0');
    DWORD read = 0;
    EXPECT_TRUE(ReadFile(file, text.data(), size, &read, nullptr));
    text.resize(read);
    return text;
}

DWORD Write(HANDLE file, const std::string& text) {
    DWORD written = 0;
    EXPECT_TRUE(WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr));
    return written;
}

LARGE_INTEGER Distance(LONGLONG value) {
    LARGE_INTEGER distance;
    distance.QuadPart = value;
    return distance;
}

LONGLONG Size(HANDLE file) {
    LARGE_INTEGER size = Distance(-1);
    EXPECT_TRUE(GetFileSizeEx(file, &size));
    return size.QuadPart;
}

}  // namespace

TEST_F(File, WhatIsWrittenIsRead) {
    const TestFile file(path, CREATE_NEW);
    EXPECT_EQ(Write(file, "hello world"), 11U);
    EXPECT_TRUE(FlushFileBuffers(file));
    EXPECT_TRUE(SetFilePointerEx(file, Distance(6), nullptr, FILE_BEGIN));
    EXPECT_EQ(Read(file, 100), "world");
}

TEST_F(File, ReadingAtTheEndGivesTrueAndNothing) {
    WriteBytes(path, "");
    const TestFile file(path, OPEN_EXISTING);
    char byte = 'x';
    DWORD read = 7;
    EXPECT_TRUE(ReadFile(file, &byte, 1, &read, nullptr));
    EXPECT_EQ(read, 0U);
}

TEST_F(File, ReadingNothingIsFine) {
    WriteBytes(path, "x");
    const TestFile file(path, OPEN_EXISTING);
    DWORD read = 7;
    EXPECT_TRUE(ReadFile(file, nullptr, 0, &read, nullptr));
    EXPECT_EQ(read, 0U);
}

TEST_F(File, ThePointerMovesFromStartCurrentAndEnd) {
    WriteBytes(path, "0123456789");
    const TestFile file(path, OPEN_EXISTING);
    LARGE_INTEGER pointer = Distance(-1);
    EXPECT_TRUE(SetFilePointerEx(file, Distance(-3), &pointer, FILE_END));
    EXPECT_EQ(pointer.QuadPart, 7);
    EXPECT_TRUE(SetFilePointerEx(file, Distance(-2), &pointer, FILE_CURRENT));
    EXPECT_EQ(pointer.QuadPart, 5);
    EXPECT_EQ(Read(file, 1), "5");
    EXPECT_FALSE(SetFilePointerEx(file, Distance(-1), &pointer, FILE_BEGIN));
    EXPECT_FALSE(SetFilePointerEx(file, Distance(0), &pointer, 3));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST_F(File, SizesBeyond2GiBAreTold) {
    const TestFile file(path, CREATE_NEW);
    fs::resize_file(path, 5'000'000'000);  // sparse
    EXPECT_EQ(Size(file), 5'000'000'000);
    LARGE_INTEGER pointer = Distance(0);
    EXPECT_TRUE(SetFilePointerEx(file, Distance(4'999'999'999), &pointer, FILE_BEGIN));
    EXPECT_EQ(Read(file, 10), std::string(1, '\0'));
}

TEST_F(File, WithoutReadAccessReadingIsDenied) {
    const TestFile file(path, CREATE_NEW, GENERIC_WRITE);
    char byte;
    DWORD read = 7;
    EXPECT_FALSE(ReadFile(file, &byte, 1, &read, nullptr));
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
    EXPECT_EQ(read, 0U);
}

TEST_F(File, WithoutWriteAccessWritingAndFlushingAreDenied) {
    WriteBytes(path, "x");
    const TestFile file(path, OPEN_EXISTING, GENERIC_READ);
    DWORD written = 7;
    EXPECT_FALSE(WriteFile(file, "y", 1, &written, nullptr));
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
    EXPECT_EQ(written, 0U);
    SetLastError(ERROR_SUCCESS);
    EXPECT_FALSE(FlushFileBuffers(file));
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
}

TEST_F(File, AnInvalidOrForeignHandleIsRefusedByEveryCall) {
    const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    const HANDLE closed = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    CloseHandle(closed);
    for (const HANDLE handle : {event, closed, INVALID_HANDLE_VALUE, HANDLE{}}) {
        char byte = 'x';
        DWORD count = 0;
        LARGE_INTEGER number = Distance(0);
        const auto isRefused = [](BOOL result) {
            const DWORD error = GetLastError();
            SetLastError(ERROR_SUCCESS);
            return !result && error == ERROR_INVALID_HANDLE;
        };
        SetLastError(ERROR_SUCCESS);
        EXPECT_TRUE(isRefused(ReadFile(handle, &byte, 1, &count, nullptr)));
        EXPECT_TRUE(isRefused(WriteFile(handle, &byte, 1, &count, nullptr)));
        EXPECT_TRUE(isRefused(FlushFileBuffers(handle)));
        EXPECT_TRUE(isRefused(GetFileSizeEx(handle, &number)));
        EXPECT_TRUE(isRefused(SetFilePointerEx(handle, number, nullptr, FILE_BEGIN)));
    }
    CloseHandle(event);
}

TEST_F(File, WaitingForAFileFails) {
    const TestFile file(path, CREATE_NEW);
    EXPECT_EQ(WaitForSingleObject(file, INFINITE), WAIT_FAILED);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

TEST_F(File, AWriteThatTheSystemCutsShortFailsAndTellsWhatWasWritten) {
    const pid_t child = fork();
    if (child == 0) {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{4, 4};
        setrlimit(RLIMIT_FSIZE, &limit);
        const TestFile file(path, CREATE_NEW);
        DWORD written = 0;
        const BOOL result = WriteFile(file, "0123456789", 10, &written, nullptr);
        _exit(!result && written == 4 && GetLastError() != ERROR_SUCCESS ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(ReadBytes(path), "0123");
}
