// The frame of a test with graphics fakes.
#pragma once

#include "tests/fakes/Recorder.h"

#include <gtest/gtest.h>

namespace Fakes {

/// Starts each test with an empty record and ends it with the check that no object is left.
class GraphicsTest : public ::testing::Test {
protected:
    GraphicsTest() { recorder.Reset(); }
    ~GraphicsTest() override { recorder.Reset(); }

    void TearDown() override { EXPECT_EQ(recorder.Live(), std::vector<std::string>{}) << "objects are left"; }

    Recorder& recorder = Recorder::Get();
};

}  // namespace Fakes
