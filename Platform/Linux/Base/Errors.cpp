#include "Platform/Linux/Base/Errors.h"

namespace {

thread_local DWORD lastError = ERROR_SUCCESS;

}  // namespace

DWORD GetLastError() noexcept {
    return lastError;
}

void SetLastError(DWORD code) noexcept {
    lastError = code;
}

namespace Platform {

DWORD ErrorFromErrno(int number) noexcept {
    switch (number) {
        case 0:
            return ERROR_SUCCESS;
        case ENOENT:
            return ERROR_FILE_NOT_FOUND;
        case ENOTDIR:
            return ERROR_PATH_NOT_FOUND;
        case EMFILE:
        case ENFILE:
            return ERROR_TOO_MANY_OPEN_FILES;
        case EACCES:
        case EPERM:
        case EISDIR:
            return ERROR_ACCESS_DENIED;
        case EBADF:
            return ERROR_INVALID_HANDLE;
        case ENOMEM:
            return ERROR_NOT_ENOUGH_MEMORY;
        case EROFS:
            return ERROR_WRITE_PROTECT;
        case EWOULDBLOCK:
        case ETXTBSY:
            return ERROR_SHARING_VIOLATION;
        case EEXIST:
            return ERROR_FILE_EXISTS;
        case EINVAL:
            return ERROR_INVALID_PARAMETER;
        case ENOSPC:
        case EDQUOT:
            return ERROR_DISK_FULL;
        case EBUSY:
            return ERROR_BUSY;
        case ENOEXEC:
            return ERROR_BAD_EXE_FORMAT;
        case ENAMETOOLONG:
            return ERROR_FILENAME_EXCED_RANGE;
        case EIO:
            return ERROR_IO_DEVICE;
        case ELOOP:
            return ERROR_CANT_RESOLVE_FILENAME;
        default:
            return ERROR_GEN_FAILURE;
    }
}

}  // namespace Platform
