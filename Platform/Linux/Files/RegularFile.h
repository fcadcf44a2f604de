#pragma once

#include "Platform/Linux/Base/FileDescriptor.h"

#include <sys/stat.h>

#include <string>

namespace Platform {

/// Opens a regular file with the flags of open(2), relative to the folder `folder` (AT_FDCWD for the working
/// directory). Anything else than a regular file is left alone, since opening a FIFO or a device alone may block or
/// have effects. Empty with errno set on failure: EISDIR for a folder, EACCES for another thing that is no regular
/// file.
FileDescriptor OpenRegularFile(int folder, const std::string& path, int flags);

/// Whether what was asked about is a regular file; else errno is set as OpenRegularFile does.
bool CheckRegular(const struct stat& status) noexcept;

}  // namespace Platform
