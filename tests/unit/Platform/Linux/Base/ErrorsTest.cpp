#include "Platform/Linux/Base/Errors.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <thread>

TEST(Errors, EachErrnoValueHasItsSystemCode) {
    const struct {
        int number;
        DWORD code;
    } expected[] = {
        {0, 0},         {ENOENT, 2},  {ENOTDIR, 3},        {EMFILE, 4},   {ENFILE, 4},    {EACCES, 5},
        {EPERM, 5},     {EISDIR, 5},  {EBADF, 6},          {ENOMEM, 8},   {EROFS, 19},    {EWOULDBLOCK, 32},
        {ETXTBSY, 32},  {EEXIST, 80}, {EINVAL, 87},        {ENOSPC, 112}, {EDQUOT, 112},  {EBUSY, 170},
        {ENOEXEC, 193}, {EIO, 1117},  {ENAMETOOLONG, 206}, {ELOOP, 1921}, {ENOTCONN, 31},
    };
    for (const auto& each : expected) EXPECT_EQ(Platform::ErrorFromErrno(each.number), each.code) << each.number;
}

TEST(Errors, TheLastErrorBelongsToItsThread) {
    SetLastError(ERROR_DISK_FULL);
    DWORD before = 1;
    DWORD after = 0;
    std::thread([&] {
        before = GetLastError();
        SetLastError(ERROR_BUSY);
        after = GetLastError();
    }).join();
    EXPECT_EQ(before, ERROR_SUCCESS);
    EXPECT_EQ(after, ERROR_BUSY);
    EXPECT_EQ(GetLastError(), ERROR_DISK_FULL);
}

TEST(Errors, FailingHelpersSetTheCodeAndGiveFalse) {
    EXPECT_EQ(Platform::Fail(ERROR_BUSY), FALSE);
    EXPECT_EQ(GetLastError(), ERROR_BUSY);
    errno = ENOSPC;
    EXPECT_EQ(Platform::FailFromErrno(), FALSE);
    EXPECT_EQ(GetLastError(), ERROR_DISK_FULL);
}
