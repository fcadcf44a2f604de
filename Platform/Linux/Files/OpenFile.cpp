// Opening files.
#include "Platform/Linux/Base/Errors.h"
#include "Platform/Linux/Files/FileObject.h"
#include "Platform/Linux/Files/NameLookup.h"
#include "Platform/Linux/Files/RegularFile.h"

#include <fcntl.h>
#include <sys/file.h>

#include <new>
#include <string>

namespace Platform {

namespace {

struct Opened {
    FileDescriptor file;  // Empty on failure, with errno set.
    bool existed = false;
};

FileDescriptor Create(const std::string& path, int flags) {
    return FileDescriptor(open(path.c_str(), flags | O_CREAT | O_NONBLOCK | O_CLOEXEC | O_NOCTTY,
                               S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH));
}

Opened OpenOrCreate(const std::string& path, int flags) {
    // Somebody may create or remove the file between two calls; a few turns get past that.
    for (int turn = 0; turn < 8; ++turn) {
        if (FileDescriptor file = OpenRegularFile(AT_FDCWD, path, flags)) return {std::move(file), true};
        if (errno != ENOENT) return {};
        if (FileDescriptor file = Create(path, flags | O_EXCL)) return {std::move(file), false};
        if (errno != EEXIST) return {};
    }
    // What is there and yet isn't there is a link to nothing: the file is made where it leads.
    return {Create(path, flags), false};
}

Opened Open(const std::string& path, DWORD disposition, int flags) {
    switch (disposition) {
        case CREATE_NEW:
            return {Create(path, flags | O_EXCL), false};
        case CREATE_ALWAYS:
        case OPEN_ALWAYS:
            return OpenOrCreate(path, flags);
        default:
            return {OpenRegularFile(AT_FDCWD, path, flags), true};
    }
}

bool LockAtOnce(int file) {
    while (flock(file, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EINTR) return false;
    }
    return true;
}

/// Tells a missing folder from a missing file, as callers on Windows are told.
DWORD MissingOrError(const std::string& path, int number) {
    if (number != ENOENT) return ErrorFromErrno(number);
    const std::size_t name = path.find_last_not_of('/');
    const std::size_t separator = name == std::string::npos ? name : path.rfind('/', name);
    if (separator == std::string::npos) return ERROR_FILE_NOT_FOUND;
    struct stat folder;
    const bool folderExists = stat(path.substr(0, separator + 1).c_str(), &folder) == 0;
    return folderExists ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
}

int OpenFlags(DWORD access, DWORD disposition) {
    const bool write = (access & GENERIC_WRITE) != 0 || disposition == CREATE_ALWAYS;  // which empties the file
    if (!write) return O_RDONLY;
    return (access & GENERIC_READ) != 0 ? O_RDWR : O_WRONLY;
}

bool AreValid(LPCWSTR name, DWORD access, DWORD disposition) {
    if (!name || disposition < CREATE_NEW || disposition > TRUNCATE_EXISTING) return false;
    return disposition != TRUNCATE_EXISTING || (access & GENERIC_WRITE) != 0;
}

HANDLE FailOpen(DWORD code) {
    SetLastError(code);
    return INVALID_HANDLE_VALUE;
}

}  // namespace

}  // namespace Platform

HANDLE CreateFileW(LPCWSTR name, DWORD access, DWORD shareMode, LPSECURITY_ATTRIBUTES attributes, DWORD disposition,
                   DWORD, HANDLE) noexcept try {
    using namespace Platform;
    if (!AreValid(name, access, disposition)) return FailOpen(ERROR_INVALID_PARAMETER);
    if (!*name) return FailOpen(ERROR_PATH_NOT_FOUND);

    const std::string path = NativePath(name);
    Opened opened = Open(path, disposition, OpenFlags(access, disposition));
    if (!opened.file) return FailOpen(MissingOrError(path, errno));
    if (shareMode == 0 && !LockAtOnce(opened.file.Get())) return FailOpen(ErrorFromErrno(errno));
    // Only now: a file that somebody else has locked must keep its content.
    const bool empties = disposition == TRUNCATE_EXISTING || (disposition == CREATE_ALWAYS && opened.existed);
    if (empties && ftruncate(opened.file.Get(), 0) != 0) return FailOpen(ErrorFromErrno(errno));

    const bool inheritable = attributes && attributes->bInheritHandle;
    const HANDLE handle = AddHandle(std::make_shared<FileObject>(std::move(opened.file), access),
                                    inheritable ? Inherit::Yes : Inherit::No);
    if (!handle) return INVALID_HANDLE_VALUE;
    if (disposition == CREATE_ALWAYS || disposition == OPEN_ALWAYS) {
        SetLastError(opened.existed ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
    }
    return handle;
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return INVALID_HANDLE_VALUE;
}

DWORD GetFileAttributesW(LPCWSTR name) noexcept try {
    using namespace Platform;
    if (!name || !*name) {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return INVALID_FILE_ATTRIBUTES;
    }
    const std::string path = NativePath(name);
    struct stat status;
    if (stat(path.c_str(), &status) != 0) {
        SetLastError(MissingOrError(path, errno));
        return INVALID_FILE_ATTRIBUTES;
    }
    if (S_ISDIR(status.st_mode)) return FILE_ATTRIBUTE_DIRECTORY;
    const bool writable = (status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) != 0;
    return writable ? FILE_ATTRIBUTE_NORMAL : FILE_ATTRIBUTE_READONLY;
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return INVALID_FILE_ATTRIBUTES;
}
