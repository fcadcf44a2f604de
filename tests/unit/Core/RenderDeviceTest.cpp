#include "Core/RenderDevice.h"

#include "Core/DeviceManager.h"
#include "tests/fakes/GraphicsTest.h"
#include "tests/fakes/LogCapture.h"

#include <dxgi1_6.h>

#include <future>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace {

using Microsoft::WRL::ComPtr;
using Strings = std::vector<std::string>;

class RenderDevice : public Fakes::GraphicsTest {
protected:
    void SetUp() override {
        ASSERT_EQ(Tamborel::DeviceManager::Get().Initialize(), S_OK);
        recorder.TakeCalls();
    }
    void TearDown() override {
        device.reset();
        Tamborel::DeviceManager::Get().Shutdown();
        GraphicsTest::TearDown();
    }

    ComPtr<ID3D11CommandList> RecordedList() {
        ComPtr<ID3D11DeviceContext> context;
        ComPtr<ID3D11CommandList> list;
        EXPECT_EQ(device->GetD3DDevice()->CreateDeferredContext(0, &context), S_OK);
        EXPECT_EQ(context->FinishCommandList(FALSE, &list), S_OK);
        return list;
    }

    Fakes::LogCapture log;
    std::unique_ptr<Tamborel::RenderDevice> device = std::make_unique<Tamborel::RenderDevice>();
};

TEST_F(RenderDevice, InitializeMakesEverythingInOrder) {
    EXPECT_EQ(device->Initialize(), S_OK);
    EXPECT_EQ(recorder.Calls(), (Strings{
                                    "D3D11CreateDevice(null, 1, null, 0x20, 0xb100 0xb000, 7)",
                                    "ImmediateContext.SetMultithreadProtected(1)",
                                    "DrawingFactory.CreateDevice(Device)",
                                    "DCompositionCreateDevice2(Device)",
                                }));
    EXPECT_EQ(recorder.NameOf(device->GetD3DDevice()), "Device");
    EXPECT_EQ(recorder.NameOf(device->GetD3DContext()), "ImmediateContext");
    EXPECT_EQ(recorder.NameOf(device->GetD2DDevice()), "DrawingDevice");
    EXPECT_EQ(recorder.NameOf(device->GetDCompDevice()), "CompositionDevice");
}

TEST_F(RenderDevice, ASecondInitializeMakesNothingAgain) {
    ASSERT_EQ(device->Initialize(), S_OK);
    recorder.TakeCalls();
    EXPECT_EQ(device->Initialize(), S_OK);
    EXPECT_EQ(recorder.Calls(), Strings{});
}

TEST_F(RenderDevice, WithoutTheSwitchForThreadsItGoesOn) {
    recorder.FailQuery(__uuidof(ID3D11Multithread), E_NOINTERFACE);
    EXPECT_EQ(device->Initialize(), S_OK);
    EXPECT_EQ(recorder.Count("SetMultithreadProtected"), 0U);
}

TEST_F(RenderDevice, BeforeTheProcessHasItsFactoriesFails) {
    Tamborel::DeviceManager::Get().Shutdown();
    EXPECT_EQ(device->Initialize(), E_FAIL);
}

TEST_F(RenderDevice, ReleaseReleasesInOrder) {
    ASSERT_EQ(device->Initialize(), S_OK);
    recorder.TakeCalls();
    recorder.RecordDestruction(true);
    device->Release();
    // The device holds its immediate context, which so ends last whoever lets go of it first.
    EXPECT_EQ(recorder.Calls(), (Strings{"~CompositionDevice", "~DrawingDevice", "~Device", "~ImmediateContext"}));
    EXPECT_EQ(device->GetD3DDevice(), nullptr);
    EXPECT_EQ(device->GetD2DDevice(), nullptr);
    recorder.TakeCalls();
    device->Release();
    EXPECT_EQ(recorder.Calls(), Strings{});
    EXPECT_EQ(device->Initialize(), S_OK);
}

TEST_F(RenderDevice, ReleaseBeforeASuccessfulStartDoesNothing) {
    recorder.FailNext("DCompositionCreateDevice2", E_FAIL);
    ASSERT_EQ(device->Initialize(), E_FAIL);
    recorder.TakeCalls();
    recorder.RecordDestruction(true);
    device->Release();
    EXPECT_EQ(recorder.Calls(), Strings{});
    EXPECT_NE(device->GetD3DDevice(), nullptr);
}

TEST_F(RenderDevice, AStartAfterAFailedOneLeaksNothing) {
    recorder.FailNext("DCompositionCreateDevice2", E_FAIL);
    ASSERT_EQ(device->Initialize(), E_FAIL);
    EXPECT_EQ(device->Initialize(), S_OK);
}

class FailingDeviceCall : public RenderDevice, public ::testing::WithParamInterface<const char*> {};

TEST_P(FailingDeviceCall, ComesBackWithoutAReport) {
    recorder.FailNext(GetParam(), DXGI_ERROR_UNSUPPORTED);
    EXPECT_EQ(device->Initialize(), DXGI_ERROR_UNSUPPORTED);
    EXPECT_EQ(log.Text(), "");
    EXPECT_EQ(recorder.Count(GetParam()), 1U);
    const std::string last = recorder.Calls().back();
    EXPECT_NE(last.find(GetParam()), std::string::npos) << last;
}

INSTANTIATE_TEST_SUITE_P(InTurn, FailingDeviceCall,
                         ::testing::Values("D3D11CreateDevice", "CreateDevice", "DCompositionCreateDevice2"),
                         [](const auto& info) { return std::string(info.param); });

struct MissingInterface {
    const char* name;
    IID iid;
};

class DeviceWithoutInterface : public RenderDevice, public ::testing::WithParamInterface<MissingInterface> {};

TEST_P(DeviceWithoutInterface, EndsTheStartWithThatCode) {
    recorder.FailQuery(GetParam().iid, E_NOINTERFACE);
    EXPECT_EQ(device->Initialize(), E_NOINTERFACE);
    EXPECT_EQ(log.Text(), "");
    EXPECT_EQ(recorder.Count("DrawingFactory.CreateDevice"), 0U);
    EXPECT_EQ(recorder.Count("DCompositionCreateDevice2"), 0U);
}

INSTANTIATE_TEST_SUITE_P(InTurn, DeviceWithoutInterface,
                         ::testing::Values(MissingInterface{"Device5", __uuidof(ID3D11Device5)},
                                           MissingInterface{"DeviceContext4", __uuidof(ID3D11DeviceContext4)},
                                           MissingInterface{"DxgiDevice3", __uuidof(IDXGIDevice3)}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(RenderDevice, PlaysACommandListOnTheImmediateContext) {
    ASSERT_EQ(device->Initialize(), S_OK);
    const ComPtr<ID3D11CommandList> list = RecordedList();
    EXPECT_EQ(device->ExecuteImmediateCommandList(list.Get(), true), S_OK);
    EXPECT_EQ(recorder.Last("ExecuteCommandList"), "ImmediateContext.ExecuteCommandList(CommandList, 1)");
    EXPECT_EQ(device->ExecuteImmediateCommandList(list.Get(), false), S_OK);
    EXPECT_EQ(recorder.Last("ExecuteCommandList"), "ImmediateContext.ExecuteCommandList(CommandList, 0)");
}

TEST_F(RenderDevice, PlaysNoNullList) {
    EXPECT_EQ(device->ExecuteImmediateCommandList(nullptr, true), E_INVALIDARG);
    ASSERT_EQ(device->Initialize(), S_OK);
    EXPECT_EQ(device->ExecuteImmediateCommandList(nullptr, true), E_INVALIDARG);
    EXPECT_EQ(recorder.Count("ExecuteCommandList"), 0U);
}

TEST_F(RenderDevice, PlaysNothingWithoutAContext) {
    ASSERT_EQ(device->Initialize(), S_OK);
    const ComPtr<ID3D11CommandList> list = RecordedList();
    device->Release();
    EXPECT_EQ(device->ExecuteImmediateCommandList(list.Get(), true), E_FAIL);
}

TEST_F(RenderDevice, HoldsTheContextWhileItPlaysAListAndNoLonger) {
    ASSERT_EQ(device->Initialize(), S_OK);
    // Asked on a thread of its own: the one that holds a mutex may not.
    const auto isFree = [&] {
        return std::async(std::launch::async,
                          [&] { return std::unique_lock(device->GetContextMutex(), std::try_to_lock).owns_lock(); })
            .get();
    };
    bool freeMeanwhile = true;
    recorder.During("ExecuteCommandList", [&] { freeMeanwhile = isFree(); });
    EXPECT_EQ(device->ExecuteImmediateCommandList(RecordedList().Get(), true), S_OK);
    EXPECT_EQ(recorder.Count("ExecuteCommandList"), 1U);
    EXPECT_FALSE(freeMeanwhile);
    EXPECT_TRUE(isFree());
}

}  // namespace
