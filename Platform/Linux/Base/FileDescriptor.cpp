#include "Platform/Linux/Base/FileDescriptor.h"

#include <cerrno>

namespace Platform {

void FileDescriptor::Reset(int descriptor) noexcept {
    const int old = std::exchange(descriptor_, descriptor);
    if (old < 0) return;
    const int number = errno;
    // Not repeated on EINTR: Linux has closed the descriptor by then, and its number may be another thread's
    // (close(2)).
    close(old);
    errno = number;
}

}  // namespace Platform
