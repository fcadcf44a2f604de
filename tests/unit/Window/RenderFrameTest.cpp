#include "Background/BackgroundRenderer.h"
#include "RenderTest.h"
#include "Scene/DrawContext.h"
#include "Scene/SceneNode.h"

#include <algorithm>
#include <functional>
#include <thread>

namespace Tamborel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr const char* kFramePass = "SwapChain.Present1";
constexpr const char* kClientPass = "SwapChain2.Present1";

// Counts what a turn asks of it.
class CountingNode : public SceneNode {
public:
    bool HitTest(Point) const override { return true; }
    void Update(float seconds) override {
        ++updates;
        lastSeconds = seconds;
        SceneNode::Update(seconds);
    }
    void Animate(float) override { ++animates; }
    void Prepare(DrawContext&) override { ++prepares; }
    void Draw(DrawContext&) override { ++draws; }

    int updates = 0;
    int animates = 0;
    int prepares = 0;
    int draws = 0;
    float lastSeconds = -1;
};

class FrameTest : public LoopTest {
protected:
    // The launcher's theme.
    void UseTheme(std::int32_t policy = 0) {
        ChromeTheme theme;
        theme.FrameWidth = 8.0F;
        theme.TitleHeight = 36.0F;
        theme.InnerBorderWidth = 1.0F;
        theme.MaximizedChromePolicy = policy;
        const std::lock_guard lock(state.Theme.Mutex);
        state.Theme.Effective = theme;
        state.Theme.Metrics = DeriveThemeMetrics(theme);
    }

    std::shared_ptr<CountingNode> AddNode() {
        auto node = std::make_shared<CountingNode>();
        loop->ClientRoot()->AddChild(node);
        return node;
    }

    void PushMove() {
        InputEvent event;
        event.kind = InputEventKind::PointerMove;
        event.x = 20;
        event.y = 60;
        ASSERT_TRUE(state.Input.Push(event));
    }
};

TEST_F(FrameTest, FirstFrameDrawsBothSurfacesAndCommitsOnce) {
    SetUpLoop();
    Turn();
    std::vector<std::string> names = NamesOf(recorder.Calls());
    std::erase_if(names, [](const std::string& name) { return name.starts_with("DeferredContext"); });
    // What the title bar paints, and what it makes for that, is between the Clear and the EndDraw of the first pass.
    const auto clear = std::ranges::find(names, "DrawingContext.Clear");
    const auto end = std::ranges::find(names, "DrawingContext.EndDraw");
    ASSERT_LT(clear, end);
    names.erase(clear + 1, end);
    EXPECT_THAT(names, ElementsAre("DrawingContext.SetTarget", "DrawingContext.BeginDraw", "DrawingContext.Clear",
                                   "DrawingContext.EndDraw", "DrawingContext.SetTarget", kFramePass,
                                   "ImmediateContext.ExecuteCommandList", "DrawingContext2.SetTarget",
                                   "DrawingContext2.BeginDraw", "DrawingContext2.SetTransform",
                                   "DrawingContext2.PushAxisAlignedClip", "DrawingContext2.SetTransform",
                                   "DrawingContext2.PopAxisAlignedClip", "DrawingContext2.EndDraw",
                                   "DrawingContext2.SetTarget", kClientPass, "CompositionDevice.Commit"));
    EXPECT_EQ(recorder.Last("DrawingContext.Clear"), "DrawingContext.Clear({0, 0, 0, 0})");
    EXPECT_FALSE(state.FrameDirty);
    EXPECT_FALSE(state.ClientDirty);
    EXPECT_FALSE(state.CommitNeeded);
    EXPECT_EQ(loop->Counters.FramePasses, 1U);
    EXPECT_EQ(loop->Counters.ClientPasses, 1U);
    EXPECT_EQ(loop->Counters.Presents, 2U);
}

TEST_F(FrameTest, StillWindowIssuesNoCallAtAll) {
    SetUpLoop();
    const auto node = AddNode();
    Settle();
    const int updates = node->updates;
    for (int turn = 0; turn < 3; ++turn) Turn();
    EXPECT_THAT(recorder.Calls(), ElementsAre());
    EXPECT_EQ(node->updates, updates);
    EXPECT_EQ(loop->Counters.IdleTurns, 3U);
}

TEST_F(FrameTest, MouseEventDuringIdleGivesOneClientPassOnly) {
    SetUpLoop();
    Settle();
    PushMove();
    std::vector<std::string> calls = TurnCalls();
    EXPECT_THAT(calls, Contains(kClientPass));
    EXPECT_THAT(calls, Contains("CompositionDevice.Commit"));
    EXPECT_THAT(calls, Not(Contains(kFramePass)));
    EXPECT_THAT(TurnCalls(), ElementsAre());
    EXPECT_EQ(loop->Counters.InputEvents, 1U);
}

TEST_F(FrameTest, MouseEventThatChangesACaptionZoneGivesAFramePassToo) {
    SetUpLoop();
    Settle();
    PushMove();
    state.HoverZone = 2;
    const std::vector<std::string> calls = TurnCalls();
    EXPECT_THAT(calls, Contains(kClientPass));
    EXPECT_THAT(calls, Contains(kFramePass));
}

TEST_F(FrameTest, CaptionStateRedrawsTheFrameAlone) {
    SetUpLoop();
    Settle();
    for (const auto& change : std::vector<std::function<void()>>{
             [&] { state.HoverZone = 1; }, [&] { state.PressedZone = 1; },
             [&] { windows.Change([](Fakes::WindowSettings& settings) { settings.zoomed = true; }); }}) {
        change();
        const std::vector<std::string> calls = TurnCalls();
        EXPECT_THAT(calls, Contains(kFramePass));
        EXPECT_THAT(calls, Not(Contains(kClientPass)));
        EXPECT_EQ(std::ranges::count(calls, "CompositionDevice.Commit"), 1);
        EXPECT_THAT(TurnCalls(), ElementsAre());
    }
}

TEST_F(FrameTest, EventReachesTheNodeUnderThePointer) {
    SetUpLoop();
    const auto node = AddNode();
    int moves = 0;
    node->onPointerMove = [&](const InputEvent&) { ++moves; };
    Settle();
    PushMove();
    Turn();
    EXPECT_EQ(moves, 1);
}

TEST_F(FrameTest, CommitAloneWhenOnlyThatIsDue) {
    SetUpLoop();
    Settle();
    state.CommitNeeded = true;
    EXPECT_THAT(TurnCalls(), ElementsAre("CompositionDevice.Commit"));
    EXPECT_THAT(TurnCalls(), ElementsAre());
}

TEST_F(FrameTest, ClosureRunsAtTheNextTurnAndForcesAFullRedraw) {
    SetUpLoop();
    Settle();
    int runs = 0;
    state.Closures.Post([&] { ++runs; });
    const std::vector<std::string> calls = TurnCalls();
    EXPECT_EQ(runs, 1);
    EXPECT_THAT(calls, Contains(kFramePass));
    EXPECT_THAT(calls, Contains(kClientPass));
    EXPECT_THAT(TurnCalls(), ElementsAre());
}

TEST_F(FrameTest, ClosurePostedDuringTheIdleSleepRunsSoon) {
    SetUpLoop();
    Settle();
    std::atomic<int> runs = 0;
    std::thread poster([&] { state.Closures.Post([&] { ++runs; }); });
    while (runs == 0) Turn();
    poster.join();
    EXPECT_THAT(NamesOf(recorder.Calls()), Contains(kClientPass));
}

TEST_F(FrameTest, StopSignalledDuringAnIdleWaitEndsTheTurn) {
    SetUpLoop();
    Settle();
    SetEvent(stopEvent);
    EXPECT_FALSE(loop->RenderFrame());
    EXPECT_THAT(recorder.Calls(), ElementsAre());
}

TEST_F(FrameTest, StopSignalledDuringAFrameWaitEndsTheTurnAtOnce) {
    Fakes::SignalFrameOnPresent(false);
    SetUpLoop();
    Settle();  // uses up the first permits
    state.FrameDirty = true;
    std::thread stopper([&] { SetEvent(stopEvent); });
    EXPECT_FALSE(loop->RenderFrame());
    stopper.join();
    EXPECT_THAT(recorder.Calls(), ElementsAre());
}

TEST_F(FrameTest, StopSignalledDuringAClientWaitEndsTheTurnAtOnce) {
    Fakes::SignalFrameOnPresent(false);
    SetUpLoop();
    Settle();
    state.ClientDirty = true;
    std::thread stopper([&] { SetEvent(stopEvent); });
    EXPECT_FALSE(loop->RenderFrame());
    stopper.join();
    EXPECT_THAT(recorder.Calls(), ElementsAre());
}

TEST_F(FrameTest, AnimationWaitsForTheClientSurfaceAlone) {
    Fakes::SignalFrameOnPresent(false);
    SetUpLoop();
    BackgroundRenderer background;
    loop->SetBackground(&background);
    Turn();
    // Frame and client permits are used up; one more of each lets exactly one animated turn through.
    Fakes::SignalFrame();
    EXPECT_THAT(TurnCalls(), Contains(kClientPass));
    SetEvent(stopEvent);
    EXPECT_FALSE(loop->RenderFrame());
    ResetEvent(stopEvent);
    // The frame's permit is still there.
    loop->SetBackground(nullptr);
    state.ClientDirty = false;
    state.FrameDirty = true;
    SetEvent(stopEvent);
    EXPECT_TRUE(loop->RenderFrame());
    EXPECT_FALSE(loop->RenderFrame());
}

TEST_F(FrameTest, AnimatedBackgroundMeansAClientPassAtEveryTurnAndNoFramePass) {
    SetUpLoop();
    BackgroundRenderer background;
    loop->SetBackground(&background);
    Turn();
    for (int turn = 0; turn < 3; ++turn) {
        const std::vector<std::string> calls = TurnCalls();
        EXPECT_THAT(calls, Contains(kClientPass));
        EXPECT_THAT(calls, Not(Contains(kFramePass)));
        EXPECT_TRUE(state.ClientDirty);
    }
    loop->TearDown();
}

TEST_F(FrameTest, FrozenBackgroundLetsTheWindowRest) {
    SetUpLoop();
    BackgroundRenderer background;
    background.SetAnimate(false);
    loop->SetBackground(&background);
    Settle();
    EXPECT_THAT(TurnCalls(), ElementsAre());
    loop->TearDown();
}

TEST_F(FrameTest, ScenePassesRunInOrderOncePerTurn) {
    SetUpLoop();
    const auto node = AddNode();
    Turn();
    EXPECT_EQ(node->updates, 1);
    EXPECT_EQ(node->animates, 1);
    EXPECT_EQ(node->prepares, 1);
    EXPECT_EQ(node->draws, 1);
}

TEST_F(FrameTest, ClockIsNotClampedAndStartsAtZero) {
    SetUpLoop();
    const auto node = AddNode();
    now = 5'000'000'000;
    Turn();
    EXPECT_EQ(node->lastSeconds, 0.0F);
    now += 2'500'000'000;
    state.ClientDirty = true;
    Turn();
    EXPECT_EQ(node->lastSeconds, 2.5F);
}

TEST_F(FrameTest, RootIsPlacedInsideTheChromeAndClippedToIt) {
    UseTheme();
    windows.Change([](Fakes::WindowSettings& settings) { settings.dpi = 144; });
    SetUpLoop();
    Turn();
    // 8 and 36 units and a border of 1 at 150 percent, less the offset of 1.
    EXPECT_EQ(loop->ClientRoot()->localTransform, (Matrix3x2{1.5F, 0, 0, 1.5F, 12.5F, 54.5F}));
    EXPECT_EQ(loop->ClientRoot()->worldTransform, loop->ClientRoot()->localTransform);
    EXPECT_EQ(recorder.Last("PushAxisAlignedClip"),
              "DrawingContext2.PushAxisAlignedClip({12.5, 54.5, 785.5, 585.5}, 1)");
}

TEST_F(FrameTest, PolicyTwoMaximisedClipsToTheWholeWindow) {
    UseTheme(2);
    windows.Change([](Fakes::WindowSettings& settings) { settings.zoomed = true; });
    SetUpLoop();
    Resize({.clientWidth = 800,
            .clientHeight = 600,
            .clientOffsetX = 0,
            .clientOffsetY = 0,
            .windowWidth = 800,
            .windowHeight = 600});
    Turn();
    EXPECT_EQ(recorder.Last("PushAxisAlignedClip"), "DrawingContext2.PushAxisAlignedClip({0, 0, 800, 600}, 1)");
    EXPECT_EQ(loop->ClientRoot()->localTransform, (Matrix3x2{1, 0, 0, 1, 0, 0}));
}

TEST_F(FrameTest, PolicyTwoMaximisedTranslatesByTheNegatedOffset) {
    UseTheme(2);
    windows.Change([](Fakes::WindowSettings& settings) { settings.zoomed = true; });
    SetUpLoop();  // offset (1, 1)
    Turn();
    EXPECT_EQ(loop->ClientRoot()->localTransform, (Matrix3x2{1, 0, 0, 1, -1, -1}));
}

TEST_F(FrameTest, WithAnEmptyClipTheSceneIsNotDrawnThoughThePassRuns) {
    UseTheme();
    SetUpLoop();
    const auto node = AddNode();
    Resize({.clientWidth = 16,
            .clientHeight = 598,
            .clientOffsetX = 1,
            .clientOffsetY = 1,
            .windowWidth = 18,
            .windowHeight = 600});
    const std::vector<std::string> calls = TurnCalls();
    EXPECT_THAT(calls, Contains(kClientPass));
    EXPECT_THAT(calls, Not(Contains("DrawingContext2.PushAxisAlignedClip")));
    EXPECT_EQ(node->prepares, 0);
    EXPECT_EQ(node->draws, 0);
}

TEST_F(FrameTest, FailingEndDrawIsLoggedAndPresentedAllTheSame) {
    SetUpLoop();
    Settle();
    recorder.FailNext("DrawingContext.EndDraw", E_FAIL);
    state.FrameDirty = true;
    EXPECT_THAT(TurnCalls(), Contains(kFramePass));
    EXPECT_EQ(log.Text(), "[WindowSurface] EndDraw failed: hr=0x80004005\n");
}

TEST_F(FrameTest, FailingPresentAndCommitAreIgnored) {
    SetUpLoop();
    recorder.FailAlways("Present1", E_FAIL);
    recorder.FailAlways("Commit", E_FAIL);
    Turn();
    EXPECT_FALSE(state.FrameDirty);
    EXPECT_FALSE(state.CommitNeeded);
    EXPECT_EQ(log.Text(), "");
}

}  // namespace
}  // namespace Tamborel
