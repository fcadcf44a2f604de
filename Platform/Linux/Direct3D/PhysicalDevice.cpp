#include "Platform/Linux/Direct3D/PhysicalDevice.h"

namespace Platform::Direct3D {

std::vector<VkPhysicalDevice> PhysicalDevicesOf(VkInstance instance) {
    std::uint32_t count = 0;
    Check(vkEnumeratePhysicalDevices(instance, &count, nullptr));
    std::vector<VkPhysicalDevice> devices(count);
    Check(vkEnumeratePhysicalDevices(instance, &count, devices.data()));
    devices.resize(count);
    return devices;
}

std::optional<std::uint32_t> FindQueueFamily(VkPhysicalDevice device) {
    std::uint32_t count = 0;
    vkGetPhysicalDeviceQueueFamilyProperties(device, &count, nullptr);
    std::vector<VkQueueFamilyProperties> families(count);
    vkGetPhysicalDeviceQueueFamilyProperties(device, &count, families.data());
    constexpr VkQueueFlags needed = VK_QUEUE_GRAPHICS_BIT | VK_QUEUE_COMPUTE_BIT;
    for (std::uint32_t i = 0; i < count; ++i) {
        if ((families[i].queueFlags & needed) == needed) return i;
    }
    return std::nullopt;
}

bool IsUsable(VkPhysicalDevice device) {
    VkPhysicalDeviceProperties properties{};
    vkGetPhysicalDeviceProperties(device, &properties);
    if (properties.apiVersion < VK_API_VERSION_1_3 || !FindQueueFamily(device)) return false;
    auto features13 = Typed<VkPhysicalDeviceVulkan13Features>(VK_STRUCTURE_TYPE_PHYSICAL_DEVICE_VULKAN_1_3_FEATURES);
    auto features = Typed<VkPhysicalDeviceFeatures2>(VK_STRUCTURE_TYPE_PHYSICAL_DEVICE_FEATURES_2);
    features.pNext = &features13;
    vkGetPhysicalDeviceFeatures2(device, &features);
    return features13.dynamicRendering && features13.synchronization2;
}

}  // namespace Platform::Direct3D
