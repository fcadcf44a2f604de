// Which background is shown.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace Tamborel {

/// The backgrounds. The value is the index of the kind's grade and, up to the one but last, of its pixel program.
enum class BackgroundKind : std::uint32_t {
    LiquidMetal = 0,
    MagicCurtain = 1,
    CloudDiving = 2,
    CloudHorizon = 3,
    SilkRibbons = 4,
    DawnGrid = 5,
    Cyberspace = 6,
    QuietGoldSunrise = 7,
    LiquidMetalSurface = 8,
};

/// How many kinds there are, and how many of them, the first ones, are drawn by a pixel program alone.
inline constexpr std::size_t kBackgroundKindCount = 9;
inline constexpr std::size_t kPixelProgramCount = 8;

/// What people read, by kind.
inline constexpr std::array<const char*, kBackgroundKindCount> kBackgroundDisplayNames = {
    "Liquid Metal", "Magic Curtain", "Cloud Diving",       "Cloud Horizon",        "Silk Ribbons",
    "Dawn Grid",    "Cyberspace",    "Quiet Gold Sunrise", "Liquid Metal Surface",
};

/// The kind as an index below kBackgroundKindCount; nothing for a value that is no kind.
constexpr std::optional<std::size_t> KindIndex(BackgroundKind kind) {
    const auto index = static_cast<std::size_t>(kind);
    if (index < kBackgroundKindCount) return index;
    return std::nullopt;
}

/// What people read; nothing for a value that is no kind.
constexpr const char* BackgroundDisplayName(BackgroundKind kind) {
    const auto index = KindIndex(kind);
    return index ? kBackgroundDisplayNames[*index] : "";
}

/// The two kinds that run at the window's full size, bring their own noise and keep a clock of their own. All others
/// are light: they run on a reduced offscreen size, and the blit dithers them.
constexpr bool IsFullSizeKind(BackgroundKind kind) {
    return kind == BackgroundKind::QuietGoldSunrise || kind == BackgroundKind::LiquidMetalSurface;
}

}  // namespace Tamborel
