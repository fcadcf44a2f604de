#include "Platform/Linux/Search/LocalMounts.h"

#include "Platform/Linux/Search/Places/MountKind.h"

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <system_error>
#include <tuple>

namespace fs = std::filesystem;

namespace Platform {

namespace {

bool IsSystemPlace(const fs::path& point) {
    static constexpr std::array places = {
        "/boot",           "/dev",          "/efi", "/proc", "/run", "/snap", "/sys", "/var/lib/containers",
        "/var/lib/docker", "/var/lib/snapd"};
    // Desktops mount the disks that the user plugs in here.
    if (IsWithin(point, "/run/media")) return false;
    return std::any_of(places.begin(), places.end(), [&](const char* place) { return IsWithin(point, place); });
}

bool MayHoldGames(const Mount& mount, const fs::path& sys) {
    if (mount.point == "/") return true;
    if (IsSystemPlace(mount.point)) return false;
    const MountKind kind = KindOf(mount, sys);
    if (kind == MountKind::Removable || kind == MountKind::Optical) return true;
    std::error_code error;
    return kind == MountKind::Fixed && fs::is_directory(mount.point, error);
}

}  // namespace

std::vector<fs::path> LocalMounts(const MountTable& mounts, const fs::path& sys) {
    std::vector<fs::path> points;
    std::set<std::tuple<unsigned, unsigned, std::string>> shown;
    for (const Mount& mount : mounts.Mounts()) {
        if (mounts.Holding(mount.point) != &mount || !MayHoldGames(mount, sys)) continue;
        if (shown.emplace(mount.major, mount.minor, mount.root).second) points.push_back(mount.point);
    }
    return points;
}

}  // namespace Platform
