#include "Window/BlitRecord.h"

#include <gtest/gtest.h>

#include <array>

namespace Tamborel {
namespace {

using Four = std::array<float, 4>;
using Three = std::array<float, 3>;

// The launcher's theme.
ChromeTheme Theme() {
    ChromeTheme theme;
    theme.FrameWidth = 8.0F;
    theme.TitleHeight = 36.0F;
    theme.Scale = 1.0F;
    theme.InnerBorderWidth = 1.0F;
    return theme;
}

BlitFrameRecord Record(const ChromeTheme& theme, const FramePlacement& placement) {
    return BuildBlitFrameRecord(FrameLookOf(theme, DeriveThemeMetrics(theme)), placement);
}

FramePlacement Window820() {
    return {.windowWidth = 820,
            .windowHeight = 770,
            .clientOffsetX = 1,
            .clientOffsetY = 1,
            .dpiScale = 1.0F,
            .maximized = false,
            .innerBorder = true};
}

TEST(BlitRecord, TellsWindowAndThemeInPixels) {
    FramePlacement placement = Window820();
    placement.dpiScale = 1.5F;
    const BlitFrameRecord record = Record(Theme(), placement);
    EXPECT_EQ(record.useThemeBackground, 1);
    EXPECT_EQ(record.isMaximized, 0);
    EXPECT_EQ(record.innerBorderEnabled, 1);
    EXPECT_EQ(record.maximizedChromePolicy, 0U);
    EXPECT_EQ(record.windowMetrics, (Four{820.0F, 770.0F, 1.0F, 1.0F}));
    EXPECT_EQ(record.chromeMetrics, (Three{12.0F, 54.0F, 1.5F}));
}

TEST(BlitRecord, EmptyThemeTellsTheDefaults) {
    const BlitFrameRecord record = Record({}, Window820());
    EXPECT_EQ(record.chromeMetrics, (Three{8.0F, 42.0F, 0.5F}));
    EXPECT_EQ(record.clientFrameExtension, (Four{}));
    EXPECT_EQ(record.titleBarFill, (Four{0.0F, 0.0F, 0.0F, 0.72F}));
    EXPECT_EQ(record.frameFill, record.titleBarFill);
    EXPECT_EQ(record.flatInteriorFill, record.titleBarFill);
    EXPECT_EQ(record.innerBorderColor, (Four{0.251F, 0.251F, 0.251F, 1.0F}));
}

TEST(BlitRecord, FrameFillFollowsTheTitleBarUnlessSet) {
    ChromeTheme theme;
    theme.TitleBarFill = Color{0.1F, 0.2F, 0.3F, 0.4F};
    EXPECT_EQ(Record(theme, Window820()).frameFill, (Four{0.1F, 0.2F, 0.3F, 0.4F}));
    theme.FrameFill = Color{0.5F, 0.6F, 0.7F, 0.8F};
    const BlitFrameRecord record = Record(theme, Window820());
    EXPECT_EQ(record.titleBarFill, (Four{0.1F, 0.2F, 0.3F, 0.4F}));
    EXPECT_EQ(record.frameFill, (Four{0.5F, 0.6F, 0.7F, 0.8F}));
    EXPECT_EQ(record.flatInteriorFill, record.frameFill);
}

TEST(BlitRecord, ThemeScaleReachesFrameTitleAndExtensionsButNotTheBorder) {
    ChromeTheme theme = Theme();
    theme.Scale = 2.0F;
    theme.ClientExtensionLeft = 1.0F;
    theme.ClientExtensionTop = 2.0F;
    theme.ClientExtensionRight = 3.0F;
    theme.ClientExtensionBottom = 4.0F;
    FramePlacement placement = Window820();
    placement.dpiScale = 1.5F;
    const BlitFrameRecord record = Record(theme, placement);
    EXPECT_EQ(record.chromeMetrics, (Three{24.0F, 108.0F, 1.5F}));
    EXPECT_EQ(record.clientFrameExtension, (Four{3.0F, 6.0F, 9.0F, 12.0F}));
}

TEST(BlitRecord, NegativeBorderIsNone) {
    ChromeTheme theme = Theme();
    theme.InnerBorderWidth = -3.0F;
    EXPECT_EQ(Record(theme, Window820()).chromeMetrics, (Three{8.0F, 36.0F, 0.0F}));
}

TEST(BlitRecord, WithoutClientAreaThereIsNoInnerBorder) {
    FramePlacement placement = Window820();
    placement.innerBorder = false;
    EXPECT_EQ(Record(Theme(), placement).innerBorderEnabled, 0);
}

struct PolicyCase {
    std::int32_t policy;
    Three chrome;
    Four extension;
};

class MaximizedPolicy : public testing::TestWithParam<PolicyCase> {
protected:
    static BlitFrameRecord Applied(bool maximized) {
        ChromeTheme theme = Theme();
        theme.MaximizedChromePolicy = GetParam().policy;
        theme.ClientExtensionLeft = 1.0F;
        theme.ClientExtensionTop = 2.0F;
        theme.ClientExtensionRight = 3.0F;
        theme.ClientExtensionBottom = 4.0F;
        FramePlacement placement = Window820();
        placement.maximized = maximized;
        BlitFrameRecord record = Record(theme, placement);
        ApplyMaximizedChromePolicy(record);
        return record;
    }
};

TEST_P(MaximizedPolicy, TakesAwayFromAMaximisedWindow) {
    const BlitFrameRecord record = Applied(true);
    EXPECT_EQ(record.isMaximized, 1);
    EXPECT_EQ(record.chromeMetrics, GetParam().chrome);
    EXPECT_EQ(record.clientFrameExtension, GetParam().extension);
}

TEST_P(MaximizedPolicy, LeavesOtherWindowsAlone) {
    const BlitFrameRecord record = Applied(false);
    EXPECT_EQ(record.chromeMetrics, (Three{8.0F, 36.0F, 1.0F}));
    EXPECT_EQ(record.clientFrameExtension, (Four{1.0F, 2.0F, 3.0F, 4.0F}));
}

INSTANTIATE_TEST_SUITE_P(Policies, MaximizedPolicy,
                         testing::Values(PolicyCase{0, {0, 36, 0}, {1, 2, 3, 4}},
                                         PolicyCase{1, {8, 36, 1}, {1, 2, 3, 4}},
                                         PolicyCase{2, {0, 0, 0}, {0, 0, 0, 0}},
                                         PolicyCase{3, {0, 36, 0}, {1, 2, 3, 4}},
                                         PolicyCase{-1, {0, 36, 0}, {1, 2, 3, 4}}));

TEST(ClientGeometry, RootIsScaledAndSetInsideFrameTitleAndBorder) {
    FramePlacement placement = Window820();
    placement.dpiScale = 1.5F;
    const Matrix3x2 transform = ClientRootTransform(Record(Theme(), placement), 1.5F);
    // 12 frame + 1.5 border - 1 offset; 54 title + 1.5 border - 1 offset.
    EXPECT_EQ(transform, (Matrix3x2{1.5F, 0, 0, 1.5F, 12.5F, 54.5F}));
}

TEST(ClientGeometry, ClipLeavesTheFrameOut) {
    FramePlacement placement = Window820();
    placement.dpiScale = 1.5F;
    // right: 820 - 12 - 1.5 - 1; bottom: 770 - 12 - 1.5 - 1
    EXPECT_EQ(ClientClipBox(Record(Theme(), placement), 818, 768), (Rect{12.5F, 54.5F, 805.5F, 755.5F}));
}

TEST(ClientGeometry, ClipStaysOnTheSurface) {
    FramePlacement placement = Window820();
    placement.clientOffsetX = 30;
    placement.clientOffsetY = 60;
    // 1 + 8 - 30 and 1 + 36 - 60 lie outside; 820 - 9 - 30 and 770 - 9 - 60 too.
    EXPECT_EQ(ClientClipBox(Record(Theme(), placement), 700, 600), (Rect{0, 0, 700, 600}));
}

TEST(ClientGeometry, ClipOfAWindowNarrowerThanItsFrameIsEmpty) {
    FramePlacement placement = Window820();
    placement.windowWidth = 18;  // 9 on each side, less the offset
    const Rect box = ClientClipBox(Record(Theme(), placement), 16, 768);
    EXPECT_LE(box.right, box.left);
    EXPECT_TRUE(IsEmpty(box));
}

TEST(ClientGeometry, PolicyTwoMaximisedGivesTheWholeWindowAndTheNegatedOffset) {
    ChromeTheme theme = Theme();
    theme.MaximizedChromePolicy = 2;
    FramePlacement placement = Window820();
    placement.maximized = true;
    placement.clientOffsetX = 0;
    placement.clientOffsetY = 0;
    BlitFrameRecord record = Record(theme, placement);
    ApplyMaximizedChromePolicy(record);
    EXPECT_EQ(ClientClipBox(record, 820, 770), (Rect{0, 0, 820, 770}));

    placement.clientOffsetX = 5;
    placement.clientOffsetY = -7;
    record = Record(theme, placement);
    ApplyMaximizedChromePolicy(record);
    EXPECT_EQ(ClientRootTransform(record, 1.25F), (Matrix3x2{1.25F, 0, 0, 1.25F, -5.0F, 7.0F}));
}

}  // namespace
}  // namespace Tamborel
