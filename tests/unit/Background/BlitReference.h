// The blit's arithmetic once more, on the processor and in double precision, written apart from the program: what the
// device's picture is compared with.
#pragma once

#include "Background/ShaderConstants.h"

#include <array>

using Texel = std::array<double, 4>;

/// The blit's colour at the whole-numbered place (`x`, `y`) of the image, before the dither. `source` is the background
/// there; it isn't looked at where the constants say that there is none.
Texel BlitBeforeDither(const Tamborel::BlitConstants& constants, const Texel& source, int x, int y);
