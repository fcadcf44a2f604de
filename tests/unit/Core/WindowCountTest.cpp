#include "Core/Toolkit.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <thread>

namespace {

using namespace std::chrono_literals;

TEST(WindowCount, WaitingForNoWindowReturnsAtOnce) {
    Tamborel::WaitForWindows();
}

TEST(WindowCount, WaitingEndsWithTheLastWindow) {
    Tamborel::AddWindowRef();
    Tamborel::AddWindowRef();
    auto waiting = std::async(std::launch::async, Tamborel::WaitForWindows);
    Tamborel::ReleaseWindowRef();
    EXPECT_EQ(waiting.wait_for(50ms), std::future_status::timeout);
    Tamborel::ReleaseWindowRef();
    EXPECT_EQ(waiting.wait_for(10s), std::future_status::ready);
}

TEST(WindowCount, TheLastWindowWakesEveryWaiter) {
    Tamborel::AddWindowRef();
    auto first = std::async(std::launch::async, Tamborel::WaitForWindows);
    auto second = std::async(std::launch::async, Tamborel::WaitForWindows);
    EXPECT_EQ(first.wait_for(20ms), std::future_status::timeout);
    EXPECT_EQ(second.wait_for(20ms), std::future_status::timeout);
    Tamborel::ReleaseWindowRef();
    EXPECT_EQ(first.wait_for(10s), std::future_status::ready);
    EXPECT_EQ(second.wait_for(10s), std::future_status::ready);
}

TEST(WindowCount, ACountThatRisesAfterTheWaitIsNotWaitedFor) {
    Tamborel::WaitForWindows();
    Tamborel::AddWindowRef();  // Would hang the test below if the first wait had left anything behind.
    Tamborel::ReleaseWindowRef();
    Tamborel::WaitForWindows();
}

TEST(WindowCount, ManyThreadsCountToZero) {
    Tamborel::AddWindowRef();
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([] {
            for (int j = 0; j < 1000; ++j) Tamborel::AddWindowRef();
            for (int j = 0; j < 1000; ++j) Tamborel::ReleaseWindowRef();
        });
    }
    for (std::thread& each : threads) each.join();
    auto waiting = std::async(std::launch::async, Tamborel::WaitForWindows);
    EXPECT_EQ(waiting.wait_for(20ms), std::future_status::timeout);
    Tamborel::ReleaseWindowRef();
    EXPECT_EQ(waiting.wait_for(10s), std::future_status::ready);
}

}  // namespace
