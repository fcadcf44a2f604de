#include "Core/Log.h"

#include "tests/fakes/LogCapture.h"

#include <gtest/gtest.h>

#include <string>

TEST(Log, TextGoesToTheDebugStreamAsItIs) {
    Fakes::LogCapture capture;
    Tamborel::Log("[Tamborel] a line with 100%s in it.\n");
    EXPECT_EQ(capture.Text(), "[Tamborel] a line with 100%s in it.\n");
}

TEST(Log, LogfFormats) {
    Fakes::LogCapture capture;
    Tamborel::Logf("[Tamborel] %d of %s\n", 3, "four");
    EXPECT_EQ(capture.Text(), "[Tamborel] 3 of four\n");
}

TEST(Log, LogfKeepsALineOf1023CharactersWhole) {
    Fakes::LogCapture capture;
    const std::string line(1023, 'x');
    Tamborel::Logf("%s", line.c_str());
    EXPECT_EQ(capture.Text(), line);
}

TEST(Log, LogfCutsALongerLineTo1023Characters) {
    Fakes::LogCapture capture;
    const std::string line = std::string(1023, 'x') + "yz";
    Tamborel::Logf("%s", line.c_str());
    EXPECT_EQ(capture.Text(), std::string(1023, 'x'));
}

TEST(Log, CloseLogWithoutAnOpenFileWritesNothingAtAll) {
    Fakes::LogCapture capture;
    Tamborel::CloseLog();
    EXPECT_EQ(capture.Text(), "");
}

TEST(Log, ClaudeModeIsOffAtStart) {
    EXPECT_FALSE(Tamborel::IsClaudeMode());
}
