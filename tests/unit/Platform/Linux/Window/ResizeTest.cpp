// How a window follows the sizes that it is given, and how its manager waits for it.
#include "Platform/Linux/Window/ResizeCounter.h"
#include "WindowFixture.h"

#include <xcb/sync.h>

#include <cstring>

namespace {

class ResizeTest : public WindowTest {
protected:
    /// What a manager asks with before it sends a size.
    void AskForFrame(std::uint32_t value) const {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = XWindow();
        message.type = display_.Atom("WM_PROTOCOLS");
        message.data.data32[0] = display_.Atom("_NET_WM_SYNC_REQUEST");
        message.data.data32[2] = value;
        xcb_send_event(display_.Client(), 0, XWindow(), 0, reinterpret_cast<const char*>(&message));
    }
    std::int64_t Value(std::uint32_t counter) const {
        auto* client = display_.Client();
        std::free(xcb_sync_initialize_reply(client, xcb_sync_initialize(client, 3, 1), nullptr));
        auto* reply = xcb_sync_query_counter_reply(client, xcb_sync_query_counter(client, counter), nullptr);
        const std::int64_t value = std::int64_t{reply->counter_value.hi} << 32 | reply->counter_value.lo;
        std::free(reply);
        return value;
    }
    std::uint32_t WindowsCounter() const {
        auto* client = display_.Client();
        const auto cookie = xcb_get_property(client, 0, XWindow(), display_.Atom("_NET_WM_SYNC_REQUEST_COUNTER"),
                                             XCB_GET_PROPERTY_TYPE_ANY, 0, 1);
        auto* reply = xcb_get_property_reply(client, cookie, nullptr);
        std::uint32_t counter = 0;
        std::memcpy(&counter, xcb_get_property_value(reply), sizeof counter);
        std::free(reply);
        return counter;
    }
    /// Makes sure that all that the server has sent the window so far has come.
    void TakeAllIn() const {
        // Whether there is a manager has to be asked, and the answer comes last.
        SendMessageW(window_, WM_SYSCOMMAND, SC_MINIMIZE, 0);
    }
};

TEST_F(ResizeTest, OfTheTwoStepsOfAManagersResizeOnlyTheLastIsTold) {
    Make();
    display_.ConfigureWindow(XWindow(), 100, 50, 480, 300);
    display_.ConfigureWindow(XWindow(), 100, 50, 480, 260);
    TakeAllIn();
    ASSERT_TRUE(PumpUntil([&] { return Place().bottom == 310; }));
    EXPECT_EQ(Count(WM_SIZE), 1U);
    EXPECT_EQ(Last(WM_SIZE).lParam, Packed(478, 258));
    EXPECT_TRUE(PumpUntilSeen(WM_PAINT)) << "the part that came into sight in between";
}

TEST_F(ResizeTest, ASizeIsToldBeforeTheClickThatFollowedIt) {
    Make();
    display_.MovePointer(300, 200);
    PumpAll();
    seen_.clear();
    display_.ConfigureWindow(XWindow(), 100, 50, 480, 300);
    display_.Click(1);
    display_.ConfigureWindow(XWindow(), 100, 50, 480, 260);
    TakeAllIn();
    ASSERT_TRUE(PumpUntil([&] { return Place().bottom == 310; }));
    EXPECT_EQ(Order({WM_SIZE, WM_LBUTTONDOWN, WM_LBUTTONUP}),
              (std::vector<UINT>{WM_SIZE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_SIZE}));
}

TEST_F(ResizeTest, AFrameStaysForMoreThanAPeriodOfTheDisplayBeforeTheManagerMayGoOn) {
    Make();
    const auto connection = Platform::Connection::Open();
    const std::uint32_t clock = Platform::FrameClock(*connection);
    ASSERT_NE(clock, 0U);
    AskForFrame(81);
    display_.ConfigureWindow(XWindow(), 100, 50, 480, 380);
    ASSERT_TRUE(PumpUntil([&] { return Place().right == 580; }));
    const std::int64_t shown = Value(clock);
    Platform::FrameShown(window_, {480, 380});
    ASSERT_TRUE(PumpUntil([&] { return Value(WindowsCounter()) == 81; }));
    EXPECT_GE(Value(clock) - shown, 24);
}

TEST_F(ResizeTest, ASizeThatComesTwiceDoesNotStandForItsFrame) {
    Make();
    AskForFrame(82);
    display_.ConfigureWindow(XWindow(), 100, 50, 480, 380);
    ASSERT_TRUE(PumpUntil([&] { return Place().right == 580; }));
    display_.ConfigureWindow(XWindow(), 120, 50, 480, 380);
    ASSERT_TRUE(PumpUntil([&] { return Place().right == 600; }));
    const auto view = Platform::ViewNativeWindow(window_);
    std::free(xcb_get_input_focus_reply(view->connection.get(), xcb_get_input_focus(view->connection.get()), nullptr));
    EXPECT_NE(Value(WindowsCounter()), 82);
    Platform::FrameShown(window_, {480, 380});
    EXPECT_TRUE(PumpUntil([&] { return Value(WindowsCounter()) == 82; }));
}

TEST_F(ResizeTest, ACompositingManagerNeedsNoFrameToStay) {
    Make();
    const auto connection = Platform::Connection::Open();
    EXPECT_NE(Platform::FrameClock(*connection), 0U);
    const xcb_atom_t selection = display_.Atom("_NET_WM_CM_S0");
    xcb_set_selection_owner(display_.Client(), XWindow(), selection, XCB_CURRENT_TIME);
    display_.Settle();
    EXPECT_EQ(Platform::FrameClock(*connection), 0U);
    xcb_set_selection_owner(display_.Client(), XCB_WINDOW_NONE, selection, XCB_CURRENT_TIME);
    display_.Settle();
    EXPECT_NE(Platform::FrameClock(*connection), 0U);
}

}  // namespace
