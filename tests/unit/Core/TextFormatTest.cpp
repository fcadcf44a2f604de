// DeviceManager::CreateTextFormat: built-in families first, the system's otherwise.
#include "Core/DeviceManager.h"
#include "TestFont.h"
#include "tests/fakes/FakeDirectWrite.h"
#include "tests/fakes/GraphicsTest.h"

#include <wrl/client.h>

namespace {

using Microsoft::WRL::ComPtr;

class TextFormat : public Fakes::GraphicsTest {
protected:
    TextFormat() { Fakes::SetFontFamilies({L"Built In"}); }
    ~TextFormat() override { Fakes::SetFontFamilies({}); }

    void TearDown() override {
        manager.Shutdown();
        GraphicsTest::TearDown();
    }

    HRESULT Create(const std::wstring& family, IDWriteTextFormat** format) {
        return manager.CreateTextFormat(family, 600, 2, 5, 14.5F, L"en-us", format);
    }

    Tamborel::DeviceManager& manager = Tamborel::DeviceManager::Get();
    TestFont font{4};
    ScopedFonts fonts{{&font}};
};

TEST_F(TextFormat, OfABuiltInFamilyUsesTheBuiltInFonts) {
    ASSERT_EQ(manager.Initialize(), S_OK);
    ComPtr<IDWriteTextFormat> format;
    EXPECT_EQ(Create(L"Built In", &format), S_OK);
    EXPECT_NE(format.Get(), nullptr);
    EXPECT_EQ(recorder.Last("CreateTextFormat"),
              "TextFactory.CreateTextFormat(\"Built In\", FontCollection, 600, 2, 5, 14.5, \"en-us\")");
}

TEST_F(TextFormat, OfAnyOtherFamilyUsesTheSystemsFonts) {
    ASSERT_EQ(manager.Initialize(), S_OK);
    ComPtr<IDWriteTextFormat> format;
    EXPECT_EQ(Create(L"Segoe UI", &format), S_OK);
    EXPECT_EQ(recorder.Last("FindFamilyName"), "FontCollection.FindFamilyName(\"Segoe UI\")");
    EXPECT_EQ(recorder.Last("CreateTextFormat"),
              "TextFactory.CreateTextFormat(\"Segoe UI\", null, 600, 2, 5, 14.5, \"en-us\")");
}

TEST_F(TextFormat, WithABuiltInFontThatFailedToLoadUsesTheSystemsFonts) {
    recorder.FailNext("AddFontFile", E_FAIL);
    ASSERT_EQ(manager.Initialize(), S_OK);
    ASSERT_EQ(manager.GetFontCollection(), nullptr);
    ComPtr<IDWriteTextFormat> format;
    EXPECT_EQ(Create(L"Built In", &format), S_OK);
    EXPECT_EQ(recorder.Count("FindFamilyName"), 0U);
    EXPECT_EQ(recorder.Last("CreateTextFormat"),
              "TextFactory.CreateTextFormat(\"Built In\", null, 600, 2, 5, 14.5, \"en-us\")");
}

TEST_F(TextFormat, OfAnEmptyFamilyIsInvalidAndLeavesNull) {
    ASSERT_EQ(manager.Initialize(), S_OK);
    auto* format = reinterpret_cast<IDWriteTextFormat*>(this);
    EXPECT_EQ(Create(L"", &format), E_INVALIDARG);
    EXPECT_EQ(format, nullptr);
    EXPECT_EQ(recorder.Count("CreateTextFormat"), 0U);
}

TEST_F(TextFormat, WithoutAPlaceForTheResultIsInvalid) {
    EXPECT_EQ(Create(L"Segoe UI", nullptr), E_INVALIDARG);
}

TEST_F(TextFormat, BeforeTheStartFailsAndLeavesNull) {
    auto* format = reinterpret_cast<IDWriteTextFormat*>(this);
    EXPECT_EQ(Create(L"", &format), E_FAIL);
    EXPECT_EQ(format, nullptr);
}

TEST_F(TextFormat, ALookUpThatFailsIsReturnedAsItStands) {
    ASSERT_EQ(manager.Initialize(), S_OK);
    recorder.FailNext("FindFamilyName", E_OUTOFMEMORY);
    ComPtr<IDWriteTextFormat> format;
    EXPECT_EQ(Create(L"Built In", &format), E_OUTOFMEMORY);
    EXPECT_EQ(recorder.Count("CreateTextFormat"), 0U);
}

TEST_F(TextFormat, TheFactorysFailureIsReturned) {
    ASSERT_EQ(manager.Initialize(), S_OK);
    recorder.FailNext("CreateTextFormat", E_ACCESSDENIED);
    ComPtr<IDWriteTextFormat> format;
    EXPECT_EQ(Create(L"Built In", &format), E_ACCESSDENIED);
    EXPECT_EQ(format.Get(), nullptr);
}

TEST_F(TextFormat, AnEmptyLocaleStaysEmpty) {
    ASSERT_EQ(manager.Initialize(), S_OK);
    ComPtr<IDWriteTextFormat> format;
    EXPECT_EQ(manager.CreateTextFormat(L"Segoe UI", 400, 0, 5, 12.0F, L"", &format), S_OK);
    EXPECT_EQ(recorder.Last("CreateTextFormat"),
              "TextFactory.CreateTextFormat(\"Segoe UI\", null, 400, 0, 5, 12, \"\")");
}

}  // namespace
