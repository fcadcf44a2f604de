// Which of the installed Vulkan drivers can have a device at all, found out without loading them.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace Platform::Direct3D {

/// Where Vulkan's drivers, and what they drive, are looked for.
struct DriverPlaces {
    std::vector<std::filesystem::path> manifests;  ///< Folders of the drivers' manifests.
    std::filesystem::path devices = "/dev";
    std::vector<std::string> variables;  ///< Names of the process's variables.

    /// Those of this process, as Vulkan's loader has them.
    static DriverPlaces OfProcess();
};

/// What is there.
struct DriverSurroundings {
    bool isConfigured = false;  ///< Somebody told Vulkan's loader, or a driver, what to do.
    bool hasGraphicsDevice = false;
    /// The drivers' libraries as the manifests name them; empty for a manifest that can't be made out.
    std::vector<std::string> libraries;
};

DriverSurroundings LookAround(const DriverPlaces& places);

/// The software drivers' libraries, where no other driver can have a device: the machine has no graphics device, all
/// its drivers are known ones, and nobody told otherwise. Empty where that isn't sure, and Vulkan's loader must see.
std::vector<std::string> SoftwareDriversAlone(const DriverSurroundings& surroundings);

/// The library that a manifest names; empty where there is none or its text has escapes.
std::string LibraryOfManifest(std::string_view manifest);

}  // namespace Platform::Direct3D
