// The mount table of this process.
//
// A network mount whose server is gone blocks whoever asks it anything, for minutes or for good. The table is the
// kernel's own text, so which mount holds a path can be told from it without asking the file system.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Platform {

/// A line of /proc/self/mountinfo, as proc(5) tells it.
struct Mount {
    int id = 0;
    int parent = 0;
    unsigned major = 0;
    unsigned minor = 0;
    /// The folder (or file) of the file system that is mounted; "/" except for bind mounts and subvolumes.
    std::string root;
    std::filesystem::path point;
    std::string type;
    std::string source;
};

class MountTable {
public:
    /// The table as it is now; empty if it can't be read.
    static MountTable Current();

    /// From text in the form of /proc/self/mountinfo. Lines that don't have that form are passed over.
    explicit MountTable(std::string_view text);

    /// In the table's order.
    const std::vector<Mount>& Mounts() const { return mounts_; }

    /// The mount that holds an absolute path without links, found as the kernel finds it: a mount that another one
    /// covers holds nothing. Null where the table doesn't say. Touches no file system.
    const Mount* Holding(const std::filesystem::path& path) const;

    /// Resolves the links in an absolute path. What lies on a network mount, or doesn't exist, is kept as it is.
    /// Nothing for a loop of links. Touches no network mount.
    std::optional<std::filesystem::path> Resolve(const std::filesystem::path& path) const;

private:
    std::vector<Mount> mounts_;
    // Indices of the mounts on each mount, by that mount's id. Those whose parent isn't in the table, as the root's
    // never is, are below NoParent.
    std::unordered_map<int, std::vector<std::size_t>> children_;
};

/// Whether `path` is `folder` or lies below it, by their components alone. Both absolute and normal.
bool IsWithin(const std::filesystem::path& path, const std::filesystem::path& folder);

}  // namespace Platform
