#include "Platform/Linux/Base/SpareThread.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <thread>

using Platform::SpareThread;

namespace {

constexpr std::chrono::seconds limit{20};

TEST(SpareThreadTest, TheThreadThatIsKeptDoesTheWorkAndThenThereIsNone) {
    std::promise<std::thread::id> done;
    std::function<void()> work = [&] { done.set_value(std::this_thread::get_id()); };
    EXPECT_FALSE(SpareThread::Hand(work)) << "Nobody has kept one.";
    ASSERT_TRUE(work) << "What isn't taken stays.";

    SpareThread::Keep();
    SpareThread::Keep();
    ASSERT_TRUE(SpareThread::Hand(work));
    auto doneBy = done.get_future();
    ASSERT_EQ(doneBy.wait_for(limit), std::future_status::ready);
    EXPECT_NE(doneBy.get(), std::this_thread::get_id());

    std::function<void()> more = [] {};
    EXPECT_FALSE(SpareThread::Hand(more)) << "Keeping twice makes one.";
}

TEST(SpareThreadTest, OneCanBeKeptAgain) {
    for (int i = 0; i < 3; ++i) {
        std::promise<void> done;
        std::function<void()> work = [&] { done.set_value(); };
        SpareThread::Keep();
        ASSERT_TRUE(SpareThread::Hand(work));
        ASSERT_EQ(done.get_future().wait_for(limit), std::future_status::ready);
    }
}

}  // namespace
