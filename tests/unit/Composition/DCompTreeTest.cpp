#include "Composition/DCompTree.h"

#include "Core/DeviceManager.h"
#include "tests/fakes/GraphicsTest.h"
#include "tests/fakes/LogCapture.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace {

using Microsoft::WRL::ComPtr;
using Strings = std::vector<std::string>;

const HWND window = reinterpret_cast<HWND>(0x1234);

class DCompTree : public Fakes::GraphicsTest {
protected:
    void SetUp() override {
        ASSERT_EQ(Tamborel::DeviceManager::Get().Initialize(), S_OK);
        ASSERT_EQ(device->Initialize(), S_OK);
        frame = MakeSwapChain(800, 600);
        client = MakeSwapChain(784, 561);
        recorder.TakeCalls();
    }
    void TearDown() override {
        tree.Release();
        frame.Reset();
        client.Reset();
        device.reset();
        Tamborel::DeviceManager::Get().Shutdown();
        GraphicsTest::TearDown();
    }

    ComPtr<IDXGISwapChain1> MakeSwapChain(UINT width, UINT height) {
        DXGI_SWAP_CHAIN_DESC1 description{};
        description.Width = width;
        description.Height = height;
        ComPtr<IDXGISwapChain1> swapChain;
        EXPECT_EQ(Tamborel::DeviceManager::Get().GetDXGIFactory()->CreateSwapChainForComposition(
                      device->GetD3DDevice(), &description, nullptr, &swapChain),
                  S_OK);
        return swapChain;
    }

    HRESULT Build() { return tree.Initialize(*device, window, frame.Get(), client.Get(), POINT{8, 31}); }

    Fakes::LogCapture log;
    std::unique_ptr<Tamborel::RenderDevice> device = std::make_unique<Tamborel::RenderDevice>();
    ComPtr<IDXGISwapChain1> frame;
    ComPtr<IDXGISwapChain1> client;
    Tamborel::DCompTree tree;
};

TEST_F(DCompTree, InitializeBuildsTheTreeWithTheClientBehindTheFrame) {
    EXPECT_EQ(Build(), S_OK);
    EXPECT_EQ(recorder.Calls(), (Strings{
                                    "CompositionDevice.CreateTargetForHwnd(0x1234, 1)",
                                    "CompositionDevice.CreateVisual()",
                                    "Target.SetRoot(Visual)",
                                    "CompositionDevice.CreateVisual()",
                                    "Visual2.SetContent(SwapChain)",
                                    "Visual.AddVisual(Visual2, 0, null)",
                                    "CompositionDevice.CreateVisual()",
                                    "Visual3.SetContent(SwapChain2)",
                                    "Visual3.SetOffsetX(8)",
                                    "Visual3.SetOffsetY(31)",
                                    "Visual.AddVisual(Visual3, 0, Visual2)",
                                    "CompositionDevice.Commit()",
                                }));
    EXPECT_EQ(log.Text(), "");
}

struct SetUpStep {
    std::size_t step;  // 1 for the first call
    const char* expression;
};

class FailingStep : public DCompTree, public ::testing::WithParamInterface<SetUpStep> {
protected:
    /// The name of the call of that number, as a whole start makes it, and how often it came before.
    void FailStep() {
        static const Strings names{"CreateTargetForHwnd", "CreateVisual",     "SetRoot",          "CreateVisual",
                                   "Visual2.SetContent",  "Visual.AddVisual", "CreateVisual",     "Visual3.SetContent",
                                   "SetOffsetX",          "SetOffsetY",       "Visual.AddVisual", "Commit"};
        const std::string& name = names.at(GetParam().step - 1);
        const auto earlier =
            std::count(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(GetParam().step) - 1, name);
        recorder.FailAfter(name, static_cast<int>(earlier), E_ACCESSDENIED);
    }
};

TEST_P(FailingStep, IsReportedWithItsTextAndEndsTheSetUp) {
    FailStep();
    EXPECT_EQ(Build(), E_ACCESSDENIED);
    EXPECT_EQ(recorder.Calls().size(), GetParam().step);
    const std::vector<Fakes::Report> reports = Fakes::ReportsIn(log.Text());
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_EQ(reports[0].code, "0x80070005");
    EXPECT_EQ(reports[0].expression, GetParam().expression);
    EXPECT_NE(reports[0].place.find("Composition/DCompTree"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(
    InTurn, FailingStep,
    ::testing::Values(
        SetUpStep{1, "dcomp->CreateTargetForHwnd(hwnd, TRUE, &Target)"},
        SetUpStep{2, "dcomp->CreateVisual(&RootVisual)"}, SetUpStep{3, "Target->SetRoot(RootVisual.Get())"},
        SetUpStep{4, "dcomp->CreateVisual(&FrameVisual)"}, SetUpStep{5, "FrameVisual->SetContent(frameSwapChain)"},
        SetUpStep{6, "RootVisual->AddVisual(FrameVisual.Get(), FALSE, nullptr)"},
        SetUpStep{7, "dcomp->CreateVisual(&ClientVisual)"}, SetUpStep{8, "ClientVisual->SetContent(clientSwapChain)"},
        SetUpStep{9, "ClientVisual->SetOffsetX(static_cast<float>(clientOffset.x))"},
        SetUpStep{10, "ClientVisual->SetOffsetY(static_cast<float>(clientOffset.y))"},
        SetUpStep{11, "RootVisual->AddVisual(ClientVisual.Get(), FALSE, FrameVisual.Get())"},
        SetUpStep{12, "dcomp->Commit()"}),
    [](const auto& info) { return "Step" + std::to_string(info.param.step); });

TEST_F(DCompTree, ATreeBuiltInPartStaysUntilRelease) {
    recorder.FailNext("Commit", E_FAIL);
    ASSERT_EQ(Build(), E_FAIL);
    recorder.RecordDestruction(true);
    recorder.TakeCalls();
    EXPECT_EQ(tree.SetClientOffset(POINT{1, 2}), S_OK);
    EXPECT_EQ(recorder.TakeCalls(), (Strings{"Visual3.SetOffsetX(1)", "Visual3.SetOffsetY(2)"}));
    tree.Release();
    EXPECT_EQ(recorder.Calls(), (Strings{"~Target", "~Visual", "~Visual2", "~Visual3"}));
}

TEST_F(DCompTree, ReleaseLetsGoOfEverything) {
    ASSERT_EQ(Build(), S_OK);
    tree.Release();
    const Strings live = recorder.Live();
    EXPECT_EQ(std::count_if(live.begin(), live.end(),
                            [](const std::string& name) { return name.starts_with("Visual") || name == "Target"; }),
              0);
}

TEST_F(DCompTree, AClientOfZeroSizeKeepsItsVisualInTheTree) {
    client = MakeSwapChain(0, 0);
    recorder.TakeCalls();
    ASSERT_EQ(Build(), S_OK);
    EXPECT_EQ(recorder.Count("Visual.AddVisual"), 2U);
    EXPECT_EQ(recorder.Last("Visual3.SetContent"), "Visual3.SetContent(SwapChain3)");
}

TEST_F(DCompTree, AnOffsetAloneShowsNothingUntilTheNextCommit) {
    ASSERT_EQ(Build(), S_OK);
    recorder.TakeCalls();
    EXPECT_EQ(tree.SetClientOffset(POINT{-8, 40}), S_OK);
    EXPECT_EQ(recorder.Calls(), (Strings{"Visual3.SetOffsetX(-8)", "Visual3.SetOffsetY(40)"}));
}

TEST_F(DCompTree, AnOffsetThatFailsIsReported) {
    ASSERT_EQ(Build(), S_OK);
    recorder.FailNext("SetOffsetX", E_FAIL);
    EXPECT_EQ(tree.SetClientOffset(POINT{1, 2}), E_FAIL);
    recorder.FailNext("SetOffsetY", E_OUTOFMEMORY);
    EXPECT_EQ(tree.SetClientOffset(POINT{1, 2}), E_OUTOFMEMORY);
    const std::vector<Fakes::Report> reports = Fakes::ReportsIn(log.Text());
    ASSERT_EQ(reports.size(), 2U);
    EXPECT_EQ(reports[0].expression, "ClientVisual->SetOffsetX(static_cast<float>(offset.x))");
    EXPECT_EQ(reports[1].expression, "ClientVisual->SetOffsetY(static_cast<float>(offset.y))");
}

D2D_MATRIX_3X2_F SomeMatrix() {
    D2D_MATRIX_3X2_F matrix{};
    matrix.m11 = 2.0F;
    matrix.m22 = 3.0F;
    matrix.dx = 4.0F;
    matrix.dy = 5.0F;
    return matrix;
}

TEST_F(DCompTree, ARootTransformIsSetWithoutACommit) {
    ASSERT_EQ(Build(), S_OK);
    recorder.TakeCalls();
    EXPECT_EQ(tree.SetRootTransform(SomeMatrix()), S_OK);
    EXPECT_EQ(recorder.TakeCalls(),
              (Strings{"CompositionDevice.CreateMatrixTransform()", "Transform.SetMatrix({2, 0, 0, 3, 4, 5})",
                       "Visual.SetTransform(Transform)"}));
    EXPECT_EQ(tree.ClearRootTransform(), S_OK);
    EXPECT_EQ(recorder.Calls(), (Strings{"Visual.SetTransform(null)"}));
}

TEST_F(DCompTree, ARootTransformThatFailsIsReported) {
    ASSERT_EQ(Build(), S_OK);
    for (const char* const call : {"CreateMatrixTransform", "SetMatrix", "SetTransform"}) {
        recorder.FailNext(call, E_FAIL);
        EXPECT_EQ(tree.SetRootTransform(SomeMatrix()), E_FAIL) << call;
    }
    recorder.FailNext("SetTransform", E_FAIL);
    EXPECT_EQ(tree.ClearRootTransform(), E_FAIL);
    const std::vector<Fakes::Report> reports = Fakes::ReportsIn(log.Text());
    ASSERT_EQ(reports.size(), 4U);
    EXPECT_EQ(reports[0].expression, "dcomp->CreateMatrixTransform(&transform)");
    EXPECT_EQ(reports[1].expression, "transform->SetMatrix(matrix)");
    EXPECT_EQ(reports[2].expression, "RootVisual->SetTransform(transform.Get())");
    EXPECT_EQ(reports[3].expression, "RootVisual->SetTransform(nullptr)");
}

TEST_F(DCompTree, AReleasedTreeTakesNothing) {
    ASSERT_EQ(Build(), S_OK);
    tree.Release();
    recorder.TakeCalls();
    EXPECT_EQ(tree.SetRootTransform(SomeMatrix()), E_FAIL);
    EXPECT_EQ(tree.ClearRootTransform(), E_FAIL);
    EXPECT_EQ(tree.SetClientOffset(POINT{1, 2}), E_FAIL);
    EXPECT_EQ(recorder.Calls(), Strings{});
    EXPECT_EQ(log.Text(), "");
}

TEST_F(DCompTree, AdoptTakesATreeOverAndLetsGoOfTheFormerOne) {
    ASSERT_EQ(Build(), S_OK);
    ComPtr<IDCompositionTarget> target;
    ComPtr<IDCompositionVisual2> root;
    ComPtr<IDCompositionVisual2> top;
    ComPtr<IDCompositionVisual2> bottom;
    ASSERT_EQ(device->GetDCompDevice()->CreateTargetForHwnd(window, TRUE, &target), S_OK);
    ASSERT_EQ(device->GetDCompDevice()->CreateVisual(&root), S_OK);
    ASSERT_EQ(device->GetDCompDevice()->CreateVisual(&top), S_OK);
    ASSERT_EQ(device->GetDCompDevice()->CreateVisual(&bottom), S_OK);
    recorder.TakeCalls();

    tree.Adopt(*device, std::move(target), std::move(root), std::move(top), std::move(bottom));
    EXPECT_EQ(recorder.TakeCalls(), Strings{});
    const Strings live = recorder.Live();
    const auto lives = [&](const char* name) { return std::ranges::find(live, name) != live.end(); };
    for (const char* const name : {"Target", "Visual", "Visual2", "Visual3"}) EXPECT_FALSE(lives(name)) << name;
    for (const char* const name : {"Target2", "Visual4", "Visual5", "Visual6"}) EXPECT_TRUE(lives(name)) << name;

    EXPECT_EQ(tree.SetClientOffset(POINT{1, 2}), S_OK);
    EXPECT_EQ(recorder.Calls(), (Strings{"Visual6.SetOffsetX(1)", "Visual6.SetOffsetY(2)"}));
}

}  // namespace
