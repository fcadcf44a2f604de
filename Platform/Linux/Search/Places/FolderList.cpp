#include "Platform/Linux/Search/Places/FolderList.h"

#include <algorithm>
#include <system_error>

namespace fs = std::filesystem;

namespace Platform {

namespace {

// Nobody has this many prefixes; a folder that is larger is something else and mustn't hold a search up.
constexpr std::size_t MaxNames = 4096;

}  // namespace

void FolderList::Add(const fs::path& folder) {
    std::error_code error;
    const fs::path resolved = fs::canonical(folder, error);
    if (error || !fs::is_directory(resolved, error)) return;
    if (resolved_.insert(resolved.native()).second) folders_.push_back(folder);
}

std::vector<fs::path> SortedNames(const fs::path& folder) {
    std::vector<fs::path> names;
    std::error_code error;
    fs::directory_iterator entry(folder, fs::directory_options::skip_permission_denied, error);
    for (; !error && entry != fs::directory_iterator() && names.size() < MaxNames; entry.increment(error)) {
        names.push_back(entry->path().filename());
    }
    std::sort(names.begin(), names.end(), [](const auto& a, const auto& b) { return a.native() < b.native(); });
    return names;
}

}  // namespace Platform
