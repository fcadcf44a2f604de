// The fonts that the program carries within itself.
#pragma once

#include "Core/EmbeddedResource.h"

#include <span>

namespace Tamborel {

/// The font files in the order in which DirectWrite gets them.
std::span<EmbeddedResource* const> EmbeddedFonts() noexcept;

/// Puts other fonts in their place, until the next call; the list and the fonts stay the caller's. For tests.
void ReplaceEmbeddedFonts(std::span<EmbeddedResource* const> fonts) noexcept;

}  // namespace Tamborel
