#include "Window/HitTest.h"

#include <gtest/gtest.h>

namespace {

using Tamborel::HitTestMetrics;

constexpr int width = 800;
constexpr int height = 600;

int Hit(int x, int y, const HitTestMetrics& metrics = {}, float dpiScale = 1.0F) {
    return HitTestCaption(metrics, {x, y, width, height}, dpiScale);
}

TEST(HitTest, CornersGoBeforeEdgesAndEdgesBeforeTheCaption) {
    EXPECT_EQ(Hit(0, 0), HTTOPLEFT);
    EXPECT_EQ(Hit(7, 7), HTTOPLEFT);
    EXPECT_EQ(Hit(792, 7), HTTOPRIGHT);
    EXPECT_EQ(Hit(7, 592), HTBOTTOMLEFT);
    EXPECT_EQ(Hit(792, 592), HTBOTTOMRIGHT);
    EXPECT_EQ(Hit(8, 7), HTTOP);
    EXPECT_EQ(Hit(791, 592), HTBOTTOM);
    EXPECT_EQ(Hit(7, 8), HTLEFT);
    EXPECT_EQ(Hit(792, 8), HTRIGHT);
    EXPECT_EQ(Hit(400, 300), HTCLIENT);
}

TEST(HitTest, LastColumnWithinAFrameWidthOfTheCornerResizesAndDoesNotClose) {
    EXPECT_EQ(Hit(width - 1, 3), HTTOPRIGHT);
    EXPECT_EQ(Hit(width - 1, 20), HTRIGHT);
    EXPECT_EQ(Hit(width - 9, 20), HTCLOSE);
}

TEST(HitTest, ButtonsStandAtTheRightEdge) {
    EXPECT_EQ(Hit(740, 20), HTCLOSE);
    EXPECT_EQ(Hit(739, 20), HTMAXBUTTON);
    EXPECT_EQ(Hit(680, 20), HTMAXBUTTON);
    EXPECT_EQ(Hit(679, 20), HTMINBUTTON);
    EXPECT_EQ(Hit(620, 20), HTMINBUTTON);
    EXPECT_EQ(Hit(619, 20), HTCAPTION);
    EXPECT_EQ(Hit(619, 41), HTCAPTION);
    EXPECT_EQ(Hit(619, 42), HTCLIENT);
}

TEST(HitTest, IconIsPlainCaptionAlsoWhereAButtonLies) {
    // 42 × 0.6 + 8 + 8 is 41.2 and rounds up.
    HitTestMetrics metrics;
    EXPECT_EQ(HitTestCaption(metrics, {41, 20, 60, 600}, 1.0F), HTCAPTION);
    EXPECT_EQ(HitTestCaption(metrics, {42, 20, 60, 600}, 1.0F), HTCLOSE);
    metrics.hasIcon = false;
    EXPECT_EQ(HitTestCaption(metrics, {41, 20, 60, 600}, 1.0F), HTCLOSE);
}

TEST(HitTest, FrameWidthOfEightAtOneAndAHalfTimesTheScaleIsTwelvePixels) {
    EXPECT_EQ(Hit(11, 300, {}, 1.5F), HTLEFT);
    EXPECT_EQ(Hit(12, 300, {}, 1.5F), HTCLIENT);
    EXPECT_EQ(Hit(788, 300, {}, 1.5F), HTRIGHT);
    EXPECT_EQ(Hit(787, 300, {}, 1.5F), HTCLIENT);
}

TEST(HitTest, FrameWidthBelowOnePixelGivesNoResizeBorderAtAll) {
    HitTestMetrics metrics;
    metrics.frameWidth = 0.5F;
    EXPECT_EQ(Hit(0, 0, metrics), HTCAPTION);
    EXPECT_EQ(Hit(0, 599, metrics), HTCLIENT);
    EXPECT_EQ(Hit(799, 0, metrics), HTCLOSE);
    metrics.frameWidth = -3.0F;
    EXPECT_EQ(Hit(0, 0, metrics), HTCAPTION);
}

TEST(HitTest, TitleAndButtonsAreAtLeastOneUnit) {
    HitTestMetrics metrics;
    metrics.frameWidth = 0.0F;
    metrics.titleHeight = 0.0F;
    metrics.buttonWidth = 0.0F;
    metrics.hasIcon = false;
    EXPECT_EQ(Hit(799, 0, metrics), HTCLOSE);
    EXPECT_EQ(Hit(798, 0, metrics), HTMAXBUTTON);
    EXPECT_EQ(Hit(797, 0, metrics), HTMINBUTTON);
    EXPECT_EQ(Hit(796, 0, metrics), HTCAPTION);
    EXPECT_EQ(Hit(799, 1, metrics), HTCLIENT);
}

TEST(HitTest, ZonesFollowFromCodes) {
    EXPECT_EQ(Tamborel::ZoneFromHit(HTMINBUTTON), 0);
    EXPECT_EQ(Tamborel::ZoneFromHit(HTMAXBUTTON), 1);
    EXPECT_EQ(Tamborel::ZoneFromHit(HTCLOSE), 2);
    EXPECT_EQ(Tamborel::ZoneFromHit(HTOBJECT), 3);
    EXPECT_EQ(Tamborel::ZoneFromHit(0x1A0), 4);
    EXPECT_EQ(Tamborel::ZoneFromHit(HTCAPTION), -1);
    EXPECT_EQ(Tamborel::ZoneFromHit(HTCLIENT), -1);
}

TEST(HitTest, CommandsFollowFromZones) {
    EXPECT_EQ(Tamborel::SysCommandForZone(0, false), WPARAM{0xF020});
    EXPECT_EQ(Tamborel::SysCommandForZone(1, false), WPARAM{0xF030});
    EXPECT_EQ(Tamborel::SysCommandForZone(1, true), WPARAM{0xF120});
    EXPECT_EQ(Tamborel::SysCommandForZone(2, false), WPARAM{0xF060});
    for (const int zone : {3, 4, -1}) EXPECT_EQ(Tamborel::SysCommandForZone(zone, false), WPARAM{0});
}

TEST(HitTest, SmallestWindowHoldsIconThreeButtonsAndOneTitleBar) {
    const Tamborel::MinimumSize plain = Tamborel::MinimumWindowSize({}, 1.0F);
    EXPECT_EQ(plain.width, 222);  // 25.2 + 8 + 180 + 8, rounded up
    EXPECT_EQ(plain.height, 42);
    const Tamborel::MinimumSize scaled = Tamborel::MinimumWindowSize({}, 1.5F);
    EXPECT_EQ(scaled.width, 332);  // 331.8
    EXPECT_EQ(scaled.height, 63);
    Tamborel::ThemeMetrics doubled;
    doubled.scale = 2.0F;
    EXPECT_EQ(Tamborel::MinimumWindowSize(doubled, 1.0F).width, 443);  // 442.4
    EXPECT_EQ(Tamborel::MinimumWindowSize(doubled, 1.0F).height, 84);
}

}  // namespace
