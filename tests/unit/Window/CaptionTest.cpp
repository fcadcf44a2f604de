// The caption's buttons, through the messages that the system sends for them.
#include "StandIns.h"

namespace Tamborel {

namespace {

// The window stands at 100, 200 and is 800 by 600, its client area one pixel inside.
constexpr int closeX = 850;
constexpr int maximizeX = 790;
constexpr int minimizeX = 730;
constexpr int captionX = 400;
constexpr int captionY = 220;

class Caption : public WindowTest {
protected:
    LRESULT NcDown(WPARAM code, int x) { return window.Send(WM_NCLBUTTONDOWN, code, PackedPoint(x, captionY)); }
    LRESULT NcUp(WPARAM code, int x) { return window.Send(WM_NCLBUTTONUP, code, PackedPoint(x, captionY)); }
    /// While the pointer is captured the system tells client coordinates, also outside the client area.
    LRESULT CapturedUp(int x, int y) { return window.Send(WM_LBUTTONUP, 0, PackedPoint(x - 101, y - 201)); }
    LRESULT CapturedMove(int x, int y) { return window.Send(WM_MOUSEMOVE, MK_LBUTTON, PackedPoint(x - 101, y - 201)); }

    TestWindow window;
};

TEST_F(Caption, HitTestTakesScreenCoordinatesWithTheirSign) {
    EXPECT_EQ(window.Send(WM_NCHITTEST, 0, PackedPoint(closeX, captionY)), HTCLOSE);
    EXPECT_EQ(window.Send(WM_NCHITTEST, 0, PackedPoint(captionX, captionY)), HTCAPTION);
    windows.Change([](Fakes::WindowSettings& settings) { settings.windowRect = {-900, -700, -100, -100}; });
    EXPECT_EQ(window.Send(WM_NCHITTEST, 0, PackedPoint(-899, -699)), HTTOPLEFT);
    EXPECT_EQ(window.Send(WM_NCHITTEST, 0, PackedPoint(-500, -400)), HTCLIENT);
}

TEST_F(Caption, HitTestUsesTheMetricsThatTheRenderThreadStored) {
    HitTestMetrics metrics;
    metrics.frameWidth = 30.0F;
    window.State().CaptionMetrics.Store(metrics);
    EXPECT_EQ(window.Send(WM_NCHITTEST, 0, PackedPoint(captionX, captionY)), HTTOP);
}

TEST_F(Caption, WithoutAHandleAllIsClient) {
    FrameWindow bare;
    EXPECT_EQ(bare.HandleMessage(WM_NCHITTEST, 0, PackedPoint(100, 200)), HTCLIENT);
}

TEST_F(Caption, PressAndReleaseOverTheSameButtonPostsItsCommand) {
    struct {
        WPARAM code;
        int x;
        bool zoomed;
        WPARAM command;
    } const cases[] = {{HTMINBUTTON, minimizeX, false, 0xF020},
                       {HTMAXBUTTON, maximizeX, false, 0xF030},
                       {HTMAXBUTTON, maximizeX, true, 0xF120},
                       {HTCLOSE, closeX, false, 0xF060}};
    for (const auto& each : cases) {
        windows.Change([&](Fakes::WindowSettings& settings) { settings.zoomed = each.zoomed; });
        const std::size_t before = windows.Posted().size();
        EXPECT_EQ(NcDown(each.code, each.x), 0);
        EXPECT_EQ(windows.Capture(), window.Handle());
        EXPECT_EQ(NcUp(each.code, each.x), 0);
        EXPECT_EQ(windows.Capture(), nullptr);
        const auto posted = windows.Posted();
        ASSERT_EQ(posted.size(), before + 1);
        EXPECT_EQ(posted.back().window, window.Handle());
        EXPECT_EQ(posted.back().message, WM_SYSCOMMAND);
        EXPECT_EQ(posted.back().wParam, each.command);
        EXPECT_EQ(posted.back().lParam, PackedPoint(each.x, captionY));
        EXPECT_EQ(window.State().PressedZone, NoZone);
    }
}

TEST_F(Caption, ReleaseWithCaptureComesInClientCoordinates) {
    NcDown(HTCLOSE, closeX);
    EXPECT_EQ(CapturedUp(closeX, captionY), 0);
    ASSERT_EQ(windows.Posted().size(), 1U);
    EXPECT_EQ(windows.Posted()[0].wParam, WPARAM{0xF060});
    EXPECT_EQ(windows.Posted()[0].lParam, PackedPoint(closeX - 101, captionY - 201));
    EXPECT_EQ(windows.Capture(), nullptr);
    EXPECT_TRUE(window.Drain().empty());
}

TEST_F(Caption, PressOnCloseDraggedOffClosesNothingAndHoverFollowsThePointer) {
    NcDown(HTCLOSE, closeX);
    CapturedMove(closeX, captionY);
    EXPECT_EQ(window.State().HoverZone, 2);
    CapturedMove(minimizeX, captionY);
    EXPECT_EQ(window.State().HoverZone, 0);
    CapturedMove(400, 500);
    EXPECT_EQ(window.State().HoverZone, NoZone);
    EXPECT_TRUE(window.Drain().empty());  // the scene sees no moves meanwhile
    EXPECT_EQ(CapturedUp(400, 500), 0);
    EXPECT_TRUE(windows.Posted().empty());
    EXPECT_EQ(window.State().PressedZone, NoZone);
    EXPECT_TRUE(window.Drain().empty());
}

TEST_F(Caption, PressOnMinimizeReleasedOnCloseDoesNothing) {
    NcDown(HTMINBUTTON, minimizeX);
    CapturedUp(closeX, captionY);
    EXPECT_TRUE(windows.Posted().empty());
    EXPECT_EQ(window.State().HoverZone, 2);
}

TEST_F(Caption, DoubleClickOnAButtonPressesItAgain) {
    EXPECT_EQ(window.Send(WM_NCLBUTTONDBLCLK, HTMAXBUTTON, PackedPoint(maximizeX, captionY)), 0);
    EXPECT_EQ(window.State().PressedZone, 1);
}

TEST_F(Caption, PressOutsideTheButtonsIsTheSystems) {
    EXPECT_EQ(NcDown(HTCAPTION, captionX), 77);
    EXPECT_EQ(window.Send(WM_NCLBUTTONDBLCLK, HTCAPTION, PackedPoint(captionX, captionY)), 77);
    EXPECT_EQ(windows.Calls(), (std::vector<std::string>{"DefWindowProcW 0x00A1", "DefWindowProcW 0x00A3"}));
    EXPECT_EQ(window.State().PressedZone, NoZone);
}

TEST_F(Caption, NonClientReleaseWithoutAPressIsTheSystemsAndStillReleasesOurCapture) {
    ::SetCapture(window.Handle());
    EXPECT_EQ(NcUp(HTCAPTION, captionX), 77);
    EXPECT_EQ(windows.Capture(), nullptr);
    EXPECT_TRUE(windows.Posted().empty());
}

TEST_F(Caption, ClientReleaseWithoutAPressLeavesTheCaptureAlone) {
    ::SetCapture(window.Handle());
    CapturedUp(400, 500);
    EXPECT_EQ(windows.Capture(), window.Handle());
}

TEST_F(Caption, AnothersCaptureIsNotReleased) {
    NcDown(HTCLOSE, closeX);
    const HWND other = reinterpret_cast<HWND>(std::uintptr_t{0x99});
    window.State().PressedZone = 2;
    ::SetCapture(other);
    window.State().PressedZone = 2;  // the change of capture has just cleared it
    NcUp(HTCLOSE, closeX);
    EXPECT_EQ(windows.Capture(), other);
}

TEST_F(Caption, LostCaptureEndsThePress) {
    NcDown(HTCLOSE, closeX);
    EXPECT_EQ(window.Send(WM_CAPTURECHANGED), 0);
    EXPECT_EQ(window.State().PressedZone, NoZone);
    CapturedUp(closeX, captionY);
    EXPECT_TRUE(windows.Posted().empty());
}

TEST_F(Caption, ReservedZoneHasNoCommand) {
    // No point hits a reserved slot, so its press is always cancelled.
    EXPECT_EQ(NcDown(HTOBJECT, captionX), 0);
    EXPECT_EQ(window.State().PressedZone, 3);
    EXPECT_EQ(NcUp(HTOBJECT, captionX), 0);
    EXPECT_TRUE(windows.Posted().empty());
}

TEST_F(Caption, MovesArmTrackingOnceUntilThePointerLeaves) {
    EXPECT_EQ(window.Send(WM_NCMOUSEMOVE, HTCLOSE, PackedPoint(closeX, captionY)), 77);
    EXPECT_EQ(window.State().HoverZone, 2);
    window.Send(WM_MOUSEMOVE, 0, PackedPoint(10, 100));
    EXPECT_EQ(window.State().HoverZone, NoZone);
    ASSERT_EQ(windows.Tracked().size(), 1U);
    const TRACKMOUSEEVENT track = windows.Tracked()[0];
    EXPECT_EQ(track.cbSize, 24U);
    EXPECT_EQ(track.dwFlags, 0x12U);
    EXPECT_EQ(track.hwndTrack, window.Handle());
    EXPECT_EQ(track.dwHoverTime, 0U);

    EXPECT_EQ(window.Send(WM_MOUSELEAVE), 0);
    window.Send(WM_MOUSEMOVE, 0, PackedPoint(10, 100));
    EXPECT_EQ(windows.Tracked().size(), 2U);
    EXPECT_EQ(window.Send(WM_NCMOUSELEAVE), 77);
    window.Send(WM_NCMOUSEMOVE, HTCAPTION, 0);
    EXPECT_EQ(windows.Tracked().size(), 3U);
}

TEST_F(Caption, LeavingTheWindowEndsTheHover) {
    for (const UINT leave : {WM_MOUSELEAVE, WM_NCMOUSELEAVE}) {
        window.Send(WM_NCMOUSEMOVE, HTMINBUTTON, 0);
        EXPECT_EQ(window.State().HoverZone, 0);
        window.Send(leave);
        EXPECT_EQ(window.State().HoverZone, NoZone);
    }
}

TEST_F(Caption, FullRingLeavesHitTestAndButtonsWorking) {
    for (int i = 0; i < 600; ++i) window.Send(WM_KEYDOWN, 'A', 0);
    EXPECT_EQ(window.Send(WM_NCHITTEST, 0, PackedPoint(closeX, captionY)), HTCLOSE);
    NcDown(HTCLOSE, closeX);
    NcUp(HTCLOSE, closeX);
    EXPECT_EQ(windows.Posted().size(), 1U);
    EXPECT_EQ(window.Drain().size(), 511U);
}

}  // namespace

}  // namespace Tamborel
