#include "Platform/Linux/Direct3D/FramePacer.h"

#include <gtest/gtest.h>

namespace {

using Platform::Direct3D::FramePacer;
using namespace std::chrono_literals;

class FramePacerTest : public testing::Test {
protected:
    ~FramePacerTest() override { CloseHandle(handle); }
    DWORD Wait(DWORD milliseconds) { return WaitForSingleObject(handle, milliseconds); }

    std::shared_ptr<FramePacer> pacer = std::make_shared<FramePacer>();
    HANDLE handle = Platform::AddHandle(pacer);
};

TEST_F(FramePacerTest, StartsWithOneSignal) {
    EXPECT_EQ(Wait(0), WAIT_OBJECT_0);
    EXPECT_EQ(Wait(30), WAIT_TIMEOUT);
}

TEST_F(FramePacerTest, TheNextSignalComesOnePeriodAfterTheLast) {
    const auto first = pacer->NextSignal();
    pacer->SetPeriod(1h);
    ASSERT_EQ(Wait(0), WAIT_OBJECT_0);
    pacer->FrameShown();
    EXPECT_EQ(pacer->NextSignal(), first + 1h);
}

TEST_F(FramePacerTest, AWaitEndsNoSoonerThanTheSignal) {
    pacer->SetPeriod(40ms);
    ASSERT_EQ(Wait(0), WAIT_OBJECT_0);
    pacer->FrameShown();
    const auto next = pacer->NextSignal();
    ASSERT_EQ(Wait(5000), WAIT_OBJECT_0);
    EXPECT_GE(FramePacer::Clock::now(), next);
}

TEST_F(FramePacerTest, TheRhythmDoesNotDriftWithTheWaits) {
    ASSERT_EQ(Wait(0), WAIT_OBJECT_0);
    pacer->FrameShown();
    const auto second = pacer->NextSignal();
    pacer->SetPeriod(1h);  // leaves the signal that is on its way alone
    EXPECT_EQ(pacer->NextSignal(), second);
    ASSERT_EQ(Wait(5000), WAIT_OBJECT_0);
    pacer->FrameShown();
    EXPECT_EQ(pacer->NextSignal(), second + 1h);
}

TEST_F(FramePacerTest, AnUntakenSignalStaysAndDoesNotDouble) {
    pacer->SetPeriod(1ms);
    pacer->FrameShown();
    pacer->FrameShown();
    EXPECT_EQ(Wait(0), WAIT_OBJECT_0);
    EXPECT_EQ(Wait(20), WAIT_TIMEOUT);
}

TEST_F(FramePacerTest, AFrameThatComesLateStartsTheRhythmAnew) {
    pacer->SetPeriod(1ms);
    ASSERT_EQ(Wait(0), WAIT_OBJECT_0);
    ASSERT_EQ(Wait(20), WAIT_TIMEOUT);
    const auto before = FramePacer::Clock::now();
    pacer->FrameShown();
    EXPECT_GE(pacer->NextSignal(), before);
    EXPECT_EQ(Wait(1000), WAIT_OBJECT_0);
}

TEST_F(FramePacerTest, AShorterPeriodEndsALongWait) {
    pacer->SetPeriod(1h);
    ASSERT_EQ(Wait(0), WAIT_OBJECT_0);
    pacer->FrameShown();
    EXPECT_EQ(Wait(10), WAIT_TIMEOUT);
    pacer->SetPeriod(1ms);
    EXPECT_EQ(Wait(5000), WAIT_OBJECT_0);
}

TEST_F(FramePacerTest, AHurryEndsALongWait) {
    pacer->SetPeriod(1h);
    ASSERT_EQ(Wait(0), WAIT_OBJECT_0);
    pacer->FrameShown();
    EXPECT_EQ(Wait(10), WAIT_TIMEOUT);
    pacer->Hurry();
    ASSERT_EQ(Wait(5000), WAIT_OBJECT_0);
    pacer->FrameShown();
    ASSERT_EQ(Wait(5000), WAIT_OBJECT_0);
    pacer->FrameShown();
    EXPECT_EQ(Wait(10), WAIT_TIMEOUT);
}

TEST_F(FramePacerTest, OutlivesItsOwnerInAHandle) {
    pacer.reset();
    EXPECT_EQ(Wait(0), WAIT_OBJECT_0);
}

TEST_F(FramePacerTest, AFrameThatIsGivenUpForInputSignalsAtOnce) {
    pacer->SetPeriod(1h);
    ASSERT_EQ(Wait(0), WAIT_OBJECT_0);
    EXPECT_FALSE(pacer->IsOutdated());
    pacer->Hurry();
    EXPECT_TRUE(pacer->IsOutdated());
    pacer->FrameGivenUp();
    EXPECT_EQ(Wait(5000), WAIT_OBJECT_0);
}

}  // namespace
