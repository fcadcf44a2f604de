#include "Platform/Linux/Base/FileDescriptor.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <type_traits>

using Platform::FileDescriptor;

static_assert(!std::is_copy_constructible_v<FileDescriptor> && !std::is_copy_assignable_v<FileDescriptor>);
static_assert(std::is_nothrow_move_constructible_v<FileDescriptor> &&
              std::is_nothrow_move_assignable_v<FileDescriptor>);

namespace {

int OpenNull() {
    return open("/dev/null", O_RDONLY | O_CLOEXEC);
}
bool IsOpen(int descriptor) {
    return fcntl(descriptor, F_GETFD) != -1;
}

}  // namespace

TEST(FileDescriptor, StartsEmpty) {
    const FileDescriptor empty;
    EXPECT_FALSE(empty);
    EXPECT_EQ(empty.Get(), -1);
}

TEST(FileDescriptor, ClosesAtItsEnd) {
    const int descriptor = OpenNull();
    {
        const FileDescriptor owner(descriptor);
        EXPECT_TRUE(owner);
        EXPECT_EQ(owner.Get(), descriptor);
        EXPECT_TRUE(IsOpen(descriptor));
    }
    EXPECT_FALSE(IsOpen(descriptor));
}

TEST(FileDescriptor, ReleaseGivesTheDescriptorUpAndLeavesTheOwnerEmpty) {
    FileDescriptor owner(OpenNull());
    const int descriptor = owner.Release();
    EXPECT_FALSE(owner);
    owner.Reset();
    EXPECT_TRUE(IsOpen(descriptor));
    close(descriptor);
}

TEST(FileDescriptor, MovingLeavesTheSourceEmptyAndClosesWhatTheTargetOwned) {
    FileDescriptor source(OpenNull());
    FileDescriptor target(OpenNull());
    const int moved = source.Get();
    const int replaced = target.Get();
    target = std::move(source);
    EXPECT_EQ(target.Get(), moved);
    // The empty state is promised.
    EXPECT_EQ(source.Get(), -1);  // NOLINT(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
    EXPECT_FALSE(IsOpen(replaced));
    EXPECT_TRUE(IsOpen(moved));
}

TEST(FileDescriptor, ClosingKeepsErrno) {
    FileDescriptor invalid(1 << 20);  // close fails with EBADF
    errno = ENOSPC;
    invalid.Reset();
    EXPECT_EQ(errno, ENOSPC);
}
