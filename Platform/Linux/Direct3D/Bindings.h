// Where a program's registers lie among the bindings of descriptor set 0, and how many of each kind there are.
#pragma once

#include <cstdint>

namespace Platform::Direct3D {

inline constexpr std::uint32_t constantBinding = 0;
inline constexpr std::uint32_t textureBinding = 16;
inline constexpr std::uint32_t samplerBinding = 32;
inline constexpr std::uint32_t storageBinding = 48;

// Within what every Vulkan device offers to one stage. Registers beyond these counts are not for use.
inline constexpr std::uint32_t constantSlots = 4;
inline constexpr std::uint32_t textureSlots = 8;
inline constexpr std::uint32_t samplerSlots = 4;
inline constexpr std::uint32_t storageSlots = 4;
inline constexpr std::uint32_t vertexSlots = 4;

}  // namespace Platform::Direct3D
