// What is done with an open file.
#include "Platform/Linux/Base/Errors.h"
#include "Platform/Linux/Files/FileObject.h"

#include <sys/stat.h>
#include <unistd.h>

namespace {

/// The file of a handle that was opened for `access`; null with the last error set.
std::shared_ptr<Platform::FileObject> FileFor(HANDLE handle, DWORD access) {
    auto file = Platform::FindHandle<Platform::FileObject>(handle);
    if (!file || file->Allows(access)) return file;
    SetLastError(ERROR_ACCESS_DENIED);
    return nullptr;
}

/// Repeats a call that moves `size` bytes in one or several steps until all is moved, it moves none or it fails.
template <class Step>
BOOL MoveAll(DWORD size, DWORD& moved, Step step) {
    while (moved < size) {
        const ssize_t count = step(moved, size - moved);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return Platform::FailFromErrno();
        if (count == 0) break;
        moved += static_cast<DWORD>(count);
    }
    return TRUE;
}

}  // namespace

BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD size, LPDWORD read, LPOVERLAPPED overlapped) noexcept {
    if (!read || overlapped || (!buffer && size != 0)) return Platform::Fail(ERROR_INVALID_PARAMETER);
    *read = 0;
    const auto object = FileFor(file, GENERIC_READ);
    if (!object) return FALSE;
    return MoveAll(size, *read, [&](DWORD offset, DWORD count) {
        return ::read(object->Descriptor(), static_cast<char*>(buffer) + offset, count);
    });
}

BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD size, LPDWORD written, LPOVERLAPPED overlapped) noexcept {
    if (!written || overlapped || (!buffer && size != 0)) return Platform::Fail(ERROR_INVALID_PARAMETER);
    *written = 0;
    const auto object = FileFor(file, GENERIC_WRITE);
    if (!object) return FALSE;
    return MoveAll(size, *written, [&](DWORD offset, DWORD count) {
        return ::write(object->Descriptor(), static_cast<const char*>(buffer) + offset, count);
    });
}

BOOL FlushFileBuffers(HANDLE file) noexcept {
    const auto object = FileFor(file, GENERIC_WRITE);
    if (!object) return FALSE;
    return fsync(object->Descriptor()) == 0 ? TRUE : Platform::FailFromErrno();
}

BOOL GetFileSizeEx(HANDLE file, PLARGE_INTEGER size) noexcept {
    if (!size) return Platform::Fail(ERROR_INVALID_PARAMETER);
    const auto object = FileFor(file, 0);
    if (!object) return FALSE;
    struct stat status;
    if (fstat(object->Descriptor(), &status) != 0) return Platform::FailFromErrno();
    size->QuadPart = status.st_size;
    return TRUE;
}

BOOL SetFilePointerEx(HANDLE file, LARGE_INTEGER distance, PLARGE_INTEGER newPointer, DWORD method) noexcept {
    static_assert(FILE_BEGIN == SEEK_SET && FILE_CURRENT == SEEK_CUR && FILE_END == SEEK_END);
    const auto object = FileFor(file, 0);
    if (!object) return FALSE;
    if (method > FILE_END) return Platform::Fail(ERROR_INVALID_PARAMETER);
    const off_t position = lseek(object->Descriptor(), distance.QuadPart, static_cast<int>(method));
    if (position < 0) return Platform::FailFromErrno();
    if (newPointer) newPointer->QuadPart = position;
    return TRUE;
}
