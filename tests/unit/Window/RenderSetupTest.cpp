#include "Background/BackgroundRenderer.h"
#include "RenderTest.h"
#include "Scene/SceneNode.h"

#include <algorithm>
#include <thread>

using testing::ElementsAre;
using testing::HasSubstr;

namespace Tamborel {
namespace {

using SetupTest = LoopTest;

TEST_F(SetupTest, TreeAndSurfacesAreMadeInOrder) {
    ASSERT_TRUE(loop->SetUp());
    const std::vector<std::string> calls = recorder.Calls();
    std::vector<std::string> tree;
    for (const std::string& call : calls) {
        for (const char* object : {"CompositionDevice.", "Target.", "Visual.", "Visual2.", "Visual3.", "Factory."}) {
            if (call.starts_with(object)) tree.push_back(call);
        }
    }
    EXPECT_THAT(
        tree, ElementsAre(
                  "CompositionDevice.CreateTargetForHwnd(0x1234, 1)", "CompositionDevice.CreateVisual()",
                  "Target.SetRoot(Visual)", "CompositionDevice.CreateVisual()", "Visual.AddVisual(Visual2, 0, null)",
                  "CompositionDevice.CreateVisual()", "Visual3.SetOffsetX(1)", "Visual3.SetOffsetY(1)",
                  "Visual.AddVisual(Visual3, 0, Visual2)",
                  "Factory.CreateSwapChainForComposition(Device, 800, 600, 87, 0, 1, 0, 0x20, 2, 0, 3, 1, 0x40, null)",
                  "Visual2.SetContent(SwapChain)",
                  "Factory.CreateSwapChainForComposition(Device, 798, 598, 87, 0, 1, 0, 0x20, 2, 0, 3, 3, 0x40, null)",
                  "Visual3.SetContent(SwapChain2)", "CompositionDevice.Commit()"));
    EXPECT_EQ(loop->Counters.Commits, 1U);
}

TEST_F(SetupTest, DeviceComesFirstThenTreeThenStagingThenDeferredContextThenFallback) {
    ASSERT_TRUE(loop->SetUp());
    std::vector<std::string> marks;
    for (const std::string& call : recorder.Calls()) {
        const std::string name = NameOf(call);
        if (name == "D3D11CreateDevice" || name == "CompositionDevice.Commit" || name == "Device.CreateTexture2D" ||
            name == "Device.CreateDeferredContext" || name == "Device.CreateVertexShader") {
            marks.push_back(name);
        }
    }
    EXPECT_THAT(marks, ElementsAre("D3D11CreateDevice", "CompositionDevice.Commit", "Device.CreateTexture2D",
                                   "Device.CreateDeferredContext", "Device.CreateVertexShader"));
    // 1 by 1, one mip, one slice, B8G8R8A8, one sample, staging, no binding, CPU read
    EXPECT_EQ(recorder.Last("CreateTexture2D"), "Device.CreateTexture2D(1, 1, 1, 1, 87, 1, 3, 0x0, 0x20000, 0)");
}

TEST_F(SetupTest, RootsAreMadeAndTheSurfacesAreAnnounced) {
    EXPECT_FALSE(state.SurfacesReady);
    ASSERT_TRUE(loop->SetUp());
    EXPECT_NE(loop->ClientRoot(), nullptr);
    EXPECT_NE(loop->FrameRoot(), nullptr);
    EXPECT_TRUE(state.SurfacesReady);
    loop->TearDown();
    EXPECT_FALSE(state.SurfacesReady);
    EXPECT_EQ(loop->ClientRoot(), nullptr);
}

struct FailingCall {
    const char* call;
    const char* report;  ///< Of the expression; empty where the step is silent.
};

void PrintTo(const FailingCall& failing, std::ostream* out) {
    *out << failing.call;
}

class FailingSetup : public LoopTest, public testing::WithParamInterface<FailingCall> {};

TEST_P(FailingSetup, GivesReadyFalseOnceAndDoesNotHang) {
    recorder.FailAlways(GetParam().call, E_OUTOFMEMORY);
    loop->Run();
    EXPECT_EQ(readies, std::vector<bool>{false});
    EXPECT_EQ(recorder.Count("Present1"), 0U);
    const std::string report = GetParam().report;
    if (report.empty()) {
        EXPECT_EQ(log.Text(), "");
    } else {
        EXPECT_THAT(log.Text(), HasSubstr("  expr : " + report + "\n"));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Calls, FailingSetup,
    testing::Values(FailingCall{"D3D11CreateDevice", ""}, FailingCall{"DrawingFactory.CreateDevice", ""},
                    FailingCall{"DCompositionCreateDevice2", ""}, FailingCall{"CreateTargetForHwnd", ""},
                    FailingCall{"CreateVisual", ""}, FailingCall{"SetRoot", ""}, FailingCall{"AddVisual", ""},
                    FailingCall{"SetOffsetX", ""}, FailingCall{"SetOffsetY", ""},
                    FailingCall{"CreateSwapChainForComposition",
                                "DeviceManager::Get().GetDXGIFactory()->CreateSwapChainForComposition( "
                                "renderDevice.GetD3DDevice(), &desc, nullptr, &swapChain1)"},
                    FailingCall{"SetMaximumFrameLatency", "SwapChain->SetMaximumFrameLatency(1)"},
                    FailingCall{"SwapChain2.SetMaximumFrameLatency", "SwapChain->SetMaximumFrameLatency(1)"},
                    FailingCall{"CreateDeviceContext",
                                "renderDevice.GetD2DDevice()->CreateDeviceContext( D2D1_DEVICE_CONTEXT_OPTIONS_NONE, "
                                "reinterpret_cast<ID2D1DeviceContext**>(DC.GetAddressOf()))"},
                    FailingCall{"Visual2.SetContent", "visual->SetContent(SwapChain.Get())"},
                    FailingCall{"Visual3.SetContent", "visual->SetContent(SwapChain.Get())"},
                    FailingCall{"GetBuffer", "CreateBuffers()"},
                    FailingCall{"CreateBitmapFromDxgiSurface", "CreateBuffers()"},
                    FailingCall{"CreateRenderTargetView", "CreateBuffers()"}, FailingCall{"Commit", ""},
                    FailingCall{"CreateDeferredContext", ""}));

TEST_F(SetupTest, MissingDeferredContextInterfaceGivesReadyFalse) {
    // The immediate context is asked for the same interface, which comes earlier: both are a failed set-up.
    recorder.FailQuery(__uuidof(ID3D11DeviceContext4), E_NOINTERFACE);
    loop->Run();
    EXPECT_EQ(readies, std::vector<bool>{false});
}

TEST_F(SetupTest, WithoutStagingTextureTheWindowRunsWithoutReadBack) {
    recorder.FailAlways("CreateTexture2D", E_OUTOFMEMORY);
    SetUpLoop();
    state.InSizeMove = true;
    Turn();
    EXPECT_EQ(recorder.Count("CopySubresourceRegion"), 0U);
    EXPECT_EQ(loop->Counters.FramePasses, 1U);
    EXPECT_EQ(loop->Counters.ReadBacks, 0U);
}

TEST_F(SetupTest, FallbackBackgroundThatFailsIsLoggedAndDoneWithout) {
    recorder.FailAlways("CreateSamplerState", E_OUTOFMEMORY);
    ASSERT_TRUE(loop->SetUp());
    EXPECT_THAT(log.Text(), HasSubstr("[FrameWindow] Fallback background renderer init failed.\n"));
    recorder.TakeCalls();
    Turn();
    EXPECT_EQ(recorder.Last("SwapChain2.Present1").substr(0, 21), "SwapChain2.Present1(1");
    EXPECT_EQ(recorder.Count("ExecuteCommandList"), 0U);
    // The plain colour.
    EXPECT_EQ(recorder.Last("DrawingContext2.Clear"), "DrawingContext2.Clear({0.05, 0.05, 0.08, 1})");
}

TEST_F(SetupTest, RunSaysReadyDrawsUntilStoppedAndCleansUp) {
    std::thread stopper([this] {
        while (loop->Counters.Turns < 3) std::this_thread::yield();
        stopRequested = true;
        SetEvent(stopEvent);
    });
    loop->Run();
    stopper.join();
    EXPECT_EQ(readies, std::vector<bool>{true});
    EXPECT_GE(recorder.Count("Present1"), 2U);
    EXPECT_FALSE(state.SurfacesReady);
    EXPECT_FALSE(loop->RenderFrame()) << "without surfaces there is no frame";
}

TEST_F(SetupTest, StopRequestedBeforeTheFirstTurnDrawsNothing) {
    stopRequested = true;
    loop->Run();
    EXPECT_EQ(readies, std::vector<bool>{true});
    EXPECT_EQ(recorder.Count("Present1"), 0U);
}

TEST_F(SetupTest, TearDownLetsGoInOrder) {
    SetUpLoop();
    BackgroundRenderer background;
    background.SetAnimate(false);
    loop->SetBackground(&background);
    Settle();
    recorder.RecordDestruction(true);
    loop->TearDown();
    std::vector<std::string> order;
    for (const std::string& name : recorder.Calls()) {
        for (const char* mark : {"~Sampler", "~Texture2", "~DeferredContext", "~SwapChain", "~Target", "~Device"}) {
            if (name.starts_with(mark)) order.push_back(name);
        }
    }
    EXPECT_FALSE(background.IsInitialized());
    const auto at = [&](const std::string& name) { return std::ranges::find(order, name) - order.begin(); };
    EXPECT_LT(at("~DeferredContext"), at("~SwapChain2"));
    EXPECT_LT(at("~SwapChain2"), at("~Device"));
    EXPECT_LT(at("~SwapChain"), at("~Device"));
    EXPECT_LT(at("~Target"), at("~Device"));
    EXPECT_EQ(at("~Device") + 1, static_cast<std::ptrdiff_t>(order.size()));
    loop->TearDown();
}

}  // namespace
}  // namespace Tamborel
