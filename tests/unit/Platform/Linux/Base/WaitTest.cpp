#include "Platform/Linux/Base/FileDescriptor.h"
#include "Platform/Linux/Base/Handle.h"

#include <gtest/gtest.h>
#include <pthread.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <time.h>

#include <array>
#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

/// Events 0 to N - 1, closed at the end of the test.
template <std::size_t N>
class Events {
public:
    explicit Events(BOOL manualReset) {
        for (HANDLE& each : handles_) each = CreateEventW(nullptr, manualReset, FALSE, nullptr);
    }
    ~Events() {
        for (const HANDLE each : handles_) CloseHandle(each);
    }
    Events(const Events&) = delete;
    Events& operator=(const Events&) = delete;

    HANDLE operator[](std::size_t index) const { return handles_[index]; }
    const HANDLE* Data() const { return handles_.data(); }

private:
    std::array<HANDLE, N> handles_{};
};

constexpr BOOL manualReset = TRUE;
constexpr BOOL autoReset = FALSE;
constexpr BOOL all = TRUE;
constexpr BOOL any = FALSE;

bool IsSet(HANDLE event) {
    return WaitForSingleObject(event, 0) == WAIT_OBJECT_0;
}

std::chrono::nanoseconds ThreadTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

/// An object that resets itself, and takes its time to do so.
class SlowReset : public Platform::HandleObject {
public:
    int WaitDescriptor() const noexcept override { return counter_.Get(); }
    void OnWaited() noexcept override {
        Sleep(2);
        eventfd_t value = 0;
        eventfd_read(counter_.Get(), &value);
    }
    void Set() const { eventfd_write(counter_.Get(), 1); }

private:
    const Platform::FileDescriptor counter_{eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
};

/// Interrupts a thread with signals for as long as it lives.
class Interruptions {
public:
    explicit Interruptions(pthread_t target)
        : thread_([this, target] {
              while (!stop_) {
                  pthread_kill(target, SIGUSR1);
                  std::this_thread::sleep_for(milliseconds(1));
              }
          }) {}
    ~Interruptions() {
        stop_ = true;
        thread_.join();
    }
    Interruptions(const Interruptions&) = delete;
    Interruptions& operator=(const Interruptions&) = delete;

    /// Makes the signal interrupt system calls rather than end the program.
    static void Prepare() {
        struct sigaction action {};
        action.sa_handler = [](int) {};
        sigaction(SIGUSR1, &action, nullptr);
    }

private:
    std::atomic<bool> stop_{false};
    std::thread thread_;
};

}  // namespace

TEST(Wait, GivesUpAfterTheTimeAndNotBefore) {
    const Events<1> event(autoReset);
    const auto start = Clock::now();
    EXPECT_EQ(WaitForSingleObject(event[0], 50), WAIT_TIMEOUT);
    EXPECT_GE(Clock::now() - start, milliseconds(50));
}

TEST(Wait, SignalHandlersDoNotShortenIt) {
    Interruptions::Prepare();
    const Events<1> event(autoReset);
    const Interruptions interruptions(pthread_self());
    const auto start = Clock::now();
    EXPECT_EQ(WaitForSingleObject(event[0], 100), WAIT_TIMEOUT);
    EXPECT_GE(Clock::now() - start, milliseconds(100));
}

TEST(Wait, SignalHandlersDoNotEndAWaitWithoutTimeLimit) {
    Interruptions::Prepare();
    const Events<2> events(manualReset);
    std::atomic<DWORD> result{WAIT_FAILED};
    std::thread waiter([&] {
        SetEvent(events[1]);
        result = WaitForSingleObject(events[0], INFINITE);
    });
    ASSERT_EQ(WaitForSingleObject(events[1], INFINITE), WAIT_OBJECT_0);
    {
        const Interruptions interruptions(waiter.native_handle());
        Sleep(30);
        SetEvent(events[0]);
        waiter.join();
    }
    EXPECT_EQ(result, WAIT_OBJECT_0);
}

TEST(Wait, ForAnyTakesTheLowestIndexAndOnlyThat) {
    const Events<3> events(autoReset);
    SetEvent(events[2]);
    SetEvent(events[1]);
    EXPECT_EQ(WaitForMultipleObjects(3, events.Data(), any, 0), WAIT_OBJECT_0 + 1);
    EXPECT_EQ(WaitForMultipleObjects(3, events.Data(), any, 0), WAIT_OBJECT_0 + 2);
    EXPECT_EQ(WaitForMultipleObjects(3, events.Data(), any, 0), WAIT_TIMEOUT);
}

TEST(Wait, ForAllTakesNothingUntilAllAreSet) {
    const Events<2> events(autoReset);
    SetEvent(events[0]);
    EXPECT_EQ(WaitForMultipleObjects(2, events.Data(), all, 10), WAIT_TIMEOUT);
    SetEvent(events[1]);
    EXPECT_EQ(WaitForMultipleObjects(2, events.Data(), all, 0), WAIT_OBJECT_0);
    EXPECT_FALSE(IsSet(events[0]));
    EXPECT_FALSE(IsSet(events[1]));
}

TEST(Wait, ForAllEndsWhenTheLastIsSet) {
    const Events<3> events(manualReset);
    SetEvent(events[1]);
    std::thread setter([&] {
        SetEvent(events[0]);
        SetEvent(events[2]);
    });
    EXPECT_EQ(WaitForMultipleObjects(3, events.Data(), all, INFINITE), WAIT_OBJECT_0);
    setter.join();
}

TEST(Wait, ForAllSleepsWhileSomeAreSet) {
    const Events<2> events(manualReset);
    SetEvent(events[0]);
    const auto before = ThreadTime();
    EXPECT_EQ(WaitForMultipleObjects(2, events.Data(), all, 200), WAIT_TIMEOUT);
    EXPECT_LT(ThreadTime() - before, milliseconds(100));
}

TEST(Wait, ForAllIsOneStepBetweenThreads) {
    // Two forks, and threads that name them in opposite order: taking one after the other would lock up or let two eat.
    const Events<2> forks(autoReset);
    SetEvent(forks[0]);
    SetEvent(forks[1]);
    int meals = 0;  // guarded by both forks
    constexpr int rounds = 1000;
    std::vector<std::thread> threads;
    threads.reserve(3);
    for (std::size_t i = 0; i < 3; ++i) {
        threads.emplace_back([&, i] {
            const HANDLE both[] = {forks[i % 2], forks[1 - i % 2]};
            for (int round = 0; round < rounds; ++round) {
                if (WaitForMultipleObjects(2, both, all, INFINITE) != WAIT_OBJECT_0) return;
                ++meals;
                SetEvent(both[1]);
                SetEvent(both[0]);
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(meals, 3 * rounds);
}

TEST(Wait, OneSignalEndsOneWaitHoweverLongItTakesToReset) {
    const auto object = std::make_shared<SlowReset>();
    const HANDLE handle = Platform::AddHandle(object);
    const Events<1> stop(manualReset);
    const Events<1> taken(autoReset);
    std::atomic<int> count{0};
    std::vector<std::thread> waiters;
    waiters.reserve(3);
    for (int i = 0; i < 3; ++i) {
        waiters.emplace_back([&] {
            const HANDLE either[] = {stop[0], handle};
            while (WaitForMultipleObjects(2, either, any, INFINITE) == WAIT_OBJECT_0 + 1) {
                ++count;
                SetEvent(taken[0]);
            }
        });
    }
    constexpr int rounds = 40;
    for (int i = 0; i < rounds; ++i) {
        object->Set();
        EXPECT_EQ(WaitForSingleObject(taken[0], INFINITE), WAIT_OBJECT_0);
    }
    SetEvent(stop[0]);
    for (std::thread& waiter : waiters) waiter.join();
    EXPECT_EQ(count, rounds);
    CloseHandle(handle);
}

TEST(Wait, TakesUpTo64Objects) {
    const Events<65> events(autoReset);
    SetEvent(events[63]);
    EXPECT_EQ(WaitForMultipleObjectsEx(64, events.Data(), any, 0, TRUE), WAIT_OBJECT_0 + 63);
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(WaitForMultipleObjects(65, events.Data(), any, 0), WAIT_FAILED);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST(Wait, ForNothingFails) {
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(WaitForMultipleObjects(0, nullptr, any, INFINITE), WAIT_FAILED);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST(Wait, WithOneInvalidHandleFailsAndTakesNothing) {
    const Events<1> event(autoReset);
    SetEvent(event[0]);
    const HANDLE handles[] = {event[0], nullptr};
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(WaitForMultipleObjects(2, handles, any, INFINITE), WAIT_FAILED);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    EXPECT_TRUE(IsSet(event[0]));
}

TEST(Sleep, LastsAtLeastItsTimeDespiteSignals) {
    Interruptions::Prepare();
    const Interruptions interruptions(pthread_self());
    const auto start = Clock::now();
    Sleep(50);
    EXPECT_GE(Clock::now() - start, milliseconds(50));
}
