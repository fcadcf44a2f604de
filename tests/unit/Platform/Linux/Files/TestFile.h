// Handles of files, for the tests of this folder.
#pragma once

#include "Platform/Interface/Paths.h"

#include <windows.h>

#include <filesystem>

/// A file opened by CreateFileW, closed at the end of the test. The last error of the opening is kept.
class TestFile {
public:
    TestFile(const std::filesystem::path& path, DWORD disposition, DWORD access = GENERIC_READ | GENERIC_WRITE,
             DWORD shareMode = FILE_SHARE_READ | FILE_SHARE_WRITE) {
        SetLastError(ERROR_GEN_FAILURE);
        handle_ = CreateFileW(Platform::TextFromPath(path).c_str(), access, shareMode, nullptr, disposition,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
        error_ = GetLastError();
    }
    ~TestFile() { Close(); }
    TestFile(const TestFile&) = delete;
    TestFile& operator=(const TestFile&) = delete;

    void Close() {
        if (IsOpen()) CloseHandle(handle_);
        handle_ = INVALID_HANDLE_VALUE;
    }
    bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
    operator HANDLE() const { return handle_; }
    DWORD Error() const { return error_; }

private:
    HANDLE handle_;
    DWORD error_;
};
