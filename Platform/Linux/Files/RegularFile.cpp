#include "Platform/Linux/Files/RegularFile.h"

#include <fcntl.h>

#include <cerrno>

namespace Platform {

bool CheckRegular(const struct stat& status) noexcept {
    if (S_ISREG(status.st_mode)) return true;
    errno = S_ISDIR(status.st_mode) ? EISDIR : EACCES;
    return false;
}

FileDescriptor OpenRegularFile(int folder, const std::string& path, int flags) {
    struct stat status;
    if (fstatat(folder, path.c_str(), &status, 0) != 0 || !CheckRegular(status)) return {};
    // O_NONBLOCK for the case that something else takes the file's place at this very moment; it also makes a file
    // under a lease answer at once. It has no effect on what is read from a regular file (open(2)).
    FileDescriptor file(openat(folder, path.c_str(), flags | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (!file || fstat(file.Get(), &status) != 0 || !CheckRegular(status)) return {};
    return file;
}

}  // namespace Platform
