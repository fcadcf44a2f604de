#include "Platform/Linux/Base/Handle.h"
#include "Platform/Linux/Base/PutOffWork.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <thread>

namespace {

using Platform::PutOffWork;

class PutOffWorkTest : public testing::Test {
protected:
    ~PutOffWorkTest() override { CloseHandle(event_); }

    DWORD Sleep() const { return WaitForSingleObject(event_, 1); }
    const Platform::HandleObject* Object() const { return Platform::FindHandleObject(event_).get(); }

    const HANDLE event_ = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    int done_ = 0;
};

TEST_F(PutOffWorkTest, IsDoneOnceBeforeTheThreadSleeps) {
    PutOffWork work(nullptr, [this] { ++done_; });
    EXPECT_EQ(done_, 0);
    EXPECT_EQ(Sleep(), WAIT_TIMEOUT);
    EXPECT_EQ(done_, 1);
    Sleep();
    EXPECT_EQ(done_, 1);
}

TEST_F(PutOffWorkTest, StaysPutOffByAWaitThatNeedNotSleep) {
    PutOffWork work(nullptr, [this] { ++done_; });
    SetEvent(event_);
    EXPECT_EQ(Sleep(), WAIT_OBJECT_0);
    EXPECT_EQ(done_, 0);
}

TEST_F(PutOffWorkTest, StaysPutOffByAWaitThatOnlyLooks) {
    PutOffWork work(nullptr, [this] { ++done_; });
    EXPECT_EQ(WaitForSingleObject(event_, 0), WAIT_TIMEOUT);
    EXPECT_EQ(done_, 0);
}

TEST_F(PutOffWorkTest, IsDoneByAWaitForAllOfWhichItsObjectIsOne) {
    PutOffWork work(Object(), [this] { ++done_; });
    SetEvent(event_);
    const HANDLE other = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    const HANDLE both[] = {other, event_};
    EXPECT_EQ(WaitForMultipleObjects(2, both, TRUE, 1), WAIT_TIMEOUT);
    EXPECT_EQ(done_, 1);
    CloseHandle(other);
}

TEST_F(PutOffWorkTest, StaysPutOffWhileItsObjectIsWaitedFor) {
    PutOffWork work(Object(), [this] { ++done_; });
    Sleep();
    EXPECT_EQ(done_, 0);
    const HANDLE other = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    const HANDLE both[] = {other, event_};
    EXPECT_EQ(WaitForMultipleObjects(2, both, FALSE, 1), WAIT_TIMEOUT);
    EXPECT_EQ(done_, 0);
    EXPECT_EQ(WaitForSingleObject(other, 1), WAIT_TIMEOUT);
    EXPECT_EQ(done_, 1);
    CloseHandle(other);
}

TEST_F(PutOffWorkTest, ThatSignalsWhatIsWaitedForEndsTheWait) {
    PutOffWork work(nullptr, [this] { SetEvent(event_); });
    EXPECT_EQ(WaitForSingleObject(event_, INFINITE), WAIT_OBJECT_0);
}

TEST_F(PutOffWorkTest, OfAnotherThreadIsNoneOfThisOnes) {
    PutOffWork work(nullptr, [this] { ++done_; });
    std::thread([this] { Sleep(); }).join();
    EXPECT_EQ(done_, 0);
}

TEST_F(PutOffWorkTest, IsForgottenWithItsObject) {
    {
        PutOffWork work(nullptr, [this] { ++done_; });
    }
    Sleep();
    EXPECT_EQ(done_, 0);
}

TEST_F(PutOffWorkTest, MayDestroyItself) {
    std::optional<PutOffWork> work;
    work.emplace(nullptr, [this, &work, kept = std::make_shared<int>(5)] {
        work.reset();
        done_ += *kept;
    });
    Sleep();
    EXPECT_EQ(done_, 5);
}

TEST_F(PutOffWorkTest, MaySleepItself) {
    PutOffWork outer(nullptr, [this] {
        ++done_;
        Sleep();
    });
    PutOffWork inner(nullptr, [this] { done_ += 10; });
    Sleep();
    EXPECT_EQ(done_, 11);
}

}  // namespace
