// The title bar's arithmetic: its cases by name, and every number against a calculation of its own.
#include "Window/FrameChromeLayout.h"
#include "Window/HitTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace Tamborel {
namespace {

constexpr double kTolerance = 0.002;  // of lengths up to 6,000 in single precision

ChromeLayoutInput Window(float width, float height = 600) {
    ChromeLayoutInput input;
    input.width = width;
    input.height = height;
    input.hasIcon = true;
    return input;
}

float WidthOf(const Rect& rect) {
    return rect.right - rect.left;
}

float HeightOf(const Rect& rect) {
    return rect.bottom - rect.top;
}

TEST(ChromeLayout, AtScale1TheTitleIsSetIn17Point85Units) {
    EXPECT_NEAR(LayOutChrome(Window(1280)).titleFontSize, 17.85, 1e-4);
}

TEST(ChromeLayout, ThreeButtonsFillANarrowWindowExactlyAndTheTitleBarShrinksByTheSameFactor) {
    const ChromeLayout layout = LayOutChrome(Window(90));
    EXPECT_FLOAT_EQ(layout.compression, 0.5F);
    EXPECT_FLOAT_EQ(layout.buttonWidth, 30.0F);
    EXPECT_FLOAT_EQ(layout.titleHeight, 21.0F);
    EXPECT_FLOAT_EQ(layout.titleFontSize, 17.85F / 2);
    // The leftmost fill begins one inset from the window's edge, the rightmost ends one inset from the other.
    const float inset = layout.buttons[CaptionZone::Minimize].fill.rect.top;
    EXPECT_FLOAT_EQ(layout.buttons[CaptionZone::Minimize].fill.rect.left, inset);
    EXPECT_FLOAT_EQ(layout.buttons[CaptionZone::Close].fill.rect.right, 90.0F - inset);
}

TEST(ChromeLayout, WindowOfExactlyThreeButtonsIsNotCompressed) {
    EXPECT_EQ(LayOutChrome(Window(180)).compression, 1.0F);
    EXPECT_LT(LayOutChrome(Window(179.5F)).compression, 1.0F);
}

TEST(ChromeLayout, WithoutAnIconTheTextStartsAtTheSamePlace) {
    ChromeLayoutInput input = Window(800);
    const Rect with = LayOutChrome(input).titleBounds;
    input.hasIcon = false;
    const ChromeLayout layout = LayOutChrome(input);
    EXPECT_FALSE(layout.icon.visible);
    EXPECT_EQ(layout.titleBounds, with);
    EXPECT_FLOAT_EQ(with.left, 8 + 0.6F * 42 + 8);
}

TEST(ChromeLayout, ButtonsThatMeetTheIconAreCutAtItsEdge) {
    const ChromeLayout layout = LayOutChrome(Window(180));
    const float limit = layout.icon.rect.right + 8;
    const ChromeBox& minimize = layout.buttons[CaptionZone::Minimize].fill;
    EXPECT_TRUE(minimize.visible);
    EXPECT_TRUE(minimize.clipped);
    EXPECT_EQ(minimize.clip.left, limit);
    EXPECT_EQ(minimize.clip.right, minimize.rect.right);
    EXPECT_FLOAT_EQ(minimize.rect.left, 4.5F) << "the box itself stays whole";
    const ChromeBox& glyph = layout.buttons[CaptionZone::Minimize].glyph;
    EXPECT_FALSE(glyph.visible) << "it lies wholly under the icon and its margin";
    EXPECT_FALSE(layout.buttons[CaptionZone::Close].fill.clipped);
}

TEST(ChromeLayout, WithoutAnIconNothingIsCut) {
    ChromeLayoutInput input = Window(180);
    input.hasIcon = false;
    for (const auto zone : {CaptionZone::Minimize, CaptionZone::Maximize, CaptionZone::Close}) {
        EXPECT_TRUE(LayOutChrome(input).buttons[zone].fill.visible);
        EXPECT_FALSE(LayOutChrome(input).buttons[zone].fill.clipped);
    }
}

TEST(ChromeLayout, MaximisedTheFrameCountsAsNothingForTheClient) {
    ChromeLayoutInput input = Window(800, 46);
    EXPECT_FALSE(LayOutChrome(input).clientVisible) << "46 is less than 42 and 8";
    input.maximized = true;
    EXPECT_TRUE(LayOutChrome(input).clientVisible);
    input.height = 42;
    EXPECT_FALSE(LayOutChrome(input).clientVisible) << "nothing is left";
}

TEST(ChromeLayout, TitleImageTallerThanTheTitleBarIsFittedInBothDirections) {
    ChromeLayoutInput input = Window(800);
    input.hasTitleImage = true;
    input.titleImageWidth = 100;
    input.titleImageHeight = 400;
    Rect image = LayOutChrome(input).titleImage;
    EXPECT_NEAR(HeightOf(image), 6 + 17.85, 1e-3);
    EXPECT_NEAR(WidthOf(image) / HeightOf(image), 0.25, 1e-5);

    input.titleImageWidth = 40'000;  // now its width is what has to fit
    image = LayOutChrome(input).titleImage;
    const ChromeLayout layout = LayOutChrome(input);
    EXPECT_NEAR(WidthOf(image), WidthOf(layout.titleBounds), 1e-2);
    EXPECT_NEAR(WidthOf(image) / HeightOf(image), 100, 0.01);
    EXPECT_NEAR(image.top + image.bottom, layout.titleHeight, 1e-3);
}

TEST(ChromeLayout, TitleImageOfUnknownSizeIsThreeTimesAsWideAsHigh) {
    ChromeLayoutInput input = Window(800);
    input.hasTitleImage = true;
    const Rect image = LayOutChrome(input).titleImage;
    EXPECT_NEAR(WidthOf(image), 3 * HeightOf(image), 1e-3);
}

TEST(ChromeLayout, TitleImageIsNeverHigherThanTheTitleBar) {
    ChromeLayoutInput input = Window(800);
    input.hasTitleImage = true;
    input.measures.titleImagePadding = 500;
    EXPECT_FLOAT_EQ(HeightOf(LayOutChrome(input).titleImage), 42.0F);
}

TEST(ChromeLayout, TitleImageWithoutRoomHasNoWidth) {
    ChromeLayoutInput input = Window(200);
    input.hasTitleImage = true;
    EXPECT_FLOAT_EQ(WidthOf(LayOutChrome(input).titleImage), 0.0F);
}

TEST(ChromeLayout, WindowWithoutASizeShowsNoButton) {
    const ChromeLayout layout = LayOutChrome(Window(0, 0));
    EXPECT_EQ(layout.titleHeight, 0.0F);
    EXPECT_FALSE(layout.clientVisible);
    for (const ChromeButton& button : layout.buttons) EXPECT_FALSE(button.fill.visible);
}

TEST(ChromeLayout, ReservedSlotsTakeNothingFromTheTitle) {
    const ChromeLayout layout = LayOutChrome(Window(800));
    EXPECT_FLOAT_EQ(layout.titleBounds.right, 800 - 3 * 60 - 8);
    EXPECT_FLOAT_EQ(layout.reservedWidth, 51.0F);
    EXPECT_LT(layout.buttons[CaptionZone::ReservedFirst].fill.rect.left, layout.titleBounds.right);
}

// The same numbers, found another way: everything at its full size first, in double precision, from the window's right
// edge inwards.
struct Expected {
    double left, top, right, bottom;
};

class Reckoner {
public:
    explicit Reckoner(const ChromeLayoutInput& input)
        : in(input),
          m(input.measures),
          shrink(std::min(1.0, in.width / (3.0 * m.scale * m.buttonWidth))),
          bar(shrink * m.scale * m.titleHeight),
          button(shrink * m.scale * m.buttonWidth),
          gap(8.0 * m.scale) {}

    double SlotWidth(std::int32_t zone) const { return zone >= CaptionZone::ReservedFirst ? 0.85 * button : button; }

    double SlotLeft(std::int32_t zone) const {
        switch (zone) {
            case CaptionZone::Close:
                return in.width - button;
            case CaptionZone::Maximize:
                return in.width - button - button;
            case CaptionZone::Minimize:
                return in.width - button - button - button;
            case CaptionZone::ReservedFirst:
                return SlotLeft(CaptionZone::Minimize) - 0.85 * button;
            default:
                return SlotLeft(CaptionZone::ReservedFirst) - 0.85 * button;
        }
    }

    double Inset() const { return std::clamp(std::min(bar, button) / 2 - 0.5, 0.0, 4.5); }

    Expected Fill(std::int32_t zone) const {
        return {SlotLeft(zone) + Inset(), Inset(), SlotLeft(zone) + SlotWidth(zone) - Inset(), bar - Inset()};
    }

    double Radius(std::int32_t zone) const {
        const double cap = std::clamp(std::max(std::min(bar, button) - 2 * Inset(), 0.0) / 2 - 0.5, 0.0, 5.0);
        const double own = std::min(bar, SlotWidth(zone)) - 2 * Inset();
        return std::clamp(own / 2 - 0.5, 0.0, cap);
    }

    Expected Glyph(std::int32_t zone) const {
        const double half = 0.35 * SlotWidth(zone) / 2;
        const double x = SlotLeft(zone) + SlotWidth(zone) / 2;
        return {x - half, bar / 2 - half, x + half, bar / 2 + half};
    }

    Expected Icon() const { return {gap, 0.2 * bar, gap + 0.6 * bar, 0.8 * bar}; }
    double CutLeft() const { return in.hasIcon ? Icon().right + gap : 0; }
    double FontSize() const { return static_cast<double>(m.titleFontSize) * m.titleTextScale * m.scale * shrink; }
    Expected Title() const { return {Icon().right + gap, 0, SlotLeft(CaptionZone::Minimize) - gap, bar}; }
    bool ClientVisible() const {
        return in.height > bar + (in.maximized ? 0.0 : static_cast<double>(m.frameWidth) * m.scale);
    }

    const ChromeLayoutInput in;
    const ChromeMeasures m;
    const double shrink;
    const double bar;
    const double button;
    const double gap;
};

void ExpectNear(const Rect& rect, const Expected& expected, const std::string& what) {
    EXPECT_NEAR(rect.left, expected.left, kTolerance) << what;
    EXPECT_NEAR(rect.top, expected.top, kTolerance) << what;
    EXPECT_NEAR(rect.right, expected.right, kTolerance) << what;
    EXPECT_NEAR(rect.bottom, expected.bottom, kTolerance) << what;
}

void ExpectCut(const ChromeBox& box, const Expected& whole, double limit, const std::string& what) {
    ExpectNear(box.rect, whole, what);
    const double left = std::max(whole.left, limit);
    // At the very edge single precision may decide either way.
    const bool close = std::abs(whole.right - left) < kTolerance || std::abs(whole.bottom - whole.top) < kTolerance;
    if (!close) {
        EXPECT_EQ(box.visible, whole.right > left && whole.bottom > whole.top) << what;
    }
    if (std::abs(whole.left - limit) > kTolerance) {
        EXPECT_EQ(box.clipped, whole.left < limit) << what;
    }
    if (box.clipped && box.visible) ExpectNear(box.clip, {left, whole.top, whole.right, whole.bottom}, what);
}

void Compare(const ChromeLayoutInput& input, const std::string& what) {
    const ChromeLayout layout = LayOutChrome(input);
    const Reckoner expected(input);
    EXPECT_NEAR(layout.titleHeight, expected.bar, kTolerance) << what;
    EXPECT_NEAR(layout.buttonWidth, expected.button, kTolerance) << what;
    EXPECT_NEAR(layout.reservedWidth, 0.85 * expected.button, kTolerance) << what;
    EXPECT_NEAR(layout.titleFontSize, expected.FontSize(), kTolerance) << what;
    EXPECT_EQ(layout.clientVisible, expected.ClientVisible()) << what;
    EXPECT_EQ(layout.icon.visible, input.hasIcon) << what;
    ExpectNear(layout.icon.rect, expected.Icon(), what + " icon");
    ExpectNear(layout.titleBounds, expected.Title(), what + " title");
    for (std::int32_t zone = 0; zone < 5; ++zone) {
        const ChromeButton& button = layout.buttons[static_cast<std::size_t>(zone)];
        const std::string name = what + " zone " + std::to_string(zone);
        ExpectCut(button.fill, expected.Fill(zone), expected.CutLeft(), name + " fill");
        ExpectCut(button.glyph, expected.Glyph(zone), expected.CutLeft(), name + " glyph");
        EXPECT_NEAR(button.radius, expected.Radius(zone), kTolerance) << name;
    }
}

struct Theme {
    const char* name;
    float titleHeight;
    float buttonWidth;
};

class Reckoned : public testing::TestWithParam<Theme> {};

// Scales of the theme and of the monitor from 0.5 to 2, windows from 40 to 3,000 pixels.
TEST_P(Reckoned, AtAllScalesAndWidths) {
    for (const float scale : {0.5F, 0.75F, 1.0F, 1.25F, 1.5F, 1.75F, 2.0F}) {
        for (const float dpiScale : {0.5F, 1.0F, 1.25F, 1.5F, 2.0F}) {
            for (int pixels = 40; pixels <= 3000; pixels += pixels < 400 ? 1 : 37) {
                ChromeLayoutInput input = Window(static_cast<float>(pixels) / dpiScale, 400);
                input.measures.scale = scale;
                input.measures.titleHeight = GetParam().titleHeight;
                input.measures.buttonWidth = GetParam().buttonWidth;
                input.hasIcon = pixels % 2 == 0;
                input.maximized = pixels % 3 == 0;
                Compare(input, std::to_string(pixels) + " pixels at " + std::to_string(dpiScale) + ", scale " +
                                   std::to_string(scale));
                if (HasFailure()) return;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Themes, Reckoned,
                         testing::Values(Theme{"Default", 42, 60}, Theme{"Launcher", 36, 60}, Theme{"Tall", 120, 46},
                                         Theme{"Smallest", 1, 1}),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace Tamborel
