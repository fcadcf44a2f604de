#pragma once

#include "Platform/Linux/Direct3D/Vulkan.h"

#include <cstddef>

namespace Platform::Direct3D {

class GraphicsDevice;

/// Memory that both the program and the device see, mapped for its whole life and coherent. Must not outlive its
/// device, nor end while the device uses it (GraphicsDevice::Keep).
class HostBuffer {
public:
    /// What the program does with the memory; reading wants cached memory.
    enum class Access { Write, Read };

    /// Throws VulkanError.
    HostBuffer(GraphicsDevice& device, VkDeviceSize size, Access access);
    ~HostBuffer();
    HostBuffer(const HostBuffer&) = delete;
    HostBuffer& operator=(const HostBuffer&) = delete;

    VkBuffer Handle() const noexcept { return buffer_; }
    std::byte* Data() const noexcept { return data_; }
    VkDeviceSize Size() const noexcept { return size_; }

private:
    GraphicsDevice& device_;
    VkBuffer buffer_ = VK_NULL_HANDLE;
    VkDeviceMemory memory_ = VK_NULL_HANDLE;
    std::byte* data_ = nullptr;
    VkDeviceSize size_;
};

}  // namespace Platform::Direct3D
