#include "Platform/Linux/Search/Places/UserFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <vector>

namespace fs = std::filesystem;

namespace Platform {

namespace {

fs::path WithoutTrailingSeparator(const fs::path& path) {
    const fs::path normal = path.lexically_normal();
    return normal.has_filename() || !normal.has_relative_path() ? normal : normal.parent_path();
}

fs::path HomeOfUserDatabase() {
    // Entries are a line of text; one that needs more than this is no usable home folder.
    std::vector<char> buffer(16384);
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || !found || !found->pw_dir) return {};
    const fs::path home = found->pw_dir;
    return home.is_absolute() ? WithoutTrailingSeparator(home) : fs::path();
}

}  // namespace

fs::path AbsolutePathVariable(const char* name) {
    const char* const value = std::getenv(name);
    if (!value || value[0] != '/') return {};
    return WithoutTrailingSeparator(value);
}

fs::path HomeFolder() {
    fs::path home = AbsolutePathVariable("HOME");
    return home.empty() ? HomeOfUserDatabase() : home;
}

fs::path DataFolder() {
    fs::path data = AbsolutePathVariable("XDG_DATA_HOME");
    if (!data.empty()) return data;
    const fs::path home = HomeFolder();
    return home.empty() ? fs::path() : home / ".local" / "share";
}

}  // namespace Platform
