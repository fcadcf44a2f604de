// Small owners of the Vulkan objects that the bare loop needs. A device of its own: nothing of the toolkit's platform
// takes part.
#pragma once

#include <volk.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace BackgroundBench {

/// Throws std::runtime_error for a negative result.
void Check(VkResult result);

template <class Structure>
Structure Typed(VkStructureType type) {
    Structure made{};
    made.sType = type;
    return made;
}

struct BareImage {
    VkImage image = VK_NULL_HANDLE;
    VkImageView view = VK_NULL_HANDLE;
    VkDeviceMemory memory = VK_NULL_HANDLE;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

struct BareBuffer {
    VkBuffer buffer = VK_NULL_HANDLE;
    VkDeviceMemory memory = VK_NULL_HANDLE;
    std::byte* data = nullptr;  ///< Mapped for good.
};

/// An instance and the device that the toolkit would choose: the first hardware one, else software. One thread.
class BareVulkan {
public:
    BareVulkan();
    ~BareVulkan();
    BareVulkan(const BareVulkan&) = delete;
    BareVulkan& operator=(const BareVulkan&) = delete;

    VkDevice Device() const { return device_; }

    BareImage MakeImage(std::uint32_t width, std::uint32_t height, VkFormat format, VkImageUsageFlags usage);
    void Destroy(BareImage& image);
    BareBuffer MakeBuffer(std::span<const std::byte> contents, VkBufferUsageFlags usage);
    void Destroy(BareBuffer& buffer);
    VkShaderModule MakeModule(const void* code, std::size_t bytes);
    VkCommandBuffer MakeCommands();

    /// Hands the commands to the device and waits for their end.
    void Run(VkCommandBuffer commands);

private:
    void ChooseDevice();
    VkDeviceMemory Allocate(const VkMemoryRequirements& needs, VkMemoryPropertyFlags properties);

    VkInstance instance_ = VK_NULL_HANDLE;
    VkPhysicalDevice physical_ = VK_NULL_HANDLE;
    VkDevice device_ = VK_NULL_HANDLE;
    VkQueue queue_ = VK_NULL_HANDLE;
    std::uint32_t family_ = 0;
    VkCommandPool pool_ = VK_NULL_HANDLE;
    VkFence fence_ = VK_NULL_HANDLE;
};

}  // namespace BackgroundBench
