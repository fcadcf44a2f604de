// What is measured: one background on a picture of one size, with the frame and the grade of an ordinary window.
#pragma once

#include "Background/BackgroundKind.h"
#include "Background/BackgroundSettings.h"
#include "Background/BlitFrameRecord.h"

#include <cstdint>

namespace BackgroundBench {

struct Scenario {
    Tamborel::BackgroundKind kind = Tamborel::BackgroundKind::LiquidMetal;
    std::int32_t spacing = 0;  ///< Pixels per grid cell of the metal surface; 0 for the other kinds.
    std::uint32_t width = 0;   ///< Pixels.
    std::uint32_t height = 0;

    /// A window with every fill in sight.
    Tamborel::BlitFrameRecord Record() const;
    Tamborel::BackgroundTuning Tuning() const;
};

/// The launcher's: all of the grade's steps run.
inline constexpr Tamborel::ColorGrade kGrade{21.0F, 0.45F, 0.0F, 1.0F};

/// Seconds between two frames.
inline constexpr float kFrameTime = 1.0F / 60.0F;

}  // namespace BackgroundBench
