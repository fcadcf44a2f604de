#pragma once

#include "Platform/Linux/Base/FileDescriptor.h"
#include "Platform/Linux/Base/Handle.h"

#include <utility>

namespace Platform {

/// An open regular file. Its descriptor is what a process start passes on, together with the lock that may lie on it.
class FileObject : public HandleObject {
public:
    /// `access` is what the file was opened for: GENERIC_READ, GENERIC_WRITE, both or neither.
    FileObject(FileDescriptor file, DWORD access) noexcept : file_(std::move(file)), access_(access) {}

    int Descriptor() const noexcept { return file_.Get(); }
    bool Allows(DWORD access) const noexcept { return (access_ & access) == access; }
    int PassedDescriptor() const noexcept override { return file_.Get(); }

private:
    const FileDescriptor file_;
    const DWORD access_;
};

}  // namespace Platform
