#pragma once

#include <cstddef>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace Platform {

/// Existing folders in the order they were added, each once: two paths are the same folder when they are equal with
/// links resolved. Folders keep the spelling they were first added in.
class FolderList {
public:
    /// Adds the folder if it exists and isn't in the list.
    void Add(const std::filesystem::path& folder);

    const std::vector<std::filesystem::path>& Folders() const { return folders_; }

private:
    std::vector<std::filesystem::path> folders_;
    std::set<std::string> resolved_;
};

/// The names in a folder in byte order; empty where it can't be read. Of a folder with thousands of entries only the
/// first ones that the system gives are read.
std::vector<std::filesystem::path> SortedNames(const std::filesystem::path& folder);

}  // namespace Platform
