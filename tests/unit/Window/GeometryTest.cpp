// Size and position: what the window answers and what it tells the render thread.
#include "StandIns.h"

#include <limits>
#include <thread>

namespace Tamborel {

namespace {

class Geometry : public WindowTest {
protected:
    Geometry() {
        window.State().SurfacesReady = true;
        window.State().PendingGeometry.Store(untouched);
        window.State().ResizePending = false;
    }

    RECT CalcSize(const RECT& proposed) {
        NCCALCSIZE_PARAMS parameters{};
        parameters.rgrc[0] = proposed;
        EXPECT_EQ(window.Send(WM_NCCALCSIZE, TRUE, reinterpret_cast<LPARAM>(&parameters)), 0);
        return parameters.rgrc[0];
    }

    void SetZoomed() {
        windows.Change([](Fakes::WindowSettings& settings) { settings.zoomed = true; });
    }

    WindowGeometry Pending() { return window.State().PendingGeometry.Load(); }

    const WindowGeometry untouched{1, 2, 3, 4, 5, 6};
    TestWindow window;
};

TEST_F(Geometry, ClientAreaIsTheWindowLessARimOfOnePixel) {
    const RECT client = CalcSize({10, 20, 510, 420});
    EXPECT_EQ(client.left, 11);
    EXPECT_EQ(client.top, 21);
    EXPECT_EQ(client.right, 509);
    EXPECT_EQ(client.bottom, 419);
    EXPECT_EQ(Pending(), (WindowGeometry{498, 398, 1, 1, 500, 400}));
    EXPECT_TRUE(window.State().ResizePending);
}

TEST_F(Geometry, ClientSizeIsNeverNegative) {
    CalcSize({10, 20, 11, 20});
    EXPECT_EQ(Pending(), (WindowGeometry{0, 0, 1, 1, 1, 0}));
}

TEST_F(Geometry, MaximizedWindowHasOffsetZeroAndTheWindowsSizeThoughItsClientRectangleDiffers) {
    SetZoomed();
    const RECT client = CalcSize({-8, -8, 1928, 1048});
    // The system's frame of 8 stays, of its 31 at the top the caption's 23 go.
    EXPECT_EQ(client.left, 0);
    EXPECT_EQ(client.top, 0);
    EXPECT_EQ(client.right, 1920);
    EXPECT_EQ(client.bottom, 1040);
    EXPECT_EQ(Pending(), (WindowGeometry{1936, 1056, 0, 0, 1936, 1056}));

    window.Send(WM_SIZE, SIZE_MAXIMIZED, PackedPoint(700, 500));
    EXPECT_EQ(Pending(), (WindowGeometry{800, 600, 0, 0, 800, 600}));
}

TEST_F(Geometry, CalcSizeWithoutAParameterIsTheSystems) {
    RECT rectangle{0, 0, 100, 100};
    EXPECT_EQ(window.Send(WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&rectangle)), 77);
    EXPECT_EQ(windows.Calls(), std::vector<std::string>{"DefWindowProcW 0x0083"});
    EXPECT_EQ(Pending(), untouched);
}

TEST_F(Geometry, SizeIsTakenFromTheMessageAndTheRestFromTheSystem) {
    windows.Change([](Fakes::WindowSettings& settings) { settings.clientOrigin = {103, 204}; });
    EXPECT_EQ(window.Send(WM_SIZE, SIZE_RESTORED, PackedPoint(0xFFF0, 590)), 0);
    EXPECT_EQ(Pending(), (WindowGeometry{0xFFF0, 590, 3, 4, 800, 600}));
    EXPECT_TRUE(window.State().ResizePending);
}

TEST_F(Geometry, MinimizingLeavesThePendingGeometryAsItWas) {
    EXPECT_EQ(window.Send(WM_SIZE, SIZE_MINIMIZED, 0), 0);
    EXPECT_EQ(Pending(), untouched);
    EXPECT_FALSE(window.State().ResizePending);
}

TEST_F(Geometry, SizeWithoutSurfacesIsIgnored) {
    window.State().SurfacesReady = false;
    EXPECT_EQ(window.Send(WM_SIZE, SIZE_RESTORED, PackedPoint(10, 10)), 0);
    EXPECT_EQ(window.Send(WM_EXITSIZEMOVE), 0);
    EXPECT_EQ(Pending(), untouched);
    EXPECT_FALSE(window.State().ResizePending);
}

TEST_F(Geometry, LaterGeometrySupersedesOneThatWasNotTaken) {
    CalcSize({0, 0, 300, 200});
    CalcSize({0, 0, 400, 200});
    EXPECT_EQ(Pending().windowWidth, 400);
}

TEST_F(Geometry, EnteringASizeLoopMarksAllDirtyAndCountsFramesAnew) {
    WindowState& state = window.State();
    state.FrameDirty = state.ClientDirty = state.CommitNeeded = false;
    state.FrameCounter = 9;
    EXPECT_EQ(window.Send(WM_ENTERSIZEMOVE), 0);
    EXPECT_TRUE(state.InSizeMove);
    EXPECT_TRUE(state.ResizePending);
    EXPECT_TRUE(state.FrameDirty);
    EXPECT_TRUE(state.ClientDirty);
    EXPECT_TRUE(state.CommitNeeded);
    EXPECT_EQ(state.FrameCounter, 0U);
    EXPECT_EQ(Pending(), untouched);
}

TEST_F(Geometry, LeavingASizeLoopMeasuresTheWindow) {
    window.Send(WM_ENTERSIZEMOVE);
    window.State().ResizePending = false;
    SetZoomed();  // makes no difference here
    EXPECT_EQ(window.Send(WM_EXITSIZEMOVE), 0);
    EXPECT_FALSE(window.State().InSizeMove);
    EXPECT_TRUE(window.State().ResizePending);
    EXPECT_EQ(Pending(), (WindowGeometry{798, 598, 1, 1, 800, 600}));
}

TEST_F(Geometry, InASizeLoopTheAnswerWaitsForOneFrameAfterTheNewGeometry) {
    window.State().FrameTickEvent.Open();
    window.Send(WM_ENTERSIZEMOVE);
    window.State().FrameCounter = 5;
    window.State().ResizePending = false;
    std::atomic<bool> sawGeometryFirst{false};
    std::thread render([this, &sawGeometryFirst] {
        while (!window.State().ResizePending) std::this_thread::yield();
        sawGeometryFirst = Pending().windowWidth == 500;
        window.State().FrameTickEvent.Signal();  // without a counted frame this ends nothing
        ++window.State().FrameCounter;
        window.State().FrameTickEvent.Signal();
    });
    CalcSize({0, 0, 500, 400});
    EXPECT_EQ(window.State().FrameCounter, 6U);
    render.join();
    EXPECT_TRUE(sawGeometryFirst);
}

TEST_F(Geometry, CounterAtItsEndIsNotWaitedFor) {
    window.Send(WM_ENTERSIZEMOVE);
    window.State().FrameCounter = std::numeric_limits<std::uint64_t>::max();
    CalcSize({0, 0, 500, 400});
    EXPECT_EQ(Pending().windowWidth, 500);
}

TEST_F(Geometry, MinimumSizeFollowsTheDpiAtEachMessageAndTouchesNothingElse) {
    MINMAXINFO info{};
    info.ptMaxTrackSize = {7, 8};
    EXPECT_EQ(window.Send(WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info)), 0);
    EXPECT_EQ(info.ptMinTrackSize.x, 222);
    EXPECT_EQ(info.ptMinTrackSize.y, 42);
    windows.Change([](Fakes::WindowSettings& settings) { settings.dpi = 144; });
    window.Send(WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(info.ptMinTrackSize.x, 332);
    EXPECT_EQ(info.ptMinTrackSize.y, 63);
    EXPECT_EQ(info.ptMaxTrackSize.x, 7);
    EXPECT_EQ(info.ptMaxTrackSize.y, 8);
}

TEST_F(Geometry, MinimumSizeFollowsTheTheme) {
    ChromeTheme theme;
    theme.TitleHeight = 36.0F;
    window.SetChromeTheme(theme);
    MINMAXINFO info{};
    window.Send(WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(info.ptMinTrackSize.x, 218);  // 21.6 + 8 + 180 + 8
    EXPECT_EQ(info.ptMinTrackSize.y, 36);
}

TEST_F(Geometry, ChangeOfDpiTakesTheSuggestedRectangle) {
    const RECT suggested{11, 22, 1111, 822};
    EXPECT_EQ(window.Send(WM_DPICHANGED, 0, reinterpret_cast<LPARAM>(&suggested)), 0);
    const Fakes::Placement placed = windows.Placements().back();
    EXPECT_EQ(placed.window, window.Handle());
    EXPECT_EQ(placed.x, 11);
    EXPECT_EQ(placed.y, 22);
    EXPECT_EQ(placed.width, 1100);
    EXPECT_EQ(placed.height, 800);
    EXPECT_EQ(placed.flags, SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

}  // namespace

}  // namespace Tamborel
