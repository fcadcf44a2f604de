// The command line of background_shot.
#pragma once

#include "Background/BackgroundKind.h"
#include "Background/BackgroundSettings.h"
#include "Background/BlitFrameRecord.h"

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace BackgroundShot {

/// Thrown for a command line that doesn't follow kUsage; what() says what is wrong with it.
class WrongUsage : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

extern const char* const kUsage;

/// What to draw, and where to write it.
struct Options {
    Tamborel::BackgroundKind kind = Tamborel::BackgroundKind::LiquidMetal;
    double time = 0.0;        ///< Seconds, on whichever clock the kind reads.
    std::int32_t frame = 0;   ///< On whichever counter the kind reads.
    std::uint32_t width = 0;  ///< Pixels of the image.
    std::uint32_t height = 0;
    float whiteScale = 1.0F;
    std::optional<float> glow;  ///< The sunrise's.
    std::optional<Tamborel::ColorGrade> grade;
    std::optional<std::array<float, 2>> pointer;
    Tamborel::BackgroundTuning tuning;
    Tamborel::BlitFrameRecord record;
    std::string out;           ///< A PNG file.
    std::string raw;           ///< Floats of the image; empty for none.
    std::string offscreenRaw;  ///< Floats of the offscreen texture; empty for none.
};

/// Reads the words after the program's name. Throws WrongUsage.
Options ReadOptions(const std::vector<std::string>& words);

}  // namespace BackgroundShot
