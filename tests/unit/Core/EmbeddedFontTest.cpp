// The font step of the start: what it does with fonts that can't be loaded.
#include "Core/DeviceManager.h"
#include "TestFont.h"
#include "tests/fakes/FakeDirectWrite.h"
#include "tests/fakes/GraphicsTest.h"
#include "tests/fakes/LogCapture.h"

#include <memory>
#include <string>
#include <vector>

namespace {

using Microsoft::WRL::ComPtr;
using Strings = std::vector<std::string>;

class EmbeddedFont : public Fakes::GraphicsTest {
protected:
    void TearDown() override {
        manager.Shutdown();
        GraphicsTest::TearDown();
    }

    /// The start succeeds, says nothing, and keeps nothing of the font step.
    void ExpectNoFonts() {
        EXPECT_EQ(manager.Initialize(), S_OK);
        EXPECT_EQ(log.Text(), "");
        EXPECT_EQ(manager.GetFontCollection(), nullptr);
        EXPECT_EQ(manager.GetFontLoader(), nullptr);
        EXPECT_EQ(manager.GetDWriteFactory5(), nullptr);
        EXPECT_NE(manager.GetDWriteFactory(), nullptr);
        EXPECT_EQ(font.References(), 1U);
        EXPECT_EQ(recorder.Live(), (Strings{"Factory", "DrawingFactory", "TextFactory", "ImagingFactory"}));
    }

    Fakes::LogCapture log;
    Tamborel::DeviceManager& manager = Tamborel::DeviceManager::Get();
    TestFont font{4};
    TestFont other{4};
    ScopedFonts fonts{{&font, &other}};
};

TEST_F(EmbeddedFont, IsHeldWhileItsBytesAreInUse) {
    ASSERT_EQ(manager.Initialize(), S_OK);
    EXPECT_EQ(font.References(), 2U);
    manager.Shutdown();
    EXPECT_EQ(font.References(), 1U);
}

TEST_F(EmbeddedFont, AnEmptyListStillGivesACollection) {
    const ScopedFonts none{{}};
    EXPECT_EQ(manager.Initialize(), S_OK);
    EXPECT_NE(manager.GetFontCollection(), nullptr);
}

TEST_F(EmbeddedFont, WithoutTheNewerFactoryTheWholeStepIsSkipped) {
    recorder.FailQuery(__uuidof(IDWriteFactory5), E_NOINTERFACE);
    ExpectNoFonts();
    EXPECT_EQ(recorder.Count("CreateInMemoryFontFileLoader"), 0U);
    EXPECT_EQ(recorder.Count("UnregisterFontFileLoader"), 0U);
}

TEST_F(EmbeddedFont, OfZeroLengthStopsTheStepWithNoReport) {
    TestFont empty{0};
    const ScopedFonts two{{&empty, &other}};
    ExpectNoFonts();
    EXPECT_EQ(recorder.Count("CreateInMemoryFontFileReference"), 0U);
    EXPECT_EQ(recorder.Count("UnregisterFontFileLoader"), 1U);
}

TEST_F(EmbeddedFont, TheFirstThatFailsEndsTheLoop) {
    recorder.FailNext("AddFontFile", E_INVALIDARG);
    ExpectNoFonts();
    EXPECT_EQ(recorder.Count("AddFontFile"), 1U);
    EXPECT_EQ(recorder.Count("CreateFontSet"), 0U);
}

TEST_F(EmbeddedFont, WhatAFailedStepHeldIsReleasedInOrder) {
    recorder.RecordDestruction(true);
    recorder.FailNext("CreateFontCollectionFromFontSet", E_FAIL);
    ASSERT_EQ(manager.Initialize(), S_OK);
    const Strings calls = recorder.Calls();
    const Strings tail(calls.end() - 7, calls.end());
    EXPECT_EQ(tail, (Strings{"~FontSet", "~FontSetBuilder", "~FontFile", "~FontFile2",
                             "TextFactory.UnregisterFontFileLoader(FontLoader)", "~FontLoader",
                             "CoCreateInstance(WICImagingFactory2, 1)"}));
}

class FailingFontCall : public EmbeddedFont, public ::testing::WithParamInterface<const char*> {};

TEST_P(FailingFontCall, LeavesTheStartAndTheSystemsFonts) {
    recorder.FailNext(GetParam(), E_FAIL);
    ExpectNoFonts();
    // There is no loader to unregister when none could be made.
    const bool loader = std::string_view(GetParam()) != "CreateInMemoryFontFileLoader";
    EXPECT_EQ(recorder.Count("UnregisterFontFileLoader"), loader ? 1U : 0U);
}

INSTANTIATE_TEST_SUITE_P(InTurn, FailingFontCall,
                         ::testing::Values("CreateInMemoryFontFileLoader", "RegisterFontFileLoader",
                                           "CreateFontSetBuilder", "CreateInMemoryFontFileReference", "AddFontFile",
                                           "CreateFontSet", "CreateFontCollectionFromFontSet"),
                         [](const auto& info) { return std::string(info.param); });

class AddEmbeddedFont : public Fakes::GraphicsTest {
protected:
    AddEmbeddedFont() {
        factory.Attach(new Fakes::FakeTextFactory);
        loader.Attach(new Fakes::FakeFontLoader);
        builder.Attach(new Fakes::FakeFontSetBuilder);
        recorder.TakeCalls();
    }
    void TearDown() override {
        builder.Reset();
        loader.Reset();
        factory.Reset();
        GraphicsTest::TearDown();
    }

    ComPtr<IDWriteFactory5> factory;
    ComPtr<IDWriteInMemoryFontFileLoader> loader;
    ComPtr<IDWriteFontSetBuilder1> builder;
    TestFont font{4};
};

TEST_F(AddEmbeddedFont, WithoutFactoryLoaderOrBuilderIsInvalid) {
    EXPECT_EQ(Tamborel::AddEmbeddedFont(nullptr, loader.Get(), builder.Get(), font), E_INVALIDARG);
    EXPECT_EQ(Tamborel::AddEmbeddedFont(factory.Get(), nullptr, builder.Get(), font), E_INVALIDARG);
    EXPECT_EQ(Tamborel::AddEmbeddedFont(factory.Get(), loader.Get(), nullptr, font), E_INVALIDARG);
    EXPECT_EQ(recorder.Calls(), Strings{});
}

TEST_F(AddEmbeddedFont, OfNoBytesFails) {
    TestFont empty{0};
    EXPECT_EQ(Tamborel::AddEmbeddedFont(factory.Get(), loader.Get(), builder.Get(), empty), E_FAIL);
    EXPECT_EQ(recorder.Calls(), Strings{});
}

TEST_F(AddEmbeddedFont, OfMoreBytesThan32BitsCountFails) {
    TestFont largest{0xFFFFFFFF};
    TestFont larger{0x100000000};
    EXPECT_EQ(Tamborel::AddEmbeddedFont(factory.Get(), loader.Get(), builder.Get(), larger), E_FAIL);
    EXPECT_EQ(recorder.Calls(), Strings{});
    EXPECT_EQ(Tamborel::AddEmbeddedFont(factory.Get(), loader.Get(), builder.Get(), largest), S_OK);
    builder.Reset();  // It holds a file that holds the font, which ends here.
}

TEST_F(AddEmbeddedFont, ReturnsTheFirstFailure) {
    recorder.FailNext("CreateInMemoryFontFileReference", E_ACCESSDENIED);
    EXPECT_EQ(Tamborel::AddEmbeddedFont(factory.Get(), loader.Get(), builder.Get(), font), E_ACCESSDENIED);
    EXPECT_EQ(recorder.Count("AddFontFile"), 0U);
    recorder.FailNext("AddFontFile", E_OUTOFMEMORY);
    EXPECT_EQ(Tamborel::AddEmbeddedFont(factory.Get(), loader.Get(), builder.Get(), font), E_OUTOFMEMORY);
    EXPECT_EQ(font.References(), 1U);
}

}  // namespace
