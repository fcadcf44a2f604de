// One Wine prefix: the folder that stands for a whole Windows machine, with its drives as links below "dosdevices" and
// its registry in text files.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Platform {

/// A drive of a prefix: its letter, 'A' to 'Z', and the folder of this system that is its root (absolute, links
/// resolved).
struct WineDrive {
    wchar_t letter = L'C';
    std::filesystem::path root;
};

/// Holds no more than the folder's path: each call asks the file system anew. Const calls are safe on any thread.
/// Throws nothing but std::bad_alloc; whatever can't be read counts as missing.
class WinePrefix {
public:
    /// `folder` need not exist (yet).
    explicit WinePrefix(std::filesystem::path folder);

    /// The prefix's folder, as given to the constructor.
    const std::filesystem::path& Folder() const { return folder_; }

    /// Whether the folder holds "dosdevices" or "drive_c", by which a prefix is known.
    bool Exists() const;

    /// The drives there are, by letter: the links below "dosdevices" that lead to a folder, and "drive_c" as drive C
    /// where it has no link. Network mounts may be dead and aren't touched, so a root on one need not exist.
    std::vector<WineDrive> Drives() const;

    /// The root of one drive (either case of the letter); nothing where there is no such drive.
    std::optional<std::filesystem::path> DriveRoot(wchar_t letter) const;

    /// The path of this system that a Windows path means: `C:\Program Files`, `c:/games`, `\\?\C:\games`,
    /// `\\?\unix\home\games`. "." and ".." are resolved as Windows does, without leaving the drive. What exists is
    /// found without regard to case and comes back in its own spelling; what doesn't is kept as it is.
    /// Nothing for any other kind of path, and for a drive that isn't there.
    std::optional<std::filesystem::path> UnixPath(std::wstring_view windowsPath) const;

    /// The Windows path of a folder or file of this system, links resolved, on the drive whose root is nearest to it
    /// (the first by letter of several); `\\?\unix\...` where no drive reaches it, or where a name in it has characters
    /// that Windows paths can't hold. Nothing for a name with a backslash, which no Windows path can tell from a
    /// separator.
    std::optional<std::wstring> WindowsPath(const std::filesystem::path& unixPath) const;

private:
    std::filesystem::path folder_;
};

}  // namespace Platform
