// The pointer: which messages it makes where.
#include "WindowFixture.h"

#include <xcb/xfixes.h>

namespace {

class PointerTest : public WindowTest {
protected:
    void Track(DWORD flags) {
        TRACKMOUSEEVENT track{sizeof(TRACKMOUSEEVENT), flags, window_, 0};
        EXPECT_TRUE(TrackMouseEvent(&track));
    }
    std::vector<std::uint32_t> CursorPixels() const {
        auto* client = display_.Client();
        std::free(xcb_xfixes_query_version_reply(client, xcb_xfixes_query_version(client, 4, 0), nullptr));
        auto* reply = xcb_xfixes_get_cursor_image_reply(client, xcb_xfixes_get_cursor_image(client), nullptr);
        const std::uint32_t* pixels = xcb_xfixes_get_cursor_image_cursor_image(reply);
        const std::vector<std::uint32_t> all(pixels, pixels + reply->width * reply->height);
        std::free(reply);
        return all;
    }
    /// The cursor at a place, once the window has seen the pointer there.
    std::vector<std::uint32_t> CursorAt(int x, int y) {
        seen_.clear();
        display_.MovePointer(x, y);
        EXPECT_TRUE(PumpUntilSeen(WM_SETCURSOR));
        PumpAll();
        return CursorPixels();
    }
};

TEST_F(PointerTest, OverTheClientAreaItGivesClientMessages) {
    Make();
    display_.MovePointer(300, 200);
    ASSERT_TRUE(PumpUntilSeen(WM_MOUSEMOVE));
    EXPECT_EQ(Last(WM_NCHITTEST).lParam, Packed(300, 200));
    EXPECT_EQ(Last(WM_MOUSEMOVE).lParam, Packed(199, 149));
    EXPECT_FALSE(Saw(WM_NCMOUSEMOVE));
}

TEST_F(PointerTest, OverTheCaptionItGivesNonClientMessages) {
    Make();
    display_.MovePointer(300, 70);
    ASSERT_TRUE(PumpUntilSeen(WM_NCMOUSEMOVE));
    EXPECT_EQ(Last(WM_NCMOUSEMOVE).wParam, static_cast<WPARAM>(HTCAPTION));
    EXPECT_EQ(Last(WM_NCMOUSEMOVE).lParam, Packed(300, 70));
    EXPECT_FALSE(Saw(WM_MOUSEMOVE));
}

TEST_F(PointerTest, ButtonsTellWhatIsHeld) {
    Make();
    display_.MovePointer(300, 200);
    display_.Button(1, true);
    display_.Button(3, true);
    display_.Button(3, false);
    display_.Button(1, false);
    ASSERT_TRUE(PumpUntilSeen(WM_LBUTTONUP));
    EXPECT_EQ(Last(WM_LBUTTONDOWN).wParam, static_cast<WPARAM>(MK_LBUTTON));
    EXPECT_EQ(Last(WM_RBUTTONDOWN).wParam, static_cast<WPARAM>(MK_LBUTTON | MK_RBUTTON));
    EXPECT_EQ(Last(WM_RBUTTONUP).wParam, static_cast<WPARAM>(MK_LBUTTON));
    EXPECT_EQ(Last(WM_LBUTTONUP).wParam, 0U);
}

TEST_F(PointerTest, TheMiddleButtonHasItsOwnMessages) {
    Make();
    display_.MovePointer(300, 200);
    display_.Click(2);
    ASSERT_TRUE(PumpUntilSeen(WM_MBUTTONUP));
    EXPECT_EQ(Last(WM_MBUTTONDOWN).wParam, static_cast<WPARAM>(MK_MBUTTON));
}

TEST_F(PointerTest, APressOnTheCloseButtonIsTheWindowsOwn) {
    Make();
    display_.MovePointer(460, 70);
    display_.Click(1);
    ASSERT_TRUE(PumpUntilSeen(WM_NCLBUTTONUP));
    EXPECT_EQ(Last(WM_NCLBUTTONDOWN).wParam, static_cast<WPARAM>(HTCLOSE));
    EXPECT_EQ(Last(WM_NCLBUTTONUP).wParam, static_cast<WPARAM>(HTCLOSE));
    EXPECT_FALSE(Saw(WM_CLOSE));
}

TEST_F(PointerTest, ACaptureGetsAllInClientCoordinatesAndNoHitTest) {
    Make();
    answer_ = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message == WM_NCLBUTTONDOWN) SetCapture(window_);
        return message == WM_NCLBUTTONDOWN;
    };
    display_.MovePointer(460, 70);
    display_.Button(1, true);
    ASSERT_TRUE(PumpUntilSeen(WM_NCLBUTTONDOWN));
    EXPECT_EQ(GetCapture(), window_);
    seen_.clear();
    display_.MovePointer(50, 30);
    ASSERT_TRUE(PumpUntilSeen(WM_MOUSEMOVE));
    EXPECT_EQ(Last(WM_MOUSEMOVE).lParam, Packed(-51, -21));
    display_.Button(1, false);
    ASSERT_TRUE(PumpUntilSeen(WM_LBUTTONUP));
    EXPECT_FALSE(Saw(WM_NCHITTEST));
    ReleaseCapture();
    EXPECT_EQ(Count(WM_CAPTURECHANGED), 1U);
    EXPECT_EQ(GetCapture(), nullptr);
    ReleaseCapture();
    EXPECT_EQ(Count(WM_CAPTURECHANGED), 1U);
}

TEST_F(PointerTest, OutsideTheWindowAHeldButtonTellsNothingWithoutCapture) {
    Make();
    display_.MovePointer(300, 200);
    display_.Button(1, true);
    ASSERT_TRUE(PumpUntilSeen(WM_LBUTTONDOWN));
    seen_.clear();
    display_.MovePointer(700, 600);
    display_.Button(1, false);
    display_.MovePointer(301, 201);
    ASSERT_TRUE(PumpUntilSeen(WM_MOUSEMOVE));
    EXPECT_EQ(Last(WM_MOUSEMOVE).lParam, Packed(200, 150));
    EXPECT_FALSE(Saw(WM_LBUTTONUP));
}

TEST_F(PointerTest, LeavingIsToldOnceToWhoTracks) {
    Make();
    display_.MovePointer(300, 200);
    ASSERT_TRUE(PumpUntilSeen(WM_MOUSEMOVE));
    Track(TME_LEAVE);
    display_.MovePointer(700, 600);
    ASSERT_TRUE(PumpUntilSeen(WM_MOUSELEAVE));
    display_.MovePointer(300, 200);
    display_.MovePointer(700, 600);
    PumpAll();
    EXPECT_EQ(Count(WM_MOUSELEAVE), 1U);
}

TEST_F(PointerTest, LeavingTheFrameForTheClientAreaIsALeave) {
    Make();
    display_.MovePointer(300, 70);
    ASSERT_TRUE(PumpUntilSeen(WM_NCMOUSEMOVE));
    Track(TME_LEAVE | TME_NONCLIENT);
    display_.MovePointer(300, 200);
    ASSERT_TRUE(PumpUntilSeen(WM_MOUSEMOVE));
    EXPECT_TRUE(PumpUntilSeen(WM_NCMOUSELEAVE));
}

TEST_F(PointerTest, LeavingTheFrameForTheOutsideIsALeave) {
    Make();
    display_.MovePointer(300, 70);
    ASSERT_TRUE(PumpUntilSeen(WM_NCMOUSEMOVE));
    Track(TME_LEAVE | TME_NONCLIENT);
    display_.MovePointer(300, 20);
    EXPECT_TRUE(PumpUntilSeen(WM_NCMOUSELEAVE));
    EXPECT_FALSE(Saw(WM_MOUSELEAVE));
}

TEST_F(PointerTest, TheWheelGivesScreenCoordinatesAndAStep) {
    Make();
    display_.MovePointer(300, 200);
    display_.Click(4);
    ASSERT_TRUE(PumpUntilSeen(WM_MOUSEWHEEL));
    EXPECT_EQ(static_cast<SHORT>(HIWORD(Last(WM_MOUSEWHEEL).wParam)), WHEEL_DELTA);
    EXPECT_EQ(Last(WM_MOUSEWHEEL).lParam, Packed(300, 200));
    seen_.clear();
    display_.Click(5);
    ASSERT_TRUE(PumpUntilSeen(WM_MOUSEWHEEL));
    EXPECT_EQ(static_cast<SHORT>(HIWORD(Last(WM_MOUSEWHEEL).wParam)), -WHEEL_DELTA);
}

TEST_F(PointerTest, ADoubleClickInTheClientAreaIsTwoPressesUnlessTheClassAsks) {
    Make();
    display_.MovePointer(300, 200);
    display_.Click(1);
    display_.Click(1);
    ASSERT_TRUE(PumpUntil([&] { return Count(WM_LBUTTONUP) == 2; }));
    EXPECT_EQ(Count(WM_LBUTTONDOWN), 2U);
    EXPECT_FALSE(Saw(WM_LBUTTONDBLCLK));
}

TEST_F(PointerTest, ADoubleClickIsToldToAClassThatAsksAndTheThirdPressIsPlain) {
    Make(WS_OVERLAPPEDWINDOW, CS_DBLCLKS);
    display_.MovePointer(300, 200);
    for (int i = 0; i < 3; ++i) display_.Click(1);
    ASSERT_TRUE(PumpUntil([&] { return Count(WM_LBUTTONUP) == 3; }));
    EXPECT_EQ(Order({WM_LBUTTONDOWN, WM_LBUTTONDBLCLK}),
              (std::vector<UINT>{WM_LBUTTONDOWN, WM_LBUTTONDBLCLK, WM_LBUTTONDOWN}));
}

TEST_F(PointerTest, ADoubleClickOnTheCaptionMaximises) {
    Make();
    display_.MovePointer(300, 70);
    display_.Click(1);
    display_.Click(1);
    ASSERT_TRUE(PumpUntil([&] { return IsZoomed(window_) != FALSE; }));
    EXPECT_EQ(Count(WM_NCLBUTTONDBLCLK), 1U);
    EXPECT_FALSE(Saw(WM_ENTERSIZEMOVE));
}

TEST_F(PointerTest, EachZoneHasItsCursor) {
    Make();
    const auto client = CursorAt(300, 200);
    const auto left = CursorAt(102, 200);
    const auto top = CursorAt(300, 52);
    const auto corner = CursorAt(102, 52);
    const auto otherCorner = CursorAt(498, 52);
    EXPECT_EQ(CursorAt(300, 70), client);
    EXPECT_EQ(CursorAt(498, 200), left);
    EXPECT_EQ(CursorAt(300, 348), top);
    const std::vector<std::vector<std::uint32_t>> all{client, left, top, corner, otherCorner};
    for (std::size_t i = 0; i < all.size(); ++i) {
        for (std::size_t j = i + 1; j < all.size(); ++j) EXPECT_NE(all[i], all[j]) << i << " and " << j;
    }
}

TEST_F(PointerTest, AWindowOfFixedSizeHasNoSizingCursor) {
    Make(WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX);
    EXPECT_EQ(CursorAt(102, 200), CursorAt(300, 200));
}

}  // namespace
