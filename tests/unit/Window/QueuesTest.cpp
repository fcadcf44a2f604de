// The paths between a window's threads that need no window: input ring, closures, application events.
#include "Core/Timestamp.h"
#include "Window/ClosureQueue.h"
#include "Window/InputRing.h"
#include "Window/UiEventBus.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <vector>

namespace {

using Tamborel::ClosureQueue;
using Tamborel::InputEvent;
using Tamborel::InputRing;
using Tamborel::UiEvent;
using Tamborel::UiEventBus;

InputEvent Numbered(std::int64_t number) {
    InputEvent event;
    event.timestampMicroseconds = number;
    return event;
}

UiEvent Named(const wchar_t* name) {
    UiEvent event;
    event.name = name;
    return event;
}

TEST(InputRing, HoldsFiveHundredAndElevenEventsAndDropsWhatComesOnTop) {
    InputRing ring;
    for (int i = 0; i < 511; ++i) ASSERT_TRUE(ring.Push(Numbered(i)));
    EXPECT_FALSE(ring.Push(Numbered(511)));
    InputEvent event;
    for (int i = 0; i < 511; ++i) {
        ASSERT_TRUE(ring.Pop(event));
        ASSERT_EQ(event.timestampMicroseconds, i);
    }
    EXPECT_FALSE(ring.Pop(event));
}

TEST(InputRing, KeepsTheOrderBetweenTwoThreads) {
    constexpr int count = 100'000;
    InputRing ring;
    std::thread producer([&ring] {
        for (int i = 0; i < count; ++i) {
            while (!ring.Push(Numbered(i))) std::this_thread::yield();
        }
    });
    InputEvent event;
    int inOrder = 0;
    for (int i = 0; i < count; ++i) {
        while (!ring.Pop(event)) std::this_thread::yield();
        inOrder += event.timestampMicroseconds == i ? 1 : 0;
    }
    producer.join();
    EXPECT_EQ(inOrder, count);
}

TEST(ClosureQueue, RunsInTheOrderOfPostingAndTellsWhetherAnyRan) {
    ClosureQueue queue;
    EXPECT_FALSE(queue.RunPending());
    std::vector<int> ran;
    for (int i = 0; i < 3; ++i) queue.Post([&ran, i] { ran.push_back(i); });
    EXPECT_TRUE(queue.RunPending());
    EXPECT_EQ(ran, (std::vector{0, 1, 2}));
    EXPECT_FALSE(queue.RunPending());
}

TEST(ClosureQueue, WhatAClosurePostsWaitsForTheNextTurn) {
    ClosureQueue queue;
    int inner = 0;
    queue.Post([&] { queue.Post([&] { ++inner; }); });
    EXPECT_TRUE(queue.RunPending());
    EXPECT_EQ(inner, 0);
    EXPECT_TRUE(queue.RunPending());
    EXPECT_EQ(inner, 1);
}

TEST(ClosureQueue, DestroysClosuresAfterAllHaveRun) {
    ClosureQueue queue;
    auto owned = std::make_shared<int>(0);
    const std::weak_ptr<int> watched = owned;
    bool aliveInTheSecond = false;
    queue.Post([owned = std::move(owned)] {});
    queue.Post([&] { aliveInTheSecond = !watched.expired(); });
    queue.RunPending();
    EXPECT_TRUE(aliveInTheSecond);
    EXPECT_TRUE(watched.expired());
}

TEST(ClosureQueue, ClosureNeverRunIsDestroyedWithTheQueue) {
    bool ran = false;
    auto owned = std::make_shared<int>(0);
    const std::weak_ptr<int> watched = owned;
    {
        ClosureQueue queue;
        queue.Post([&ran, owned = std::move(owned)] { ran = true; });
        EXPECT_FALSE(watched.expired());
    }
    EXPECT_TRUE(watched.expired());
    EXPECT_FALSE(ran);
}

TEST(ClosureQueue, EmptyClosureIsABadFunctionCall) {
    ClosureQueue queue;
    queue.Post({});
    EXPECT_THROW(queue.RunPending(), std::bad_function_call);
}

TEST(UiEventBus, ListenerWithEmptyNameOrFunctionIsRefusedAndIdsStartAtOne) {
    UiEventBus bus;
    EXPECT_EQ(bus.AddListener(L"", [](const UiEvent&) {}), 0U);
    EXPECT_EQ(bus.AddListener(L"name", {}), 0U);
    EXPECT_EQ(bus.AddListener(L"name", [](const UiEvent&) {}), 1U);
    EXPECT_EQ(bus.AddListener(L"name", [](const UiEvent&) {}), 2U);
}

TEST(UiEventBus, EventsReachTheListenersToTheirNameInOrderAndOnce) {
    UiEventBus bus;
    std::vector<std::uint64_t> heard;
    bus.AddListener(L"a", [&heard](const UiEvent& event) { heard.push_back(event.idHash); });
    for (const std::uint64_t hash : {1U, 2U, 3U}) {
        UiEvent event = Named(hash == 2 ? L"b" : L"a");
        event.idHash = hash;
        bus.Append(event);
    }
    bus.Dispatch();
    bus.Dispatch();
    EXPECT_EQ(heard, (std::vector<std::uint64_t>{1, 3}));
}

TEST(UiEventBus, RemovedListenerHearsNothing) {
    UiEventBus bus;
    int heard = 0;
    const std::uint64_t id = bus.AddListener(L"a", [&heard](const UiEvent&) { ++heard; });
    bus.RemoveListener(id + 1);
    bus.Append(Named(L"a"));
    bus.Dispatch();
    EXPECT_EQ(heard, 1);
    bus.RemoveListener(id);
    bus.Append(Named(L"a"));
    bus.Dispatch();
    EXPECT_EQ(heard, 1);
}

TEST(UiEventBus, ListenerMayAddRemoveAndPost) {
    UiEventBus bus;
    int late = 0;
    std::uint64_t own = 0;
    own = bus.AddListener(L"a", [&](const UiEvent&) {
        EXPECT_NE(bus.AddListener(L"a", [&late](const UiEvent&) { ++late; }), 0U);
        bus.RemoveListener(own);
        bus.Append(Named(L"a"));
    });
    bus.Append(Named(L"a"));
    bus.Dispatch();
    EXPECT_EQ(late, 0);  // what is posted meanwhile waits for the next turn
    bus.Dispatch();
    EXPECT_EQ(late, 1);
}

TEST(UiEventBus, WideStringIsTheFifthKindOfValue) {
    EXPECT_EQ(Tamborel::UiEventValue(std::wstring(L"text")).index(), 4U);
}

TEST(Timestamp, CountsMicrosecondsWithoutPassingTheEndOf64Bits) {
    EXPECT_EQ(Tamborel::MicrosecondsOf(25, 10'000'000), 2);
    EXPECT_EQ(Tamborel::MicrosecondsOf(3'000'000'007'000, 1'000'000'000), 3'000'000'007);
    constexpr std::int64_t tenYears = std::int64_t{3600} * 24 * 3650;
    EXPECT_EQ(Tamborel::MicrosecondsOf(tenYears * 1'000'000'000, 1'000'000'000), tenYears * 1'000'000);
}

TEST(Timestamp, NeverRunsBackwards) {
    const std::int64_t before = Tamborel::TimestampMicroseconds();
    EXPECT_GE(Tamborel::TimestampMicroseconds(), before);
}

}  // namespace
