// What the render side is tested with: a window of the fake window system, fake devices, a log that can be read and a
// clock that the test moves. The loop is driven by hand, turn by turn, on the test's own thread.
#pragma once

#include "tests/fakes/FakeDxgi.h"
#include "tests/fakes/GraphicsTest.h"
#include "tests/fakes/LogCapture.h"
#include "tests/fakes/WindowSystem.h"
#include "Window/RenderLoop.h"
#include "Window/WindowState.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Tamborel {

/// A call without its arguments: "SwapChain2.Present1".
std::string NameOf(std::string_view call);
std::vector<std::string> NamesOf(const std::vector<std::string>& calls);

/// Initialises the DeviceManager with fakes.
class RenderTest : public Fakes::GraphicsTest {
protected:
    RenderTest();
    ~RenderTest() override;
    void TearDown() override;

    Fakes::WindowSystem& windows = Fakes::WindowSystem::Get();
    Fakes::LogCapture log;
};

/// With a loop that is set up on demand. Outer window 800 by 600 at (100, 200), client 798 by 598 at offset (1, 1).
class LoopTest : public RenderTest {
protected:
    LoopTest();
    ~LoopTest() override;
    void TearDown() override;

    /// Sets the loop up and forgets the calls and the log of that.
    void SetUpLoop();
    /// One turn that must go on.
    void Turn();
    /// Turns until nothing is dirty any more, then forgets the calls.
    void Settle();
    /// Hands a geometry to the loop as the UI thread does.
    void Resize(const WindowGeometry& geometry);
    /// The names of the calls of one turn.
    std::vector<std::string> TurnCalls();

    /// The next readings of the loop's clock, in nanoseconds.
    static std::int64_t now;

    WindowState state;
    std::atomic<bool> stopRequested{false};
    HANDLE stopEvent;
    std::vector<bool> readies;
    std::unique_ptr<RenderLoop> loop;
};

}  // namespace Tamborel
