#include "Platform/Linux/Base/DebugOutput.h"

#include "Platform/Linux/Base/FileDescriptor.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <string>

namespace {

/// Standard error as a pipe, for as long as this lives.
class ErrorPipe {
public:
    ErrorPipe() : before_(dup(STDERR_FILENO)) {
        int ends[2] = {-1, -1};
        EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0);
        reader_.Reset(ends[0]);
        dup2(ends[1], STDERR_FILENO);
        close(ends[1]);
    }
    ~ErrorPipe() { dup2(before_.Get(), STDERR_FILENO); }
    ErrorPipe(const ErrorPipe&) = delete;
    ErrorPipe& operator=(const ErrorPipe&) = delete;

    std::string Read() {
        char text[256];
        const ssize_t count = read(reader_.Get(), text, sizeof text);
        return count > 0 ? std::string(text, static_cast<std::size_t>(count)) : std::string();
    }
    void CloseReader() { reader_.Reset(); }

private:
    Platform::FileDescriptor before_;
    Platform::FileDescriptor reader_;
};

TEST(DebugOutput, TextGoesToStandardErrorAsItIs) {
    ErrorPipe pipe;
    OutputDebugStringA("100% of a line\n");
    EXPECT_EQ(pipe.Read(), "100% of a line\n");
}

TEST(DebugOutput, AStreamThatNobodyReadsEndsNothing) {
    ErrorPipe pipe;
    pipe.CloseReader();
    errno = ENOENT;
    OutputDebugStringA("nobody reads this\n");
    EXPECT_EQ(errno, ENOENT);
    // The signal of that write must not come later either.
    sigset_t pending{};
    sigpending(&pending);
    EXPECT_EQ(sigismember(&pending, SIGPIPE), 0);
}

TEST(DebugOutput, NoTextIsNothing) {
    OutputDebugStringA(nullptr);
}

std::string kept;

TEST(DebugOutput, CanBeSentElsewhereAndBack) {
    ErrorPipe pipe;
    Platform::SetDebugOutput([](const char* text) { kept += text; });
    OutputDebugStringA("elsewhere");
    Platform::SetDebugOutput(nullptr);
    OutputDebugStringA("back");
    EXPECT_EQ(kept, "elsewhere");
    EXPECT_EQ(pipe.Read(), "back");
}

}  // namespace
