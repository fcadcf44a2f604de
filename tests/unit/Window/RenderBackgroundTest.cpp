#include "Background/BackgroundRenderer.h"
#include "RenderTest.h"

#include <algorithm>

namespace Tamborel {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

constexpr const char* kPlainClear = "DrawingContext2.Clear({0.05, 0.05, 0.08, 1})";

class BackgroundTest : public LoopTest {
protected:
    void TearDown() override {
        loop->TearDown();
        LoopTest::TearDown();
    }

    bool DrewThemeBackground() const {
        // With a background two strips are drawn, into the offscreen texture and into the window; else one.
        return recorder.Count("DeferredContext.Draw") == 2;
    }

    BackgroundRenderer background;
};

TEST_F(BackgroundTest, AbsentBackgroundIsReplacedByTheFallbackWithoutTheme) {
    SetUpLoop();
    Turn();
    EXPECT_EQ(recorder.Count("DeferredContext.Draw"), 1U);
    EXPECT_EQ(recorder.Count("ExecuteCommandList"), 1U);
    EXPECT_EQ(recorder.Count("DrawingContext2.Clear"), 0U);
}

TEST_F(BackgroundTest, ApplicationsBackgroundIsDrawnWithTheme) {
    SetUpLoop();
    loop->SetBackground(&background);
    EXPECT_TRUE(background.IsInitialized());
    Turn();
    EXPECT_TRUE(DrewThemeBackground());
    EXPECT_EQ(recorder.Last("ExecuteCommandList"), "ImmediateContext.ExecuteCommandList(CommandList, 1)");
    EXPECT_EQ(recorder.Count("DrawingContext2.Clear"), 0U);
}

TEST_F(BackgroundTest, BackgroundIsExecutedBeforeTheScenesPassBegins) {
    SetUpLoop();
    loop->SetBackground(&background);
    Turn();
    const std::vector<std::string> names = NamesOf(recorder.Calls());
    const auto at = [&](const char* name) { return std::ranges::find(names, name) - names.begin(); };
    EXPECT_LT(at("ImmediateContext.ExecuteCommandList"), at("DrawingContext2.BeginDraw"));
}

TEST_F(BackgroundTest, BackgroundThatIsNotReadyIsReplacedByTheFallback) {
    SetUpLoop();
    loop->SetBackground(&background);
    background.ReleaseResources();
    Turn();
    EXPECT_FALSE(DrewThemeBackground());
    EXPECT_EQ(recorder.Count("ExecuteCommandList"), 1U);
}

TEST_F(BackgroundTest, WithoutAnyBackgroundTheClientIsPlain) {
    recorder.FailNext("CreateVertexShader", E_FAIL);
    SetUpLoop();
    Turn();
    EXPECT_EQ(recorder.Count("ExecuteCommandList"), 0U);
    EXPECT_EQ(recorder.Last("DrawingContext2.Clear"), kPlainClear);
}

TEST_F(BackgroundTest, FailedRecordingIsLoggedAtEachFrameAndTheClientIsPlain) {
    SetUpLoop();
    loop->SetBackground(&background);
    recorder.FailAlways("FinishCommandList", E_FAIL);
    Turn();
    EXPECT_EQ(recorder.Last("DrawingContext2.Clear"), kPlainClear);
    EXPECT_EQ(recorder.Count("DrawingContext2.PushAxisAlignedClip"), 1U) << "the scene is drawn on it";
    EXPECT_THAT(log.Take(), HasSubstr("[FrameWindow] Background RecordDraw failed: hr=0x80004005\n"));
    Turn();
    EXPECT_THAT(log.Take(), HasSubstr("[FrameWindow] Background RecordDraw failed: hr=0x80004005\n"));
}

TEST_F(BackgroundTest, BackgroundThatCannotBeInitialisedIsLoggedAndNotTaken) {
    SetUpLoop();
    recorder.FailNext("CreateVertexShader", E_FAIL);
    loop->SetBackground(&background);
    EXPECT_THAT(log.Text(), HasSubstr("[FrameWindow] Background renderer init failed.\n"));
    Turn();
    EXPECT_FALSE(DrewThemeBackground());
    EXPECT_FALSE(background.IsInitialized());
}

TEST_F(BackgroundTest, AnotherBackgroundTakesTheDeviceFromTheOneBefore) {
    SetUpLoop();
    BackgroundRenderer other;
    loop->SetBackground(&background);
    loop->SetBackground(&other);
    EXPECT_FALSE(background.IsInitialized());
    EXPECT_TRUE(other.IsInitialized());
    loop->SetBackground(nullptr);
    EXPECT_FALSE(other.IsInitialized());
}

TEST_F(BackgroundTest, SameBackgroundAgainIsNotInitialisedTwice) {
    SetUpLoop();
    loop->SetBackground(&background);
    recorder.TakeCalls();
    loop->SetBackground(&background);
    EXPECT_EQ(recorder.Count("CreateVertexShader"), 0U);
    EXPECT_TRUE(background.IsInitialized());
}

TEST_F(BackgroundTest, TakingABackgroundRedrawsTheClient) {
    SetUpLoop();
    Settle();
    background.SetAnimate(false);
    loop->SetBackground(&background);
    const std::vector<std::string> calls = TurnCalls();
    EXPECT_THAT(calls, Contains("SwapChain2.Present1"));
    EXPECT_THAT(calls, Not(Contains("SwapChain.Present1")));
}

}  // namespace
}  // namespace Tamborel
