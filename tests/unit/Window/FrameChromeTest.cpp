// The title bar's nodes: what a theme, the pointer and the window's state make of them.
#include "RenderTest.h"
#include "Scene/DrawContext.h"
#include "Scene/ImageAsset.h"
#include "Scene/ImagePrimitive.h"
#include "Scene/RectangleNode.h"
#include "Scene/TextPrimitive.h"
#include "tests/fakes/RecordingContext.h"
#include "Window/BlitRecord.h"
#include "Window/FrameChrome.h"
#include "Window/HitTest.h"
#include "Window/WindowSurface.h"

#include <map>

namespace Tamborel {
namespace {

constexpr Color kClear{};
constexpr Color kRed{1, 0, 0, 1};
constexpr Color kGreen{0, 1, 0, 1};
constexpr Color kHover{0.06F, 0.46F, 0.73F, 0.333F};
constexpr Color kPressed{0.05F, 0.36F, 0.62F, 0.333F};
constexpr Color kCloseHover{0.784F, 0.106F, 0.106F, 0.333F};
constexpr Color kClosePressed{0.612F, 0.082F, 0.082F, 0.333F};

class Chrome : public RenderTest {
protected:
    Chrome() { (void)surface.Resize({800, 600}); }

    void SetUp() override {
        RenderTest::SetUp();
        ASSERT_EQ(chrome->Initialize(&surface), S_OK);
    }

    void TearDown() override {
        chrome.reset();  // It holds objects of the fakes, which are counted now.
        RenderTest::TearDown();
    }

    /// A frame as the loop runs it.
    std::vector<DrawCall> Frame() {
        chrome->Arrange();
        return FrameWithoutArrange();
    }

    std::vector<DrawCall> FrameWithoutArrange() {
        chrome->Update(0);
        DrawContext draw(&context, &cache, 1.0F);
        chrome->Prepare(draw);
        context.Take();
        chrome->Draw(draw);
        return context.Take();
    }

    void Use(const ChromeTheme& theme) {
        chrome->ApplyTheme(theme);
        Frame();
    }

    template <class Node>
    Node& Child(std::size_t index) const {
        return dynamic_cast<Node&>(*chrome->children.at(index));
    }
    RectangleNode& Panel(std::size_t number) const { return Child<RectangleNode>(number - 1); }
    ImagePrimitive& Icon() const { return Child<ImagePrimitive>(5); }
    ImagePrimitive& TitleImage() const { return Child<ImagePrimitive>(6); }
    TextPrimitive& Title() const { return Child<TextPrimitive>(7); }
    RectangleNode& Fill(std::int32_t zone) const { return Child<RectangleNode>(8 + static_cast<std::size_t>(zone)); }
    ImagePrimitive& Glyph(std::int32_t zone) const {
        return Child<ImagePrimitive>(11 + static_cast<std::size_t>(zone));
    }

    WindowSurface surface;
    RecordingContext context;
    BrushCache cache;
    std::shared_ptr<FrameChrome> chrome = std::make_shared<FrameChrome>();
};

TEST_F(Chrome, ChildrenArePanelsIconTitleImageTitleButtonsAndGlyphs) {
    ASSERT_EQ(chrome->children.size(), 14U);
    for (std::size_t index = 0; index < 5; ++index) EXPECT_NO_THROW(Child<RectangleNode>(index)) << index;
    EXPECT_NO_THROW(Icon());
    EXPECT_NO_THROW(TitleImage());
    EXPECT_NO_THROW(Title());
    for (const auto zone : {CaptionZone::Minimize, CaptionZone::Maximize, CaptionZone::Close}) {
        EXPECT_NO_THROW(Fill(zone));
        EXPECT_NO_THROW(Glyph(zone));
    }
}

TEST_F(Chrome, PanelsHoldTheFrameAndStayInvisible) {
    ChromeTheme theme;
    theme.TitleBarFill = kRed;
    theme.FrameFill = kGreen;
    theme.InnerBorderColor = kHover;
    theme.InnerBorderWidth = 3.0F;
    Use(theme);
    for (std::size_t number = 1; number <= 5; ++number) EXPECT_FALSE(Panel(number).visible);
    EXPECT_EQ(Panel(1).fillColor, kRed);
    EXPECT_EQ(Panel(2).fillColor, kClear);
    EXPECT_EQ(Panel(2).strokeColor, kHover);
    EXPECT_EQ(Panel(2).strokeWidth, 3.0F);
    for (std::size_t number = 3; number <= 5; ++number) EXPECT_EQ(Panel(number).fillColor, kGreen);
}

TEST_F(Chrome, WithoutAFrameFillTheTitleBarsStandsForBoth) {
    ChromeTheme theme;
    theme.TitleBarFill = kRed;
    Use(theme);
    EXPECT_EQ(chrome->ReadMetrics().titleBarFill, kRed);
    EXPECT_EQ(chrome->ReadMetrics().frameFill, kRed);
}

TEST_F(Chrome, TitleIsSetInTheThemesFont) {
    chrome->title = L"Velorinth";
    Frame();
    EXPECT_EQ(Title().text, L"Velorinth");
    EXPECT_EQ(Title().fontFamily, L"Segoe UI");
    EXPECT_EQ(Title().fontWeight, 700U);
    EXPECT_NEAR(Title().fontSize, 17.85F, 1e-4);
    EXPECT_EQ(Title().color, (Color{0.9F, 0.9F, 0.9F, 1.0F}));
    EXPECT_EQ(Title().textAlignment, 0U);
    EXPECT_EQ(Title().paragraphAlignment, 2U);
    EXPECT_EQ(Title().wordWrapping, 1U);
    EXPECT_TRUE(Title().clipToBounds);

    ChromeTheme theme;
    theme.FontFamily = L"Serif";
    theme.TitleFontWeight = 400;
    theme.TitleFontSize = 0.5F;  // held at 1
    theme.TitleTextScale = 2.0F;
    theme.TitleTextColor = kRed;
    Use(theme);
    EXPECT_EQ(Title().fontFamily, L"Serif");
    EXPECT_EQ(Title().fontWeight, 400U);
    EXPECT_EQ(Title().fontSize, 2.0F);
    EXPECT_EQ(Title().color, kRed);
}

TEST_F(Chrome, IconPresentAndNullMeansNoIconAndTheTextStaysWhereItIs) {
    Frame();
    const float left = Title().bounds.left;
    EXPECT_TRUE(Icon().visible);
    EXPECT_TRUE(chrome->ReadHitTestMetrics().hasIcon);
    ChromeTheme theme;
    theme.TitleIcon = std::shared_ptr<ImageAsset>();
    Use(theme);
    EXPECT_FALSE(Icon().visible);
    EXPECT_EQ(Icon().asset, nullptr);
    EXPECT_FALSE(chrome->ReadHitTestMetrics().hasIcon);
    EXPECT_EQ(Title().bounds.left, left);
}

TEST_F(Chrome, ThemesImagesStandInThePlaceOfTheBuiltInOnes) {
    Frame();
    std::map<std::string, std::shared_ptr<ImageAsset>> images;
    for (const char* name : {"icon", "minimize", "maximize", "restore", "close"}) {
        images[name] = ImageAsset::FromBytes({}, true);
    }
    ChromeTheme theme;
    theme.TitleIcon = images["icon"];
    theme.MinimizeGlyph = images["minimize"];
    theme.MaximizeGlyph = images["maximize"];
    theme.RestoreGlyph = images["restore"];
    theme.CloseGlyph = images["close"];
    Use(theme);
    EXPECT_EQ(Icon().asset, images["icon"]);
    EXPECT_EQ(Glyph(CaptionZone::Minimize).asset, images["minimize"]);
    EXPECT_EQ(Glyph(CaptionZone::Maximize).asset, images["maximize"]);
    EXPECT_EQ(Glyph(CaptionZone::Close).asset, images["close"]);
    chrome->maximized = true;
    Frame();
    EXPECT_EQ(Glyph(CaptionZone::Maximize).asset, images["restore"]);
}

TEST_F(Chrome, MaximisedShowsTheRestoreGlyph) {
    Frame();
    const auto maximize = Glyph(CaptionZone::Maximize).asset;
    chrome->maximized = true;
    Frame();
    const auto restore = Glyph(CaptionZone::Maximize).asset;
    EXPECT_NE(restore, nullptr);
    EXPECT_NE(restore, maximize);
    chrome->maximized = false;
    Frame();
    EXPECT_EQ(Glyph(CaptionZone::Maximize).asset, maximize);
}

TEST_F(Chrome, MaximisedItsFrameAndInnerBorderCountAsNothing) {
    (void)surface.Resize({800, 46});
    Frame();
    EXPECT_FALSE(chrome->ReadMetrics().clientVisible);
    EXPECT_EQ(chrome->ReadMetrics().frameWidth, 8.0F);
    EXPECT_EQ(chrome->ReadMetrics().innerBorder, 0.5F);
    chrome->maximized = true;
    Frame();
    EXPECT_TRUE(chrome->ReadMetrics().clientVisible);
    EXPECT_TRUE(chrome->ReadMetrics().maximized);
    EXPECT_EQ(chrome->ReadMetrics().frameWidth, 0.0F);
    EXPECT_EQ(chrome->ReadMetrics().innerBorder, 0.0F);
    EXPECT_EQ(chrome->ReadHitTestMetrics().frameWidth, 8.0F) << "the hit-test knows by itself what maximised means";
}

TEST_F(Chrome, NarrowWindowsButtonsFillItAndTheTitleBarShrinksAsMuch) {
    (void)surface.Resize({90, 600});
    Frame();
    EXPECT_FLOAT_EQ(chrome->ReadHitTestMetrics().buttonWidth, 30.0F);
    EXPECT_FLOAT_EQ(chrome->ReadHitTestMetrics().titleHeight, 21.0F);
    EXPECT_FLOAT_EQ(Fill(CaptionZone::Close).rect.right, 85.5F);
    EXPECT_FLOAT_EQ(Fill(CaptionZone::Minimize).rect.left, 4.5F);
}

TEST_F(Chrome, PressedAndHoveredButtonsAreFilledEachByItsOwnRule) {
    const auto fills = [this] {
        Frame();
        return std::array{Fill(0).fillColor, Fill(1).fillColor, Fill(2).fillColor};
    };
    using Fills = std::array<Color, 3>;
    EXPECT_EQ(fills(), (Fills{kClear, kClear, kClear}));
    chrome->HoverZone = CaptionZone::Minimize;
    EXPECT_EQ(fills(), (Fills{kHover, kClear, kClear}));
    chrome->PressedZone = CaptionZone::Maximize;
    EXPECT_EQ(fills(), (Fills{kHover, kPressed, kClear}));
    chrome->HoverZone = CaptionZone::Close;
    EXPECT_EQ(fills(), (Fills{kClear, kPressed, kCloseHover}));
    chrome->PressedZone = CaptionZone::Close;
    EXPECT_EQ(fills(), (Fills{kClear, kClear, kClosePressed})) << "a press wins over the pointer";
    chrome->HoverZone = CaptionZone::ReservedFirst;
    chrome->PressedZone = CaptionZone::ReservedSecond;
    EXPECT_EQ(fills(), (Fills{kClear, kClear, kClear}));
}

TEST_F(Chrome, ChangeOfTheInnerBorderDrawsNoLine) {
    const std::vector<DrawCall> before = Frame();
    ChromeTheme theme;
    theme.InnerBorderWidth = 4.0F;
    chrome->ApplyTheme(theme);
    EXPECT_EQ(Frame(), before);
    EXPECT_EQ(chrome->ReadMetrics().innerBorder, 4.0F);
    EXPECT_EQ(FrameLookOf(*chrome, DeriveThemeMetrics(theme)).innerBorderWidth, 4.0F);
}

TEST_F(Chrome, TitleImageStandsInThePlaceOfTheTitle) {
    chrome->title = L"Velorinth";
    Frame();
    EXPECT_TRUE(Title().visible);
    EXPECT_FALSE(TitleImage().visible);
    chrome->titleImage = ImageAsset::FromBytes({}, true);
    Frame();
    EXPECT_FALSE(Title().visible);
    EXPECT_TRUE(TitleImage().visible);
    EXPECT_EQ(TitleImage().asset, chrome->titleImage);
    EXPECT_EQ(TitleImage().rect.left, Title().bounds.left);
    chrome->titleImage.reset();
    Frame();
    EXPECT_TRUE(Title().visible);
    EXPECT_FALSE(TitleImage().visible);
    EXPECT_EQ(TitleImage().asset, nullptr);
}

TEST_F(Chrome, UnchangedTitleIsLaidOutOnce) {
    chrome->title = L"Velorinth";
    Frame();
    EXPECT_FALSE(Title().layoutDirty);
    chrome->Arrange();
    EXPECT_FALSE(Title().layoutDirty);
    chrome->HoverZone = 1;
    chrome->Arrange();
    EXPECT_FALSE(Title().layoutDirty) << "a fill is not a layout";
    chrome->title = L"Velorinth Launcher";
    chrome->Arrange();
    EXPECT_TRUE(Title().layoutDirty);
}

TEST_F(Chrome, TitleShowsInTheFrameThatChangesItWithoutALoopThatArranges) {
    chrome->title = L"Velorinth";
    FrameWithoutArrange();
    EXPECT_EQ(Title().text, L"Velorinth");
    EXPECT_FALSE(Title().layoutDirty);
}

TEST_F(Chrome, UnitsAreDeviceIndependent) {
    (void)surface.Resize({1600, 1200});
    chrome->dpiScale = 2.0F;
    Frame();
    Matrix3x2 twice;
    twice.m11 = 2;
    twice.m22 = 2;
    EXPECT_EQ(chrome->localTransform, twice);
    EXPECT_EQ(Title().worldTransform, twice);
    EXPECT_FLOAT_EQ(Fill(CaptionZone::Close).rect.right, 800 - 4.5F);
}

TEST_F(Chrome, ThemesNumbersAreHeldAtTheirLowerLimits) {
    ChromeTheme theme;
    theme.FrameWidth = -1.0F;
    theme.TitleHeight = -1.0F;
    theme.ButtonWidth = 0.0F;
    theme.Scale = 0.0F;
    theme.InnerBorderWidth = -2.0F;
    Use(theme);
    EXPECT_EQ(chrome->Scale(), 0.01F);
    EXPECT_EQ(chrome->ReadMetrics().frameWidth, 0.0F);
    EXPECT_EQ(chrome->ReadMetrics().innerBorder, 0.0F);
    EXPECT_FLOAT_EQ(chrome->ReadMetrics().titleHeight, 0.01F);
    EXPECT_FLOAT_EQ(chrome->ReadHitTestMetrics().buttonWidth, 0.01F);
}

TEST_F(Chrome, WithoutASurfaceDrawsNothing) {
    chrome->SetSurface(nullptr);
    EXPECT_TRUE(Frame().empty());
}

TEST_F(Chrome, WithoutInitializeDrawsNothing) {
    const auto other = std::make_shared<FrameChrome>();
    other->ApplyTheme({});
    DrawContext draw(&context, &cache, 1.0F);
    context.Take();
    other->Arrange();
    other->Draw(draw);
    EXPECT_TRUE(context.Take().empty());
}

TEST_F(Chrome, ReadsTheHitTestMetricsThatItLaidOut) {
    ChromeTheme theme;
    theme.Scale = 1.5F;
    Use(theme);
    const HitTestMetrics expected{.frameWidth = 12,
                                  .titleHeight = 63,
                                  .buttonWidth = 90,
                                  .reservedSlotWidth = 76.5F,
                                  .reservedSlotCount = 0,
                                  .scale = 1.5F,
                                  .hasIcon = true};
    EXPECT_EQ(chrome->ReadHitTestMetrics(), expected);
}

TEST_F(Chrome, GivesTheFrameItsLook) {
    ChromeTheme theme;
    theme.Scale = 2.0F;
    theme.ClientExtensionLeft = 3.0F;
    theme.MaximizedChromePolicy = 1;
    theme.TitleBarFill = kRed;
    theme.InnerBorderColor = kGreen;
    Use(theme);
    const FrameLook look = FrameLookOf(*chrome, DeriveThemeMetrics(theme));
    EXPECT_EQ(look.frameWidth, 16.0F);
    EXPECT_EQ(look.titleHeight, 84.0F);
    EXPECT_EQ(look.innerBorderWidth, 0.5F);
    EXPECT_EQ(look.clientExtension, (Rect{6, 0, 0, 0}));
    EXPECT_EQ(look.maximizedChromePolicy, 1);
    EXPECT_EQ(look.titleBarFill, kRed);
    EXPECT_EQ(look.frameFill, kRed);
    EXPECT_EQ(look.innerBorderColor, kGreen);
}

}  // namespace
}  // namespace Tamborel
