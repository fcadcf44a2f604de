#include "tests/support/TemporaryFolder.h"

#include <d3d11_4.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

void ExpectNone() {
    ID3D11Device* device = reinterpret_cast<ID3D11Device*>(1);
    testing::internal::CaptureStderr();
    const HRESULT hr = D3D11CreateDevice(nullptr, D3D_DRIVER_TYPE_HARDWARE, nullptr, 0, nullptr, 0, D3D11_SDK_VERSION,
                                         &device, nullptr, nullptr);
    const std::string trace = testing::internal::GetCapturedStderr();
    EXPECT_EQ(hr, DXGI_ERROR_UNSUPPORTED);
    EXPECT_EQ(device, nullptr);
    EXPECT_EQ(trace, "No usable Vulkan driver was found. Install the package mesa-vulkan-drivers.\n");
}

TEST(AbsenceTest, ASoftwareDriverThatDoesNotLoadIsNone) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder / "vulkan/icd.d");
    std::ofstream(folder / "vulkan/icd.d/lvp_icd.json") << R"({"ICD": {"library_path": "/nowhere/libvulkan_lvp.so"}})";
    for (const char* const name : {"XDG_CONFIG_HOME", "XDG_CONFIG_DIRS", "XDG_DATA_HOME", "XDG_DATA_DIRS"})
        setenv(name, folder.Path().c_str(), 1);
    ExpectNone();
}

TEST(AbsenceTest, WithoutADriverTheDeviceIsUnsupportedAndTheUserIsToldWhatToInstall) {
    setenv("VK_ICD_FILENAMES", "/nowhere/driver.json", 1);
    setenv("VK_DRIVER_FILES", "/nowhere/driver.json", 1);
    ExpectNone();
}

}  // namespace
