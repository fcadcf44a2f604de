// The least that a program with a picture does: connect, make a window, make a Vulkan device and a swap chain, clear
// one image, present it. What the toolkit's start is measured against: bare_vulkan WIDTH HEIGHT.
#include "StartReport.h"

#include <xcb/xcb.h>

#define VOLK_IMPLEMENTATION
#include <volk.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

void Check(VkResult result) {
    if (result < 0) throw std::runtime_error("Vulkan gave " + std::to_string(result));
}

template <class Structure>
Structure Typed(VkStructureType type) {
    Structure made{};
    made.sType = type;
    return made;
}

struct Window {
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    xcb_window_t id = 0;
};

Window MakeWindow(std::uint16_t width, std::uint16_t height) {
    Window window;
    if (xcb_connection_has_error(window.connection)) throw std::runtime_error("no display");
    const xcb_screen_t* const screen = xcb_setup_roots_iterator(xcb_get_setup(window.connection)).data;
    window.id = xcb_generate_id(window.connection);
    xcb_create_window(window.connection, XCB_COPY_FROM_PARENT, window.id, screen->root, 0, 0, width, height, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_map_window(window.connection, window.id);
    xcb_flush(window.connection);
    return window;
}

VkInstance MakeInstance() {
    Check(volkInitialize());
    const std::array extensions{VK_KHR_SURFACE_EXTENSION_NAME, VK_KHR_XCB_SURFACE_EXTENSION_NAME};
    auto application = Typed<VkApplicationInfo>(VK_STRUCTURE_TYPE_APPLICATION_INFO);
    application.apiVersion = VK_API_VERSION_1_3;
    auto info = Typed<VkInstanceCreateInfo>(VK_STRUCTURE_TYPE_INSTANCE_CREATE_INFO);
    info.pApplicationInfo = &application;
    info.enabledExtensionCount = static_cast<std::uint32_t>(extensions.size());
    info.ppEnabledExtensionNames = extensions.data();
    VkInstance instance = VK_NULL_HANDLE;
    Check(vkCreateInstance(&info, nullptr, &instance));
    volkLoadInstance(instance);
    return instance;
}

VkDevice MakeDevice(VkPhysicalDevice physicalDevice) {
    const float priority = 1;
    auto queue = Typed<VkDeviceQueueCreateInfo>(VK_STRUCTURE_TYPE_DEVICE_QUEUE_CREATE_INFO);
    queue.queueCount = 1;  // of family 0, which draws and presents with every driver of Mesa's
    queue.pQueuePriorities = &priority;
    const char* const swapchain = VK_KHR_SWAPCHAIN_EXTENSION_NAME;
    auto info = Typed<VkDeviceCreateInfo>(VK_STRUCTURE_TYPE_DEVICE_CREATE_INFO);
    info.queueCreateInfoCount = 1;
    info.pQueueCreateInfos = &queue;
    info.enabledExtensionCount = 1;
    info.ppEnabledExtensionNames = &swapchain;
    VkDevice device = VK_NULL_HANDLE;
    Check(vkCreateDevice(physicalDevice, &info, nullptr, &device));
    volkLoadDevice(device);
    return device;
}

VkSwapchainKHR MakeSwapchain(VkPhysicalDevice physicalDevice, VkDevice device, VkSurfaceKHR surface) {
    VkBool32 presents = VK_FALSE;
    Check(vkGetPhysicalDeviceSurfaceSupportKHR(physicalDevice, 0, surface, &presents));
    if (!presents) throw std::runtime_error("the device doesn't present to X11");
    VkSurfaceCapabilitiesKHR capabilities{};
    Check(vkGetPhysicalDeviceSurfaceCapabilitiesKHR(physicalDevice, surface, &capabilities));
    auto info = Typed<VkSwapchainCreateInfoKHR>(VK_STRUCTURE_TYPE_SWAPCHAIN_CREATE_INFO_KHR);
    info.surface = surface;
    info.minImageCount = capabilities.minImageCount;
    info.imageFormat = VK_FORMAT_B8G8R8A8_UNORM;
    info.imageColorSpace = VK_COLOR_SPACE_SRGB_NONLINEAR_KHR;
    info.imageExtent = capabilities.currentExtent;
    info.imageArrayLayers = 1;
    info.imageUsage = VK_IMAGE_USAGE_TRANSFER_DST_BIT | VK_IMAGE_USAGE_COLOR_ATTACHMENT_BIT;
    info.preTransform = capabilities.currentTransform;
    info.compositeAlpha = VK_COMPOSITE_ALPHA_OPAQUE_BIT_KHR;
    info.presentMode = VK_PRESENT_MODE_FIFO_KHR;
    VkSwapchainKHR swapchain = VK_NULL_HANDLE;
    Check(vkCreateSwapchainKHR(device, &info, nullptr, &swapchain));
    return swapchain;
}

void Move(VkCommandBuffer commands, VkImage image, VkImageLayout from, VkImageLayout to) {
    auto barrier = Typed<VkImageMemoryBarrier>(VK_STRUCTURE_TYPE_IMAGE_MEMORY_BARRIER);
    if (to == VK_IMAGE_LAYOUT_TRANSFER_DST_OPTIMAL) barrier.dstAccessMask = VK_ACCESS_TRANSFER_WRITE_BIT;
    if (from == VK_IMAGE_LAYOUT_TRANSFER_DST_OPTIMAL) barrier.srcAccessMask = VK_ACCESS_TRANSFER_WRITE_BIT;
    barrier.oldLayout = from;
    barrier.newLayout = to;
    barrier.srcQueueFamilyIndex = barrier.dstQueueFamilyIndex = VK_QUEUE_FAMILY_IGNORED;
    barrier.image = image;
    barrier.subresourceRange = {VK_IMAGE_ASPECT_COLOR_BIT, 0, 1, 0, 1};
    vkCmdPipelineBarrier(commands, VK_PIPELINE_STAGE_TRANSFER_BIT, VK_PIPELINE_STAGE_TRANSFER_BIT, 0, 0, nullptr, 0,
                         nullptr, 1, &barrier);
}

VkCommandBuffer RecordClear(VkDevice device, VkImage image) {
    auto poolInfo = Typed<VkCommandPoolCreateInfo>(VK_STRUCTURE_TYPE_COMMAND_POOL_CREATE_INFO);
    VkCommandPool pool = VK_NULL_HANDLE;
    Check(vkCreateCommandPool(device, &poolInfo, nullptr, &pool));
    auto info = Typed<VkCommandBufferAllocateInfo>(VK_STRUCTURE_TYPE_COMMAND_BUFFER_ALLOCATE_INFO);
    info.commandPool = pool;
    info.commandBufferCount = 1;
    VkCommandBuffer commands = VK_NULL_HANDLE;
    Check(vkAllocateCommandBuffers(device, &info, &commands));
    const auto begin = Typed<VkCommandBufferBeginInfo>(VK_STRUCTURE_TYPE_COMMAND_BUFFER_BEGIN_INFO);
    Check(vkBeginCommandBuffer(commands, &begin));
    Move(commands, image, VK_IMAGE_LAYOUT_UNDEFINED, VK_IMAGE_LAYOUT_TRANSFER_DST_OPTIMAL);
    const VkClearColorValue color{{0.2F, 0.4F, 0.6F, 1}};
    const VkImageSubresourceRange whole{VK_IMAGE_ASPECT_COLOR_BIT, 0, 1, 0, 1};
    vkCmdClearColorImage(commands, image, VK_IMAGE_LAYOUT_TRANSFER_DST_OPTIMAL, &color, 1, &whole);
    Move(commands, image, VK_IMAGE_LAYOUT_TRANSFER_DST_OPTIMAL, VK_IMAGE_LAYOUT_PRESENT_SRC_KHR);
    Check(vkEndCommandBuffer(commands));
    return commands;
}

void PresentOneFrame(VkDevice device, VkSwapchainKHR swapchain) {
    std::uint32_t count = 0;
    Check(vkGetSwapchainImagesKHR(device, swapchain, &count, nullptr));
    std::vector<VkImage> images(count);
    Check(vkGetSwapchainImagesKHR(device, swapchain, &count, images.data()));
    const auto semaphoreInfo = Typed<VkSemaphoreCreateInfo>(VK_STRUCTURE_TYPE_SEMAPHORE_CREATE_INFO);
    std::array<VkSemaphore, 2> semaphores{};
    for (VkSemaphore& each : semaphores) Check(vkCreateSemaphore(device, &semaphoreInfo, nullptr, &each));
    std::uint32_t index = 0;
    Check(vkAcquireNextImageKHR(device, swapchain, UINT64_MAX, semaphores[0], VK_NULL_HANDLE, &index));

    VkQueue queue = VK_NULL_HANDLE;
    vkGetDeviceQueue(device, 0, 0, &queue);
    const VkCommandBuffer commands = RecordClear(device, images[index]);
    const VkPipelineStageFlags stage = VK_PIPELINE_STAGE_TRANSFER_BIT;
    auto submit = Typed<VkSubmitInfo>(VK_STRUCTURE_TYPE_SUBMIT_INFO);
    submit.waitSemaphoreCount = 1;
    submit.pWaitSemaphores = &semaphores[0];
    submit.pWaitDstStageMask = &stage;
    submit.commandBufferCount = 1;
    submit.pCommandBuffers = &commands;
    submit.signalSemaphoreCount = 1;
    submit.pSignalSemaphores = &semaphores[1];
    Check(vkQueueSubmit(queue, 1, &submit, VK_NULL_HANDLE));
    auto present = Typed<VkPresentInfoKHR>(VK_STRUCTURE_TYPE_PRESENT_INFO_KHR);
    present.waitSemaphoreCount = 1;
    present.pWaitSemaphores = &semaphores[1];
    present.swapchainCount = 1;
    present.pSwapchains = &swapchain;
    present.pImageIndices = &index;
    Check(vkQueuePresentKHR(queue, &present));
}

int Run(std::uint16_t width, std::uint16_t height) {
    const Window window = MakeWindow(width, height);
    StartReport::Say("window", StartReport::MillisecondsSinceStart());

    const VkInstance instance = MakeInstance();
    std::uint32_t count = 1;
    VkPhysicalDevice physicalDevice = VK_NULL_HANDLE;
    Check(vkEnumeratePhysicalDevices(instance, &count, &physicalDevice));
    if (count == 0) throw std::runtime_error("no Vulkan device");
    const VkDevice device = MakeDevice(physicalDevice);
    StartReport::Say("device", StartReport::MillisecondsSinceStart());

    auto surfaceInfo = Typed<VkXcbSurfaceCreateInfoKHR>(VK_STRUCTURE_TYPE_XCB_SURFACE_CREATE_INFO_KHR);
    surfaceInfo.connection = window.connection;
    surfaceInfo.window = window.id;
    VkSurfaceKHR surface = VK_NULL_HANDLE;
    Check(vkCreateXcbSurfaceKHR(instance, &surfaceInfo, nullptr, &surface));
    PresentOneFrame(device, MakeSwapchain(physicalDevice, device, surface));
    // The driver hands the picture to the server on a thread of its own: when it is there, others see.
    StartReport::AwaitEnd();
    StartReport::Say("peak", StartReport::PeakMebibytes());
    std::fflush(stdout);
    std::_Exit(0);  // What comes after the frame isn't measured, and the system takes everything back.
}

}  // namespace

int main(int count, char** words) {
    StartReport::MillisecondsSinceStart();
    try {
        if (count != 3) throw std::runtime_error("use: bare_vulkan WIDTH HEIGHT");
        return Run(static_cast<std::uint16_t>(std::atoi(words[1])), static_cast<std::uint16_t>(std::atoi(words[2])));
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bare_vulkan: %s\n", failure.what());
        return 1;
    }
}
