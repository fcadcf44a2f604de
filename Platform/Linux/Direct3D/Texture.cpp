#include "Platform/Linux/Direct3D/Texture.h"

#include "Platform/Linux/Direct3D/Device.h"
#include "Platform/Linux/Direct3D/Formats.h"

namespace Platform::Direct3D {

namespace {

constexpr VkAccessFlags2 writes =
    VK_ACCESS_2_TRANSFER_WRITE_BIT | VK_ACCESS_2_COLOR_ATTACHMENT_WRITE_BIT | VK_ACCESS_2_SHADER_WRITE_BIT;
constexpr VkImageSubresourceRange wholeImage{VK_IMAGE_ASPECT_COLOR_BIT, 0, 1, 0, 1};

}  // namespace

Texture::Texture(GraphicsDevice& device, VkExtent2D size, DXGI_FORMAT format)
    : device_(device), size_(size), format_(format) {}

std::shared_ptr<Texture> Texture::Make(GraphicsDevice& device, VkExtent2D size, DXGI_FORMAT format,
                                       VkImageUsageFlags extraUsage) {
    const std::shared_ptr<Texture> made(new Texture(device, size, format));
    made->Allocate(extraUsage);
    device.Record([&](VkCommandBuffer commands) {
        made->Prepare(commands, Use::copyTarget);
        const VkClearColorValue zero{};
        vkCmdClearColorImage(commands, made->image_, VK_IMAGE_LAYOUT_TRANSFER_DST_OPTIMAL, &zero, 1, &wholeImage);
    });
    return made;
}

void Texture::Allocate(VkImageUsageFlags usage) {
    const auto info = FormatOf(format_);
    if (!info) throw VulkanError(VK_ERROR_FORMAT_NOT_SUPPORTED);
    auto image = Typed<VkImageCreateInfo>(VK_STRUCTURE_TYPE_IMAGE_CREATE_INFO);
    image.imageType = VK_IMAGE_TYPE_2D;
    image.format = info->format;
    image.extent = {size_.width, size_.height, 1};
    image.mipLevels = 1;
    image.arrayLayers = 1;
    image.samples = VK_SAMPLE_COUNT_1_BIT;
    image.tiling = VK_IMAGE_TILING_OPTIMAL;
    image.usage =
        usage | VK_IMAGE_USAGE_SAMPLED_BIT | VK_IMAGE_USAGE_TRANSFER_SRC_BIT | VK_IMAGE_USAGE_TRANSFER_DST_BIT;
    Check(vkCreateImage(device_.Handle(), &image, nullptr, &image_));

    VkMemoryRequirements needs{};
    vkGetImageMemoryRequirements(device_.Handle(), image_, &needs);
    auto allocation = Typed<VkMemoryAllocateInfo>(VK_STRUCTURE_TYPE_MEMORY_ALLOCATE_INFO);
    allocation.allocationSize = needs.size;
    allocation.memoryTypeIndex = device_.MemoryType(needs.memoryTypeBits, 0, VK_MEMORY_PROPERTY_DEVICE_LOCAL_BIT);
    Check(vkAllocateMemory(device_.Handle(), &allocation, nullptr, &memory_));
    Check(vkBindImageMemory(device_.Handle(), image_, memory_, 0));

    auto view = Typed<VkImageViewCreateInfo>(VK_STRUCTURE_TYPE_IMAGE_VIEW_CREATE_INFO);
    view.image = image_;
    view.viewType = VK_IMAGE_VIEW_TYPE_2D;
    view.format = info->format;
    view.subresourceRange = wholeImage;
    Check(vkCreateImageView(device_.Handle(), &view, nullptr, &view_));
}

Texture::~Texture() {
    vkDestroyImageView(device_.Handle(), view_, nullptr);
    vkDestroyImage(device_.Handle(), image_, nullptr);
    vkFreeMemory(device_.Handle(), memory_, nullptr);
}

void Texture::Prepare(VkCommandBuffer commands, const ImageUse& use) {
    device_.Keep(shared_from_this());
    if (use.layout == last_.layout && !((use.access | last_.access) & writes)) {
        // Reads after reads need no order among themselves, but the next write waits for all of them.
        last_.stages |= use.stages;
        last_.access |= use.access;
        return;
    }
    auto barrier = Typed<VkImageMemoryBarrier2>(VK_STRUCTURE_TYPE_IMAGE_MEMORY_BARRIER_2);
    barrier.srcStageMask = last_.stages;
    barrier.srcAccessMask = last_.access & writes;
    barrier.dstStageMask = use.stages;
    barrier.dstAccessMask = use.access;
    barrier.oldLayout = last_.layout;
    barrier.newLayout = use.layout;
    barrier.srcQueueFamilyIndex = VK_QUEUE_FAMILY_IGNORED;
    barrier.dstQueueFamilyIndex = VK_QUEUE_FAMILY_IGNORED;
    barrier.image = image_;
    barrier.subresourceRange = wholeImage;
    auto dependency = Typed<VkDependencyInfo>(VK_STRUCTURE_TYPE_DEPENDENCY_INFO);
    dependency.imageMemoryBarrierCount = 1;
    dependency.pImageMemoryBarriers = &barrier;
    vkCmdPipelineBarrier2(commands, &dependency);
    last_ = use;
}

}  // namespace Platform::Direct3D
