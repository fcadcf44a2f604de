// How an application configures the frame of its windows.
#pragma once

#include "Scene/Records.h"
#include "Window/Metrics.h"

#include <windows.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace Tamborel {

class ImageAsset;

/// A window's frame. An absent field means that the default holds; a merge overlays only the present ones. Lengths are
/// in device-independent units. Values are stored as given: limits apply where they are read.
struct ChromeTheme {
    std::optional<float> FrameWidth;           ///< Resize band and frame. Default 8, at least 0.
    std::optional<float> TitleHeight;          ///< Title bar. Default 42, at least 1.
    std::optional<float> ButtonWidth;          ///< One caption button. Default 60, at least 1.
    std::optional<float> Scale;                ///< Factor on the three above. Default 1, at least 0.01.
    std::optional<float> InnerBorderWidth;     ///< Line between frame and client. Default 0.5, at least 0.
    std::optional<float> TitleTextScale;       ///< Factor on the font size. Default 1.25, at least 0.01.
    std::optional<float> TitleImagePadding;    ///< Added to the font size to size a title image. Default 6, at least 0.
    std::optional<float> ClientExtensionLeft;  ///< How far the client reaches under the frame. Default 0, at least 0.
    std::optional<float> ClientExtensionTop;   ///< As ClientExtensionLeft.
    std::optional<float> ClientExtensionRight;   ///< As ClientExtensionLeft.
    std::optional<float> ClientExtensionBottom;  ///< As ClientExtensionLeft.
    /// What a maximised window keeps of its chrome. 0, the default: the title bar; 1: all; 2: nothing.
    std::optional<std::int32_t> MaximizedChromePolicy;
    std::optional<std::wstring> FontFamily;       ///< Title font. Default "Segoe UI".
    std::optional<float> TitleFontSize;           ///< Default 14.28, at least 1.
    std::optional<std::int32_t> TitleFontWeight;  ///< DirectWrite weight. Default 700.
    std::optional<Color> TitleTextColor;          ///< Default 0.9, 0.9, 0.9, 1.
    std::optional<Color> TitleBarFill;            ///< Default 0, 0, 0, 0.72.
    std::optional<Color> FrameFill;               ///< Default: the title bar's fill.
    std::optional<Color> InnerBorderColor;        ///< Default 0.251, 0.251, 0.251, 1.
    std::optional<Color> ButtonHoverFill;         ///< Minimise and maximise under the pointer.
    std::optional<Color> ButtonPressedFill;       ///< Minimise and maximise, pressed.
    std::optional<Color> CloseHoverFill;          ///< Close under the pointer.
    std::optional<Color> ClosePressedFill;        ///< Close, pressed.
    /// Default: an embedded icon. Present and null means that the title bar has none.
    std::optional<std::shared_ptr<ImageAsset>> TitleIcon;
    std::optional<std::shared_ptr<ImageAsset>> ReservedGlyph;  ///< Glyphs: absent means the embedded one.
    std::optional<std::shared_ptr<ImageAsset>> MinimizeGlyph;
    std::optional<std::shared_ptr<ImageAsset>> MaximizeGlyph;
    std::optional<std::shared_ptr<ImageAsset>> RestoreGlyph;
    std::optional<std::shared_ptr<ImageAsset>> CloseGlyph;
    std::optional<HICON> SmallIcon;  ///< The window's small icon, not owned. Absent: not sent.
    std::optional<HICON> LargeIcon;  ///< The window's large icon, not owned. Absent: not sent.
};

/// Defaults and lower limits of the fields that more than one place reads.
namespace ChromeDefaults {
inline constexpr float FrameWidth = 8.0F;
inline constexpr float TitleHeight = 42.0F;
inline constexpr float ButtonWidth = 60.0F;
inline constexpr float Scale = 1.0F;
inline constexpr float MinimumScale = 0.01F;
inline constexpr float InnerBorderWidth = 0.5F;
inline constexpr Color TitleBarFill{0.0F, 0.0F, 0.0F, 0.72F};
inline constexpr Color InnerBorderColor{0.251F, 0.251F, 0.251F, 1.0F};
}  // namespace ChromeDefaults

/// A copy of `base` in which each field that is present in `overlay` replaces the same field.
[[nodiscard]] ChromeTheme MergeChromeTheme(const ChromeTheme& base, const ChromeTheme& overlay);

/// The theme's numbers with defaults and lower limits applied.
[[nodiscard]] ThemeMetrics DeriveThemeMetrics(const ChromeTheme& theme);

/// The hit-test metrics that hold while a window has no chrome to ask.
[[nodiscard]] HitTestMetrics HitTestMetricsOf(const ThemeMetrics& theme);

/// The process's default theme, which is empty until somebody sets it. Any thread.
[[nodiscard]] ChromeTheme GetDefaultChromeTheme();

/// Replaces the process's default theme. Windows that exist keep what they have. Any thread.
void SetDefaultChromeTheme(const ChromeTheme& theme);

}  // namespace Tamborel
