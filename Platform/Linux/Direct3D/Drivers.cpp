#include "Platform/Linux/Direct3D/Drivers.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace Platform::Direct3D {

namespace {

namespace fs = std::filesystem;

// Mesa's drivers, which need a device of the kernel's. Another's may reach its device by ways that aren't known here.
constexpr std::array hardwareDrivers = {
    "libvulkan_asahi.so",        "libvulkan_broadcom.so",    "libvulkan_dzn.so",     "libvulkan_freedreno.so",
    "libvulkan_intel.so",        "libvulkan_intel_hasvk.so", "libvulkan_nouveau.so", "libvulkan_panfrost.so",
    "libvulkan_powervr_mesa.so", "libvulkan_radeon.so",      "libvulkan_virtio.so",
};
constexpr const char* softwareDriver = "libvulkan_lvp.so";

// Devices of single files: Adreno's own, and the host's within Windows' subsystem for Linux.
constexpr std::array singleDevices = {"kgsl-3d0", "dxg"};

// A folder with more than that in it isn't one of drivers.
constexpr std::size_t mostManifests = 64;
constexpr std::size_t longestManifest = std::size_t{64} * 1024;

std::string Variable(const char* name, const char* otherwise) {
    const char* const value = std::getenv(name);
    return value && *value ? value : otherwise;
}

void AddEach(std::vector<fs::path>& folders, const std::string& list) {
    for (std::size_t at = 0; at <= list.size();) {
        const std::size_t end = std::min(list.find(':', at), list.size());
        if (end > at) folders.push_back(fs::path(list.substr(at, end - at)) / "vulkan/icd.d");
        at = end + 1;
    }
}

bool ConcernsVulkan(std::string_view name) {
    // The loader's and layers' own, Mesa's, and that by which the virtual driver is told of a socket.
    return name.find("VK_") != name.npos || name.find("VULKAN") != name.npos || name == "VN_DEBUG";
}

bool HasEntry(const fs::path& folder) {
    std::error_code failure;
    return fs::directory_iterator(folder, failure) != fs::directory_iterator();
}

std::string ReadLibrary(const fs::path& manifest) {
    std::ifstream file(manifest, std::ios::binary);
    std::string text(longestManifest, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(std::max<std::streamsize>(file.gcount(), 0)));
    const std::string library = LibraryOfManifest(text);
    // A bare name is looked for by the linker, a path is meant from the manifest on.
    if (library.find('/') == library.npos) return library;
    return (manifest.parent_path() / library).string();
}

}  // namespace

DriverPlaces DriverPlaces::OfProcess() {
    DriverPlaces places;
    const std::string home = Variable("HOME", "");
    AddEach(places.manifests, Variable("XDG_CONFIG_HOME", home.empty() ? "" : (home + "/.config").c_str()));
    AddEach(places.manifests, Variable("XDG_CONFIG_DIRS", "/etc/xdg"));
    AddEach(places.manifests, "/usr/local/etc:/etc");
    AddEach(places.manifests, Variable("XDG_DATA_HOME", home.empty() ? "" : (home + "/.local/share").c_str()));
    AddEach(places.manifests, Variable("XDG_DATA_DIRS", "/usr/local/share:/usr/share"));
    for (char** each = environ; each && *each; ++each) {
        const std::string_view entry(*each);
        places.variables.emplace_back(entry.substr(0, entry.find('=')));
    }
    return places;
}

DriverSurroundings LookAround(const DriverPlaces& places) {
    DriverSurroundings found;
    found.isConfigured = std::ranges::any_of(places.variables, ConcernsVulkan);
    found.hasGraphicsDevice =
        HasEntry(places.devices / "dri") || std::ranges::any_of(singleDevices, [&](const char* name) {
            std::error_code failure;
            return fs::exists(places.devices / name, failure);
        });
    for (const fs::path& folder : places.manifests) {
        std::error_code failure;
        for (fs::directory_iterator each(folder, failure), end; !failure && each != end; each.increment(failure)) {
            if (each->path().extension() != ".json") continue;
            found.libraries.push_back(found.libraries.size() < mostManifests ? ReadLibrary(each->path()) : "");
            if (found.libraries.size() > mostManifests) return found;
        }
    }
    return found;
}

std::vector<std::string> SoftwareDriversAlone(const DriverSurroundings& surroundings) {
    if (surroundings.isConfigured || surroundings.hasGraphicsDevice) return {};
    std::vector<std::string> software;
    for (const std::string& library : surroundings.libraries) {
        const std::string name = fs::path(library).filename().string();
        if (name == softwareDriver) {
            software.push_back(library);
        } else if (std::ranges::find(hardwareDrivers, name) == hardwareDrivers.end()) {
            return {};
        }
    }
    return software;
}

std::string LibraryOfManifest(std::string_view manifest) {
    constexpr std::string_view key = "\"library_path\"";
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t found = manifest.find(key);
    if (found == manifest.npos) return {};
    std::size_t at = manifest.find_first_not_of(blanks, found + key.size());
    if (at == manifest.npos || manifest[at] != ':') return {};
    at = manifest.find_first_not_of(blanks, at + 1);
    if (at == manifest.npos || manifest[at] != '"') return {};
    const std::size_t end = manifest.find('"', at + 1);
    if (end == manifest.npos) return {};
    const std::string_view path = manifest.substr(at + 1, end - at - 1);
    return path.find('\\') == path.npos ? std::string(path) : std::string();
}

}  // namespace Platform::Direct3D
