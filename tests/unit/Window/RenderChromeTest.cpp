// The title bar within the render loop: set-up, what the loop tells it and asks of it, tear-down.
#include "RenderTest.h"
#include "Scene/ImageAsset.h"
#include "Scene/SceneNode.h"
#include "Window/FrameChrome.h"

namespace Tamborel {
namespace {

class ChromeInLoop : public LoopTest {
protected:
    void UseTheme(const ChromeTheme& theme) {
        const std::lock_guard lock(state.Theme.Mutex);
        state.Theme.Effective = theme;
        state.Theme.Metrics = DeriveThemeMetrics(theme);
    }

    static ChromeTheme LauncherTheme() {
        ChromeTheme theme;
        theme.FrameWidth = 8.0F;
        theme.TitleHeight = 36.0F;
        theme.Scale = 1.0F;
        theme.InnerBorderWidth = 1.0F;
        return theme;
    }
};

TEST_F(ChromeInLoop, HangsUnderTheFrameRoot) {
    SetUpLoop();
    ASSERT_EQ(loop->FrameRoot()->children.size(), 1U);
    EXPECT_EQ(loop->FrameRoot()->children[0], loop->Chrome());
}

TEST_F(ChromeInLoop, StartsWithTheWindowsTitleImageAndTheme) {
    auto image = ImageAsset::FromBytes({}, true);
    state.Theme.TitleImage = image;
    UseTheme(LauncherTheme());
    SetUpLoop();
    EXPECT_EQ(loop->Chrome()->title, L"Window title");
    EXPECT_EQ(loop->Chrome()->titleImage, image);
    Turn();
    EXPECT_EQ(loop->Chrome()->ReadMetrics().titleHeight, 36.0F);
}

TEST_F(ChromeInLoop, SetUpSendsTheThemesIcons) {
    ChromeTheme theme;
    theme.SmallIcon = reinterpret_cast<HICON>(std::uintptr_t{0x51});
    UseTheme(theme);
    SetUpLoop();
    const auto sent = windows.Sent();
    ASSERT_EQ(sent.size(), 1U) << "an absent icon is not sent";
    EXPECT_EQ(sent[0].message, static_cast<UINT>(WM_SETICON));
    EXPECT_EQ(sent[0].wParam, static_cast<WPARAM>(ICON_SMALL));
    EXPECT_EQ(sent[0].lParam, 0x51);
}

TEST_F(ChromeInLoop, IsToldHowTheWindowStands) {
    SetUpLoop();
    state.HoverZone = 1;
    state.PressedZone = 2;
    windows.Change([](Fakes::WindowSettings& settings) {
        settings.zoomed = true;
        settings.dpi = 144;
    });
    Turn();
    EXPECT_EQ(loop->Chrome()->HoverZone, 1);
    EXPECT_EQ(loop->Chrome()->PressedZone, 2);
    EXPECT_TRUE(loop->Chrome()->maximized);
    EXPECT_EQ(loop->Chrome()->dpiScale, 1.5F);
}

TEST_F(ChromeInLoop, TellsTheHitTestItsMeasuresFromTheFirstFrameOn) {
    UseTheme(LauncherTheme());
    SetUpLoop();
    Turn();
    const HitTestMetrics metrics = state.CaptionMetrics.Load();
    EXPECT_EQ(metrics, loop->Chrome()->ReadHitTestMetrics());
    EXPECT_EQ(metrics.titleHeight, 36.0F);
    EXPECT_EQ(metrics.reservedSlotCount, 0.0F);
}

TEST_F(ChromeInLoop, FirstFramesSceneLiesUnderItsTitleBar) {
    UseTheme(LauncherTheme());
    SetUpLoop();
    Turn();
    EXPECT_EQ(loop->ClientRoot()->localTransform.dx, 1 + 8 - 1);
    EXPECT_EQ(loop->ClientRoot()->localTransform.dy, 1 + 36 - 1);
}

TEST_F(ChromeInLoop, TakesTitleThemeAndTitleImageFromClosures) {
    SetUpLoop();
    Settle();
    auto image = ImageAsset::FromBytes({}, true);
    state.Closures.Post([&] {
        loop->SetChromeTitle(L"Another");
        loop->SetChromeTheme(LauncherTheme());
        loop->SetChromeTitleImage(image);
    });
    Turn();
    EXPECT_EQ(loop->Chrome()->title, L"Another");
    EXPECT_EQ(loop->Chrome()->titleImage, image);
    EXPECT_EQ(loop->Chrome()->ReadMetrics().titleHeight, 36.0F);
    EXPECT_EQ(loop->Counters.FramePasses, 2U);
}

TEST_F(ChromeInLoop, SpansTheNewSizeInTheTurnThatTakesIt) {
    SetUpLoop();
    Settle();
    Resize({.clientWidth = 88,
            .clientHeight = 598,
            .clientOffsetX = 1,
            .clientOffsetY = 1,
            .windowWidth = 90,
            .windowHeight = 600});
    Turn();
    EXPECT_FLOAT_EQ(loop->Chrome()->ReadMetrics().titleHeight, 21.0F);
}

TEST_F(ChromeInLoop, IsGoneAfterTheTearDown) {
    SetUpLoop();
    const std::weak_ptr<FrameChrome> chrome = loop->Chrome();
    loop->TearDown();
    EXPECT_TRUE(chrome.expired());
    EXPECT_EQ(loop->Chrome(), nullptr);
    loop->SetChromeTitle(L"nobody");
    loop->SetChromeTheme({});
    loop->SetChromeTitleImage(nullptr);
}

}  // namespace
}  // namespace Tamborel
