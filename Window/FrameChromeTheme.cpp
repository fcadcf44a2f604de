// What a theme makes of the title bar: values with their defaults and limits.
#include "Scene/ImagePrimitive.h"
#include "Scene/RectangleNode.h"
#include "Scene/TextPrimitive.h"
#include "Window/FrameChrome.h"
#include "Window/HitTest.h"

#include <algorithm>

namespace Tamborel {

namespace {

constexpr float kTextScale = 1.25F;
constexpr float kFontSize = 14.28F;
constexpr std::int32_t kFontWeight = 700;
constexpr float kImagePadding = 6.0F;
constexpr const wchar_t* kFontFamily = L"Segoe UI";
constexpr Color kTextColor{0.9F, 0.9F, 0.9F, 1.0F};
constexpr Color kButtonHover{0.06F, 0.46F, 0.73F, 0.333F};
constexpr Color kButtonPressed{0.05F, 0.36F, 0.62F, 0.333F};
constexpr Color kCloseHover{0.784F, 0.106F, 0.106F, 0.333F};
constexpr Color kClosePressed{0.612F, 0.082F, 0.082F, 0.333F};

float AtLeast(float limit, const std::optional<float>& field, float otherwise) {
    return std::max(limit, field.value_or(otherwise));
}

}  // namespace

void FrameChrome::ApplyTheme(const ChromeTheme& theme) {
    theme_ = theme;
    themeDirty_ = true;
    if (initialized_) Resolve();
}

void FrameChrome::Resolve() {
    ResolveMeasures();
    ResolveColors();
    ResolveImages();
    titleText_->fontFamily = theme_.FontFamily.value_or(kFontFamily);
    // A weight out of range is DirectWrite's to refuse.
    titleText_->fontWeight = static_cast<std::uint32_t>(theme_.TitleFontWeight.value_or(kFontWeight));
    last_.reset();
    themeDirty_ = false;
}

void FrameChrome::ResolveMeasures() {
    measures_.frameWidth = AtLeast(0.0F, theme_.FrameWidth, ChromeDefaults::FrameWidth);
    measures_.titleHeight = AtLeast(1.0F, theme_.TitleHeight, ChromeDefaults::TitleHeight);
    measures_.buttonWidth = AtLeast(1.0F, theme_.ButtonWidth, ChromeDefaults::ButtonWidth);
    measures_.scale = AtLeast(ChromeDefaults::MinimumScale, theme_.Scale, ChromeDefaults::Scale);
    innerBorderWidth_ = AtLeast(0.0F, theme_.InnerBorderWidth, ChromeDefaults::InnerBorderWidth);
    measures_.titleTextScale = AtLeast(0.01F, theme_.TitleTextScale, kTextScale);
    measures_.titleImagePadding = AtLeast(0.0F, theme_.TitleImagePadding, kImagePadding);
    measures_.titleFontSize = AtLeast(1.0F, theme_.TitleFontSize, kFontSize);
}

void FrameChrome::ResolveColors() {
    titleBarFill_ = theme_.TitleBarFill.value_or(ChromeDefaults::TitleBarFill);
    frameFill_ = theme_.FrameFill.value_or(titleBarFill_);
    innerBorderColor_ = theme_.InnerBorderColor.value_or(ChromeDefaults::InnerBorderColor);
    fills_ = {.hover = theme_.ButtonHoverFill.value_or(kButtonHover),
              .pressed = theme_.ButtonPressedFill.value_or(kButtonPressed),
              .closeHover = theme_.CloseHoverFill.value_or(kCloseHover),
              .closePressed = theme_.ClosePressedFill.value_or(kClosePressed)};

    const auto& [titleBar, border, left, right, bottom] = panels_;
    titleBar->fillColor = titleBarFill_;
    for (const auto& panel : {left, right, bottom}) panel->fillColor = frameFill_;
    border->strokeColor = innerBorderColor_;
    border->strokeWidth = innerBorderWidth_;
    titleText_->color = theme_.TitleTextColor.value_or(kTextColor);
}

void FrameChrome::ResolveImages() {
    icon_ = theme_.TitleIcon.value_or(defaults_.icon);
    buttons_[CaptionZone::ReservedFirst].glyph->asset = theme_.ReservedGlyph.value_or(defaults_.reservedFirst);
    buttons_[CaptionZone::ReservedSecond].glyph->asset = defaults_.reservedSecond;
    buttons_[CaptionZone::Minimize].glyph->asset = theme_.MinimizeGlyph.value_or(defaults_.minimize);
    buttons_[CaptionZone::Close].glyph->asset = theme_.CloseGlyph.value_or(defaults_.close);
    maximizeImage_ = theme_.MaximizeGlyph.value_or(defaults_.maximize);
    restoreImage_ = theme_.RestoreGlyph.value_or(defaults_.restore);
}

}  // namespace Tamborel
