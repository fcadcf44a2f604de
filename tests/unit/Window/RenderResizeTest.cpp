#include "RenderTest.h"
#include "Scene/SceneNode.h"

namespace Tamborel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr WindowGeometry kLarger{.clientWidth = 898,
                                 .clientHeight = 698,
                                 .clientOffsetX = 3,
                                 .clientOffsetY = 4,
                                 .windowWidth = 900,
                                 .windowHeight = 700};
constexpr WindowGeometry kCollapsed{.clientWidth = 0,
                                    .clientHeight = 0,
                                    .clientOffsetX = 1,
                                    .clientOffsetY = 1,
                                    .windowWidth = 300,
                                    .windowHeight = 36};

using ResizeTest = LoopTest;

TEST_F(ResizeTest, NewGeometryReachesSurfacesAndTreeBeforeOneCommit) {
    SetUpLoop();
    Settle();
    Resize(kLarger);
    Turn();
    std::vector<std::string> marks;
    for (const std::string& call : recorder.Calls()) {
        for (const char* mark : {".ResizeBuffers", ".SetOffset", ".Present1", ".Commit"}) {
            if (NameOf(call).find(mark) != std::string::npos) marks.push_back(call.substr(0, call.find(", 0x0")));
        }
    }
    EXPECT_THAT(marks, ElementsAre("SwapChain.ResizeBuffers(0, 900, 700, 0, 0x40)",
                                   "SwapChain2.ResizeBuffers(0, 898, 698, 0, 0x40)", "Visual3.SetOffsetX(3)",
                                   "Visual3.SetOffsetY(4)", "SwapChain.Present1(1", "SwapChain2.Present1(1",
                                   "CompositionDevice.Commit()"));
    EXPECT_FALSE(state.ResizePending);
    EXPECT_THAT(TurnCalls(), ElementsAre());
}

TEST_F(ResizeTest, FailedResizeOfASurfaceDoesNotEndTheLoop) {
    SetUpLoop();
    Settle();
    recorder.FailAlways("ResizeBuffers", E_OUTOFMEMORY);
    Resize(kLarger);
    Turn();
    EXPECT_THAT(log.Text(), HasSubstr("  expr : SwapChain->ResizeBuffers( 0,"));
}

TEST_F(ResizeTest, CollapsedWindowDrawsOnlyItsFrameAndDoesNotWaitForTheClient) {
    SetUpLoop();
    Settle();
    Resize(kCollapsed);
    std::vector<std::string> calls = TurnCalls();
    EXPECT_THAT(calls, Contains("SwapChain.Present1"));
    EXPECT_THAT(calls, Not(Contains("SwapChain2.Present1")));
    EXPECT_THAT(calls, Not(Contains("SwapChain2.ResizeBuffers")));
    // Though the client stays dirty, its surface is neither waited for nor drawn; the frame goes on working.
    state.HoverZone = 0;
    calls = TurnCalls();
    EXPECT_THAT(calls, Contains("SwapChain.Present1"));
    EXPECT_THAT(calls, Not(Contains("SwapChain2.Present1")));
    EXPECT_THAT(TurnCalls(), ElementsAre());
}

TEST_F(ResizeTest, OneDimensionWithoutSizeIsACollapsedClientToo) {
    SetUpLoop();
    Settle();
    WindowGeometry flat = kLarger;
    flat.clientHeight = 0;
    Resize(flat);
    EXPECT_THAT(TurnCalls(), Not(Contains("SwapChain2.Present1")));
}

// The client surface's permit is taken when a resize begins. If there is then no client to draw, no present brings
// another one, and a second wait would never end.
TEST_F(ResizeTest, CollapsedWindowThatGrowsAgainDoesNotWaitTwiceForOnePermit) {
    Fakes::SignalFrameOnPresent(false);
    SetUpLoop();
    Settle();
    Fakes::SignalFrame();
    Resize(kCollapsed);
    Turn();
    Fakes::SignalFrame();
    Resize(kLarger);
    EXPECT_THAT(TurnCalls(), Contains("SwapChain2.Present1"));
    // So the client's second permit is still there, and the frame's is not.
    SetEvent(stopEvent);  // a wait that would hang ends with this
    state.ClientDirty = true;
    EXPECT_TRUE(loop->RenderFrame());
    SetEvent(stopEvent);
    state.FrameDirty = true;
    EXPECT_FALSE(loop->RenderFrame());
}

TEST_F(ResizeTest, SizeLoopDrawsEveryTurnReadsBackAndCounts) {
    SetUpLoop();
    Settle();
    state.InSizeMove = true;
    Turn();
    loop->CountFrame();
    EXPECT_EQ(state.FrameCounter, 1U);
    EXPECT_EQ(loop->Counters.ReadBacks, 1U);
    const std::vector<std::string> calls = recorder.Calls();
    EXPECT_EQ(recorder.Last("CopySubresourceRegion"),
              "ImmediateContext.CopySubresourceRegion(Texture, 0, 0, 0, 0, BackBuffer, 0, {0, 0, 0, 1, 1, 1})");
    std::vector<std::string> names = NamesOf(calls);
    ASSERT_GE(names.size(), 5U);
    names.erase(names.begin(), names.end() - 5);
    EXPECT_THAT(names,
                ElementsAre("CompositionDevice.Commit", "SwapChain.GetBuffer", "ImmediateContext.CopySubresourceRegion",
                            "ImmediateContext.Map", "ImmediateContext.Unmap"));
    // The tick lies ready: a wait for it ends at once.
    state.FrameTickEvent.Wait(0);
    EXPECT_THAT(TurnCalls(), Contains("SwapChain2.Present1"));
}

TEST_F(ResizeTest, OutsideASizeLoopNothingIsCountedOrReadBack) {
    SetUpLoop();
    Turn();
    loop->CountFrame();
    EXPECT_EQ(state.FrameCounter, 0U);
    EXPECT_EQ(recorder.Count("CopySubresourceRegion"), 0U);
}

TEST_F(ResizeTest, BeginAndEndOfASizeLoopRedrawEverything) {
    SetUpLoop();
    Settle();
    state.InSizeMove = true;
    std::vector<std::string> calls = TurnCalls();
    EXPECT_THAT(calls, Contains("SwapChain.Present1"));
    EXPECT_THAT(calls, Contains("SwapChain2.Present1"));
    calls = TurnCalls();
    EXPECT_THAT(calls, Not(Contains("SwapChain.Present1")));
    EXPECT_THAT(calls, Contains("SwapChain2.Present1"));
    state.InSizeMove = false;
    calls = TurnCalls();
    EXPECT_THAT(calls, Contains("SwapChain.Present1"));
    EXPECT_THAT(calls, Contains("SwapChain2.Present1"));
    EXPECT_THAT(TurnCalls(), ElementsAre());
}

TEST_F(ResizeTest, FailedReadBackIsIgnored) {
    SetUpLoop();
    Settle();
    recorder.FailAlways("ImmediateContext.Map", E_FAIL);
    state.InSizeMove = true;
    Turn();
    EXPECT_EQ(loop->Counters.ReadBacks, 0U);
    EXPECT_EQ(recorder.Count("ImmediateContext.Unmap"), 0U);
    EXPECT_EQ(log.Text(), "");
}

}  // namespace
}  // namespace Tamborel
