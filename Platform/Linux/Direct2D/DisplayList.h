// What a frame draws, and what sets it apart from another.
#pragma once

#include "Platform/Linux/Direct2D/DrawCommand.h"

#include <optional>
#include <span>
#include <vector>

namespace Platform::Direct2D {

struct DisplayList {
    std::optional<D2D1_COLOR_F> clear;  ///< Premultiplied: what the target starts from; none if it keeps what it holds.
    std::vector<DrawCommand> commands;  ///< In painting order; none with empty bounds.
};

/// The boxes outside which two lists of commands paint the same pixels. Empty exactly if the lists are equal.
std::vector<PixelRect> Difference(std::span<const DrawCommand> before, std::span<const DrawCommand> after);

}  // namespace Platform::Direct2D
