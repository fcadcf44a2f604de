#include "Platform/Interface/Paths.h"
#include "Platform/Interface/SearchPlaces.h"
#include "Platform/Linux/Search/DriveType.h"
#include "Platform/Linux/Search/LocalMounts.h"
#include "Platform/Linux/Search/Places/MountTable.h"
#include "Platform/Linux/Search/Places/UserFolders.h"
#include "Platform/Linux/Wine/Prefixes.h"

#include <windows.h>

#include <algorithm>
#include <exception>

namespace fs = std::filesystem;

namespace {

/// Roots in the order they were added, each once.
class RootList {
public:
    void Add(const fs::path& root) {
        std::wstring text = Platform::TextFromPath(root);
        if (std::find(roots_.begin(), roots_.end(), text) == roots_.end()) roots_.push_back(std::move(text));
    }
    std::vector<std::wstring> Take() { return std::move(roots_); }

private:
    std::vector<std::wstring> roots_;
};

}  // namespace

UINT GetDriveTypeW(LPCWSTR root) noexcept try {
    if (!root) return DRIVE_NO_ROOT_DIR;
    return Platform::DriveTypeOf(Platform::PathFromText(root), Platform::MountTable::Current(), Platform::HomeFolder());
} catch (const std::exception&) {
    return DRIVE_UNKNOWN;
}

std::vector<std::wstring> Platform::DriveRoots() {
    RootList roots;
    const MountTable mounts = MountTable::Current();
    const fs::path home = HomeFolder();
    const fs::path resolvedHome = mounts.Resolve(home).value_or(home);
    for (const WinePrefix& prefix : KnownPrefixes()) {
        std::vector<WineDrive> drives = prefix.Drives();
        std::stable_partition(drives.begin(), drives.end(),
                              [](const WineDrive& drive) { return drive.letter == L'C'; });
        for (const WineDrive& drive : drives) {
            // Wine's Z leads to "/" in every prefix; that isn't what makes it a drive of the prefix.
            if (drive.root != "/" && drive.root != resolvedHome) roots.Add(drive.root);
        }
    }
    if (!home.empty()) roots.Add(resolvedHome);
    for (const fs::path& point : LocalMounts(mounts)) roots.Add(point);
    return roots.Take();
}
