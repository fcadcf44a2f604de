// Scale and screens.
#include "Platform/Linux/Window/Display.h"
#include "WindowFixture.h"

namespace {

class DisplayTest : public WindowTest {};

TEST_F(DisplayTest, AScaleThatNobodySetIs96) {
    Make();
    EXPECT_EQ(GetDpiForWindow(window_), 96U);
    EXPECT_EQ(GetDpiForSystem(), 96U);
}

TEST_F(DisplayTest, TheScaleIsThatOfTheResources) {
    display_.SetProperty(display_.Root(), "RESOURCE_MANAGER", "Xft.antialias:\t1\nXft.dpi:\t144\n");
    Make();
    EXPECT_EQ(GetDpiForWindow(window_), 144U);
}

TEST_F(DisplayTest, AChangeOfTheScaleSuggestsARectangleAndAsksForTheMinimumAgain) {
    Make();
    RECT wish{};
    answer_ = [&](UINT message, WPARAM, LPARAM lParam, LRESULT&) {
        if (message == WM_DPICHANGED) wish = *reinterpret_cast<RECT*>(lParam);
        return false;
    };
    display_.SetProperty(display_.Root(), "RESOURCE_MANAGER", "Xft.dpi:\t192\n");
    ASSERT_TRUE(PumpUntilSeen(WM_DPICHANGED));
    EXPECT_EQ(LOWORD(Last(WM_DPICHANGED).wParam), 192);
    EXPECT_EQ(HIWORD(Last(WM_DPICHANGED).wParam), 192);
    EXPECT_EQ(wish.right - wish.left, 800);
    EXPECT_EQ(wish.bottom - wish.top, 600);
    EXPECT_EQ(GetDpiForWindow(window_), 192U);
    EXPECT_TRUE(Saw(WM_GETMINMAXINFO));
}

TEST_F(DisplayTest, ThePrimaryMonitorHasAWorkArea) {
    MONITORINFO info{sizeof(MONITORINFO), {}, {}, 0};
    ASSERT_TRUE(GetMonitorInfoW(MonitorFromPoint({0, 0}, MONITOR_DEFAULTTOPRIMARY), &info));
    EXPECT_EQ(info.rcMonitor.right, 1000);
    EXPECT_EQ(info.rcWork.bottom, 800);
    EXPECT_EQ(MonitorFromPoint({5000, 5000}, MONITOR_DEFAULTTONULL), nullptr);
    EXPECT_NE(MonitorFromPoint({5000, 5000}, MONITOR_DEFAULTTONEAREST), nullptr);
    info.cbSize = 0;
    EXPECT_FALSE(GetMonitorInfoW(MonitorFromPoint({0, 0}, MONITOR_DEFAULTTOPRIMARY), &info));
}

TEST_F(DisplayTest, PanelsAreNotPartOfTheWorkArea) {
    const std::uint32_t area[] = {0, 30, 1000, 770};
    xcb_change_property(display_.Client(), XCB_PROP_MODE_REPLACE, display_.Root(), display_.Atom("_NET_WORKAREA"),
                        XCB_ATOM_CARDINAL, 32, 4, area);
    display_.Settle();
    MONITORINFO info{sizeof(MONITORINFO), {}, {}, 0};
    ASSERT_TRUE(GetMonitorInfoW(MonitorFromPoint({0, 0}, MONITOR_DEFAULTTOPRIMARY), &info));
    EXPECT_EQ(info.rcWork.top, 30);
    EXPECT_EQ(info.rcMonitor.top, 0);
}

TEST(DpiFromResourcesTest, NonsenseIsNoScale) {
    EXPECT_EQ(Platform::DpiFromResources("Xft.dpi:\t120\n"), 120U);
    EXPECT_EQ(Platform::DpiFromResources("a: b\nXft.dpi: 119.7"), 120U);
    for (const char* text : {"", "Xft.dpi:", "Xft.dpi:\tlarge\n", "Xft.dpi:\t0\n", "Xft.dpi:\t-96\n", "Xft.dpi:\tnan\n",
                             "Xft.dpi:\t1e9\n", "NotXft.dpi:\t120\n"}) {
        EXPECT_EQ(Platform::DpiFromResources(text), std::nullopt) << text;
    }
}

TEST(SystemMetricsTest, TheCaptionGrowsWithTheScale) {
    EXPECT_EQ(GetSystemMetricsForDpi(SM_CYCAPTION, 96), 23);
    EXPECT_EQ(GetSystemMetricsForDpi(SM_CYCAPTION, 192), 46);
}

}  // namespace
