#include "Platform/Linux/Direct3D/Device.h"

#include "Platform/Linux/Direct3D/Batch.h"
#include "Platform/Linux/Direct3D/Formats.h"
#include "Platform/Linux/Direct3D/Instance.h"
#include "Platform/Linux/Direct3D/PhysicalDevice.h"
#include "Platform/Linux/Direct3D/PipelineCache.h"

#include <algorithm>
#include <atomic>
#include <cstring>

namespace Platform::Direct3D {

namespace {

// One is open while the device works on the others; beyond these the program waits for the device.
constexpr std::size_t batchCount = 4;

std::atomic<bool> wasEverMade{false};

VkBufferImageCopy CopyOf(VkDeviceSize bufferOffset, const PixelRect& rect) {
    VkBufferImageCopy copy{};
    copy.bufferOffset = bufferOffset;
    copy.imageSubresource = {VK_IMAGE_ASPECT_COLOR_BIT, 0, 0, 1};
    copy.imageOffset = {static_cast<std::int32_t>(rect.x), static_cast<std::int32_t>(rect.y), 0};
    copy.imageExtent = {rect.width, rect.height, 1};
    return copy;
}

void CopyRows(std::byte* target, std::size_t targetStride, const std::byte* source, std::size_t sourceStride,
              std::size_t rowBytes, std::size_t rows) {
    for (std::size_t row = 0; row < rows; ++row)
        std::memcpy(target + row * targetStride, source + row * sourceStride, rowBytes);
}

}  // namespace

std::shared_ptr<GraphicsDevice> GraphicsDevice::Create() {
    std::shared_ptr<GraphicsDevice> made(new GraphicsDevice);
    wasEverMade = true;
    return made;
}

bool GraphicsDevice::WasEverMade() noexcept {
    return wasEverMade;
}

GraphicsDevice::GraphicsDevice() {
    ChooseDevice();
    MakeDevice();
    try {
        vkGetDeviceQueue(device_, queueFamily_, 0, &queue_);
        for (std::size_t i = 0; i < batchCount; ++i) batches_.push_back(std::make_unique<Batch>(*this));
        pipelines_ = std::make_unique<PipelineCache>(*this);
    } catch (...) {
        batches_.clear();
        vkDestroyDevice(device_, nullptr);
        throw;
    }
}

GraphicsDevice::~GraphicsDevice() {
    vkDeviceWaitIdle(device_);
    DropPicture();
    batches_.clear();  // lets go of what they kept
    pipelines_.reset();
    vkDestroyDevice(device_, nullptr);
}

void GraphicsDevice::ChooseDevice() {
    const struct Instance& instance = SharedInstance();
    instance_ = instance.handle;
    // Drivers list the device of the display first, so that the order among hardware is theirs.
    for (VkPhysicalDevice each : PhysicalDevicesOf(instance_)) {
        VkPhysicalDeviceProperties properties{};
        vkGetPhysicalDeviceProperties(each, &properties);
        const bool isSoftware = properties.deviceType == VK_PHYSICAL_DEVICE_TYPE_CPU;
        if (physicalDevice_ && (isSoftware || !isSoftware_)) continue;
        if (!IsUsable(each)) continue;
        physicalDevice_ = each;
        isSoftware_ = isSoftware;
        name_ = properties.deviceName;
        limits_ = properties.limits;
    }
    if (!physicalDevice_) throw VulkanError(VK_ERROR_INCOMPATIBLE_DRIVER);
    queueFamily_ = FindQueueFamily(physicalDevice_).value();
    vkGetPhysicalDeviceMemoryProperties(physicalDevice_, &memory_);
}

void GraphicsDevice::MakeDevice() {
    VkPhysicalDeviceFeatures available{};
    vkGetPhysicalDeviceFeatures(physicalDevice_, &available);
    hasDepthClamp_ = available.depthClamp == VK_TRUE;

    auto features13 = Typed<VkPhysicalDeviceVulkan13Features>(VK_STRUCTURE_TYPE_PHYSICAL_DEVICE_VULKAN_1_3_FEATURES);
    features13.dynamicRendering = VK_TRUE;
    features13.synchronization2 = VK_TRUE;
    auto features = Typed<VkPhysicalDeviceFeatures2>(VK_STRUCTURE_TYPE_PHYSICAL_DEVICE_FEATURES_2);
    features.pNext = &features13;
    features.features.depthClamp = available.depthClamp;
    features.features.shaderStorageImageWriteWithoutFormat = available.shaderStorageImageWriteWithoutFormat;

    const float priority = 1;
    auto queue = Typed<VkDeviceQueueCreateInfo>(VK_STRUCTURE_TYPE_DEVICE_QUEUE_CREATE_INFO);
    queue.queueFamilyIndex = queueFamily_;
    queue.queueCount = 1;
    queue.pQueuePriorities = &priority;
    auto info = Typed<VkDeviceCreateInfo>(VK_STRUCTURE_TYPE_DEVICE_CREATE_INFO);
    info.pNext = &features;
    info.queueCreateInfoCount = 1;
    info.pQueueCreateInfos = &queue;
    Check(vkCreateDevice(physicalDevice_, &info, nullptr, &device_));
}

VkCommandBuffer GraphicsDevice::OpenCommands() {
    FinishPicture();
    return batches_[current_]->Open();
}

void GraphicsDevice::Keep(std::shared_ptr<const void> object) {
    const auto lock = Lock();
    OpenCommands();
    batches_[current_]->Keep(std::move(object));
}

void GraphicsDevice::Flush(VkSemaphore waitFor, VkPipelineStageFlags2 waitStages, VkSemaphore signal) {
    const auto lock = Lock();
    if (waitFor || signal) OpenCommands();
    if (!batches_[current_]->IsOpen()) return;
    const std::size_t submitted = current_;
    current_ = (current_ + 1) % batches_.size();
    ++batchNumber_;
    batches_[submitted]->Submit(waitFor, waitStages, signal);
}

void GraphicsDevice::Finish() {
    const auto lock = Lock();
    FinishPicture();
    Flush();
    for (const auto& each : batches_) each->Await();
}

void GraphicsDevice::Upload(const std::shared_ptr<Texture>& texture, const PixelRect& target, const void* pixels,
                            std::size_t stride) {
    if (target.width == 0 || target.height == 0) return;
    const std::size_t rowBytes = std::size_t{target.width} * FormatOf(texture->Format()).value().bytes;
    Record([&](VkCommandBuffer commands) {
        const HostSlice slice = Reserve(rowBytes * target.height, 16);
        CopyRows(slice.data, rowBytes, static_cast<const std::byte*>(pixels), stride, rowBytes, target.height);
        texture->Prepare(commands, Use::copyTarget);
        const VkBufferImageCopy copy = CopyOf(slice.offset, target);
        vkCmdCopyBufferToImage(commands, slice.buffer, texture->Image(), VK_IMAGE_LAYOUT_TRANSFER_DST_OPTIMAL, 1,
                               &copy);
    });
}

void GraphicsDevice::ReadBack(const std::shared_ptr<Texture>& texture, const PixelRect& source, void* pixels,
                              std::size_t stride) {
    if (source.width == 0 || source.height == 0) return;
    const std::size_t rowBytes = std::size_t{source.width} * FormatOf(texture->Format()).value().bytes;
    const auto buffer = std::make_shared<HostBuffer>(*this, rowBytes * source.height, HostBuffer::Access::Read);
    const auto lock = Lock();
    Record([&](VkCommandBuffer commands) {
        Keep(buffer);
        texture->Prepare(commands, Use::copySource);
        const VkBufferImageCopy copy = CopyOf(0, source);
        vkCmdCopyImageToBuffer(commands, texture->Image(), VK_IMAGE_LAYOUT_TRANSFER_SRC_OPTIMAL, buffer->Handle(), 1,
                               &copy);
        MakeVisibleToHost(commands);
    });
    Finish();
    CopyRows(static_cast<std::byte*>(pixels), stride, buffer->Data(), rowBytes, rowBytes, source.height);
}

bool GraphicsDevice::AwaitPixels(const std::shared_ptr<Texture>& texture, const std::function<bool()>& isUnwanted) {
    const auto lock = Lock();
    if (unfinished_.IsOf(*texture) && !Proceed(isUnwanted)) return false;
    if (texture->IsSettled()) return true;
    Record([&](VkCommandBuffer commands) { texture->Prepare(commands, Use::inPlace); });
    Finish();
    texture->Settle();
    return true;
}

void GraphicsDevice::MakeVisibleToHost(VkCommandBuffer commands) {
    auto barrier = Typed<VkMemoryBarrier2>(VK_STRUCTURE_TYPE_MEMORY_BARRIER_2);
    barrier.srcStageMask = VK_PIPELINE_STAGE_2_TRANSFER_BIT;
    barrier.srcAccessMask = VK_ACCESS_2_TRANSFER_WRITE_BIT;
    barrier.dstStageMask = VK_PIPELINE_STAGE_2_HOST_BIT | VK_PIPELINE_STAGE_2_TRANSFER_BIT;
    barrier.dstAccessMask = VK_ACCESS_2_HOST_READ_BIT | VK_ACCESS_2_TRANSFER_READ_BIT | VK_ACCESS_2_TRANSFER_WRITE_BIT;
    auto dependency = Typed<VkDependencyInfo>(VK_STRUCTURE_TYPE_DEPENDENCY_INFO);
    dependency.memoryBarrierCount = 1;
    dependency.pMemoryBarriers = &barrier;
    vkCmdPipelineBarrier2(commands, &dependency);
}

HostSlice GraphicsDevice::Reserve(VkDeviceSize size, VkDeviceSize alignment) {
    const auto lock = Lock();
    OpenCommands();
    return batches_[current_]->Reserve(size, alignment);
}

VkDescriptorSet GraphicsDevice::MakeDescriptorSet(VkDescriptorSetLayout layout) {
    const auto lock = Lock();
    OpenCommands();
    return batches_[current_]->MakeDescriptorSet(layout);
}

std::uint32_t GraphicsDevice::MemoryType(std::uint32_t allowed, VkMemoryPropertyFlags needed,
                                         VkMemoryPropertyFlags wanted) const {
    std::optional<std::uint32_t> found;
    for (std::uint32_t i = 0; i < memory_.memoryTypeCount; ++i) {
        const VkMemoryPropertyFlags flags = memory_.memoryTypes[i].propertyFlags;
        if (!(allowed & (1U << i)) || (flags & needed) != needed) continue;
        if ((flags & wanted) == wanted) return i;
        if (!found) found = i;
    }
    if (!found) throw VulkanError(VK_ERROR_OUT_OF_DEVICE_MEMORY);
    return *found;
}

}  // namespace Platform::Direct3D
