#include "Platform/Linux/Profile/ProfileFile.h"

#include "Platform/Linux/Base/Errors.h"
#include "Platform/Linux/Files/RegularFile.h"
#include "Platform/Linux/Profile/ProfileText.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>

namespace Platform {

namespace {

/// The most time a writer waits for its turn. A turn takes as long as bringing a small file to the disk; whoever holds
/// the folder for longer isn't writing, and the caller isn't kept waiting for it.
constexpr std::chrono::seconds longestTurn{5};

/// How often a writer asks whether its turn has come, in milliseconds.
constexpr DWORD turnInterval = 1;

/// Reads all of an open file; nothing, with errno set, on failure. EFBIG for a file that is too large.
std::optional<std::string> ReadAll(int file) {
    struct stat status;
    if (fstat(file, &status) != 0) return std::nullopt;
    std::string content(std::min(static_cast<std::size_t>(status.st_size), largestProfileFile) + 1, '\0');
    std::size_t length = 0;
    for (;;) {
        const ssize_t count = read(file, content.data() + length, content.size() - length);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::nullopt;
        if (count == 0) break;
        length += static_cast<std::size_t>(count);
        if (length > largestProfileFile) {
            errno = EFBIG;
            return std::nullopt;
        }
        if (length == content.size()) content.resize(std::min(2 * length, largestProfileFile + 1));
    }
    content.resize(length);
    return content;
}

bool WriteAll(int file, std::string_view content) {
    while (!content.empty()) {
        const ssize_t count = write(file, content.data(), content.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return false;
        content.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

/// Where the chain of links that starts at `path` ends, whether or not something is there.
std::filesystem::path LinkTarget(std::filesystem::path path) {
    static constexpr int mostLinks = 40;  // as many as the kernel follows (path_resolution(7))
    std::error_code error;
    for (int links = 0; links < mostLinks; ++links) {
        const std::filesystem::path target = std::filesystem::read_symlink(path, error);
        if (error) break;  // no link
        path = path.parent_path() / target;
    }
    return path;
}

/// Takes the exclusive lock on a folder. It ends with the descriptor, so a writer that is killed frees it.
bool LockFolder(int folder) {
    const auto giveUp = std::chrono::steady_clock::now() + longestTurn;
    while (flock(folder, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) return false;
        if (std::chrono::steady_clock::now() >= giveUp) return false;
        Sleep(turnInterval);
    }
    return true;
}

/// The file that takes the old one's place. Its name is always the same, so what a killed writer leaves is used up by
/// the next one; only the holder of the folder's lock touches it.
class Replacement {
public:
    Replacement(int folder, const std::string& name) : folder_(folder), name_('.' + name + ".new") {}
    ~Replacement() {
        if (file_) unlinkat(folder_, name_.c_str(), 0);
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    /// Brings the content to the disk, with the old file's permissions if there is one. False with errno set on
    /// failure.
    bool Write(std::string_view content, const struct stat* old) {
        unlinkat(folder_, name_.c_str(), 0);
        static constexpr mode_t readWrite = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
        file_.Reset(openat(folder_, name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, readWrite));
        if (!file_) return false;
        if (old) {
            // Only root can give a file away, and only there the owner may differ.
            if (old->st_uid != geteuid()) static_cast<void>(fchown(file_.Get(), old->st_uid, old->st_gid) == 0);
            if (fchmod(file_.Get(), old->st_mode & 07777U) != 0) return false;
        }
        // Without the fsync, some file systems put the new name on the disk before the content (a crash then leaves an
        // empty file).
        return WriteAll(file_.Get(), content) && fsync(file_.Get()) == 0;
    }

    /// Puts the file in the place of the one named.
    bool Install(const std::string& name) {
        if (renameat(folder_, name_.c_str(), folder_, name.c_str()) != 0) return false;
        file_.Reset();
        return true;
    }

private:
    const int folder_;
    const std::string name_;
    FileDescriptor file_;  // Open as long as the file exists under its temporary name.
};

}  // namespace

std::optional<std::string> ReadProfileFile(const std::string& path) {
    const FileDescriptor file = OpenRegularFile(AT_FDCWD, path, O_RDONLY);
    if (!file) return std::nullopt;
    return ReadAll(file.Get());
}

DWORD EditProfileFile(const std::string& path, std::wstring_view section, std::wstring_view key,
                      std::wstring_view value) {
    const std::filesystem::path target = LinkTarget(path);
    const std::string folderPath = target.has_parent_path() ? target.parent_path().native() : ".";
    const std::string name = target.filename().native();
    const FileDescriptor folder(open(folderPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder) return errno == ENOENT ? ERROR_PATH_NOT_FOUND : ErrorFromErrno(errno);
    if (!LockFolder(folder.Get())) return ErrorFromErrno(errno);

    // Opened for writing, though it is only read, so that a file that is protected from writing stays as it is.
    const FileDescriptor old = OpenRegularFile(folder.Get(), name, O_RDWR);
    if (!old && errno != ENOENT) return ErrorFromErrno(errno);
    const std::optional<std::string> content = old ? ReadAll(old.Get()) : std::string();
    if (!content) return errno == EFBIG ? ERROR_ACCESS_DENIED : ErrorFromErrno(errno);
    struct stat status {};
    if (old && fstat(old.Get(), &status) != 0) return ErrorFromErrno(errno);

    ProfileText text(*content);
    if (!text.SetValue(section, key, value)) return ERROR_SUCCESS;
    const std::string bytes = text.Bytes();
    if (bytes.size() > largestProfileFile) return ERROR_INVALID_PARAMETER;
    Replacement replacement(folder.Get(), name);
    if (!replacement.Write(bytes, old ? &status : nullptr) || !replacement.Install(name)) return ErrorFromErrno(errno);
    return ERROR_SUCCESS;
}

}  // namespace Platform
