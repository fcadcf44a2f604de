#include "Window/HitTest.h"

#include <algorithm>
#include <cmath>

namespace Tamborel {

namespace {

/// Side of the icon's square in title bar heights.
constexpr float IconShare = 0.6F;

/// Space on either side of the icon, in units at scale 1.
constexpr float IconPadding = 8.0F;

constexpr float SmallestScale = 0.01F;

std::int32_t Truncated(float value) {
    return static_cast<std::int32_t>(value);
}

float PaddingOf(float scale) {
    return std::max(SmallestScale, scale) * IconPadding;
}

/// The code of the resize border, HTNOWHERE inside of it.
int HitTestBorder(std::int32_t border, const CaptionPoint& point) {
    if (border < 1) return HTNOWHERE;
    const bool left = point.x < border;
    const bool right = point.x >= point.windowWidth - border;
    const bool top = point.y < border;
    const bool bottom = point.y >= point.windowHeight - border;
    if (top && left) return HTTOPLEFT;
    if (top && right) return HTTOPRIGHT;
    if (bottom && left) return HTBOTTOMLEFT;
    if (bottom && right) return HTBOTTOMRIGHT;
    if (top) return HTTOP;
    if (bottom) return HTBOTTOM;
    if (left) return HTLEFT;
    if (right) return HTRIGHT;
    return HTNOWHERE;
}

/// The code of a point in the row of buttons, which stand at the right edge.
int HitTestButtons(std::int32_t buttonWidth, const CaptionPoint& point) {
    const std::int64_t fromRight = std::int64_t{point.windowWidth} - point.x;
    if (fromRight <= buttonWidth) return HTCLOSE;
    if (fromRight <= std::int64_t{2} * buttonWidth) return HTMAXBUTTON;
    if (fromRight <= std::int64_t{3} * buttonWidth) return HTMINBUTTON;
    return HTCAPTION;
}

}  // namespace

int HitTestCaption(const HitTestMetrics& metrics, const CaptionPoint& point, float dpiScale) {
    const std::int32_t border = Truncated(std::max(0.0F, metrics.frameWidth) * dpiScale);
    if (const int code = HitTestBorder(border, point); code != HTNOWHERE) return code;

    const float title = std::max(1.0F, metrics.titleHeight);
    if (point.y >= Truncated(title * dpiScale)) return HTCLIENT;

    if (metrics.hasIcon) {
        // The icon opens no system menu: it is plain caption, also where a narrow window has a button behind it.
        const float padding = PaddingOf(metrics.scale);
        const float iconEnd = std::ceil((title * IconShare + padding + padding) * dpiScale);
        if (point.x < Truncated(iconEnd)) return HTCAPTION;
    }
    return HitTestButtons(Truncated(std::max(1.0F, metrics.buttonWidth) * dpiScale), point);
}

std::int32_t ZoneFromHit(WPARAM code) {
    switch (code) {
        case HTMINBUTTON:
            return CaptionZone::Minimize;
        case HTMAXBUTTON:
            return CaptionZone::Maximize;
        case HTCLOSE:
            return CaptionZone::Close;
        case HTOBJECT:
            return CaptionZone::ReservedFirst;
        case HitReservedSecond:
            return CaptionZone::ReservedSecond;
        default:
            return NoZone;
    }
}

WPARAM SysCommandForZone(std::int32_t zone, bool zoomed) {
    switch (zone) {
        case CaptionZone::Minimize:
            return SC_MINIMIZE;
        case CaptionZone::Maximize:
            return zoomed ? SC_RESTORE : SC_MAXIMIZE;
        case CaptionZone::Close:
            return SC_CLOSE;
        default:
            return 0;
    }
}

MinimumSize MinimumWindowSize(const ThemeMetrics& theme, float dpiScale) {
    const float title = std::max(0.0F, theme.scale * theme.titleHeight);
    const float button = std::max(0.0F, theme.scale * theme.buttonWidth);
    const float padding = PaddingOf(theme.scale);
    const float width = std::ceil((title * IconShare + padding + 3.0F * button + padding) * dpiScale);
    const float height = std::ceil(theme.scale * theme.titleHeight * dpiScale);
    return {Truncated(width), Truncated(height)};
}

}  // namespace Tamborel
