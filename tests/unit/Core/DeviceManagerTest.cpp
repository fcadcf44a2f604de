#include "Core/DeviceManager.h"

#include "TestFont.h"
#include "tests/fakes/GraphicsTest.h"
#include "tests/fakes/LogCapture.h"

#include <string>
#include <vector>

namespace {

using Strings = std::vector<std::string>;

class DeviceManager : public Fakes::GraphicsTest {
protected:
    void TearDown() override {
        // What a failed start left behind goes once a start has succeeded.
        recorder.Reset();
        EXPECT_EQ(manager.Initialize(), S_OK);
        manager.Shutdown();
        GraphicsTest::TearDown();
    }

    Fakes::LogCapture log;
    Tamborel::DeviceManager& manager = Tamborel::DeviceManager::Get();
    TestFont firstFont{4};
    TestFont secondFont{3};
    ScopedFonts fonts{{&firstFont, &secondFont}};
};

TEST_F(DeviceManager, IsOneObject) {
    EXPECT_EQ(&Tamborel::DeviceManager::Get(), &Tamborel::DeviceManager::Get());
}

TEST_F(DeviceManager, InitializeMakesEverythingInOrder) {
    EXPECT_EQ(manager.Initialize(), S_OK);
    EXPECT_EQ(recorder.Calls(), (Strings{
                                    "CreateDXGIFactory2(0)",
                                    "D2D1CreateFactory(1, 0)",
                                    "DWriteCreateFactory(0)",
                                    "TextFactory.CreateInMemoryFontFileLoader()",
                                    "TextFactory.RegisterFontFileLoader(FontLoader)",
                                    "TextFactory.CreateFontSetBuilder()",
                                    "FontLoader.CreateInMemoryFontFileReference(TextFactory, 4, owner)",
                                    "FontSetBuilder.AddFontFile(FontFile)",
                                    "FontLoader.CreateInMemoryFontFileReference(TextFactory, 3, owner)",
                                    "FontSetBuilder.AddFontFile(FontFile2)",
                                    "FontSetBuilder.CreateFontSet()",
                                    "TextFactory.CreateFontCollectionFromFontSet(FontSet)",
                                    "CoCreateInstance(WICImagingFactory2, 1)",
                                }));
    EXPECT_EQ(log.Text(), "");
    EXPECT_EQ(recorder.NameOf(manager.GetDXGIFactory()), "Factory");
    EXPECT_EQ(recorder.NameOf(manager.GetD2DFactory()), "DrawingFactory");
    EXPECT_EQ(recorder.NameOf(manager.GetDWriteFactory()), "TextFactory");
    EXPECT_EQ(recorder.NameOf(manager.GetDWriteFactory5()), "TextFactory");
    EXPECT_EQ(recorder.NameOf(manager.GetFontLoader()), "FontLoader");
    EXPECT_EQ(recorder.NameOf(manager.GetFontCollection()), "FontCollection");
    EXPECT_EQ(recorder.NameOf(manager.GetWICFactory()), "ImagingFactory");
}

TEST_F(DeviceManager, ASecondInitializeMakesNothingAgain) {
    ASSERT_EQ(manager.Initialize(), S_OK);
    recorder.TakeCalls();
    EXPECT_EQ(manager.Initialize(), S_OK);
    EXPECT_EQ(recorder.Calls(), Strings{});
}

TEST_F(DeviceManager, ShutdownBeforeASuccessfulStartDoesNothing) {
    recorder.RecordDestruction(true);
    manager.Shutdown();
    EXPECT_EQ(recorder.Calls(), Strings{});

    recorder.FailNext("CoCreateInstance", REGDB_E_CLASSNOTREG);
    EXPECT_EQ(manager.Initialize(), REGDB_E_CLASSNOTREG);
    recorder.TakeCalls();
    manager.Shutdown();
    EXPECT_EQ(recorder.Calls(), Strings{});
    EXPECT_NE(manager.GetDXGIFactory(), nullptr);
}

TEST_F(DeviceManager, ShutdownReleasesInOrder) {
    ASSERT_EQ(manager.Initialize(), S_OK);
    recorder.TakeCalls();
    recorder.RecordDestruction(true);
    manager.Shutdown();
    EXPECT_EQ(recorder.Calls(), (Strings{
                                    "~ImagingFactory",
                                    "TextFactory.UnregisterFontFileLoader(FontLoader)",
                                    "~FontCollection",
                                    "~FontSet",
                                    "~FontFile",
                                    "~FontFile2",
                                    "~FontLoader",
                                    "~TextFactory",
                                    "~DrawingFactory",
                                    "~Factory",
                                }));
    EXPECT_EQ(manager.GetDXGIFactory(), nullptr);
    EXPECT_EQ(manager.GetDWriteFactory(), nullptr);
    EXPECT_EQ(manager.GetFontCollection(), nullptr);
}

TEST_F(DeviceManager, CanBeInitializedAgainAfterShutdown) {
    ASSERT_EQ(manager.Initialize(), S_OK);
    manager.Shutdown();
    EXPECT_EQ(manager.Initialize(), S_OK);
    EXPECT_EQ(recorder.NameOf(manager.GetDXGIFactory()), "Factory2");
}

TEST_F(DeviceManager, AStartAfterAFailedOneLeaksNothing) {
    recorder.FailNext("CoCreateInstance", REGDB_E_CLASSNOTREG);
    ASSERT_EQ(manager.Initialize(), REGDB_E_CLASSNOTREG);
    ASSERT_EQ(manager.Initialize(), S_OK);
    manager.Shutdown();
    EXPECT_EQ(recorder.Live(), Strings{});
    EXPECT_EQ(firstFont.References(), 1U);
}

struct SetUpCall {
    const char* call;
    const char* expression;
};

class FailingSetUpCall : public DeviceManager, public ::testing::WithParamInterface<SetUpCall> {};

TEST_P(FailingSetUpCall, IsReportedTwiceWithItsTextAndReturned) {
    recorder.FailNext(GetParam().call, E_ACCESSDENIED);
    EXPECT_EQ(manager.Initialize(), E_ACCESSDENIED);

    const std::vector<Fakes::Report> reports = Fakes::ReportsIn(log.Text());
    ASSERT_EQ(reports.size(), 2U) << log.Text();
    EXPECT_EQ(reports[0].code, "0x80070005");
    EXPECT_EQ(reports[0].text, "Access is denied.");
    EXPECT_EQ(reports[0].expression, GetParam().expression);
    EXPECT_NE(reports[0].place.find("Core/DeviceManager"), std::string::npos);
    EXPECT_EQ(reports[1].code, "0x80070005");
    EXPECT_EQ(reports[1].expression, "CreateDevices()");
    // It ends the set-up: no call comes after it.
    EXPECT_EQ(recorder.Calls().back().find(GetParam().call), 0U) << recorder.Calls().back();
}

INSTANTIATE_TEST_SUITE_P(
    InTurn, FailingSetUpCall,
    ::testing::Values(SetUpCall{"CreateDXGIFactory2", "CreateDXGIFactory2(dxgiFlags, IID_PPV_ARGS(&DXGIFactory))"},
                      SetUpCall{
                          "D2D1CreateFactory",
                          "D2D1CreateFactory( D2D1_FACTORY_TYPE_MULTI_THREADED, d2dOpts, D2DFactory.GetAddressOf())"},
                      SetUpCall{"DWriteCreateFactory",
                                "DWriteCreateFactory( DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory3), "
                                "reinterpret_cast<IUnknown**>(DWriteFactory.GetAddressOf()))"},
                      SetUpCall{"CoCreateInstance",
                                "CoCreateInstance( CLSID_WICImagingFactory2, nullptr, CLSCTX_INPROC_SERVER, "
                                "IID_PPV_ARGS(&WICFactory))"}),
    [](const auto& info) { return std::string(info.param.call); });

}  // namespace
