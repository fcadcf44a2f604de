// Messages between threads.
#include "WindowFixture.h"

#include <unistd.h>

#include <atomic>
#include <future>
#include <thread>

namespace {

class MessagesTest : public WindowTest {};

DWORD ThisThread() {
    return static_cast<DWORD>(::gettid());
}

TEST(ThreadMessageTest, AThreadMessageHasNoWindow) {
    std::promise<DWORD> ready;
    MSG got{};
    std::thread receiver([&] {
        PostMessageW(nullptr, WM_NULL, 0, 0);  // makes the queue
        ready.set_value(ThisThread());
        do {
            GetMessageW(&got, nullptr, 0, 0);
        } while (got.message == WM_NULL);
    });
    const DWORD thread = ready.get_future().get();
    // The queue is there once its thread has waited for a message.
    while (!PostThreadMessageW(thread, 0x82A1, 3, 4)) std::this_thread::yield();
    receiver.join();
    EXPECT_EQ(got.hwnd, nullptr);
    EXPECT_EQ(got.message, 0x82A1U);
    EXPECT_EQ(got.wParam, 3U);
    EXPECT_EQ(got.lParam, 4);
    EXPECT_FALSE(PostThreadMessageW(thread, 0x82A1, 0, 0)) << "the thread has ended";
}

TEST(ThreadMessageTest, AThreadWithoutAQueueGetsNone) {
    EXPECT_FALSE(PostThreadMessageW(1, WM_NULL, 0, 0));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_THREAD_ID);
}

TEST(ThreadMessageTest, QuitComesAfterAllThatWasPosted) {
    std::thread([] {
        PostQuitMessage(5);
        PostThreadMessageW(ThisThread(), WM_APP, 0, 0);
        MSG message{};
        EXPECT_EQ(GetMessageW(&message, nullptr, 0, 0), TRUE);
        EXPECT_EQ(message.message, WM_APP);
        EXPECT_EQ(GetMessageW(&message, nullptr, 0, 0), FALSE);
        EXPECT_EQ(message.message, WM_QUIT);
        EXPECT_EQ(message.wParam, 5U);
    }).join();
}

TEST(ThreadMessageTest, AFilterIsRefused) {
    MSG message{};
    EXPECT_EQ(GetMessageW(&message, nullptr, 1, 2), -1);
}

TEST_F(MessagesTest, PostedMessagesKeepTheirOrder) {
    Make();
    std::thread([&] {
        for (WPARAM i = 0; i < 100; ++i) PostMessageW(window_, WM_APP + 2, i, 0);
    }).join();
    ASSERT_TRUE(PumpUntil([&] { return Count(WM_APP + 2) == 100; }));
    WPARAM next = 0;
    for (const SeenMessage& each : seen_) {
        if (each.message == WM_APP + 2) {
            EXPECT_EQ(each.wParam, next++);
        }
    }
}

TEST_F(MessagesTest, ASentMessageRunsOnTheWindowsThreadAndAnswersTheSender) {
    Make();
    std::atomic<DWORD> ranOn{0};
    answer_ = [&](UINT message, WPARAM, LPARAM, LRESULT& result) {
        if (message != WM_APP + 2) return false;
        ranOn = ThisThread();
        result = 42;
        return true;
    };
    std::atomic<LRESULT> result{0};
    std::thread sender([&] { result = SendMessageW(window_, WM_APP + 2, 0, 0); });
    EXPECT_TRUE(PumpUntil([&] { return result == 42; }));
    sender.join();
    EXPECT_EQ(ranOn, ThisThread());
}

TEST_F(MessagesTest, AWindowThatIsGoneTakesNoMessage) {
    Make();
    const HWND window = window_;
    DestroyWindow(window);
    EXPECT_FALSE(PostMessageW(window, WM_APP, 0, 0));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
    EXPECT_EQ(SendMessageW(window, WM_APP, 0, 0), 0);
}

TEST_F(MessagesTest, AThreadThatAlwaysPostsKeepsNoEventOfTheServerAway) {
    Make();
    // While one message is handled the next is posted already: the queue is never empty.
    answer_ = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message != WM_APP + 2) return false;
        std::thread([&] { PostMessageW(window_, WM_APP + 2, 0, 0); }).join();
        return true;
    };
    std::thread([&] { PostMessageW(window_, WM_APP + 2, 0, 0); }).join();
    display_.ConfigureWindow(XWindow(), 100, 50, 431, 300);
    EXPECT_TRUE(PumpUntil([&] { return Saw(WM_SIZE); }));
    EXPECT_GT(Count(WM_APP + 2), 0U) << "nor do the events keep the messages away";
    EXPECT_EQ(Place().right - Place().left, 431);
}

TEST_F(MessagesTest, WhatAnEventLeadsToComesBeforeTheNextEvent) {
    Make();
    display_.MovePointer(300, 200);
    PumpAll();
    seen_.clear();
    // The press leads to a message of the thread's own; when that is handled the release must not have been looked at.
    answer_ = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message == WM_LBUTTONDOWN) PostMessageW(window_, WM_APP + 2, 0, 0);
        return false;
    };
    display_.Click(1);
    ASSERT_TRUE(PumpUntilSeen(WM_LBUTTONUP));
    EXPECT_EQ(Order({WM_LBUTTONDOWN, WM_LBUTTONUP, WM_APP + 2}),
              (std::vector<UINT>{WM_LBUTTONDOWN, WM_APP + 2, WM_LBUTTONUP}));
}

TEST_F(MessagesTest, OtherThreadsMayAskWhileTheWindowChanges) {
    Make();
    std::atomic<bool> stop{false};
    const HWND window = window_;  // The fixture notes it again at every message.
    std::thread asker([&] {
        while (!stop) {
            RECT place{};
            GetWindowRect(window, &place);
            POINT origin{};
            ClientToScreen(window, &origin);
            EXPECT_GE(place.right - place.left, 400);
            EXPECT_EQ(GetDpiForWindow(window), 96U);
            EXPECT_FALSE(IsZoomed(window));
            Platform::FrameShown(window);
        }
    });
    for (int i = 0; i < 50; ++i) SetWindowPos(window_, nullptr, i, i, 400 + i, 300, SWP_NOZORDER);
    stop = true;
    asker.join();
    EXPECT_EQ(Place().right, 49 + 449);
}

}  // namespace
