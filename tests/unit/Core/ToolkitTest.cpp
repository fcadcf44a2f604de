#include "Core/Toolkit.h"

#include "Core/DeviceManager.h"
#include "tests/fakes/GraphicsTest.h"
#include "tests/fakes/LogCapture.h"

#include <string>
#include <vector>

namespace {

class Toolkit : public Fakes::GraphicsTest {
protected:
    void TearDown() override {
        Tamborel::DeviceManager::Get().Shutdown();
        GraphicsTest::TearDown();
    }

    std::vector<std::string> FirstCalls(std::size_t count) {
        std::vector<std::string> calls = recorder.Calls();
        if (calls.size() > count) calls.resize(count);
        return calls;
    }

    Fakes::LogCapture log;
};

constexpr const char* beforeDevices =
    "[Tamborel] Initialize: setting DPI awareness.\n"
    "[Tamborel] Initialize: calling CoInitializeEx.\n";
constexpr const char* allLines =
    "[Tamborel] Initialize: setting DPI awareness.\n"
    "[Tamborel] Initialize: calling CoInitializeEx.\n"
    "[Tamborel] Initialize: creating devices.\n";

TEST_F(Toolkit, InitializeSetsAwarenessEntersTheApartmentAndMakesTheDevices) {
    EXPECT_EQ(Tamborel::Initialize(), S_OK);
    EXPECT_EQ(FirstCalls(3), (std::vector<std::string>{"SetProcessDpiAwarenessContext(-4)", "CoInitializeEx(0)",
                                                       "CreateDXGIFactory2(0)"}));
    EXPECT_EQ(log.Text(), allLines);
    EXPECT_NE(Tamborel::DeviceManager::Get().GetWICFactory(), nullptr);
}

TEST_F(Toolkit, InitializeDoesNotLookAtTheResultOfSettingAwareness) {
    recorder.FailNext("SetProcessDpiAwarenessContext", E_ACCESSDENIED);
    EXPECT_EQ(Tamborel::Initialize(), S_OK);
}

TEST_F(Toolkit, AnApartmentOfTheOtherKindLetsTheStartProceed) {
    recorder.FailNext("CoInitializeEx", RPC_E_CHANGED_MODE);
    EXPECT_EQ(Tamborel::Initialize(), S_OK);
    EXPECT_EQ(log.Text(), allLines);
}

TEST_F(Toolkit, AnyOtherApartmentFailureComesBackUnchangedBeforeDevicesAreMade) {
    recorder.FailNext("CoInitializeEx", E_OUTOFMEMORY);
    EXPECT_EQ(Tamborel::Initialize(), E_OUTOFMEMORY);
    EXPECT_EQ(log.Text(), beforeDevices);
    EXPECT_EQ(recorder.Count("CreateDXGIFactory2"), 0U);
    EXPECT_EQ(recorder.Count("CoUninitialize"), 0U);
}

TEST_F(Toolkit, ADeviceFailureComesBackAndLeavesTheApartmentEntered) {
    recorder.FailNext("CreateDXGIFactory2", E_ACCESSDENIED);
    EXPECT_EQ(Tamborel::Initialize(), E_ACCESSDENIED);
    EXPECT_EQ(recorder.Count("CoUninitialize"), 0U);
}

TEST_F(Toolkit, ShutdownReleasesTheDevicesAndThenLeavesTheApartment) {
    ASSERT_EQ(Tamborel::Initialize(), S_OK);
    recorder.TakeCalls();
    recorder.RecordDestruction(true);
    Tamborel::Shutdown();
    const std::vector<std::string> calls = recorder.Calls();
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls.back(), "CoUninitialize()");
    EXPECT_EQ(recorder.Live(), std::vector<std::string>{});
}

}  // namespace
