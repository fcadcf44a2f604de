#include <windows.h>

#include <gtest/gtest.h>

#include <atomic>
#include <latch>
#include <thread>
#include <vector>

namespace {

TEST(InitOnce, FirstCallerDoesTheWorkAndLaterOnesGetItsContext) {
    INIT_ONCE once = INIT_ONCE_STATIC_INIT;
    alignas(8) int work = 0;
    BOOL pending = FALSE;
    ASSERT_TRUE(InitOnceBeginInitialize(&once, 0, &pending, nullptr));
    EXPECT_TRUE(pending);
    ASSERT_TRUE(InitOnceComplete(&once, 0, &work));
    for (int time = 0; time < 2; ++time) {
        void* context = nullptr;
        ASSERT_TRUE(InitOnceBeginInitialize(&once, 0, &pending, &context));
        EXPECT_FALSE(pending);
        EXPECT_EQ(context, &work);
    }
}

TEST(InitOnce, OthersWaitUntilTheWorkIsDoneAndSeeIt) {
    constexpr int kThreads = 4;
    for (int round = 0; round < 200; ++round) {
        INIT_ONCE once = INIT_ONCE_STATIC_INIT;
        int work = 0;  // not atomic: the completion publishes it
        std::atomic<int> workers = 0;
        std::latch start(kThreads);
        std::vector<std::thread> threads;
        for (int index = 0; index < kThreads; ++index) {
            threads.emplace_back([&] {
                start.arrive_and_wait();
                BOOL pending = FALSE;
                ASSERT_TRUE(InitOnceBeginInitialize(&once, 0, &pending, nullptr));
                if (pending) {
                    ++workers;
                    std::this_thread::yield();
                    work = 42;
                    ASSERT_TRUE(InitOnceComplete(&once, 0, nullptr));
                }
                EXPECT_EQ(work, 42);
            });
        }
        for (std::thread& thread : threads) thread.join();
        ASSERT_EQ(workers, 1);
    }
}

TEST(InitOnce, CompletingWhatNobodyBeganFails) {
    INIT_ONCE once = INIT_ONCE_STATIC_INIT;
    EXPECT_FALSE(InitOnceComplete(&once, 0, nullptr));
    EXPECT_EQ(GetLastError(), ERROR_GEN_FAILURE);
}

TEST(InitOnce, FlagsAndContextsThatItDoesNotKnowAreInvalid) {
    INIT_ONCE once = INIT_ONCE_STATIC_INIT;
    BOOL pending = FALSE;
    EXPECT_FALSE(InitOnceBeginInitialize(&once, 2, &pending, nullptr));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    EXPECT_FALSE(InitOnceBeginInitialize(&once, 0, nullptr, nullptr));
    EXPECT_FALSE(InitOnceComplete(&once, 0, reinterpret_cast<void*>(std::uintptr_t{6})));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

}  // namespace
