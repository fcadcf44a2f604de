#include "Platform/Linux/Direct3D/HostBuffer.h"

#include "Platform/Linux/Direct3D/Device.h"

namespace Platform::Direct3D {

HostBuffer::HostBuffer(GraphicsDevice& device, VkDeviceSize size, Access access) : device_(device), size_(size) {
    auto info = Typed<VkBufferCreateInfo>(VK_STRUCTURE_TYPE_BUFFER_CREATE_INFO);
    info.size = size;
    info.usage = access == Access::Read ? VK_BUFFER_USAGE_TRANSFER_DST_BIT | VK_BUFFER_USAGE_TRANSFER_SRC_BIT
                                        : VK_BUFFER_USAGE_TRANSFER_SRC_BIT | VK_BUFFER_USAGE_UNIFORM_BUFFER_BIT |
                                              VK_BUFFER_USAGE_VERTEX_BUFFER_BIT | VK_BUFFER_USAGE_INDEX_BUFFER_BIT;
    Check(vkCreateBuffer(device.Handle(), &info, nullptr, &buffer_));
    try {
        VkMemoryRequirements needs{};
        vkGetBufferMemoryRequirements(device.Handle(), buffer_, &needs);
        auto allocation = Typed<VkMemoryAllocateInfo>(VK_STRUCTURE_TYPE_MEMORY_ALLOCATE_INFO);
        allocation.allocationSize = needs.size;
        allocation.memoryTypeIndex = device.MemoryType(
            needs.memoryTypeBits, VK_MEMORY_PROPERTY_HOST_VISIBLE_BIT | VK_MEMORY_PROPERTY_HOST_COHERENT_BIT,
            access == Access::Read ? VK_MEMORY_PROPERTY_HOST_CACHED_BIT : 0);
        Check(vkAllocateMemory(device.Handle(), &allocation, nullptr, &memory_));
        Check(vkBindBufferMemory(device.Handle(), buffer_, memory_, 0));
        void* data = nullptr;
        Check(vkMapMemory(device.Handle(), memory_, 0, VK_WHOLE_SIZE, 0, &data));
        data_ = static_cast<std::byte*>(data);
    } catch (...) {
        vkDestroyBuffer(device.Handle(), buffer_, nullptr);
        vkFreeMemory(device.Handle(), memory_, nullptr);
        throw;
    }
}

HostBuffer::~HostBuffer() {
    vkDestroyBuffer(device_.Handle(), buffer_, nullptr);
    vkFreeMemory(device_.Handle(), memory_, nullptr);
}

}  // namespace Platform::Direct3D
