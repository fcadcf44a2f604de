// Start and end of a window with its threads.
#include "StandIns.h"

#include "Window/Messages.h"

#include <algorithm>
#include <future>

namespace Tamborel {

namespace {

class Threads : public WindowTest {
protected:
    /// Waits for the effect of what was posted to the render thread so far.
    static void Flush(FrameWindow& window) {
        std::promise<void> ran;
        window.PostToRenderThread([&ran] { ran.set_value(); });
        ran.get_future().wait();
    }

    static DWORD UiThreadOf(FrameWindow& window) {
        std::promise<DWORD> thread;
        const std::uint64_t id =
            window.AddEventListener(L"who", [&thread](const UiEvent&) { thread.set_value(GetCurrentThreadId()); });
        UiEvent who;
        who.name = L"who";
        window.PostEvent(who);
        const DWORD result = thread.get_future().get();
        window.RemoveEventListener(id);
        return result;
    }

    /// Ends the window as the user does and waits until it is gone.
    void CloseAsUser(FrameWindow& window) {
        PostMessageW(window.Handle(), WM_CLOSE, 0, 0);
        while (WindowCount::released == 0) std::this_thread::yield();
    }
};

TEST_F(Threads, WindowIsReadyOnceTheRenderThreadIsSetUp) {
    FrameWindow window;
    EXPECT_TRUE(window.Create(nullptr, SW_SHOWNORMAL, {}));
    EXPECT_TRUE(window.WaitUntilReady());
    EXPECT_NE(window.Handle(), nullptr);
    EXPECT_EQ(RenderStandIn::Get().made, 1);
    EXPECT_EQ(WindowCount::added, 1);
    window.Shutdown();
    EXPECT_EQ(RenderStandIn::Get().ended, 1);
    EXPECT_EQ(WindowCount::released, 1);
    EXPECT_TRUE(windows.Windows().empty());
}

TEST_F(Threads, UiThreadHasASingleThreadedApartmentAroundItsMessageLoop) {
    FrameWindow window;
    window.Create(nullptr, SW_SHOWNORMAL, {});
    window.WaitUntilReady();
    window.Shutdown();
    const std::vector<std::string> calls = windows.Calls();
    EXPECT_EQ(calls.front(), "CoInitializeEx 6");
    // Not simply the last call: Shutdown may find the thread gone and post to it all the same.
    EXPECT_EQ(std::ranges::count(calls, "CoUninitialize"), 1);
    EXPECT_GT(std::ranges::find(calls, "CoUninitialize"), std::ranges::find(calls, "PostQuitMessage"));
    EXPECT_EQ(std::find(std::ranges::find(calls, "CoUninitialize"), calls.end(), "GetMessageW"), calls.end());
}

TEST_F(Threads, NotReadyWithoutCreate) {
    FrameWindow window;
    EXPECT_FALSE(window.WaitUntilReady());
}

TEST_F(Threads, NotReadyAndNoRenderSideWhenTheWindowCannotBeCreated) {
    windows.Change([](Fakes::WindowSettings& settings) { settings.creationFails = true; });
    FrameWindow window;
    EXPECT_TRUE(window.Create(nullptr, SW_SHOWNORMAL, {}));
    EXPECT_FALSE(window.WaitUntilReady());
    window.Shutdown();
    EXPECT_EQ(RenderStandIn::Get().made, 0);
    EXPECT_EQ(windows.CountCalls("GetMessageW"), 0);
    EXPECT_EQ(windows.CountCalls("CoUninitialize"), 1);
    EXPECT_EQ(WindowCount::released, 1);
}

TEST_F(Threads, DeclinedCreationReleasesTheWindowOnce) {
    windows.Change([](Fakes::WindowSettings& settings) { settings.creationDeclined = true; });
    FrameWindow window;
    window.Create(nullptr, SW_SHOWNORMAL, {});
    EXPECT_FALSE(window.WaitUntilReady());
    window.Shutdown();
    EXPECT_EQ(window.Handle(), nullptr);
    EXPECT_EQ(WindowCount::released, 1);
}

TEST_F(Threads, NotReadyWhenTheDeviceSetUpFailsAndShutdownStillEndsTheWindow) {
    RenderStandIn::Get().setUpSucceeds = false;
    FrameWindow window;
    window.Create(nullptr, SW_SHOWNORMAL, {});
    EXPECT_FALSE(window.WaitUntilReady());
    window.Shutdown();
    EXPECT_TRUE(windows.Windows().empty());
    EXPECT_EQ(WindowCount::released, 1);
}

TEST_F(Threads, ShutdownAfterTheUserHasClosedReleasesNothingTwice) {
    FrameWindow window;
    window.Create(nullptr, SW_SHOWNORMAL, {});
    ASSERT_TRUE(window.WaitUntilReady());
    CloseAsUser(window);
    window.Shutdown();
    EXPECT_EQ(WindowCount::released, 1);
    EXPECT_EQ(RenderStandIn::Get().ended, 1);
    EXPECT_EQ(windows.CountCalls("DestroyWindow"), 1);
    window.Shutdown();
    EXPECT_EQ(WindowCount::released, 1);
}

TEST_F(Threads, ShutdownAtOnceAfterCreateEndsBothThreads) {
    for (int i = 0; i < 50; ++i) {
        FrameWindow window;
        window.Create(nullptr, SW_SHOWNORMAL, {});
        window.Shutdown();
    }
    EXPECT_EQ(WindowCount::added, 50);
    EXPECT_EQ(WindowCount::released, 50);
    EXPECT_TRUE(windows.Windows().empty());
}

TEST_F(Threads, ShutdownAsksTheWindowToCloseAndThenTheThreadToEnd) {
    FrameWindow window;
    window.Create(nullptr, SW_SHOWNORMAL, {});
    ASSERT_TRUE(window.WaitUntilReady());
    const DWORD uiThread = UiThreadOf(window);
    const std::size_t before = windows.Posted().size();
    // The UI thread is kept from answering the first message before the second is posted.
    window.AddEventListener(L"hold", [&](const UiEvent&) {
        while (windows.Posted().size() < before + 3) std::this_thread::yield();
    });
    UiEvent hold;
    hold.name = L"hold";
    window.PostEvent(hold);
    window.Shutdown();
    const auto posted = windows.Posted();
    ASSERT_EQ(posted.size(), before + 3);
    EXPECT_EQ(posted[before + 1].message, WM_CLOSE);
    EXPECT_EQ(posted[before + 2].message, 0x82A1U);
    EXPECT_EQ(posted[before + 2].thread, uiThread);
    EXPECT_EQ(posted[before + 2].wParam, 0U);
    EXPECT_EQ(posted[before + 2].lParam, 0);
    EXPECT_EQ(windows.CountCalls("DestroyWindow"), 1);
    EXPECT_EQ(WindowCount::released, 1);
}

TEST_F(Threads, ThreadQuitDestroysTheWindowAndIsNotDispatched) {
    FrameWindow window;
    window.Create(nullptr, SW_SHOWNORMAL, {});
    ASSERT_TRUE(window.WaitUntilReady());
    ASSERT_TRUE(PostThreadMessageW(UiThreadOf(window), WM_APP_THREAD_QUIT, 0, 0));
    while (windows.CountCalls("CoUninitialize") == 0) std::this_thread::yield();
    EXPECT_EQ(windows.CountCalls("DestroyWindow"), 1);
    EXPECT_EQ(WindowCount::released, 1);
    window.Shutdown();
    EXPECT_EQ(WindowCount::released, 1);
}

TEST_F(Threads, ThreadQuitEndsALoopWhoseWindowIsGone) {
    FrameWindow window;
    window.Create(nullptr, SW_SHOWNORMAL, {});
    ASSERT_TRUE(window.WaitUntilReady());
    const DWORD uiThread = UiThreadOf(window);
    PostMessageW(window.Handle(), WM_NCDESTROY, 0, 0);
    ASSERT_TRUE(PostThreadMessageW(uiThread, WM_APP_THREAD_QUIT, 0, 0));
    while (windows.CountCalls("CoUninitialize") == 0) std::this_thread::yield();
    EXPECT_EQ(windows.CountCalls("DestroyWindow"), 0);
    EXPECT_EQ(windows.CountCalls("PostQuitMessage"), 1);
    window.Shutdown();
    EXPECT_EQ(WindowCount::released, 1);
}

TEST_F(Threads, FailingGetMessageEndsTheLoopAsAQuitDoes) {
    windows.Change([](Fakes::WindowSettings& settings) { settings.getMessageFails = true; });
    FrameWindow window;
    window.Create(nullptr, SW_SHOWNORMAL, {});
    EXPECT_TRUE(window.WaitUntilReady());
    while (windows.CountCalls("CoUninitialize") == 0) std::this_thread::yield();
    EXPECT_EQ(windows.CountCalls("GetMessageW"), 1);
    EXPECT_EQ(windows.CountCalls("TranslateMessage"), 0);
    window.Shutdown();
    EXPECT_EQ(WindowCount::released, 1);
}

TEST_F(Threads, ClosuresRunInOrderOnTheRenderThread) {
    FrameWindow window;
    window.Create(nullptr, SW_SHOWNORMAL, {});
    ASSERT_TRUE(window.WaitUntilReady());
    std::vector<int> order;
    std::thread::id thread;
    for (int i = 0; i < 3; ++i) {
        window.PostToRenderThread([&, i] {
            order.push_back(i);
            thread = std::this_thread::get_id();
        });
    }
    Flush(window);
    EXPECT_EQ(order, (std::vector{0, 1, 2}));
    EXPECT_NE(thread, std::this_thread::get_id());
    window.Shutdown();
}

TEST_F(Threads, ClosurePostedAfterTheStopIsNeverRunAndIsDestroyedWithTheWindow) {
    bool ran = false;
    auto owned = std::make_shared<int>(0);
    const std::weak_ptr<int> watched = owned;
    {
        FrameWindow window;
        window.Create(nullptr, SW_SHOWNORMAL, {});
        window.WaitUntilReady();
        window.Shutdown();
        window.PostToRenderThread([&ran, owned = std::move(owned)] { ran = true; });
        EXPECT_FALSE(watched.expired());
    }
    EXPECT_TRUE(watched.expired());
    EXPECT_FALSE(ran);
}

TEST_F(Threads, BackgroundIsHandedOverOnTheRenderThread) {
    FrameWindow window;
    window.Create(nullptr, SW_SHOWNORMAL, {});
    ASSERT_TRUE(window.WaitUntilReady());
    auto* const renderer = reinterpret_cast<BackgroundRenderer*>(std::uintptr_t{0x10});
    window.SetBackgroundRenderer(renderer);
    Flush(window);
    EXPECT_EQ(RenderStandIn::Get().background, renderer);
    window.SetBackgroundRenderer(nullptr);
    Flush(window);
    EXPECT_EQ(RenderStandIn::Get().background, nullptr);
    window.Shutdown();
}

TEST_F(Threads, SizeLoopThatFindsNoFrameAnyMoreDoesNotHoldUpTheShutdown) {
    RenderStandIn::Get().countsFrames = false;
    FrameWindow window;
    window.Create(nullptr, SW_SHOWNORMAL, {});
    ASSERT_TRUE(window.WaitUntilReady());
    NCCALCSIZE_PARAMS parameters{};
    parameters.rgrc[0] = {0, 0, 500, 400};
    PostMessageW(window.Handle(), WM_ENTERSIZEMOVE, 0, 0);
    PostMessageW(window.Handle(), WM_NCCALCSIZE, TRUE, reinterpret_cast<LPARAM>(&parameters));
    window.Shutdown();
    EXPECT_EQ(WindowCount::released, 1);
}

TEST_F(Threads, WindowThatIsCreatedAgainEndsTheOneBefore) {
    FrameWindow window;
    window.Create(nullptr, SW_SHOWNORMAL, {});
    ASSERT_TRUE(window.WaitUntilReady());
    const HWND first = window.Handle();
    window.Create(nullptr, SW_SHOWNORMAL, {});
    ASSERT_TRUE(window.WaitUntilReady());
    EXPECT_FALSE(IsWindow(first));
    EXPECT_TRUE(IsWindow(window.Handle()));
    EXPECT_EQ(WindowCount::added, 2);
    EXPECT_EQ(WindowCount::released, 1);
    window.Shutdown();
    EXPECT_EQ(WindowCount::released, 2);
    EXPECT_EQ(RenderStandIn::Get().ended, 2);
}

}  // namespace

}  // namespace Tamborel
