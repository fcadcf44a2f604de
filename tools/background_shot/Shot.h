// Draws one picture.
#pragma once

#include "tools/background_shot/Options.h"
#include "tools/background_shot/Picture.h"

namespace BackgroundShot {

struct Shot {
    Picture image;
    Picture offscreen;  ///< 0 by 0 without a background.
};

/// Throws std::runtime_error: no device, a kind that isn't built yet, a call that failed.
Shot Draw(const Options& options);

}  // namespace BackgroundShot
