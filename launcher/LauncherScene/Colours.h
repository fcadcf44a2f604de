#pragma once

#include "Scene/Records.h"

#include <cstdint>

inline constexpr std::uint32_t kAccent = 0x72D6C8;
inline constexpr std::uint32_t kText = 0xE9EEEE;
inline constexpr std::uint32_t kMutedText = 0x9CA8AD;
inline constexpr std::uint32_t kRule = 0x333B40;
inline constexpr std::uint32_t kField = 0x171C1F;
inline constexpr std::uint32_t kSelected = 0x223331;
inline constexpr std::uint32_t kRaised = 0x20272B;

inline constexpr std::uint32_t kTextTrailing = 1;     ///< DWRITE_TEXT_ALIGNMENT_TRAILING
inline constexpr std::uint32_t kParagraphNear = 0;    ///< DWRITE_PARAGRAPH_ALIGNMENT_NEAR
inline constexpr std::uint32_t kParagraphCentre = 2;  ///< DWRITE_PARAGRAPH_ALIGNMENT_CENTER

/// 0xRRGGBB as the colour that nodes hold.
constexpr Tamborel::Color ColourFromHex(std::uint32_t hex, float alpha = 1.0F) {
    return {static_cast<float>(hex >> 16 & 0xFF) / 255.0F, static_cast<float>(hex >> 8 & 0xFF) / 255.0F,
            static_cast<float>(hex & 0xFF) / 255.0F, alpha};
}
