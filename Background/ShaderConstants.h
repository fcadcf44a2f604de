// The records that the programs under shaders/ read, byte for byte.
#pragma once

#include "Background/BackgroundSettings.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace Tamborel {

using Float4 = std::array<float, 4>;

/// Register b0 of the pixel programs of the kinds 0 to 7. The defaults are what every frame writes; resolution, time,
/// frame and glow are set anew each time. The colour fields stay neutral: the grade is the blit's work.
struct Constants {
    Float4 iResolution{};  ///< Offscreen width and height in pixels, 0, 0.
    std::array<Float4, 4> iChannelResolution{};
    Float4 rangeMin{0.0F, 0.0F, 0.0F, 0.0F};
    Float4 rangeMax{1.0F, 1.0F, 1.0F, 1.0F};
    Float4 diffuseColor{1.0F, 1.0F, 1.0F, 1.0F};
    Float4 iMouse{};
    float iTime = 0.0F;  ///< Seconds.
    float opacity = 1.0F;
    float colorHueDegrees = 0.0F;
    float colorSaturation = 1.0F;
    float colorBrightness = 0.0F;
    float colorContrast = 1.0F;
    std::int32_t iFrame = 0;
    float sunriseGlow = 0.0F;
    std::int32_t pad4 = 0;
    std::int32_t pad5 = 0;
    std::int32_t pad6 = 0;
    std::int32_t pad7 = 0;
};
static_assert(sizeof(Constants) == 192);
static_assert(offsetof(Constants, iResolution) == 0);
static_assert(offsetof(Constants, iChannelResolution) == 16);
static_assert(offsetof(Constants, rangeMin) == 80);
static_assert(offsetof(Constants, rangeMax) == 96);
static_assert(offsetof(Constants, diffuseColor) == 112);
static_assert(offsetof(Constants, iMouse) == 128);
static_assert(offsetof(Constants, iTime) == 144);
static_assert(offsetof(Constants, opacity) == 148);
static_assert(offsetof(Constants, colorHueDegrees) == 152);
static_assert(offsetof(Constants, colorSaturation) == 156);
static_assert(offsetof(Constants, colorBrightness) == 160);
static_assert(offsetof(Constants, colorContrast) == 164);
static_assert(offsetof(Constants, iFrame) == 168);
static_assert(offsetof(Constants, sunriseGlow) == 172);
static_assert(offsetof(Constants, pad4) == 176);

/// Register b0 of the blit program. Sizes and places are pixels, flags are 1 or 0, fills RGBA.
struct BlitConstants {
    float SdrWhiteScale = 1.0F;
    float UseThemeBackground = 0.0F;  ///< 0 flat, 1 background, 2 background that brings its own noise.
    float IsMaximized = 0.0F;
    float MaximizedChromePolicy = 0.0F;
    Float4 WindowMetrics{};         ///< Window width and height, then the image's place in the window.
    Float4 ChromeMetrics{};         ///< Frame, title and inner border, then the inner border's flag.
    Float4 ClientFrameExtension{};  ///< Left, top, right, bottom.
    Float4 TitleBarFill{};
    Float4 FrameFill{};
    Float4 InnerBorderColor{};
    Float4 FlatInteriorFill{};
    Tamborel::ColorGrade ColorGrade;
};
static_assert(sizeof(BlitConstants) == 144);
static_assert(offsetof(BlitConstants, SdrWhiteScale) == 0);
static_assert(offsetof(BlitConstants, UseThemeBackground) == 4);
static_assert(offsetof(BlitConstants, IsMaximized) == 8);
static_assert(offsetof(BlitConstants, MaximizedChromePolicy) == 12);
static_assert(offsetof(BlitConstants, WindowMetrics) == 16);
static_assert(offsetof(BlitConstants, ChromeMetrics) == 32);
static_assert(offsetof(BlitConstants, ClientFrameExtension) == 48);
static_assert(offsetof(BlitConstants, TitleBarFill) == 64);
static_assert(offsetof(BlitConstants, FrameFill) == 80);
static_assert(offsetof(BlitConstants, InnerBorderColor) == 96);
static_assert(offsetof(BlitConstants, FlatInteriorFill) == 112);
static_assert(offsetof(BlitConstants, ColorGrade) == 128);

/// A corner of the full-screen strip.
struct BackgroundVertex {
    Float4 color;
    std::array<float, 2> position;
    std::array<float, 2> textureCoordinate;
};
static_assert(sizeof(BackgroundVertex) == 32);
static_assert(offsetof(BackgroundVertex, color) == 0);
static_assert(offsetof(BackgroundVertex, position) == 16);
static_assert(offsetof(BackgroundVertex, textureCoordinate) == 24);

/// The strip: top left, bottom left, top right, bottom right.
inline constexpr std::array<BackgroundVertex, 4> kStrip = {{
    {{1.0F, 1.0F, 1.0F, 1.0F}, {-1.0F, 1.0F}, {0.0F, 0.0F}},
    {{1.0F, 1.0F, 1.0F, 1.0F}, {-1.0F, -1.0F}, {0.0F, 1.0F}},
    {{1.0F, 1.0F, 1.0F, 1.0F}, {1.0F, 1.0F}, {1.0F, 0.0F}},
    {{1.0F, 1.0F, 1.0F, 1.0F}, {1.0F, -1.0F}, {1.0F, 1.0F}},
}};
static_assert(sizeof(kStrip) == 128);

}  // namespace Tamborel
