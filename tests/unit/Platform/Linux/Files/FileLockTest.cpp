// A share mode of 0: one holder at a time, for as long as any copy of the handle lives.
#include "Platform/Linux/Base/FileDescriptor.h"
#include "Platform/Linux/Files/FileObject.h"
#include "TestFile.h"
#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <thread>
#include <vector>

namespace {

constexpr DWORD readWrite = GENERIC_READ | GENERIC_WRITE;
constexpr DWORD exclusive = 0;

class FileLock : public testing::Test {
protected:
    TemporaryFolder folder;
    const std::filesystem::path path = folder / "Quake2-1.lock";
};

/// A process that holds copies of all our descriptors, as one that inherited a handle does, until it is told to end.
class Holder {
public:
    Holder() {
        int ends[2] = {-1, -1};
        if (pipe(ends) != 0) throw std::runtime_error("pipe");
        process_ = fork();
        if (process_ == 0) {
            close(ends[1]);
            char byte;
            while (read(ends[0], &byte, 1) > 0) continue;
            _exit(0);
        }
        close(ends[0]);
        end_.Reset(ends[1]);
    }
    ~Holder() { End(); }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;

    void End() {
        end_.Reset();
        Reap();
    }
    void Kill() {
        kill(process_, SIGKILL);
        Reap();
    }

private:
    void Reap() {
        if (process_ > 0) waitpid(process_, nullptr, 0);
        process_ = -1;
    }

    pid_t process_ = -1;
    Platform::FileDescriptor end_;
};

}  // namespace

TEST_F(FileLock, ASecondHolderIsRefusedAtOnce) {
    const TestFile first(path, OPEN_ALWAYS, readWrite, exclusive);
    ASSERT_TRUE(first.IsOpen());
    const TestFile second(path, OPEN_ALWAYS, readWrite, exclusive);
    EXPECT_FALSE(second.IsOpen());
    EXPECT_EQ(second.Error(), ERROR_SHARING_VIOLATION);
}

TEST_F(FileLock, ClosingTheHandleFreesIt) {
    TestFile first(path, OPEN_ALWAYS, readWrite, exclusive);
    first.Close();
    EXPECT_TRUE(TestFile(path, OPEN_ALWAYS, readWrite, exclusive).IsOpen());
}

TEST_F(FileLock, ACopyInAnotherProcessKeepsItAfterOurHandleIsClosed) {
    TestFile first(path, OPEN_ALWAYS, readWrite, exclusive);
    Holder holder;
    first.Close();
    EXPECT_EQ(TestFile(path, OPEN_ALWAYS, readWrite, exclusive).Error(), ERROR_SHARING_VIOLATION);
    holder.End();
    EXPECT_TRUE(TestFile(path, OPEN_ALWAYS, readWrite, exclusive).IsOpen());
}

TEST_F(FileLock, AHolderThatIsKilledFreesIt) {
    TestFile first(path, OPEN_ALWAYS, readWrite, exclusive);
    Holder holder;
    first.Close();
    EXPECT_FALSE(TestFile(path, OPEN_ALWAYS, readWrite, exclusive).IsOpen());
    holder.Kill();
    EXPECT_TRUE(TestFile(path, OPEN_ALWAYS, readWrite, exclusive).IsOpen());
}

TEST_F(FileLock, ARefusedOpeningThatWouldEmptyTheFileLeavesItsContent) {
    WriteBytes(path, "content");
    const TestFile first(path, OPEN_EXISTING, readWrite, exclusive);
    EXPECT_EQ(TestFile(path, CREATE_ALWAYS, readWrite, exclusive).Error(), ERROR_SHARING_VIOLATION);
    EXPECT_EQ(TestFile(path, TRUNCATE_EXISTING, readWrite, exclusive).Error(), ERROR_SHARING_VIOLATION);
    EXPECT_EQ(ReadBytes(path), "content");
}

TEST_F(FileLock, OtherShareModesTakeAndTestNoLock) {
    const TestFile shared(path, OPEN_ALWAYS);
    const TestFile locked(path, OPEN_ALWAYS, readWrite, exclusive);
    EXPECT_TRUE(locked.IsOpen());
    EXPECT_TRUE(TestFile(path, OPEN_EXISTING, GENERIC_READ).IsOpen());
}

TEST_F(FileLock, AFileLeftByAnEarlierHolderMeansNothing) {
    WriteBytes(path, "");
    const TestFile lock(path, OPEN_ALWAYS, readWrite, exclusive);
    EXPECT_TRUE(lock.IsOpen());
    EXPECT_EQ(lock.Error(), ERROR_ALREADY_EXISTS);
}

TEST_F(FileLock, OfManyThreadsThatTakeItAtOnceExactlyOneDoes) {
    for (int round = 0; round < 50; ++round) {
        std::atomic<int> holders{0};
        std::atomic<int> refused{0};
        std::array<HANDLE, 8> handles{};
        std::vector<std::thread> threads;
        threads.reserve(handles.size());
        for (HANDLE& handle : handles) {
            threads.emplace_back([&] {
                handle = CreateFileW(Platform::TextFromPath(path).c_str(), readWrite, exclusive, nullptr, OPEN_ALWAYS,
                                     FILE_ATTRIBUTE_NORMAL, nullptr);
                if (handle != INVALID_HANDLE_VALUE)
                    ++holders;
                else if (GetLastError() == ERROR_SHARING_VIOLATION)
                    ++refused;
            });
        }
        for (std::thread& thread : threads) thread.join();
        EXPECT_EQ(holders, 1);
        EXPECT_EQ(refused, 7);
        for (const HANDLE handle : handles) CloseHandle(handle);
    }
}
