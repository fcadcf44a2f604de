// What the rest of this folder needs of a device of Vulkan's.
#pragma once

#include "Platform/Linux/Direct3D/Vulkan.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace Platform::Direct3D {

/// An instance's devices, in the order of the drivers. Throws VulkanError.
std::vector<VkPhysicalDevice> PhysicalDevicesOf(VkInstance instance);

/// The first family of queues that both draws and computes; nothing where there is none.
std::optional<std::uint32_t> FindQueueFamily(VkPhysicalDevice device);

/// Vulkan 1.3 with passes that need no objects of their own; all maintained drivers in Debian 12 have it.
bool IsUsable(VkPhysicalDevice device);

}  // namespace Platform::Direct3D
