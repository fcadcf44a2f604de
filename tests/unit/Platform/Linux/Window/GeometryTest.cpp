// Places and sizes.
#include "Platform/Linux/Window/NativeWindow.h"
#include "WindowFixture.h"

#include <cstring>
#include <thread>

namespace {

class GeometryTest : public WindowTest {
protected:
    std::vector<std::int32_t> Property(const char* name, xcb_atom_t type) const {
        const auto cookie = xcb_get_property(display_.Client(), 0, XWindow(), display_.Atom(name), type, 0, 64);
        auto* reply = xcb_get_property_reply(display_.Client(), cookie, nullptr);
        std::vector<std::int32_t> values(reply->value_len);
        std::memcpy(values.data(), xcb_get_property_value(reply), values.size() * 4);
        std::free(reply);
        return values;
    }
};

TEST_F(GeometryTest, TheClientAreaIsWhatTheProcedureLeaves) {
    Make();
    RECT client{};
    GetClientRect(window_, &client);
    EXPECT_EQ(client.right, 398);
    EXPECT_EQ(client.bottom, 298);
    POINT origin{0, 0};
    ClientToScreen(window_, &origin);
    EXPECT_EQ(origin.x, 101);
    EXPECT_EQ(origin.y, 51);
    ScreenToClient(window_, &origin);
    EXPECT_EQ(origin.x, 0);
    EXPECT_EQ(Place().left, 100);
    EXPECT_EQ(Place().bottom, 350);
}

TEST_F(GeometryTest, AResizeFromOutsideAsksForTheClientAreaThenTellsTheSize) {
    Make();
    display_.ConfigureWindow(XWindow(), 100, 50, 500, 450);
    ASSERT_TRUE(PumpUntilSeen(WM_SIZE));
    EXPECT_EQ(Order({WM_NCCALCSIZE, WM_SIZE}), (std::vector<UINT>{WM_NCCALCSIZE, WM_SIZE}));
    EXPECT_EQ(Last(WM_NCCALCSIZE).wParam, 1U);
    EXPECT_EQ(Last(WM_SIZE).lParam, Packed(498, 448));
    EXPECT_EQ(Place().right, 600);
}

TEST_F(GeometryTest, AMoveFromOutsideTellsNoSize) {
    Make();
    display_.ConfigureWindow(XWindow(), 120, 70, 400, 300);
    ASSERT_TRUE(PumpUntilSeen(WM_MOVE));
    EXPECT_EQ(Last(WM_MOVE).lParam, Packed(121, 71));
    EXPECT_FALSE(Saw(WM_NCCALCSIZE));
    EXPECT_FALSE(Saw(WM_SIZE));
    EXPECT_EQ(Place().left, 120);
}

TEST_F(GeometryTest, AFrameAroundTheWindowCountsWhenItIsShownThoughNobodyTellsOfIt) {
    ASSERT_NE(CreateHidden(), nullptr);
    display_.ConfigureWindow(XWindow(), 0, 0, 400, 300);
    ASSERT_TRUE(PumpUntil([&] { return Place().left == 0; }));
    xcb_connection_t* const manager = display_.Client();
    const xcb_window_t frame = xcb_generate_id(manager);
    xcb_create_window(manager, XCB_COPY_FROM_PARENT, frame, display_.Root(), 30, 70, 400, 300, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_reparent_window(manager, XWindow(), frame, 0, 0);
    xcb_map_window(manager, frame);
    display_.Settle();
    ShowWindow(window_, SW_SHOWNORMAL);
    EXPECT_TRUE(PumpUntil([&] { return Place().left == 30 && Place().top == 70; }));
    EXPECT_EQ(Place().right, 430);
    DestroyWindow(window_);
    xcb_destroy_window(manager, frame);
    display_.Settle();
}

TEST_F(GeometryTest, TheWindowSeesItsOldRectangleWhileItAnswersForTheNewOne) {
    Make();
    LONG during = 0;
    answer_ = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message == WM_NCCALCSIZE) during = Place().right;
        return false;
    };
    SetWindowPos(window_, nullptr, 0, 0, 450, 300, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(during, 500);
    EXPECT_EQ(Place().right, 550);
}

TEST_F(GeometryTest, SetWindowPosTakesEffectAtOnceAndIsNotToldTwice) {
    Make();
    SetWindowPos(window_, nullptr, 10, 20, 450, 350, SWP_NOZORDER);
    SetWindowPos(window_, nullptr, 11, 21, 460, 360, SWP_NOZORDER);
    EXPECT_EQ(Place().left, 11);
    EXPECT_EQ(Count(WM_SIZE), 2U);
    const auto configured = [&] {
        auto* reply =
            xcb_get_geometry_reply(display_.Client(), xcb_get_geometry(display_.Client(), XWindow()), nullptr);
        const int width = reply->width;
        std::free(reply);
        return width;
    };
    EXPECT_TRUE(PumpUntil([&] { return configured() == 460; }));
    answer_ = [](UINT message, WPARAM, LPARAM, LRESULT&) { return message == WM_DPICHANGED; };
    PumpAll();
    EXPECT_EQ(Count(WM_SIZE), 2U);
    EXPECT_EQ(Place().right, 471);
}

TEST_F(GeometryTest, TheFrameIsAskedAgainOnRequestWithoutASize) {
    Make();
    SetWindowPos(window_, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_FRAMECHANGED);
    EXPECT_EQ(Count(WM_NCCALCSIZE), 1U);
    EXPECT_FALSE(Saw(WM_SIZE));
}

TEST_F(GeometryTest, TheMinimumSizeIsTheWindowsOwnAndHinted) {
    least_ = {210, 120};
    Make();
    const auto hints = Property("WM_NORMAL_HINTS", display_.Atom("WM_SIZE_HINTS"));
    ASSERT_EQ(hints.size(), 18U);
    EXPECT_TRUE(hints[0] & (1 << 4));
    EXPECT_EQ(hints[5], 210);
    EXPECT_EQ(hints[6], 120);
    SetWindowPos(window_, nullptr, 0, 0, 10, 10, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(Place().right - Place().left, 210);
    EXPECT_EQ(Place().bottom - Place().top, 120);
}

TEST_F(GeometryTest, AWindowThatIsTooSmallIsMadeLarger) {
    least_ = {600, 500};
    Make();
    EXPECT_EQ(Place().right - Place().left, 600);
    EXPECT_EQ(Place().bottom - Place().top, 500);
}

TEST_F(GeometryTest, AFixedWindowHintsItsSizeBothWays) {
    Make(WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX);
    const auto hints = Property("WM_NORMAL_HINTS", display_.Atom("WM_SIZE_HINTS"));
    EXPECT_EQ((std::vector{hints[5], hints[6], hints[7], hints[8]}), (std::vector{400, 300, 400, 300}));
}

TEST_F(GeometryTest, TheWindowHasNoFrameOfTheManagers) {
    Make();
    const auto hints = Property("_MOTIF_WM_HINTS", display_.Atom("_MOTIF_WM_HINTS"));
    ASSERT_EQ(hints.size(), 5U);
    EXPECT_EQ(hints[2], 0);
}

TEST_F(GeometryTest, TheTitleIsPublishedFromAnyThread) {
    Make();
    std::thread([&] { SetWindowTextW(window_, L"Gr\u00fc\u00dfe"); }).join();
    EXPECT_TRUE(PumpUntil([&] {
        const auto cookie = xcb_get_property(display_.Client(), 0, XWindow(), display_.Atom("_NET_WM_NAME"),
                                             display_.Atom("UTF8_STRING"), 0, 64);
        auto* reply = xcb_get_property_reply(display_.Client(), cookie, nullptr);
        const std::string text(static_cast<const char*>(xcb_get_property_value(reply)), reply->value_len);
        std::free(reply);
        return text ==
               "Gr\xC3\xBC\xC3\x9F"
               "e";
    }));
}

TEST_F(GeometryTest, TheDefaultClientAreaLeavesTheCaptionOut) {
    Make();
    RECT rectangle{0, 0, 400, 300};
    DefWindowProcW(window_, WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&rectangle));
    EXPECT_EQ(rectangle.top, GetSystemMetricsForDpi(SM_CYCAPTION, 96));
    EXPECT_EQ(rectangle.left, 0);
    EXPECT_EQ(rectangle.bottom, 300);
}

TEST_F(GeometryTest, MaximisingWithoutAManagerFillsTheScreenAndComesBack) {
    Make();
    PostMessageW(window_, WM_SYSCOMMAND, SC_MAXIMIZE, 0);
    ASSERT_TRUE(PumpUntil([&] { return IsZoomed(window_) != FALSE; }));
    EXPECT_EQ(Place().right, 1000);
    EXPECT_EQ(Place().bottom, 800);
    EXPECT_EQ(Last(WM_SIZE).wParam, static_cast<WPARAM>(SIZE_MAXIMIZED));
    SendMessageW(window_, WM_SYSCOMMAND, SC_RESTORE, 0);
    EXPECT_FALSE(IsZoomed(window_));
    EXPECT_EQ(Place().left, 100);
    EXPECT_EQ(Last(WM_SIZE).wParam, static_cast<WPARAM>(SIZE_RESTORED));
}

TEST_F(GeometryTest, BeingCoveredIsToldToTheListener) {
    Make();
    ASSERT_TRUE(Platform::IsWindowSeen(window_));
    std::vector<bool> told;
    const auto listener = Platform::AddSeenListener(window_, [&](bool seen) { told.push_back(seen); });
    const xcb_window_t cover = xcb_generate_id(display_.Client());
    const std::uint32_t pixel = 0;
    xcb_create_window(display_.Client(), XCB_COPY_FROM_PARENT, cover, display_.Root(), 0, 0, 1000, 800, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL, &pixel);
    xcb_map_window(display_.Client(), cover);
    display_.Settle();
    ASSERT_TRUE(PumpUntil([&] { return told.size() == 1; }));
    EXPECT_FALSE(Platform::IsWindowSeen(window_));
    xcb_destroy_window(display_.Client(), cover);
    display_.Settle();
    ASSERT_TRUE(PumpUntil([&] { return told.size() == 2; }));
    EXPECT_EQ(told, (std::vector{false, true}));
    Platform::RemoveSeenListener(window_, listener);
}

}  // namespace
