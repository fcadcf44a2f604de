#include "Core/EmbeddedFonts.h"

#include "Core/EmbeddedAssets.h"

#include <array>

namespace Tamborel {

namespace {

constexpr std::array<EmbeddedResource*, 3> builtIn{&Assets::FontRegular, &Assets::FontSemibold, &Assets::FontBold};

std::span<EmbeddedResource* const> fonts = builtIn;

}  // namespace

std::span<EmbeddedResource* const> EmbeddedFonts() noexcept {
    return fonts;
}

void ReplaceEmbeddedFonts(std::span<EmbeddedResource* const> replacement) noexcept {
    fonts = replacement;
}

}  // namespace Tamborel
