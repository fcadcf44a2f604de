#include "Window/WindowSurface.h"

#include "Core/RenderDevice.h"
#include "RenderTest.h"

#include <optional>
#include <ostream>

using Microsoft::WRL::ComPtr;
using testing::ElementsAre;
using testing::HasSubstr;

namespace Tamborel {
namespace {

constexpr HRESULT kFailure = E_OUTOFMEMORY;

class WindowSurfaceTest : public RenderTest {
protected:
    WindowSurfaceTest() {
        EXPECT_GE(device.Initialize(), 0);
        EXPECT_GE(device.GetDCompDevice()->CreateVisual(&visual), 0);
        recorder.TakeCalls();
    }

    void TearDown() override {
        surface.reset();
        visual.Reset();
        device.Release();
        RenderTest::TearDown();
    }

    HRESULT Initialize(UINT alphaMode = DXGI_ALPHA_MODE_IGNORE) {
        return surface->Initialize(device, {640, 480}, alphaMode, visual.Get());
    }
    void InitializeAndForget() {
        ASSERT_EQ(Initialize(), S_OK);
        recorder.TakeCalls();
        log.Take();
    }

    RenderDevice device;
    ComPtr<IDCompositionVisual2> visual;
    std::optional<WindowSurface> surface{std::in_place};
};

TEST_F(WindowSurfaceTest, NewSurfaceIsEmpty) {
    EXPECT_EQ(surface->GetDC(), nullptr);
    EXPECT_EQ(surface->GetRTV(), nullptr);
    EXPECT_EQ(surface->GetSwapChain(), nullptr);
    EXPECT_EQ(surface->GetFrameLatencyWaitable(), nullptr);
    EXPECT_EQ(surface->GetSize().cx, 0);
    EXPECT_EQ(surface->GetSize().cy, 0);
    EXPECT_FALSE(surface->GetIsDrawing());
    EXPECT_EQ(surface->GetSdrWhiteScale(), 1.0F);
}

TEST_F(WindowSurfaceTest, InitializeMakesEverythingInOrder) {
    ASSERT_EQ(Initialize(), S_OK);
    EXPECT_THAT(NamesOf(recorder.Calls()),
                ElementsAre("Factory.CreateSwapChainForComposition", "SwapChain.CheckColorSpaceSupport",
                            "SwapChain.SetColorSpace1", "SwapChain.SetMaximumFrameLatency",
                            "SwapChain.GetFrameLatencyWaitableObject", "DrawingDevice.CreateDeviceContext",
                            "Visual.SetContent", "SwapChain.GetBuffer", "DrawingContext.CreateBitmapFromDxgiSurface",
                            "SwapChain.GetBuffer", "Device.CreateRenderTargetView"));
    EXPECT_NE(surface->GetDC(), nullptr);
    EXPECT_NE(surface->GetRTV(), nullptr);
    EXPECT_NE(surface->GetFrameLatencyWaitable(), nullptr);
    EXPECT_EQ(surface->GetSize().cx, 640);
    EXPECT_EQ(surface->GetSize().cy, 480);
    EXPECT_EQ(log.Text(), "");
}

struct FailingStep {
    const char* call;
    const char* text;
    int reports;
};

void PrintTo(const FailingStep& step, std::ostream* out) {
    *out << step.call;
}

class FailingInitialize : public WindowSurfaceTest, public testing::WithParamInterface<FailingStep> {};

TEST_P(FailingInitialize, IsReportedToTheLetterAndReturned) {
    recorder.FailNext(GetParam().call, kFailure);
    EXPECT_EQ(Initialize(), kFailure);
    EXPECT_THAT(log.Text(), HasSubstr(std::string("  expr : ") + GetParam().text + "\n"));
    const std::string text = log.Text();
    int reports = 0;
    for (std::size_t at = text.find("FAILED"); at != std::string::npos; at = text.find("FAILED", at + 1)) ++reports;
    EXPECT_EQ(reports, GetParam().reports) << text;
    EXPECT_EQ(text.find("  expr : CreateBuffers()\n") != std::string::npos, GetParam().reports == 2);
}

INSTANTIATE_TEST_SUITE_P(
    Steps, FailingInitialize,
    testing::Values(FailingStep{"CreateSwapChainForComposition",
                                "DeviceManager::Get().GetDXGIFactory()->CreateSwapChainForComposition( "
                                "renderDevice.GetD3DDevice(), &desc, nullptr, &swapChain1)",
                                1},
                    FailingStep{"SetMaximumFrameLatency", "SwapChain->SetMaximumFrameLatency(1)", 1},
                    FailingStep{"CreateDeviceContext",
                                "renderDevice.GetD2DDevice()->CreateDeviceContext( D2D1_DEVICE_CONTEXT_OPTIONS_NONE, "
                                "reinterpret_cast<ID2D1DeviceContext**>(DC.GetAddressOf()))",
                                1},
                    FailingStep{"SetContent", "visual->SetContent(SwapChain.Get())", 1},
                    FailingStep{"GetBuffer", "SwapChain->GetBuffer(0, IID_PPV_ARGS(&dxgiSurface))", 2},
                    FailingStep{"CreateBitmapFromDxgiSurface",
                                "DC->CreateBitmapFromDxgiSurface( dxgiSurface.Get(), &bmpProps, &TargetBitmap)", 2},
                    FailingStep{"CreateRenderTargetView",
                                "RenderDevice->GetD3DDevice()->CreateRenderTargetView(backBuf.Get(), nullptr, &RTV)",
                                2}));

TEST_F(WindowSurfaceTest, MissingSwapChainInterfaceIsReported) {
    recorder.FailQuery(__uuidof(IDXGISwapChain2), E_NOINTERFACE);
    EXPECT_EQ(Initialize(), E_NOINTERFACE);
    EXPECT_THAT(log.Text(), HasSubstr("  expr : swapChain1.As(&SwapChain)\n"));
}

TEST_F(WindowSurfaceTest, MissingTextureInterfaceOfTheBackBufferIsReported) {
    recorder.FailQuery(__uuidof(ID3D11Texture2D), E_NOINTERFACE);
    EXPECT_EQ(Initialize(), E_NOINTERFACE);
    EXPECT_THAT(log.Text(), HasSubstr("  expr : SwapChain->GetBuffer(0, IID_PPV_ARGS(&backBuf))\n"));
    EXPECT_THAT(log.Text(), HasSubstr("  expr : CreateBuffers()\n"));
}

TEST_F(WindowSurfaceTest, FailedColourSpaceQueryLeavesTheSurfaceWorking) {
    recorder.FailQuery(__uuidof(IDXGISwapChain3), E_NOINTERFACE);
    EXPECT_EQ(Initialize(), S_OK);
    EXPECT_EQ(recorder.Count("CheckColorSpaceSupport"), 0U);
    EXPECT_EQ(recorder.Count("SetColorSpace1"), 0U);
    EXPECT_NE(surface->GetRTV(), nullptr);
    EXPECT_EQ(log.Text(), "");
}

TEST_F(WindowSurfaceTest, UnknownColourSpaceSupportSetsNone) {
    recorder.FailNext("CheckColorSpaceSupport", kFailure);
    EXPECT_EQ(Initialize(), S_OK);
    EXPECT_EQ(recorder.Count("SetColorSpace1"), 0U);
    EXPECT_EQ(log.Text(), "");
}

TEST_F(WindowSurfaceTest, RefusedColourSpaceIsNoFailure) {
    recorder.FailNext("SetColorSpace1", kFailure);
    EXPECT_EQ(Initialize(), S_OK);
    EXPECT_EQ(log.Text(), "");
}

TEST_F(WindowSurfaceTest, ResizeToTheSizeHeldTouchesNothing) {
    InitializeAndForget();
    recorder.RecordDestruction(true);
    ID3D11RenderTargetView* const view = surface->GetRTV();
    EXPECT_EQ(surface->Resize({640, 480}), S_OK);
    EXPECT_THAT(recorder.Calls(), ElementsAre());
    EXPECT_EQ(surface->GetRTV(), view);
}

TEST_F(WindowSurfaceTest, ResizeOfOneDimensionIsAResize) {
    InitializeAndForget();
    EXPECT_EQ(surface->Resize({640, 481}), S_OK);
    EXPECT_EQ(recorder.Last("ResizeBuffers"), "SwapChain.ResizeBuffers(0, 640, 481, 0, 0x40)");
}

TEST_F(WindowSurfaceTest, ResizeLetsGoOfTheBuffersFirst) {
    InitializeAndForget();
    recorder.RecordDestruction(true);
    EXPECT_EQ(surface->Resize({800, 600}), S_OK);
    EXPECT_THAT(NamesOf(recorder.Calls()),
                testing::IsSupersetOf({"~RenderTargetView", "~Bitmap", "SwapChain.ResizeBuffers"}));
    std::vector<std::string> order;
    for (const std::string& name : NamesOf(recorder.Calls())) {
        if (name == "~RenderTargetView" || name == "~Bitmap" || name == "SwapChain.ResizeBuffers" ||
            name == "SwapChain.SetColorSpace1" || name == "DrawingContext.CreateBitmapFromDxgiSurface" ||
            name == "Device.CreateRenderTargetView") {
            order.push_back(name);
        }
    }
    EXPECT_THAT(order,
                ElementsAre("~RenderTargetView", "~Bitmap", "SwapChain.ResizeBuffers", "SwapChain.SetColorSpace1",
                            "DrawingContext.CreateBitmapFromDxgiSurface", "Device.CreateRenderTargetView"));
    EXPECT_EQ(surface->GetSize().cx, 800);
    EXPECT_EQ(surface->GetSize().cy, 600);
}

TEST_F(WindowSurfaceTest, FailedResizeKeepsTheNewSizeAndNoTarget) {
    InitializeAndForget();
    recorder.FailNext("ResizeBuffers", kFailure);
    EXPECT_EQ(surface->Resize({800, 600}), kFailure);
    EXPECT_THAT(log.Text(), HasSubstr("  expr : SwapChain->ResizeBuffers( 0, static_cast<UINT>(newSize.cx), "
                                      "static_cast<UINT>(newSize.cy), DXGI_FORMAT_UNKNOWN, "
                                      "DXGI_SWAP_CHAIN_FLAG_FRAME_LATENCY_WAITABLE_OBJECT)\n"));
    EXPECT_EQ(surface->GetSize().cx, 800);
    EXPECT_EQ(surface->GetRTV(), nullptr);
    recorder.TakeCalls();
    EXPECT_EQ(surface->Resize({800, 600}), S_OK);
    EXPECT_THAT(recorder.Calls(), ElementsAre());
}

TEST_F(WindowSurfaceTest, FailedBuffersAfterAResizeAreReportedTwice) {
    InitializeAndForget();
    recorder.FailNext("CreateRenderTargetView", kFailure);
    EXPECT_EQ(surface->Resize({800, 600}), kFailure);
    EXPECT_THAT(log.Text(), HasSubstr("  expr : RenderDevice->GetD3DDevice()->CreateRenderTargetView("));
    EXPECT_THAT(log.Text(), HasSubstr("  expr : CreateBuffers()\n"));
}

TEST_F(WindowSurfaceTest, CreateBuffersWithoutDeviceFailsWithoutReport) {
    EXPECT_EQ(surface->CreateBuffers(), E_FAIL);
    EXPECT_EQ(log.Text(), "");
    EXPECT_THAT(recorder.Calls(), ElementsAre());
}

TEST_F(WindowSurfaceTest, PassSetsTheTargetAndTakesItOff) {
    InitializeAndForget();
    EXPECT_EQ(surface->BeginDraw(), S_OK);
    EXPECT_TRUE(surface->GetIsDrawing());
    EXPECT_EQ(surface->EndDraw(), S_OK);
    EXPECT_FALSE(surface->GetIsDrawing());
    EXPECT_THAT(recorder.Calls(), ElementsAre("DrawingContext.SetTarget(Bitmap)", "DrawingContext.BeginDraw()",
                                              "DrawingContext.EndDraw()", "DrawingContext.SetTarget(null)"));
}

TEST_F(WindowSurfaceTest, FailingEndDrawStillLeavesTheContextWithoutTarget) {
    InitializeAndForget();
    recorder.FailNext("EndDraw", kFailure);
    EXPECT_EQ(surface->BeginDraw(), S_OK);
    EXPECT_EQ(surface->EndDraw(), kFailure);
    EXPECT_EQ(log.Text(), "[WindowSurface] EndDraw failed: hr=0x8007000E\n");
    EXPECT_EQ(recorder.Calls().back(), "DrawingContext.SetTarget(null)");
    EXPECT_FALSE(surface->GetIsDrawing());
    recorder.TakeCalls();
    EXPECT_EQ(surface->Resize({800, 600}), S_OK);
    EXPECT_EQ(recorder.Count("ResizeBuffers"), 1U);
}

TEST_F(WindowSurfaceTest, PresentDropsTheResult) {
    InitializeAndForget();
    recorder.FailNext("Present1", kFailure);
    surface->Present(1);
    EXPECT_THAT(recorder.Last("Present1"), testing::StartsWith("SwapChain.Present1(1, 0"));
    EXPECT_EQ(log.Text(), "");
}

TEST_F(WindowSurfaceTest, AlphaModesReachSwapChainAndTarget) {
    ASSERT_EQ(Initialize(DXGI_ALPHA_MODE_PREMULTIPLIED), S_OK);
    const std::string premultiplied = recorder.Last("CreateBitmapFromDxgiSurface");
    const std::string swapChain = recorder.Last("CreateSwapChainForComposition");
    surface.emplace();
    recorder.TakeCalls();
    ASSERT_EQ(Initialize(DXGI_ALPHA_MODE_IGNORE), S_OK);
    // format, alpha mode, DPI, options
    EXPECT_THAT(premultiplied, HasSubstr(", 87, 1, 96, 96, 0x3)"));
    EXPECT_THAT(recorder.Last("CreateBitmapFromDxgiSurface"), HasSubstr(", 87, 3, 96, 96, 0x3)"));
    // device, size, format, stereo, samples, usage, buffers, scaling, effect, alpha, flags
    EXPECT_THAT(swapChain, HasSubstr("(Device, 640, 480, 87, 0, 1, 0, 0x20, 2, 0, 3, 1, 0x40, null)"));
    EXPECT_THAT(recorder.Last("CreateSwapChainForComposition"),
                HasSubstr("(Device, 640, 480, 87, 0, 1, 0, 0x20, 2, 0, 3, 3, 0x40, null)"));
}

TEST_F(WindowSurfaceTest, ReleaseClosesTheWaitableAndMayBeRepeated) {
    InitializeAndForget();
    const HANDLE waitable = surface->GetFrameLatencyWaitable();
    surface->Release();
    EXPECT_EQ(surface->GetFrameLatencyWaitable(), nullptr);
    EXPECT_EQ(surface->GetDC(), nullptr);
    EXPECT_EQ(surface->GetSwapChain(), nullptr);
    EXPECT_EQ(WaitForSingleObject(waitable, 0), WAIT_FAILED);
    EXPECT_EQ(surface->CreateBuffers(), E_FAIL);
    surface->Release();
}

}  // namespace
}  // namespace Tamborel
