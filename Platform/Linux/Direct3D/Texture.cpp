#include "Platform/Linux/Direct3D/Texture.h"

#include "Platform/Linux/Direct3D/Device.h"
#include "Platform/Linux/Direct3D/Formats.h"

namespace Platform::Direct3D {

namespace {

constexpr VkAccessFlags2 writes = VK_ACCESS_2_TRANSFER_WRITE_BIT | VK_ACCESS_2_COLOR_ATTACHMENT_WRITE_BIT |
                                  VK_ACCESS_2_SHADER_WRITE_BIT | VK_ACCESS_2_HOST_WRITE_BIT;
constexpr VkImageSubresourceRange wholeImage{VK_IMAGE_ASPECT_COLOR_BIT, 0, 1, 0, 1};

/// Whether images whose rows lie one after the other in memory can be all that a buffer has to be.
bool CanDrawOnRows(const GraphicsDevice& device, DXGI_FORMAT format) {
    if (format != DXGI_FORMAT_B8G8R8A8_UNORM) return false;
    constexpr VkFormatFeatureFlags needed =
        VK_FORMAT_FEATURE_COLOR_ATTACHMENT_BIT | VK_FORMAT_FEATURE_COLOR_ATTACHMENT_BLEND_BIT |
        VK_FORMAT_FEATURE_SAMPLED_IMAGE_BIT | VK_FORMAT_FEATURE_TRANSFER_SRC_BIT | VK_FORMAT_FEATURE_TRANSFER_DST_BIT;
    VkFormatProperties properties{};
    vkGetPhysicalDeviceFormatProperties(device.PhysicalDevice(), VK_FORMAT_B8G8R8A8_UNORM, &properties);
    return (properties.linearTilingFeatures & needed) == needed;
}

}  // namespace

Texture::Texture(GraphicsDevice& device, VkExtent2D size, DXGI_FORMAT format)
    : device_(device), size_(size), format_(format) {}

std::shared_ptr<Texture> Texture::Make(GraphicsDevice& device, VkExtent2D size, DXGI_FORMAT format,
                                       VkImageUsageFlags extraUsage) {
    std::shared_ptr<Texture> made(new Texture(device, size, format));
    made->Allocate(extraUsage, VK_IMAGE_TILING_OPTIMAL);
    device.Record([&](VkCommandBuffer commands) {
        made->Prepare(commands, Use::copyTarget);
        const VkClearColorValue zero{};
        vkCmdClearColorImage(commands, made->image_, VK_IMAGE_LAYOUT_TRANSFER_DST_OPTIMAL, &zero, 1, &wholeImage);
    });
    return made;
}

std::shared_ptr<Texture> Texture::MakeBuffer(GraphicsDevice& device, VkExtent2D size, DXGI_FORMAT format) {
    std::shared_ptr<Texture> made(new Texture(device, size, format));
    const bool inPlace = device.IsSoftware() && CanDrawOnRows(device, format);
    made->Allocate(VK_IMAGE_USAGE_COLOR_ATTACHMENT_BIT, inPlace ? VK_IMAGE_TILING_LINEAR : VK_IMAGE_TILING_OPTIMAL);
    if (inPlace) made->MapPixels();
    return made;
}

void Texture::Allocate(VkImageUsageFlags usage, VkImageTiling tiling) {
    const auto info = FormatOf(format_);
    if (!info) throw VulkanError(VK_ERROR_FORMAT_NOT_SUPPORTED);
    auto image = Typed<VkImageCreateInfo>(VK_STRUCTURE_TYPE_IMAGE_CREATE_INFO);
    image.imageType = VK_IMAGE_TYPE_2D;
    image.format = info->format;
    image.extent = {size_.width, size_.height, 1};
    image.mipLevels = 1;
    image.arrayLayers = 1;
    image.samples = VK_SAMPLE_COUNT_1_BIT;
    image.tiling = tiling;
    image.usage =
        usage | VK_IMAGE_USAGE_SAMPLED_BIT | VK_IMAGE_USAGE_TRANSFER_SRC_BIT | VK_IMAGE_USAGE_TRANSFER_DST_BIT;
    Check(vkCreateImage(device_.Handle(), &image, nullptr, &image_));
    AllocateMemory(tiling);

    auto view = Typed<VkImageViewCreateInfo>(VK_STRUCTURE_TYPE_IMAGE_VIEW_CREATE_INFO);
    view.image = image_;
    view.viewType = VK_IMAGE_VIEW_TYPE_2D;
    view.format = info->format;
    view.subresourceRange = wholeImage;
    Check(vkCreateImageView(device_.Handle(), &view, nullptr, &view_));
}

void Texture::AllocateMemory(VkImageTiling tiling) {
    constexpr VkMemoryPropertyFlags mapped = VK_MEMORY_PROPERTY_HOST_VISIBLE_BIT | VK_MEMORY_PROPERTY_HOST_COHERENT_BIT;
    VkMemoryRequirements needs{};
    vkGetImageMemoryRequirements(device_.Handle(), image_, &needs);
    auto allocation = Typed<VkMemoryAllocateInfo>(VK_STRUCTURE_TYPE_MEMORY_ALLOCATE_INFO);
    allocation.allocationSize = needs.size;
    allocation.memoryTypeIndex =
        tiling == VK_IMAGE_TILING_LINEAR
            ? device_.MemoryType(needs.memoryTypeBits, mapped, VK_MEMORY_PROPERTY_HOST_CACHED_BIT)
            : device_.MemoryType(needs.memoryTypeBits, 0, VK_MEMORY_PROPERTY_DEVICE_LOCAL_BIT);
    Check(vkAllocateMemory(device_.Handle(), &allocation, nullptr, &memory_));
    Check(vkBindImageMemory(device_.Handle(), image_, memory_, 0));
}

void Texture::MapPixels() {
    void* memory = nullptr;
    Check(vkMapMemory(device_.Handle(), memory_, 0, VK_WHOLE_SIZE, 0, &memory));
    const VkImageSubresource part{VK_IMAGE_ASPECT_COLOR_BIT, 0, 0};
    VkSubresourceLayout layout{};
    vkGetImageSubresourceLayout(device_.Handle(), image_, &part, &layout);
    pixels_ = static_cast<std::byte*>(memory) + layout.offset;
    stride_ = layout.rowPitch;
}

Texture::~Texture() {
    vkDestroyImageView(device_.Handle(), view_, nullptr);
    vkDestroyImage(device_.Handle(), image_, nullptr);
    vkFreeMemory(device_.Handle(), memory_, nullptr);
}

void Texture::Prepare(VkCommandBuffer commands, const ImageUse& use) {
    settled_ = false;
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
