#pragma once

#include <unistd.h>

#include <utility>

namespace Platform {

/// Move-only owner of a file descriptor; -1 is the empty state.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) noexcept : descriptor_(descriptor) {}
    ~FileDescriptor() { Reset(); }
    FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(other.Release()) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        if (this != &other) Reset(other.Release());
        return *this;
    }

    int Get() const noexcept { return descriptor_; }
    explicit operator bool() const noexcept { return descriptor_ >= 0; }

    /// Gives the descriptor up to the caller.
    [[nodiscard]] int Release() noexcept { return std::exchange(descriptor_, -1); }

    /// Closes the descriptor and owns `descriptor` from now on. errno stays as it was.
    void Reset(int descriptor = -1) noexcept;

private:
    int descriptor_ = -1;
};

}  // namespace Platform
