#include "Platform/Linux/Base/Handle.h"

#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <thread>
#include <vector>

using namespace Platform;

namespace {

class Counted : public HandleObject {
public:
    explicit Counted(std::atomic<int>& alive) : alive_(alive) { ++alive_; }
    ~Counted() override { --alive_; }

private:
    std::atomic<int>& alive_;
};

class Other : public HandleObject {};

const std::vector<HANDLE> madeUp{nullptr, INVALID_HANDLE_VALUE, reinterpret_cast<HANDLE>(0x10),
                                 reinterpret_cast<HANDLE>(0xDEADBEEF)};

}  // namespace

TEST(Handle, TheObjectGoesWithItsHandle) {
    std::atomic<int> alive{0};
    const HANDLE handle = AddHandle(std::make_shared<Counted>(alive));
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(alive, 1);
    EXPECT_TRUE(CloseHandle(handle));
    EXPECT_EQ(alive, 0);
}

TEST(Handle, AnObjectInUseOutlivesItsHandle) {
    std::atomic<int> alive{0};
    const HANDLE handle = AddHandle(std::make_shared<Counted>(alive));
    std::shared_ptr<Counted> used = FindHandle<Counted>(handle);
    EXPECT_TRUE(CloseHandle(handle));
    EXPECT_EQ(alive, 1);
    used.reset();
    EXPECT_EQ(alive, 0);
}

TEST(Handle, AClosedHandleIsInvalidAndItsValueNeverComesBack) {
    std::set<HANDLE> seen;
    for (int i = 0; i < 1000; ++i) {
        const HANDLE handle = AddHandle(std::make_shared<Other>());
        EXPECT_TRUE(seen.insert(handle).second);
        EXPECT_TRUE(CloseHandle(handle));
        SetLastError(ERROR_SUCCESS);
        EXPECT_FALSE(CloseHandle(handle));
        EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    }
}

TEST(Handle, AMadeUpHandleIsInvalidAndNothingCrashes) {
    for (const HANDLE handle : madeUp) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_FALSE(CloseHandle(handle));
        EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(WaitForSingleObject(handle, 0), WAIT_FAILED);
        EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
        SetLastError(ERROR_SUCCESS);
        EXPECT_FALSE(SetEvent(handle));
        EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
        EXPECT_FALSE(ResetEvent(handle));
        EXPECT_FALSE(IsInheritable(handle));
    }
}

TEST(Handle, AHandleOfAnotherKindIsInvalid) {
    const HANDLE handle = AddHandle(std::make_shared<Other>());
    EXPECT_EQ(FindHandle<Counted>(handle), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    EXPECT_NE(FindHandle<Other>(handle), nullptr);
    SetLastError(ERROR_SUCCESS);
    EXPECT_FALSE(SetEvent(handle));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    CloseHandle(handle);
}

TEST(Handle, AnObjectThatCannotBeWaitedForFailsTheWait) {
    const HANDLE handle = AddHandle(std::make_shared<Other>());
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(WaitForSingleObject(handle, INFINITE), WAIT_FAILED);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    CloseHandle(handle);
}

TEST(Handle, InheritanceIsAPropertyOfTheHandle) {
    const HANDLE plain = AddHandle(std::make_shared<Other>());
    const HANDLE inheritable = AddHandle(std::make_shared<Other>(), Inherit::Yes);
    EXPECT_FALSE(IsInheritable(plain));
    EXPECT_TRUE(IsInheritable(inheritable));
    CloseHandle(inheritable);
    EXPECT_FALSE(IsInheritable(inheritable));
    CloseHandle(plain);
}

TEST(Handle, ThreadsMakeFindAndCloseHandlesAtOnce) {
    std::atomic<int> alive{0};
    std::atomic<int> lost{0};
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            for (int i = 0; i < 2000; ++i) {
                const HANDLE handle = AddHandle(std::make_shared<Counted>(alive));
                if (!FindHandle<Counted>(handle) || !CloseHandle(handle) || FindHandle<Counted>(handle)) ++lost;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(lost, 0);
    EXPECT_EQ(alive, 0);
}

TEST(Handle, OfManyThreadsThatCloseOneHandleExactlyOneDoes) {
    for (int round = 0; round < 200; ++round) {
        const HANDLE handle = AddHandle(std::make_shared<Other>());
        std::atomic<int> closed{0};
        std::vector<std::thread> threads;
        threads.reserve(3);
        for (int i = 0; i < 3; ++i) {
            threads.emplace_back([&] {
                if (CloseHandle(handle)) ++closed;
            });
        }
        for (std::thread& thread : threads) thread.join();
        ASSERT_EQ(closed, 1);
    }
}
