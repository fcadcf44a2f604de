#include "Window/BlitRecord.h"

#include "Window/FrameChrome.h"

#include <algorithm>
#include <array>

namespace Tamborel {

namespace {

// Places in the record's arrays.
constexpr std::size_t kOffsetX = 2;
constexpr std::size_t kOffsetY = 3;
constexpr std::size_t kFrameWidth = 0;
constexpr std::size_t kTitleHeight = 1;
constexpr std::size_t kInnerBorder = 2;

constexpr std::uint32_t kKeepAll = 1;
constexpr std::uint32_t kKeepNothing = 2;

float NotNegative(float value) {
    return std::max(0.0F, value);
}

std::array<float, 4> Components(const Color& color) {
    return {color.r, color.g, color.b, color.a};
}

Rect ClientExtension(const ThemeMetrics& metrics, float chromeScale) {
    const float scale = std::max(ChromeDefaults::MinimumScale, chromeScale);
    return {NotNegative(metrics.clientExtensionLeft * scale), NotNegative(metrics.clientExtensionTop * scale),
            NotNegative(metrics.clientExtensionRight * scale), NotNegative(metrics.clientExtensionBottom * scale)};
}

}  // namespace

FrameLook FrameLookOf(const ChromeTheme& theme, const ThemeMetrics& metrics) {
    FrameLook look;
    look.frameWidth = NotNegative(metrics.scale * metrics.frameWidth);
    look.titleHeight = NotNegative(metrics.scale * metrics.titleHeight);
    look.innerBorderWidth = NotNegative(theme.InnerBorderWidth.value_or(ChromeDefaults::InnerBorderWidth));
    look.clientExtension = ClientExtension(metrics, metrics.scale);
    look.maximizedChromePolicy = metrics.maximizedChromePolicy;
    look.titleBarFill = theme.TitleBarFill.value_or(ChromeDefaults::TitleBarFill);
    look.frameFill = theme.FrameFill.value_or(look.titleBarFill);
    look.innerBorderColor = theme.InnerBorderColor.value_or(ChromeDefaults::InnerBorderColor);
    return look;
}

FrameLook FrameLookOf(const FrameChrome& chrome, const ThemeMetrics& metrics) {
    const FrameChrome::Metrics laidOut = chrome.ReadMetrics();
    FrameLook look;
    look.frameWidth = NotNegative(laidOut.frameWidth);
    look.titleHeight = NotNegative(laidOut.titleHeight);
    look.innerBorderWidth = NotNegative(laidOut.innerBorder);
    look.clientExtension = ClientExtension(metrics, chrome.Scale());
    look.maximizedChromePolicy = metrics.maximizedChromePolicy;
    look.titleBarFill = laidOut.titleBarFill;
    look.frameFill = laidOut.frameFill;
    look.innerBorderColor = laidOut.innerBorderColor;
    return look;
}

BlitFrameRecord BuildBlitFrameRecord(const FrameLook& look, const FramePlacement& placement) {
    const float scale = placement.dpiScale;
    BlitFrameRecord record;
    record.useThemeBackground = 1;
    record.isMaximized = placement.maximized ? 1 : 0;
    record.innerBorderEnabled = placement.innerBorder ? 1 : 0;
    record.maximizedChromePolicy = static_cast<std::uint32_t>(look.maximizedChromePolicy);
    record.windowMetrics = {static_cast<float>(placement.windowWidth), static_cast<float>(placement.windowHeight),
                            static_cast<float>(placement.clientOffsetX), static_cast<float>(placement.clientOffsetY)};
    record.chromeMetrics = {look.frameWidth * scale, look.titleHeight * scale, look.innerBorderWidth * scale};
    record.clientFrameExtension = {look.clientExtension.left * scale, look.clientExtension.top * scale,
                                   look.clientExtension.right * scale, look.clientExtension.bottom * scale};
    record.titleBarFill = Components(look.titleBarFill);
    record.frameFill = Components(look.frameFill);
    record.innerBorderColor = Components(look.innerBorderColor);
    record.flatInteriorFill = record.frameFill;
    return record;
}

void ApplyMaximizedChromePolicy(BlitFrameRecord& record) {
    if (record.isMaximized == 0 || record.maximizedChromePolicy == kKeepAll) return;
    record.chromeMetrics[kFrameWidth] = 0.0F;
    record.chromeMetrics[kInnerBorder] = 0.0F;
    if (record.maximizedChromePolicy != kKeepNothing) return;
    record.chromeMetrics[kTitleHeight] = 0.0F;
    record.clientFrameExtension.fill(0.0F);
}

Matrix3x2 ClientRootTransform(const BlitFrameRecord& record, float dpiScale) {
    const auto& chrome = record.chromeMetrics;
    Matrix3x2 transform;
    transform.m11 = dpiScale;
    transform.m22 = dpiScale;
    transform.dx = chrome[kInnerBorder] + chrome[kFrameWidth] - record.windowMetrics[kOffsetX];
    transform.dy = chrome[kInnerBorder] + chrome[kTitleHeight] - record.windowMetrics[kOffsetY];
    return transform;
}

Rect ClientClipBox(const BlitFrameRecord& record, std::int32_t surfaceWidth, std::int32_t surfaceHeight) {
    const auto& [windowWidth, windowHeight, offsetX, offsetY] = record.windowMetrics;
    const auto& [frameWidth, titleHeight, innerBorder] = record.chromeMetrics;
    return {std::max(innerBorder + frameWidth - offsetX, 0.0F), std::max(innerBorder + titleHeight - offsetY, 0.0F),
            std::min(windowWidth - frameWidth - innerBorder - offsetX, static_cast<float>(surfaceWidth)),
            std::min(windowHeight - frameWidth - innerBorder - offsetY, static_cast<float>(surfaceHeight))};
}

}  // namespace Tamborel
