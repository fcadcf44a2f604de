#include "launcher/GameLaunch/CommandLine.h"

#include <gtest/gtest.h>

namespace {

using namespace GameLaunch;

TEST(CommandLine, DefaultChoices) {
    EXPECT_EQ(
        BuildCommandLine(true, 4, true, false),
        L"quake2.exe +set vid_ref gl +set gl_driver KVR2.dll +set gl_mode 4 +set vid_fullscreen 1 +set logfile 1");
}

TEST(CommandLine, ClassicDriverInAWindow) {
    EXPECT_EQ(BuildCommandLine(false, 9, false, false),
              L"quake2.exe +set vid_ref gl +set gl_driver KVR.dll +set gl_mode 9 +set vid_fullscreen 0 +set logfile 1");
}

TEST(CommandLine, ModeZeroIsTheSingleDigitZero) {
    EXPECT_EQ(BuildCommandLine(false, 0, true, false),
              L"quake2.exe +set vid_ref gl +set gl_driver KVR.dll +set gl_mode 0 +set vid_fullscreen 1 +set logfile 1");
}

TEST(CommandLine, SmokeRunLoadsAMapWaitsTwentyFramesAndQuits) {
    EXPECT_EQ(BuildCommandLine(true, 4, true, true),
              L"quake2.exe +set vid_ref gl +set gl_driver KVR2.dll +set gl_mode 4 +set vid_fullscreen 1 +set logfile 1"
              L" +set fixedtime 100 +map base1"
              L" +wait +wait +wait +wait +wait +wait +wait +wait +wait +wait"
              L" +wait +wait +wait +wait +wait +wait +wait +wait +wait +wait"
              L" +screenshot +wait +quit");
}

TEST(CommandLine, DriverFileNames) {
    EXPECT_EQ(DriverFileName(true), L"KVR2.dll");
    EXPECT_EQ(DriverFileName(false), L"KVR.dll");
}

TEST(EndMessage, ExitCodeZeroIsAnOrdinaryEnd) {
    EXPECT_EQ(EndMessage(0), L"Quake II closed.");
}

TEST(EndMessage, ExitCodeOneIsNamed) {
    EXPECT_EQ(EndMessage(1), L"Quake II exited with error 1. See baseq2/qconsole.log in the game folder.");
}

TEST(EndMessage, AccessViolationIsNamedInFullUnsigned32Bits) {
    EXPECT_EQ(EndMessage(0xC0000005),
              L"Quake II exited with error 3221225477. See baseq2/qconsole.log in the game folder.");
}

}  // namespace
