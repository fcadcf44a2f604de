#include "Platform/Linux/Direct3D/Drivers.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

using namespace Platform::Direct3D;

namespace {

using Libraries = std::vector<std::string>;
const Libraries debians = {"/lib/libvulkan_intel_hasvk.so", "/lib/libvulkan_intel.so", "/lib/libvulkan_lvp.so",
                           "/lib/libvulkan_radeon.so"};

TEST(DriversTest, WithoutAGraphicsDeviceTheSoftwareDriverIsAlone) {
    EXPECT_EQ(SoftwareDriversAlone({.libraries = debians}), Libraries{"/lib/libvulkan_lvp.so"});
}

TEST(DriversTest, AllOfItsFilesAreThere) {
    const Libraries both = {"/lib/i386/libvulkan_lvp.so", "/lib/x86_64/libvulkan_lvp.so"};
    EXPECT_EQ(SoftwareDriversAlone({.libraries = both}), both);
}

TEST(DriversTest, ADeviceAConfigurationOrAnUnknownDriverLeavesTheChoiceToTheLoader) {
    EXPECT_EQ(SoftwareDriversAlone({.hasGraphicsDevice = true, .libraries = debians}), Libraries{});
    EXPECT_EQ(SoftwareDriversAlone({.isConfigured = true, .libraries = debians}), Libraries{});
    for (const char* const other : {"/opt/libvk_swiftshader.so", "libGLX_nvidia.so.0", ""}) {
        Libraries more = debians;
        more.emplace_back(other);
        EXPECT_EQ(SoftwareDriversAlone({.libraries = more}), Libraries{}) << other;
    }
}

TEST(DriversTest, WithoutASoftwareDriverThereIsNone) {
    EXPECT_EQ(SoftwareDriversAlone({}), Libraries{});
    EXPECT_EQ(SoftwareDriversAlone({.libraries = {"/lib/libvulkan_radeon.so"}}), Libraries{});
}

TEST(DriversTest, AManifestNamesItsLibrary) {
    EXPECT_EQ(LibraryOfManifest(R"({"ICD": {"api_version": "1.1", "library_path": "/lib/a.so"}})"), "/lib/a.so");
    EXPECT_EQ(LibraryOfManifest("{\"ICD\":{\"library_path\"\n : \t\"a.so\"}}"), "a.so");
    for (const char* const none : {"", "{}", R"("library_path")", R"("library_path":)", R"("library_path": 7)",
                                   R"("library_path": "a)", R"("library_path": "a\\b.so")"}) {
        EXPECT_EQ(LibraryOfManifest(none), "") << none;
    }
}

class LookAroundTest : public testing::Test {
protected:
    void SetUp() override {
        std::filesystem::create_directories(folder / "dev");
        std::filesystem::create_directories(folder / "icd.d");
        places.manifests = {folder / "missing", folder / "icd.d"};
        places.devices = folder / "dev";
    }
    void Write(const char* name, const std::string& text) const { std::ofstream(folder / "icd.d" / name) << text; }
    DriverSurroundings Found() const { return LookAround(places); }

    TemporaryFolder folder;
    DriverPlaces places;
};

TEST_F(LookAroundTest, AnEmptyMachineHasNothing) {
    const DriverSurroundings found = Found();
    EXPECT_FALSE(found.isConfigured);
    EXPECT_FALSE(found.hasGraphicsDevice);
    EXPECT_EQ(found.libraries, Libraries{});
}

TEST_F(LookAroundTest, ManifestsNameLibrariesFromTheirFolderOn) {
    Write("bare.json", R"({"library_path": "libvulkan_lvp.so"})");
    EXPECT_EQ(Found().libraries, Libraries{"libvulkan_lvp.so"});
    Write("bare.json", R"({"library_path": "/lib/libvulkan_lvp.so"})");
    EXPECT_EQ(Found().libraries, Libraries{"/lib/libvulkan_lvp.so"});
    Write("bare.json", R"({"library_path": "../libvulkan_lvp.so"})");
    EXPECT_EQ(Found().libraries, Libraries{(folder / "icd.d/../libvulkan_lvp.so").string()});
    Write("readme.txt", "no manifest");
    EXPECT_EQ(Found().libraries.size(), 1U);
}

TEST_F(LookAroundTest, AManifestThatCannotBeMadeOutCounts) {
    Write("broken.json", "{");
    EXPECT_EQ(Found().libraries, Libraries{""});
}

TEST_F(LookAroundTest, ADeviceIsAnEntryOfTheKernels) {
    std::filesystem::create_directory(folder / "dev/dri");
    EXPECT_FALSE(Found().hasGraphicsDevice) << "The folder alone is no device.";
    std::ofstream(folder / "dev/dri/renderD128");
    EXPECT_TRUE(Found().hasGraphicsDevice);
    std::filesystem::remove_all(folder / "dev/dri");
    std::ofstream(folder / "dev/kgsl-3d0");
    EXPECT_TRUE(Found().hasGraphicsDevice);
}

TEST_F(LookAroundTest, VariablesOfTheLoaderAndOfDriversAreAConfiguration) {
    for (const char* const name : {"VK_DRIVER_FILES", "VK_LOADER_DEBUG", "MESA_VK_DEVICE_SELECT", "VN_DEBUG",
                                   "ENABLE_VK_LAYER_VALVE_steam_overlay_1", "ENABLE_VULKAN_RENDERDOC_CAPTURE"}) {
        places.variables = {"HOME", name};
        EXPECT_TRUE(Found().isConfigured) << name;
    }
    places.variables = {"HOME", "PATH", "DISPLAY", "MESA_SHADER_CACHE_DISABLE"};
    EXPECT_FALSE(Found().isConfigured);
}

TEST(DriverPlacesTest, TheProcesssFoldersAndVariablesAreTold) {
    const DriverPlaces places = DriverPlaces::OfProcess();
    EXPECT_NE(std::ranges::find(places.manifests, "/etc/vulkan/icd.d"), places.manifests.end());
    EXPECT_NE(std::ranges::find(places.variables, "PATH"), places.variables.end());
    EXPECT_EQ(places.devices, "/dev");
}

}  // namespace
