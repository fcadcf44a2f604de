#include "Window/ChromeTheme.h"

#include <gtest/gtest.h>

// Themes carry pointers to images and never look into them.
namespace Tamborel {
class ImageAsset {};
}  // namespace Tamborel

namespace {

using Tamborel::ChromeTheme;
using Tamborel::Color;
using Tamborel::DeriveThemeMetrics;
using Tamborel::ImageAsset;
using Tamborel::MergeChromeTheme;

template <class T>
T Value(int number) {
    return static_cast<T>(number);
}
template <>
std::wstring Value(int number) {
    return std::to_wstring(number);
}
template <>
Color Value(int number) {
    return {static_cast<float>(number), 0, 0, 1};
}
template <>
HICON Value(int number) {
    return reinterpret_cast<HICON>(static_cast<std::uintptr_t>(number));
}
template <>
std::shared_ptr<ImageAsset> Value(int) {
    return std::make_shared<ImageAsset>();
}

/// Each field in turn present in both themes, alone in the overlay, and alone in the base.
template <class T>
void CheckField(std::optional<T> ChromeTheme::*field, const char* name) {
    SCOPED_TRACE(name);
    ChromeTheme base;
    base.*field = Value<T>(3);
    ChromeTheme overlay;
    overlay.*field = Value<T>(5);
    EXPECT_EQ(MergeChromeTheme(base, overlay).*field, overlay.*field);
    EXPECT_EQ(MergeChromeTheme({}, overlay).*field, overlay.*field);
    EXPECT_EQ(MergeChromeTheme(base, {}).*field, base.*field);
    EXPECT_EQ(MergeChromeTheme({}, {}).*field, std::nullopt);
}

#define CHECK_FIELD(name) CheckField(&ChromeTheme::name, #name)

TEST(ChromeTheme, FieldPresentInTheOverlayReplacesTheBaseFieldAlsoWhenBothArePresent) {
    CHECK_FIELD(FrameWidth);
    CHECK_FIELD(TitleHeight);
    CHECK_FIELD(ButtonWidth);
    CHECK_FIELD(Scale);
    CHECK_FIELD(InnerBorderWidth);
    CHECK_FIELD(TitleTextScale);
    CHECK_FIELD(TitleImagePadding);
    CHECK_FIELD(ClientExtensionLeft);
    CHECK_FIELD(ClientExtensionTop);
    CHECK_FIELD(ClientExtensionRight);
    CHECK_FIELD(ClientExtensionBottom);
    CHECK_FIELD(MaximizedChromePolicy);
    CHECK_FIELD(FontFamily);
    CHECK_FIELD(TitleFontSize);
    CHECK_FIELD(TitleFontWeight);
    CHECK_FIELD(TitleTextColor);
    CHECK_FIELD(TitleBarFill);
    CHECK_FIELD(FrameFill);
    CHECK_FIELD(InnerBorderColor);
    CHECK_FIELD(ButtonHoverFill);
    CHECK_FIELD(ButtonPressedFill);
    CHECK_FIELD(CloseHoverFill);
    CHECK_FIELD(ClosePressedFill);
    CHECK_FIELD(TitleIcon);
    CHECK_FIELD(ReservedGlyph);
    CHECK_FIELD(MinimizeGlyph);
    CHECK_FIELD(MaximizeGlyph);
    CHECK_FIELD(RestoreGlyph);
    CHECK_FIELD(CloseGlyph);
    CHECK_FIELD(SmallIcon);
    CHECK_FIELD(LargeIcon);
}

TEST(ChromeTheme, EmptyOverlayLeavesTheBaseInForce) {
    ChromeTheme base;
    base.TitleHeight = 50.0F;
    base.TitleIcon = nullptr;
    const ChromeTheme merged = MergeChromeTheme(base, {});
    EXPECT_EQ(merged.TitleHeight, 50.0F);
    EXPECT_TRUE(merged.TitleIcon.has_value());
    EXPECT_FALSE(merged.FrameWidth.has_value());
}

TEST(ChromeTheme, EmptyThemeGivesTheDefaults) {
    const Tamborel::ThemeMetrics metrics = DeriveThemeMetrics({});
    EXPECT_EQ(metrics.frameWidth, 8.0F);
    EXPECT_EQ(metrics.titleHeight, 42.0F);
    EXPECT_EQ(metrics.buttonWidth, 60.0F);
    EXPECT_EQ(metrics.scale, 1.0F);
    EXPECT_EQ(metrics.clientExtensionLeft, 0.0F);
    EXPECT_EQ(metrics.clientExtensionTop, 0.0F);
    EXPECT_EQ(metrics.clientExtensionRight, 0.0F);
    EXPECT_EQ(metrics.clientExtensionBottom, 0.0F);
    EXPECT_EQ(metrics.maximizedChromePolicy, 0);
    EXPECT_TRUE(metrics.hasIcon);
}

TEST(ChromeTheme, ValuesBelowTheirLimitAreHeldAtIt) {
    ChromeTheme theme;
    theme.FrameWidth = theme.TitleHeight = theme.ButtonWidth = theme.Scale = -4.0F;
    theme.ClientExtensionLeft = theme.ClientExtensionTop = -4.0F;
    theme.ClientExtensionRight = theme.ClientExtensionBottom = -4.0F;
    theme.MaximizedChromePolicy = -4;
    const Tamborel::ThemeMetrics metrics = DeriveThemeMetrics(theme);
    EXPECT_EQ(metrics.frameWidth, 0.0F);
    EXPECT_EQ(metrics.titleHeight, 1.0F);
    EXPECT_EQ(metrics.buttonWidth, 1.0F);
    EXPECT_EQ(metrics.scale, 0.01F);
    EXPECT_EQ(metrics.clientExtensionLeft, 0.0F);
    EXPECT_EQ(metrics.clientExtensionTop, 0.0F);
    EXPECT_EQ(metrics.clientExtensionRight, 0.0F);
    EXPECT_EQ(metrics.clientExtensionBottom, 0.0F);
    EXPECT_EQ(metrics.maximizedChromePolicy, -4);  // a policy has no limit
}

TEST(ChromeTheme, TitleIconPresentAndNullMeansNoIconAndAbsentMeansAnIcon) {
    ChromeTheme theme;
    EXPECT_TRUE(DeriveThemeMetrics(theme).hasIcon);
    theme.TitleIcon = nullptr;
    EXPECT_FALSE(DeriveThemeMetrics(theme).hasIcon);
    theme.TitleIcon = std::make_shared<ImageAsset>();
    EXPECT_TRUE(DeriveThemeMetrics(theme).hasIcon);
}

TEST(ChromeTheme, HitTestMetricsScaleTheTitleAndTheButtonsButNotTheFrame) {
    ChromeTheme theme;
    theme.Scale = 2.0F;
    theme.TitleHeight = 36.0F;
    const Tamborel::HitTestMetrics metrics = HitTestMetricsOf(DeriveThemeMetrics(theme));
    EXPECT_EQ(metrics.frameWidth, 8.0F);
    EXPECT_EQ(metrics.titleHeight, 72.0F);
    EXPECT_EQ(metrics.buttonWidth, 120.0F);
    EXPECT_EQ(metrics.reservedSlotWidth, 120.0F);
    EXPECT_EQ(metrics.reservedSlotCount, 2.0F);
    EXPECT_EQ(metrics.scale, 2.0F);
}

TEST(ChromeTheme, DefaultThemeIsEmptyUntilItIsSetAndIsCopiedBothWays) {
    EXPECT_FALSE(Tamborel::GetDefaultChromeTheme().TitleHeight.has_value());
    ChromeTheme theme;
    theme.TitleHeight = 30.0F;
    Tamborel::SetDefaultChromeTheme(theme);
    theme.TitleHeight = 31.0F;
    EXPECT_EQ(Tamborel::GetDefaultChromeTheme().TitleHeight, 30.0F);
    Tamborel::SetDefaultChromeTheme({});
    EXPECT_FALSE(Tamborel::GetDefaultChromeTheme().TitleHeight.has_value());
}

}  // namespace
