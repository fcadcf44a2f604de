// What is asked of a window manager, with one that runs.
#include "WindowFixture.h"

#include <xcb/sync.h>

#include <chrono>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <thread>

namespace {

class ManagerTest : public WindowTest {
protected:
    void SetUp() override { display_.StartManager(); }

    std::vector<std::uint32_t> Values(const char* property) const {
        static constexpr std::uint32_t most = 1024;  // words
        const auto cookie = xcb_get_property(display_.Client(), 0, XWindow(), display_.Atom(property),
                                             XCB_GET_PROPERTY_TYPE_ANY, 0, most);
        auto* reply = xcb_get_property_reply(display_.Client(), cookie, nullptr);
        std::vector<std::uint32_t> values(reply->value_len);
        if (!values.empty()) std::memcpy(values.data(), xcb_get_property_value(reply), values.size() * 4);
        std::free(reply);
        return values;
    }
    std::uint32_t Value(const char* property) const {
        const auto values = Values(property);
        return values.empty() ? 0 : values.front();
    }
    void SendProtocol(const char* protocol, std::uint32_t low, std::uint32_t high) const {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = XWindow();
        message.type = display_.Atom("WM_PROTOCOLS");
        message.data.data32[0] = display_.Atom(protocol);
        message.data.data32[2] = low;
        message.data.data32[3] = high;
        xcb_send_event(display_.Client(), 0, XWindow(), 0, reinterpret_cast<const char*>(&message));
        display_.Settle();
    }
    /// Whether nobody holds the pointer but, perhaps, this client.
    bool PointerIsFree() const {
        auto* client = display_.Client();
        const auto cookie = xcb_grab_pointer(client, 0, display_.Root(), 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                                             XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
        auto* reply = xcb_grab_pointer_reply(client, cookie, nullptr);
        const bool free = reply->status == XCB_GRAB_STATUS_SUCCESS;
        std::free(reply);
        if (free) xcb_ungrab_pointer(client, XCB_CURRENT_TIME);
        display_.Settle();
        return free;
    }
    std::uint32_t Counter() const {
        auto* client = display_.Client();
        std::free(xcb_sync_initialize_reply(client, xcb_sync_initialize(client, 3, 1), nullptr));
        const auto cookie = xcb_sync_query_counter(client, Value("_NET_WM_SYNC_REQUEST_COUNTER"));
        auto* reply = xcb_sync_query_counter_reply(client, cookie, nullptr);
        const std::uint32_t value = reply->counter_value.lo;
        std::free(reply);
        return value;
    }
};

TEST_F(ManagerTest, TheWindowKeepsItsPlaceAndSize) {
    Make();
    EXPECT_EQ(Place().left, 100);
    EXPECT_EQ(Place().top, 50);
    EXPECT_EQ(Place().right, 500);
    EXPECT_EQ(Place().bottom, 350);
}

TEST_F(ManagerTest, MaximisingAndRestoring) {
    Make();
    SendMessageW(window_, WM_SYSCOMMAND, SC_MAXIMIZE, 0);
    ASSERT_TRUE(PumpUntil([&] { return IsZoomed(window_) && Place().right == 1000; }));
    EXPECT_EQ(Last(WM_SIZE).wParam, static_cast<WPARAM>(SIZE_MAXIMIZED));
    SendMessageW(window_, WM_SYSCOMMAND, SC_RESTORE, 0);
    ASSERT_TRUE(PumpUntil([&] { return !IsZoomed(window_) && Place().right == 500; }));
    EXPECT_EQ(Last(WM_SIZE).wParam, static_cast<WPARAM>(SIZE_RESTORED));
    EXPECT_EQ(Place().left, 100);
}

TEST_F(ManagerTest, MinimisingIsToldAndTheWindowIsNotSeen) {
    Make();
    SendMessageW(window_, WM_SYSCOMMAND, SC_MINIMIZE, 0);
    ASSERT_TRUE(PumpUntil([&] { return IsIconic(window_) != FALSE; }));
    EXPECT_EQ(Last(WM_SIZE).wParam, static_cast<WPARAM>(SIZE_MINIMIZED));
    EXPECT_FALSE(Platform::IsWindowSeen(window_));
    ShowWindow(window_, SW_RESTORE);
    ASSERT_TRUE(PumpUntil([&] { return !IsIconic(window_); }));
    EXPECT_EQ(Last(WM_SIZE).wParam, static_cast<WPARAM>(SIZE_RESTORED));
}

TEST_F(ManagerTest, ClosingByTheManagerIsASystemCommand) {
    Make();
    answer_ = [](UINT message, WPARAM, LPARAM, LRESULT&) { return message == WM_CLOSE; };
    SendProtocol("WM_DELETE_WINDOW", 0, 0);
    ASSERT_TRUE(PumpUntilSeen(WM_CLOSE));
    EXPECT_EQ(Last(WM_SYSCOMMAND).wParam, static_cast<WPARAM>(SC_CLOSE));
    EXPECT_TRUE(IsWindow(window_));
}

TEST_F(ManagerTest, TheManagerMovesTheWindowBetweenTheSizeLoopsMessages) {
    Make();
    display_.MovePointer(300, 70);
    display_.Button(1, true);
    display_.MovePointer(310, 80);
    ASSERT_TRUE(PumpUntilSeen(WM_ENTERSIZEMOVE));
    // This manager tells the window its place only when the button is up. Until it holds the pointer, we get its moves.
    ASSERT_TRUE(PumpUntil([&] { return !PointerIsFree(); }));
    display_.MovePointer(350, 100);
    display_.Button(1, false);
    ASSERT_TRUE(PumpUntil([&] { return Place().left == 150; }));
    EXPECT_EQ(Place().top, 80);
    EXPECT_TRUE(PumpUntilSeen(WM_EXITSIZEMOVE));
}

TEST_F(ManagerTest, TheManagerResizesTheWindowBetweenTheSizeLoopsMessages) {
    Make();
    answer_ = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message == WM_SIZE) Platform::FrameShown(window_);
        return false;
    };
    display_.MovePointer(498, 348);
    display_.Button(1, true);
    ASSERT_TRUE(PumpUntilSeen(WM_ENTERSIZEMOVE));
    ASSERT_TRUE(PumpUntil([&] {
        static int step = 0;
        display_.MovePointer(540 + step++ % 10, 390);
        return Place().right > 520;
    }));
    display_.Button(1, false);
    EXPECT_TRUE(PumpUntilSeen(WM_EXITSIZEMOVE));
    EXPECT_EQ(Order({WM_ENTERSIZEMOVE, WM_NCCALCSIZE, WM_EXITSIZEMOVE}).front(), WM_ENTERSIZEMOVE);
    EXPECT_TRUE(Saw(WM_NCCALCSIZE));
}

TEST_F(ManagerTest, AGripThatIsLetGoBeforeTheManagerTakesItHoldsNothing) {
    Make();
    PumpAll();
    display_.MovePointer(498, 348);
    display_.Button(1, true);
    display_.Button(1, false);
    // The window hears of the press only now.
    ASSERT_TRUE(PumpUntilSeen(WM_EXITSIZEMOVE));
    ASSERT_TRUE(PumpUntil([&] { return PointerIsFree(); }));
    display_.MovePointer(400, 250);
    ASSERT_TRUE(PumpUntilSeen(WM_MOUSEMOVE));
    EXPECT_EQ(Place().right, 500);
    EXPECT_EQ(Place().bottom, 350);
}

TEST_F(ManagerTest, ACaptionThatIsDraggedAndLetGoBeforeTheManagerTakesItHoldsNothing) {
    Make();
    PumpAll();
    display_.MovePointer(300, 70);
    display_.Button(1, true);
    display_.MovePointer(340, 110);
    display_.Button(1, false);
    ASSERT_TRUE(PumpUntilSeen(WM_EXITSIZEMOVE));
    ASSERT_TRUE(PumpUntil([&] { return PointerIsFree(); }));
    display_.MovePointer(250, 250);
    ASSERT_TRUE(PumpUntilSeen(WM_MOUSEMOVE));
    EXPECT_EQ(Place().left, 100);
    EXPECT_EQ(Place().top, 50);
}

/// A manager that says what it can, and then does nothing.
class IdleManagerTest : public ManagerTest {
protected:
    void SetUp() override {
        auto* client = display_.Client();
        const xcb_window_t check = xcb_generate_id(client);
        xcb_create_window(client, 0, check, display_.Root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                          XCB_COPY_FROM_PARENT, 0, nullptr);
        const xcb_atom_t name = display_.Atom("_NET_SUPPORTING_WM_CHECK");
        for (const xcb_window_t window : {display_.Root(), check}) {
            xcb_change_property(client, XCB_PROP_MODE_REPLACE, window, name, XCB_ATOM_WINDOW, 32, 1, &check);
        }
        const xcb_atom_t feature = display_.Atom("_NET_WM_MOVERESIZE");
        xcb_change_property(client, XCB_PROP_MODE_REPLACE, display_.Root(), display_.Atom("_NET_SUPPORTED"),
                            XCB_ATOM_ATOM, 32, 1, &feature);
        display_.Settle();
        check_ = check;
    }
    void TearDown() override { xcb_destroy_window(display_.Client(), check_); }

    /// Runs the message loop with nothing to wake it but what the window gets. False after a long time.
    bool PumpUnaidedUntil(const std::function<bool()>& condition) {
        static constexpr auto patience = std::chrono::seconds(20);
        bool done = false;
        bool late = false;
        std::mutex mutex;
        std::condition_variable ended;
        std::thread watch([&, thread = GetCurrentThreadId()] {
            std::unique_lock lock(mutex);
            if (ended.wait_for(lock, patience, [&] { return done; })) return;
            late = true;
            PostThreadMessageW(thread, WM_APP, 0, 0);
        });
        MSG message{};
        while (!condition()) {
            GetMessageW(&message, nullptr, 0, 0);
            DispatchMessageW(&message);
            const std::lock_guard lock(mutex);
            if (late) break;
        }
        {
            const std::lock_guard lock(mutex);
            done = true;
        }
        ended.notify_one();
        watch.join();
        return !late;
    }

private:
    xcb_window_t check_ = 0;
};

TEST_F(IdleManagerTest, ASizeThatCameWithAnAnswerIsTakenThoughNothingFollowsIt) {
    ASSERT_NE(CreateHidden(), nullptr);
    ShowWindow(window_, SW_SHOWNORMAL);
    ASSERT_TRUE(PumpUntilSeen(WM_PAINT));
    answer_ = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message == WM_EXITSIZEMOVE) {
            display_.ConfigureWindow(XWindow(), 100, 50, 480, 380);
            // Whoever waits for an answer of the server's takes in what it sent before: here, whether there is a
            // manager.
            SendMessageW(window_, WM_SYSCOMMAND, SC_MINIMIZE, 0);
        }
        if (message == WM_SIZE) PostMessageW(window_, WM_APP, 0, 0);
        return false;
    };
    display_.MovePointer(498, 348);
    display_.Button(1, true);
    ASSERT_TRUE(PumpUntilSeen(WM_ENTERSIZEMOVE));
    ASSERT_TRUE(PumpUntil([&] { return PointerIsFree(); }));
    display_.MovePointer(900, 700);
    PumpAll();
    // Nobody tells the window of it: it lies elsewhere.
    display_.Button(1, false);
    EXPECT_TRUE(PumpUnaidedUntil([&] { return Place().right == 580; }));
    EXPECT_TRUE(Saw(WM_EXITSIZEMOVE));
}

TEST_F(ManagerTest, TheCounterRisesOnlyWhenTheFrameOfTheNewSizeIsShown) {
    Make();
    SendProtocol("_NET_WM_SYNC_REQUEST", 77, 0);
    display_.ConfigureWindow(XWindow(), 100, 50, 480, 380);
    ASSERT_TRUE(PumpUntil([&] { return Place().right == 580; }));
    EXPECT_NE(Counter(), 77U);
    Platform::FrameShown(window_, {400, 300});
    EXPECT_NE(Counter(), 77U) << "a frame of the old size";
    Platform::FrameShown(window_, {480, 380});
    EXPECT_TRUE(PumpUntil([&] { return Counter() == 77; }));
}

TEST_F(ManagerTest, AnUnchangedSizeKeepsNobodyWaiting) {
    Make();
    SendProtocol("_NET_WM_SYNC_REQUEST", 78, 0);
    display_.ConfigureWindow(XWindow(), 130, 60, 400, 300);
    EXPECT_TRUE(PumpUntil([&] { return Counter() == 78; }));
}

TEST_F(ManagerTest, IconsReachTheDesktop) {
    Make();
    const std::uint32_t pixels[4] = {0xFF0000FF, 0, 0, 0x80FFFFFF};
    const HICON icon = CreateIcon(nullptr, 2, 2, 1, 32, nullptr, reinterpret_cast<const BYTE*>(pixels));
    ASSERT_NE(icon, nullptr);
    EXPECT_EQ(SendMessageW(window_, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(icon)), 0);
    EXPECT_EQ(SendMessageW(window_, WM_GETICON, ICON_BIG, 0), reinterpret_cast<LRESULT>(icon));
    EXPECT_TRUE(PumpUntil([&] { return Value("_NET_WM_ICON") == 2; }));
    EXPECT_TRUE(DestroyIcon(icon));
    EXPECT_FALSE(DestroyIcon(icon));
}

// What program_icon.argb holds.
const std::vector<std::uint32_t> programIcon{1, 2, 0xFF72D6C8, 0x80FFFFFF};

TEST_F(ManagerTest, AWindowWithoutAnIconHasTheProgramsOwn) {
    Make();
    EXPECT_EQ(Values("_NET_WM_ICON"), programIcon);
}

TEST_F(ManagerTest, AnIconThatIsTakenAwayLeavesTheProgramsOwn) {
    Make();
    const std::uint32_t pixel = 0xFF0000FF;
    const HICON icon = CreateIcon(nullptr, 1, 1, 1, 32, nullptr, reinterpret_cast<const BYTE*>(&pixel));
    SendMessageW(window_, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(icon));
    EXPECT_TRUE(PumpUntil([&] { return Values("_NET_WM_ICON") == std::vector<std::uint32_t>{1, 1, pixel}; }));
    SendMessageW(window_, WM_SETICON, ICON_SMALL, 0);
    EXPECT_TRUE(PumpUntil([&] { return Values("_NET_WM_ICON") == programIcon; }));
    DestroyIcon(icon);
}

}  // namespace
