#include "Core/EmbeddedFonts.h"

namespace Tamborel {

namespace {

// None yet: text is set in the system's fonts.
std::span<EmbeddedResource* const> fonts;

}  // namespace

std::span<EmbeddedResource* const> EmbeddedFonts() noexcept {
    return fonts;
}

void ReplaceEmbeddedFonts(std::span<EmbeddedResource* const> replacement) noexcept {
    fonts = replacement;
}

}  // namespace Tamborel
