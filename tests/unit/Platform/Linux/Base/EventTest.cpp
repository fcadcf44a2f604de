#include "Platform/Linux/Base/Handle.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace {

/// An event that is closed at the end of the test.
class Event {
public:
    explicit Event(BOOL manualReset, BOOL initialState = FALSE)
        : handle_(CreateEventW(nullptr, manualReset, initialState, nullptr)) {}
    ~Event() { CloseHandle(handle_); }
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;
    operator HANDLE() const { return handle_; }

private:
    HANDLE handle_;
};

constexpr BOOL manualReset = TRUE;
constexpr BOOL autoReset = FALSE;

bool IsSet(HANDLE event) {
    return WaitForSingleObject(event, 0) == WAIT_OBJECT_0;
}

}  // namespace

TEST(Event, InitialStateIsAsAsked) {
    EXPECT_FALSE(IsSet(Event(manualReset, FALSE)));
    EXPECT_TRUE(IsSet(Event(manualReset, TRUE)));
    EXPECT_FALSE(IsSet(Event(autoReset, FALSE)));
    EXPECT_TRUE(IsSet(Event(autoReset, TRUE)));
}

TEST(Event, AManualResetEventStaysSetUntilItIsReset) {
    const Event event(manualReset);
    EXPECT_TRUE(SetEvent(event));
    EXPECT_TRUE(IsSet(event));
    EXPECT_TRUE(IsSet(event));
    EXPECT_TRUE(ResetEvent(event));
    EXPECT_FALSE(IsSet(event));
}

TEST(Event, AnAutoResetEventIsTakenByOneWait) {
    const Event event(autoReset);
    EXPECT_TRUE(SetEvent(event));
    EXPECT_TRUE(IsSet(event));
    EXPECT_FALSE(IsSet(event));
}

TEST(Event, SettingTwiceIsSettingOnce) {
    const Event event(autoReset);
    SetEvent(event);
    SetEvent(event);
    EXPECT_TRUE(IsSet(event));
    EXPECT_FALSE(IsSet(event));
}

TEST(Event, ResettingAnEventThatIsNotSetDoesNothing) {
    const Event event(manualReset);
    EXPECT_TRUE(ResetEvent(event));
    EXPECT_FALSE(IsSet(event));
}

TEST(Event, ANamedEventIsRefused) {
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(CreateEventW(nullptr, TRUE, FALSE, L"name"), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST(Event, ItsDescriptorStaysOutOfStartedProcesses) {
    const Event event(manualReset);
    const auto object = Platform::FindHandleObject(event);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(fcntl(object->WaitDescriptor(), F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
    EXPECT_EQ(object->PassedDescriptor(), -1);
}

TEST(Event, ClosingTheHandleUnderAWaitLeavesTheWaitAlone) {
    const HANDLE event = CreateEventW(nullptr, autoReset, FALSE, nullptr);
    const Event stop(manualReset);
    const Event waits(manualReset);
    DWORD result = WAIT_FAILED;
    std::thread waiter([&] {
        const HANDLE both[] = {event, stop};
        SetEvent(waits);
        result = WaitForMultipleObjects(2, both, FALSE, INFINITE);
    });
    ASSERT_EQ(WaitForSingleObject(waits, INFINITE), WAIT_OBJECT_0);
    // The waiter may or may not have looked the handle up by now; both ends are fine, a crash or a hang isn't.
    CloseHandle(event);
    SetEvent(stop);
    waiter.join();
    EXPECT_TRUE(result == WAIT_OBJECT_0 + 1 || result == WAIT_FAILED) << result;
}

TEST(Event, EachSetOfAnAutoResetEventReleasesExactlyOneOfTwoWaiters) {
    const Event event(autoReset);
    const Event taken(autoReset);
    const Event stop(manualReset);
    std::atomic<int> count{0};
    std::vector<std::thread> waiters;
    waiters.reserve(2);
    for (int i = 0; i < 2; ++i) {
        waiters.emplace_back([&] {
            const HANDLE either[] = {stop, event};
            while (WaitForMultipleObjects(2, either, FALSE, INFINITE) == WAIT_OBJECT_0 + 1) {
                ++count;
                SetEvent(taken);
            }
        });
    }
    constexpr int rounds = 3000;
    for (int i = 0; i < rounds; ++i) {
        SetEvent(event);
        ASSERT_EQ(WaitForSingleObject(taken, INFINITE), WAIT_OBJECT_0);
    }
    SetEvent(stop);
    for (std::thread& waiter : waiters) waiter.join();
    EXPECT_EQ(count, rounds);
    EXPECT_FALSE(IsSet(event));
}

TEST(Event, AnAutoResetEventGuardsPlainDataBetweenThreads) {
    const Event turn(autoReset, TRUE);
    int plain = 0;  // guarded by turn
    constexpr int rounds = 1000;
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < rounds; ++round) {
                if (WaitForSingleObject(turn, INFINITE) != WAIT_OBJECT_0) return;
                ++plain;
                SetEvent(turn);
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(plain, 4 * rounds);
}

TEST(Event, WhatWasWrittenBeforeTheSetIsSeenAfterTheWait) {
    for (int round = 0; round < 500; ++round) {
        const Event ready(manualReset);
        int plain = 0;
        std::thread writer([&] {
            plain = round + 1;
            SetEvent(ready);
        });
        ASSERT_EQ(WaitForSingleObject(ready, INFINITE), WAIT_OBJECT_0);
        ASSERT_EQ(plain, round + 1);
        writer.join();
    }
}
