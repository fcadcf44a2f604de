// Several writers, and writers that die.
#include "TestProfile.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <random>
#include <thread>
#include <vector>

class ProfileWriters : public ProfileTest {
protected:
    /// Runs `body` in a process of its own, which ends with 0 if it returned true.
    template <class Body>
    static pid_t Start(Body body) {
        const pid_t process = fork();
        if (process == 0) _exit(body() ? 0 : 1);
        return process;
    }

    static int End(pid_t process) {
        int status = -1;
        waitpid(process, &status, 0);
        return status;
    }
};

TEST_F(ProfileWriters, TwoProcessesThatWriteDifferentKeysLoseNothing) {
    constexpr int rounds = 200;
    const auto writer = [this](const wchar_t* name) {
        return [this, name] {
            for (int i = 0; i < rounds; ++i) {
                if (!Write(name + std::to_wstring(i), std::to_wstring(i))) return false;
            }
            return true;
        };
    };
    const pid_t first = Start(writer(L"First"));
    const pid_t second = Start(writer(L"Second"));
    EXPECT_EQ(End(first), 0);
    EXPECT_EQ(End(second), 0);
    for (int i = 0; i < rounds; ++i) {
        EXPECT_EQ(Read(L"First" + std::to_wstring(i)), std::to_wstring(i));
        EXPECT_EQ(Read(L"Second" + std::to_wstring(i)), std::to_wstring(i));
    }
    EXPECT_EQ(Entries(), "launcher.ini ");
}

TEST_F(ProfileWriters, ThreadsThatWriteDifferentKeysLoseNothing) {
    constexpr int rounds = 50;
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([this, thread] {
            for (int i = 0; i < rounds; ++i) {
                Write(L"Key" + std::to_wstring(thread), std::to_wstring(i));
                static_cast<void>(Read(L"Key0"));
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    for (int thread = 0; thread < 4; ++thread) {
        EXPECT_EQ(Read(L"Key" + std::to_wstring(thread)), std::to_wstring(rounds - 1));
    }
}

TEST_F(ProfileWriters, AWriterThatIsKilledLeavesTheOldOrTheNewFileAndTheNextOneGoesOn) {
    // Two values of a length that takes several writes, so that a torn file would show.
    const std::wstring values[] = {std::wstring(200'000, L'a'), std::wstring(200'000, L'b')};
    ASSERT_TRUE(Write(L"Folder", values[0]));
    ASSERT_TRUE(Write(L"Mode", L"7"));
    const std::string contents[] = {ReadBytes(path), [&] {
                                        EXPECT_TRUE(Write(L"Folder", values[1]));
                                        return ReadBytes(path);
                                    }()};
    std::mt19937 random(1);
    std::uniform_int_distribution<int> microseconds(0, 4000);
    for (int round = 0; round < 60; ++round) {
        const pid_t writer = Start([&] {
            for (int i = 0;; ++i) Write(L"Folder", values[i % 2]);
            return false;
        });
        std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
        kill(writer, SIGKILL);
        End(writer);
        const std::string content = ReadBytes(path);
        ASSERT_TRUE(content == contents[0] || content == contents[1]) << content.size();
    }
    EXPECT_TRUE(Write(L"Folder", L"last"));
    EXPECT_EQ(ReadBytes(path), "[Launcher]\nFolder=last\nMode=7\n");
    EXPECT_EQ(Entries(), "launcher.ini ");
}

TEST_F(ProfileWriters, AReaderNeverSeesAHalfWrittenFile) {
    const std::wstring values[] = {std::wstring(30'000, L'a'), std::wstring(30'000, L'b')};
    ASSERT_TRUE(Write(L"Folder", values[0]));
    const pid_t writer = Start([&] {
        for (int i = 0;; ++i) Write(L"Folder", values[i % 2]);
        return false;
    });
    for (int i = 0; i < 300; ++i) {
        const std::wstring value = Read(L"Folder");
        EXPECT_TRUE(value == values[0] || value == values[1]) << value.size();
    }
    kill(writer, SIGKILL);
    End(writer);
}

TEST_F(ProfileWriters, AFolderThatSomebodyKeepsLockedFailsTheWriteInsteadOfHangingIt) {
    const int holder = open(folder.Path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ASSERT_EQ(flock(holder, LOCK_EX), 0);
    EXPECT_FALSE(Write(L"Mode", L"7"));
    EXPECT_EQ(GetLastError(), ERROR_SHARING_VIOLATION);
    close(holder);
    EXPECT_TRUE(Write(L"Mode", L"7"));
}
