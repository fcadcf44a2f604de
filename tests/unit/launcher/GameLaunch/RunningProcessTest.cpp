#include "launcher/GameLaunch/DriverInstall.h"
#include "Platform/Interface/Paths.h"
#include "RunningProgram.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <intrin.h>

namespace {

using namespace GameLaunch;

class RunningProcess : public testing::Test {
protected:
    TemporaryFolder folder_;
};

TEST_F(RunningProcess, ProgramOfThatPathIsFound) {
    const RunningProgram program(folder_ / "quake2.exe");
    const auto found = FindRunningProcess(folder_ / "quake2.exe", 0);
    ASSERT_TRUE(found);
    EXPECT_EQ(WaitForSingleObject(found->Process, 0), DWORD{WAIT_TIMEOUT});
}

TEST_F(RunningProcess, NothingIsFoundWhereNothingRuns) {
    EXPECT_FALSE(FindRunningProcess(folder_ / "quake2.exe", 0));
}

TEST_F(RunningProcess, ProgramOfThatNameElsewhereBlocksNothing) {
    const RunningProgram program(folder_ / "elsewhere" / "quake2.exe");
    EXPECT_FALSE(FindRunningProcess(folder_ / "quake2.exe", 0));
}

TEST_F(RunningProcess, ProgramOfAnotherNameIsNotFoundByItsPath) {
    const RunningProgram program(folder_ / "quake3.exe");
    EXPECT_FALSE(FindRunningProcess(folder_ / "quake3.exe", 0));
}

TEST_F(RunningProcess, PathAndNameMatchWithoutRegardToCase) {
    const RunningProgram program(folder_ / Platform::PathFromText(L"Spiele \u00C4") / "Quake2.EXE");
    EXPECT_TRUE(FindRunningProcess(folder_ / Platform::PathFromText(L"SPIELE \u00E4") / "quake2.exe", 0));
}

TEST_F(RunningProcess, PathIsComparedAsTextWithoutResolving) {
    const RunningProgram program(folder_ / "Game" / "quake2.exe");
    EXPECT_FALSE(FindRunningProcess(folder_ / "Game" / ".." / "Game" / "quake2.exe", 0));
}

TEST_F(RunningProcess, ExcludedProcessIsPassedOver) {
    const RunningProgram program(folder_ / "quake2.exe");
    EXPECT_FALSE(FindRunningProcess(folder_ / "quake2.exe", program.Id()));
    EXPECT_TRUE(FindRunningProcess(folder_ / "quake2.exe", program.Id() + 1));
}

TEST_F(RunningProcess, ProcessThatHasEndedDoesNotCount) {
    RunningProgram program(folder_ / "quake2.exe");
    ASSERT_TRUE(FindRunningProcess(folder_ / "quake2.exe", 0));
    program.End();
    EXPECT_FALSE(FindRunningProcess(folder_ / "quake2.exe", 0));
}

TEST(Processor, Sse41AgreesWithTheCompilersOwnTest) {
    EXPECT_EQ(HasSse41(), __builtin_cpu_supports("sse4.1") != 0);
}

}  // namespace
