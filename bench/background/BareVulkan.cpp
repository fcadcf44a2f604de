#include "BareVulkan.h"

#include <cstring>
#include <stdexcept>
#include <string>

namespace BackgroundBench {

void Check(VkResult result) {
    if (result < 0) throw std::runtime_error("a Vulkan call failed: " + std::to_string(result));
}

BareVulkan::BareVulkan() {
    Check(volkInitialize());
    auto application = Typed<VkApplicationInfo>(VK_STRUCTURE_TYPE_APPLICATION_INFO);
    application.apiVersion = VK_API_VERSION_1_3;
    auto info = Typed<VkInstanceCreateInfo>(VK_STRUCTURE_TYPE_INSTANCE_CREATE_INFO);
    info.pApplicationInfo = &application;
    Check(vkCreateInstance(&info, nullptr, &instance_));
    volkLoadInstance(instance_);
    ChooseDevice();

    auto features13 = Typed<VkPhysicalDeviceVulkan13Features>(VK_STRUCTURE_TYPE_PHYSICAL_DEVICE_VULKAN_1_3_FEATURES);
    features13.dynamicRendering = VK_TRUE;
    features13.synchronization2 = VK_TRUE;
    auto features = Typed<VkPhysicalDeviceFeatures2>(VK_STRUCTURE_TYPE_PHYSICAL_DEVICE_FEATURES_2);
    features.pNext = &features13;
    features.features.shaderStorageImageWriteWithoutFormat = VK_TRUE;
    const float priority = 1.0F;
    auto queue = Typed<VkDeviceQueueCreateInfo>(VK_STRUCTURE_TYPE_DEVICE_QUEUE_CREATE_INFO);
    queue.queueFamilyIndex = family_;
    queue.queueCount = 1;
    queue.pQueuePriorities = &priority;
    auto device = Typed<VkDeviceCreateInfo>(VK_STRUCTURE_TYPE_DEVICE_CREATE_INFO);
    device.pNext = &features;
    device.queueCreateInfoCount = 1;
    device.pQueueCreateInfos = &queue;
    Check(vkCreateDevice(physical_, &device, nullptr, &device_));
    vkGetDeviceQueue(device_, family_, 0, &queue_);

    auto pool = Typed<VkCommandPoolCreateInfo>(VK_STRUCTURE_TYPE_COMMAND_POOL_CREATE_INFO);
    pool.queueFamilyIndex = family_;
    pool.flags = VK_COMMAND_POOL_CREATE_RESET_COMMAND_BUFFER_BIT;
    Check(vkCreateCommandPool(device_, &pool, nullptr, &pool_));
    const auto fence = Typed<VkFenceCreateInfo>(VK_STRUCTURE_TYPE_FENCE_CREATE_INFO);
    Check(vkCreateFence(device_, &fence, nullptr, &fence_));
}

BareVulkan::~BareVulkan() {
    vkDestroyFence(device_, fence_, nullptr);
    vkDestroyCommandPool(device_, pool_, nullptr);
    vkDestroyDevice(device_, nullptr);
    vkDestroyInstance(instance_, nullptr);
}

void BareVulkan::ChooseDevice() {
    std::uint32_t count = 0;
    Check(vkEnumeratePhysicalDevices(instance_, &count, nullptr));
    std::vector<VkPhysicalDevice> devices(count);
    Check(vkEnumeratePhysicalDevices(instance_, &count, devices.data()));
    bool software = false;
    for (VkPhysicalDevice each : devices) {
        VkPhysicalDeviceProperties properties{};
        vkGetPhysicalDeviceProperties(each, &properties);
        if (properties.apiVersion < VK_API_VERSION_1_3) continue;
        const bool isSoftware = properties.deviceType == VK_PHYSICAL_DEVICE_TYPE_CPU;
        if (physical_ && (isSoftware || !software)) continue;
        physical_ = each;
        software = isSoftware;
    }
    if (!physical_) throw std::runtime_error("no Vulkan 1.3 device");
    vkGetPhysicalDeviceQueueFamilyProperties(physical_, &count, nullptr);
    std::vector<VkQueueFamilyProperties> families(count);
    vkGetPhysicalDeviceQueueFamilyProperties(physical_, &count, families.data());
    constexpr VkQueueFlags needed = VK_QUEUE_GRAPHICS_BIT | VK_QUEUE_COMPUTE_BIT;
    while (family_ < count && (families[family_].queueFlags & needed) != needed) ++family_;
    if (family_ == count) throw std::runtime_error("no queue for drawing and computing");
}

VkDeviceMemory BareVulkan::Allocate(const VkMemoryRequirements& needs, VkMemoryPropertyFlags properties) {
    VkPhysicalDeviceMemoryProperties types{};
    vkGetPhysicalDeviceMemoryProperties(physical_, &types);
    auto info = Typed<VkMemoryAllocateInfo>(VK_STRUCTURE_TYPE_MEMORY_ALLOCATE_INFO);
    info.allocationSize = needs.size;
    for (std::uint32_t i = 0; i < types.memoryTypeCount; ++i) {
        if (!(needs.memoryTypeBits & (1U << i))) continue;
        if ((types.memoryTypes[i].propertyFlags & properties) != properties) continue;
        info.memoryTypeIndex = i;
        VkDeviceMemory memory = VK_NULL_HANDLE;
        Check(vkAllocateMemory(device_, &info, nullptr, &memory));
        return memory;
    }
    throw std::runtime_error("no fitting memory");
}

BareImage BareVulkan::MakeImage(std::uint32_t width, std::uint32_t height, VkFormat format, VkImageUsageFlags usage) {
    BareImage made;
    made.width = width;
    made.height = height;
    auto info = Typed<VkImageCreateInfo>(VK_STRUCTURE_TYPE_IMAGE_CREATE_INFO);
    info.imageType = VK_IMAGE_TYPE_2D;
    info.format = format;
    info.extent = {width, height, 1};
    info.mipLevels = 1;
    info.arrayLayers = 1;
    info.samples = VK_SAMPLE_COUNT_1_BIT;
    info.usage = usage;
    Check(vkCreateImage(device_, &info, nullptr, &made.image));
    VkMemoryRequirements needs{};
    vkGetImageMemoryRequirements(device_, made.image, &needs);
    made.memory = Allocate(needs, VK_MEMORY_PROPERTY_DEVICE_LOCAL_BIT);
    Check(vkBindImageMemory(device_, made.image, made.memory, 0));
    auto view = Typed<VkImageViewCreateInfo>(VK_STRUCTURE_TYPE_IMAGE_VIEW_CREATE_INFO);
    view.image = made.image;
    view.viewType = VK_IMAGE_VIEW_TYPE_2D;
    view.format = format;
    view.subresourceRange = {VK_IMAGE_ASPECT_COLOR_BIT, 0, 1, 0, 1};
    Check(vkCreateImageView(device_, &view, nullptr, &made.view));
    return made;
}

void BareVulkan::Destroy(BareImage& image) {
    vkDestroyImageView(device_, image.view, nullptr);
    vkDestroyImage(device_, image.image, nullptr);
    vkFreeMemory(device_, image.memory, nullptr);
    image = {};
}

BareBuffer BareVulkan::MakeBuffer(std::span<const std::byte> contents, VkBufferUsageFlags usage) {
    BareBuffer made;
    auto info = Typed<VkBufferCreateInfo>(VK_STRUCTURE_TYPE_BUFFER_CREATE_INFO);
    info.size = contents.size();
    info.usage = usage;
    Check(vkCreateBuffer(device_, &info, nullptr, &made.buffer));
    VkMemoryRequirements needs{};
    vkGetBufferMemoryRequirements(device_, made.buffer, &needs);
    made.memory = Allocate(needs, VK_MEMORY_PROPERTY_HOST_VISIBLE_BIT | VK_MEMORY_PROPERTY_HOST_COHERENT_BIT);
    Check(vkBindBufferMemory(device_, made.buffer, made.memory, 0));
    void* data = nullptr;
    Check(vkMapMemory(device_, made.memory, 0, VK_WHOLE_SIZE, 0, &data));
    made.data = static_cast<std::byte*>(data);
    std::memcpy(made.data, contents.data(), contents.size());
    return made;
}

void BareVulkan::Destroy(BareBuffer& buffer) {
    vkDestroyBuffer(device_, buffer.buffer, nullptr);
    vkFreeMemory(device_, buffer.memory, nullptr);
    buffer = {};
}

VkShaderModule BareVulkan::MakeModule(const void* code, std::size_t bytes) {
    auto info = Typed<VkShaderModuleCreateInfo>(VK_STRUCTURE_TYPE_SHADER_MODULE_CREATE_INFO);
    info.codeSize = bytes;
    info.pCode = static_cast<const std::uint32_t*>(code);
    VkShaderModule module = VK_NULL_HANDLE;
    Check(vkCreateShaderModule(device_, &info, nullptr, &module));
    return module;
}

VkCommandBuffer BareVulkan::MakeCommands() {
    auto info = Typed<VkCommandBufferAllocateInfo>(VK_STRUCTURE_TYPE_COMMAND_BUFFER_ALLOCATE_INFO);
    info.commandPool = pool_;
    info.level = VK_COMMAND_BUFFER_LEVEL_PRIMARY;
    info.commandBufferCount = 1;
    VkCommandBuffer commands = VK_NULL_HANDLE;
    Check(vkAllocateCommandBuffers(device_, &info, &commands));
    return commands;
}

void BareVulkan::Run(VkCommandBuffer commands) {
    auto buffer = Typed<VkCommandBufferSubmitInfo>(VK_STRUCTURE_TYPE_COMMAND_BUFFER_SUBMIT_INFO);
    buffer.commandBuffer = commands;
    auto submit = Typed<VkSubmitInfo2>(VK_STRUCTURE_TYPE_SUBMIT_INFO_2);
    submit.commandBufferInfoCount = 1;
    submit.pCommandBufferInfos = &buffer;
    Check(vkQueueSubmit2(queue_, 1, &submit, fence_));
    Check(vkWaitForFences(device_, 1, &fence_, VK_TRUE, UINT64_MAX));
    Check(vkResetFences(device_, 1, &fence_));
}

}  // namespace BackgroundBench
