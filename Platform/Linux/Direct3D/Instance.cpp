#include "Platform/Linux/Direct3D/Instance.h"

#include "Platform/Linux/Direct3D/Drivers.h"
#include "Platform/Linux/Direct3D/PhysicalDevice.h"

#include <dlfcn.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Platform::Direct3D {

namespace {

constexpr const char* validationLayer = "VK_LAYER_KHRONOS_validation";

std::atomic<bool> validate{false};
std::atomic<std::uint64_t> messages{0};

VKAPI_ATTR VkBool32 VKAPI_CALL OnMessage(VkDebugUtilsMessageSeverityFlagBitsEXT, VkDebugUtilsMessageTypeFlagsEXT,
                                         const VkDebugUtilsMessengerCallbackDataEXT* data, void*) {
    messages.fetch_add(1, std::memory_order_relaxed);
    std::fprintf(stderr, "Vulkan validation: %s\n", data->pMessage);
    return VK_FALSE;
}

bool HasLayer(std::string_view name) {
    std::uint32_t count = 0;
    Check(vkEnumerateInstanceLayerProperties(&count, nullptr));
    std::vector<VkLayerProperties> all(count);
    Check(vkEnumerateInstanceLayerProperties(&count, all.data()));
    return std::ranges::any_of(all, [&](const auto& each) { return name == each.layerName; });
}

VkApplicationInfo Application() {
    auto application = Typed<VkApplicationInfo>(VK_STRUCTURE_TYPE_APPLICATION_INFO);
    application.apiVersion = VK_API_VERSION_1_3;
    return application;
}

/// An instance of one driver, without Vulkan's loader between. None where the driver doesn't let itself be used so or
/// has no usable device. What the driver's library brought into the process stays there.
std::optional<Instance> MakeInstanceOf(const std::string& driver) {
    // The version from which a driver takes any version of Vulkan that a program asks for.
    constexpr std::uint32_t interfaceVersion = 5;

    void* const library = dlopen(driver.c_str(), RTLD_LAZY | RTLD_LOCAL);
    if (!library) return std::nullopt;
    const auto agree = reinterpret_cast<VkResult(VKAPI_PTR*)(std::uint32_t*)>(
        dlsym(library, "vk_icdNegotiateLoaderICDInterfaceVersion"));
    const auto functions = reinterpret_cast<PFN_vkGetInstanceProcAddr>(dlsym(library, "vk_icdGetInstanceProcAddr"));
    std::uint32_t version = interfaceVersion;
    if (!agree || !functions || agree(&version) != VK_SUCCESS || version != interfaceVersion) return std::nullopt;
    volkInitializeCustom(functions);
    const VkApplicationInfo application = Application();
    auto info = Typed<VkInstanceCreateInfo>(VK_STRUCTURE_TYPE_INSTANCE_CREATE_INFO);
    info.pApplicationInfo = &application;
    Instance made;
    if (!vkCreateInstance || vkCreateInstance(&info, nullptr, &made.handle) != VK_SUCCESS) return std::nullopt;
    volkLoadInstance(made.handle);
    try {
        if (std::ranges::any_of(PhysicalDevicesOf(made.handle), &IsUsable)) return made;
    } catch (const VulkanError&) {}  // The loader's way tells what is wrong.
    vkDestroyInstance(made.handle, nullptr);
    return std::nullopt;
}

/// On a machine where only a software driver can have a device. The loader would load all the others as well, of which
/// some have a compiler with them, and each layer; that takes as long as all else of a program's start.
std::optional<Instance> MakeSoftwareInstance() {
    if (validate) return std::nullopt;
    for (const std::string& driver : SoftwareDriversAlone(LookAround(DriverPlaces::OfProcess()))) {
        if (const std::optional<Instance> made = MakeInstanceOf(driver)) return made;
    }
    return std::nullopt;
}

Instance MakeInstance() {
    if (const std::optional<Instance> software = MakeSoftwareInstance()) return *software;
    Check(volkInitialize());
    Instance made;
    std::vector<const char*> extensions;
    std::vector<const char*> layers;

    auto messenger = Typed<VkDebugUtilsMessengerCreateInfoEXT>(VK_STRUCTURE_TYPE_DEBUG_UTILS_MESSENGER_CREATE_INFO_EXT);
    messenger.messageSeverity =
        VK_DEBUG_UTILS_MESSAGE_SEVERITY_ERROR_BIT_EXT | VK_DEBUG_UTILS_MESSAGE_SEVERITY_WARNING_BIT_EXT;
    messenger.messageType = VK_DEBUG_UTILS_MESSAGE_TYPE_VALIDATION_BIT_EXT;
    messenger.pfnUserCallback = &OnMessage;
    if (validate) {
        layers.push_back(validationLayer);
        extensions.push_back(VK_EXT_DEBUG_UTILS_EXTENSION_NAME);
    }

    const VkApplicationInfo application = Application();
    auto info = Typed<VkInstanceCreateInfo>(VK_STRUCTURE_TYPE_INSTANCE_CREATE_INFO);
    info.pNext = validate ? &messenger : nullptr;
    info.pApplicationInfo = &application;
    info.enabledLayerCount = static_cast<std::uint32_t>(layers.size());
    info.ppEnabledLayerNames = layers.data();
    info.enabledExtensionCount = static_cast<std::uint32_t>(extensions.size());
    info.ppEnabledExtensionNames = extensions.data();
    // Nothing is asked of the loader first: with each question it looks through all drivers anew. What it would answer
    // shows itself here, where a loader from before Vulkan 1.1 refuses the version, and in the devices. Pictures reach
    // the screen through the compositor, so no extension for surfaces is needed, of which the loader would ask the
    // display which device is its own.
    Check(vkCreateInstance(&info, nullptr, &made.handle));
    volkLoadInstance(made.handle);
    if (validate) {
        VkDebugUtilsMessengerEXT unused = VK_NULL_HANDLE;  // lives as long as the instance: for ever
        Check(vkCreateDebugUtilsMessengerEXT(made.handle, &messenger, nullptr, &unused));
    }
    return made;
}

}  // namespace

const Instance& SharedInstance() {
    // A driver that failed may be there the next time: only a success is kept.
    static std::mutex mutex;
    static Instance instance;  // guarded by mutex until it has a handle
    const std::lock_guard lock(mutex);
    if (!instance.handle) instance = MakeInstance();
    return instance;
}

bool EnableValidation() {
    if (volkInitialize() != VK_SUCCESS || !HasLayer(validationLayer)) return false;
    validate = true;
    return true;
}

std::uint64_t ValidationMessages() {
    return messages.load(std::memory_order_relaxed);
}

}  // namespace Platform::Direct3D
