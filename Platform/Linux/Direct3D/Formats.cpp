#include "Platform/Linux/Direct3D/Formats.h"

namespace Platform::Direct3D {

std::optional<FormatInfo> FormatOf(DXGI_FORMAT format) noexcept {
    switch (format) {
        case DXGI_FORMAT_R32G32B32A32_FLOAT:
            return FormatInfo{VK_FORMAT_R32G32B32A32_SFLOAT, 16};
        case DXGI_FORMAT_R32G32B32_FLOAT:
            return FormatInfo{VK_FORMAT_R32G32B32_SFLOAT, 12};
        case DXGI_FORMAT_R16G16B16A16_FLOAT:
            return FormatInfo{VK_FORMAT_R16G16B16A16_SFLOAT, 8};
        case DXGI_FORMAT_R32G32_FLOAT:
            return FormatInfo{VK_FORMAT_R32G32_SFLOAT, 8};
        case DXGI_FORMAT_R8G8B8A8_UNORM:
            return FormatInfo{VK_FORMAT_R8G8B8A8_UNORM, 4};
        case DXGI_FORMAT_R32_FLOAT:
            return FormatInfo{VK_FORMAT_R32_SFLOAT, 4};
        case DXGI_FORMAT_R8_UNORM:
            return FormatInfo{VK_FORMAT_R8_UNORM, 1};
        case DXGI_FORMAT_B8G8R8A8_UNORM:
            return FormatInfo{VK_FORMAT_B8G8R8A8_UNORM, 4};
        default:
            return std::nullopt;
    }
}

}  // namespace Platform::Direct3D
