#include "launcher/GameLaunch/Handle.h"
#include "launcher/GameLaunch/StateFolder.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

using namespace GameLaunch;

TEST(WindowsInstallationLock, DeletingTheFileWhileTheLockIsHeldIsRefused) {
    const TemporaryFolder folder;
    const ScopedEnvironment data(L"LOCALAPPDATA", folder.Path().wstring());
    const Handle lock(TakeInstallationLock(folder.Path()));
    ASSERT_NE(lock.Process, INVALID_HANDLE_VALUE);
    std::error_code error;
    EXPECT_FALSE(fs::remove(LockFileFor(folder.Path()), error));
    EXPECT_TRUE(error);
    EXPECT_TRUE(fs::exists(LockFileFor(folder.Path())));
}

TEST(WindowsInstallationLock, HandleIsInheritable) {
    const TemporaryFolder folder;
    const ScopedEnvironment data(L"LOCALAPPDATA", folder.Path().wstring());
    const Handle lock(TakeInstallationLock(folder.Path()));
    DWORD flags = 0;
    ASSERT_TRUE(GetHandleInformation(lock.Process, &flags));
    EXPECT_EQ(flags & HANDLE_FLAG_INHERIT, DWORD{HANDLE_FLAG_INHERIT});
}

}  // namespace
