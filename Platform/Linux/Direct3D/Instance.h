#pragma once

#include "Platform/Linux/Direct3D/Vulkan.h"

#include <cstdint>

namespace Platform::Direct3D {

struct Instance {
    VkInstance handle = VK_NULL_HANDLE;
};

/// The process's Vulkan instance, made at the first call and never destroyed. Throws VulkanError while no driver can be
/// found. Any thread.
const Instance& SharedInstance();

/// Has the validation layer look at all that this process does with Vulkan; its complaints go to standard error. For
/// tests. Call it before the first device is made. False when the layer isn't installed.
bool EnableValidation();

/// How many errors and warnings the validation layer has reported so far. Any thread.
std::uint64_t ValidationMessages();

}  // namespace Platform::Direct3D
