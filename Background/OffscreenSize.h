// How large the texture is that a background is drawn to before the blit.
#pragma once

#include "Background/BackgroundKind.h"

#include <cstdint>

namespace Tamborel {

/// A size in pixels.
struct OffscreenSize {
    std::uint32_t width = 0;
    std::uint32_t height = 0;

    bool operator==(const OffscreenSize&) const = default;
};

/// The size for a surface of `width` by `height` pixels, both at least 1. Full-size kinds get the surface's own; light
/// kinds a third of it, enlarged in proportion where that is needed to cover 640 by 360.
OffscreenSize OffscreenSizeFor(BackgroundKind kind, std::uint32_t width, std::uint32_t height);

}  // namespace Tamborel
