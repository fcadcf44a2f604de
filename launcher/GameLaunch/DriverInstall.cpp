#include "launcher/GameLaunch/DriverInstall.h"

#include "launcher/GameDiscovery/Validation.h"
#include "launcher/GameLaunch/FileCopy.h"
#include "Platform/Interface/Paths.h"

#include <string>

namespace fs = std::filesystem;

namespace GameLaunch {

void InstallDriver(const fs::path& source, const fs::path& target) {
    // Where file names are case-sensitive, "kvr2.dll" is the file to replace, and its backup is named after it.
    const fs::path installed = Platform::ExistingSpelling(target);
    if (GameDiscovery::EntryExists(installed)) {
        if (SameContent(source, installed)) return;
        fs::path backup = installed;
        backup += ".backup-" + std::to_string(GetTickCount64());
        CopyContent(installed, backup, IfExists::Fail);
    }
    CopyContent(source, installed, IfExists::Overwrite);
}

}  // namespace GameLaunch
