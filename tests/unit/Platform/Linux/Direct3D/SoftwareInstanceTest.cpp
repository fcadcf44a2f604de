// Made without Vulkan's loader, where only the software driver can have a device.
#include "Platform/Linux/Direct3D/Device.h"
#include "Platform/Linux/Direct3D/Drivers.h"
#include "tests/support/TemporaryFolder.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

using namespace Platform::Direct3D;

namespace {

bool IsLoaded(const char* library) {
    void* const handle = dlopen(library, RTLD_LAZY | RTLD_NOLOAD);
    if (handle) dlclose(handle);
    return handle != nullptr;
}

// All in one, since a process has one instance.
TEST(SoftwareInstanceTest, TheFirstDriverThatWorksMakesTheDeviceAndTheLoaderStaysAway) {
    if (SoftwareDriversAlone(LookAround(DriverPlaces::OfProcess())).empty())
        GTEST_SKIP() << "Another driver may have a device here.";
    TemporaryFolder broken;
    std::filesystem::create_directories(broken / "vulkan/icd.d");
    std::ofstream(broken / "vulkan/icd.d/lvp_icd.json") << R"({"library_path": "../libvulkan_lvp.so"})";
    std::ofstream(broken / "vulkan/libvulkan_lvp.so") << "no library";
    setenv("XDG_CONFIG_HOME", broken.Path().c_str(), 1);
    const auto drivers = SoftwareDriversAlone(LookAround(DriverPlaces::OfProcess()));
    ASSERT_GT(drivers.size(), 1U);
    ASSERT_EQ(drivers.front(), (broken / "vulkan/icd.d/../libvulkan_lvp.so").string());

    const auto device = GraphicsDevice::Create();
    EXPECT_TRUE(device->IsSoftware());
    EXPECT_FALSE(IsLoaded("libvulkan.so.1"));
    EXPECT_FALSE(IsLoaded("libvulkan_radeon.so"));
    EXPECT_TRUE(IsLoaded("libvulkan_lvp.so"));
    device->Record([](VkCommandBuffer) {});
    device->Finish();
}

}  // namespace
