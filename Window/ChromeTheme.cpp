#include "Window/ChromeTheme.h"

#include <algorithm>
#include <mutex>

namespace Tamborel {

namespace {

struct DefaultTheme {
    std::mutex mutex;
    ChromeTheme theme;  // guarded by mutex
};

DefaultTheme& TheDefault() {
    static DefaultTheme instance;
    return instance;
}

template <class T>
void Overlay(std::optional<T>& field, const std::optional<T>& replacement) {
    if (replacement) field = replacement;
}

float AtLeast(float limit, const std::optional<float>& field, float otherwise) {
    return field ? std::max(limit, *field) : otherwise;
}

}  // namespace

ChromeTheme MergeChromeTheme(const ChromeTheme& base, const ChromeTheme& overlay) {
    ChromeTheme merged = base;
    Overlay(merged.FrameWidth, overlay.FrameWidth);
    Overlay(merged.TitleHeight, overlay.TitleHeight);
    Overlay(merged.ButtonWidth, overlay.ButtonWidth);
    Overlay(merged.Scale, overlay.Scale);
    Overlay(merged.InnerBorderWidth, overlay.InnerBorderWidth);
    Overlay(merged.TitleTextScale, overlay.TitleTextScale);
    Overlay(merged.TitleImagePadding, overlay.TitleImagePadding);
    Overlay(merged.ClientExtensionLeft, overlay.ClientExtensionLeft);
    Overlay(merged.ClientExtensionTop, overlay.ClientExtensionTop);
    Overlay(merged.ClientExtensionRight, overlay.ClientExtensionRight);
    Overlay(merged.ClientExtensionBottom, overlay.ClientExtensionBottom);
    Overlay(merged.MaximizedChromePolicy, overlay.MaximizedChromePolicy);
    Overlay(merged.FontFamily, overlay.FontFamily);
    Overlay(merged.TitleFontSize, overlay.TitleFontSize);
    Overlay(merged.TitleFontWeight, overlay.TitleFontWeight);
    Overlay(merged.TitleTextColor, overlay.TitleTextColor);
    Overlay(merged.TitleBarFill, overlay.TitleBarFill);
    Overlay(merged.FrameFill, overlay.FrameFill);
    Overlay(merged.InnerBorderColor, overlay.InnerBorderColor);
    Overlay(merged.ButtonHoverFill, overlay.ButtonHoverFill);
    Overlay(merged.ButtonPressedFill, overlay.ButtonPressedFill);
    Overlay(merged.CloseHoverFill, overlay.CloseHoverFill);
    Overlay(merged.ClosePressedFill, overlay.ClosePressedFill);
    Overlay(merged.TitleIcon, overlay.TitleIcon);
    Overlay(merged.ReservedGlyph, overlay.ReservedGlyph);
    Overlay(merged.MinimizeGlyph, overlay.MinimizeGlyph);
    Overlay(merged.MaximizeGlyph, overlay.MaximizeGlyph);
    Overlay(merged.RestoreGlyph, overlay.RestoreGlyph);
    Overlay(merged.CloseGlyph, overlay.CloseGlyph);
    Overlay(merged.SmallIcon, overlay.SmallIcon);
    Overlay(merged.LargeIcon, overlay.LargeIcon);
    return merged;
}

ThemeMetrics DeriveThemeMetrics(const ChromeTheme& theme) {
    ThemeMetrics metrics;
    metrics.frameWidth = AtLeast(0.0F, theme.FrameWidth, ChromeDefaults::FrameWidth);
    metrics.titleHeight = AtLeast(1.0F, theme.TitleHeight, ChromeDefaults::TitleHeight);
    metrics.buttonWidth = AtLeast(1.0F, theme.ButtonWidth, ChromeDefaults::ButtonWidth);
    metrics.scale = AtLeast(ChromeDefaults::MinimumScale, theme.Scale, ChromeDefaults::Scale);
    metrics.clientExtensionLeft = AtLeast(0.0F, theme.ClientExtensionLeft, 0.0F);
    metrics.clientExtensionTop = AtLeast(0.0F, theme.ClientExtensionTop, 0.0F);
    metrics.clientExtensionRight = AtLeast(0.0F, theme.ClientExtensionRight, 0.0F);
    metrics.clientExtensionBottom = AtLeast(0.0F, theme.ClientExtensionBottom, 0.0F);
    metrics.maximizedChromePolicy = theme.MaximizedChromePolicy.value_or(0);
    metrics.hasIcon = !theme.TitleIcon || *theme.TitleIcon != nullptr;
    return metrics;
}

HitTestMetrics HitTestMetricsOf(const ThemeMetrics& theme) {
    HitTestMetrics metrics;
    metrics.frameWidth = theme.frameWidth;
    metrics.titleHeight = theme.scale * theme.titleHeight;
    metrics.buttonWidth = theme.scale * theme.buttonWidth;
    metrics.reservedSlotWidth = metrics.buttonWidth;
    metrics.reservedSlotCount = 2.0F;
    metrics.scale = theme.scale;
    metrics.hasIcon = theme.hasIcon;
    return metrics;
}

ChromeTheme GetDefaultChromeTheme() {
    const std::lock_guard lock(TheDefault().mutex);
    return TheDefault().theme;
}

void SetDefaultChromeTheme(const ChromeTheme& theme) {
    const std::lock_guard lock(TheDefault().mutex);
    TheDefault().theme = theme;
}

}  // namespace Tamborel
