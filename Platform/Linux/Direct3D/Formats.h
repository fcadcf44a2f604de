#pragma once

#include "Platform/Linux/Direct3D/Vulkan.h"

#include <dxgiformat.h>

#include <optional>

namespace Platform::Direct3D {

struct FormatInfo {
    VkFormat format;
    UINT bytes;  ///< Of one pixel or one vertex element.
};

/// What a DXGI format is here; nothing for one that this platform doesn't have.
std::optional<FormatInfo> FormatOf(DXGI_FORMAT format) noexcept;

}  // namespace Platform::Direct3D
