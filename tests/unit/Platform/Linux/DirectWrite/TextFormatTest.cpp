#include <dwrite_3.h>
#include <wrl/client.h>

#include <gtest/gtest.h>

namespace {

using Microsoft::WRL::ComPtr;

ComPtr<IDWriteFactory3> MakeFactory(DWRITE_FACTORY_TYPE type = DWRITE_FACTORY_TYPE_SHARED) {
    ComPtr<IDWriteFactory3> factory;
    EXPECT_EQ(
        DWriteCreateFactory(type, __uuidof(IDWriteFactory3), reinterpret_cast<IUnknown**>(factory.GetAddressOf())),
        S_OK);
    return factory;
}

HRESULT MakeFormat(const wchar_t* family, float size, ComPtr<IDWriteTextFormat>& format) {
    return MakeFactory()->CreateTextFormat(family, nullptr, DWRITE_FONT_WEIGHT_SEMI_BOLD, DWRITE_FONT_STYLE_ITALIC,
                                           DWRITE_FONT_STRETCH_NORMAL, size, L"", &format);
}

TEST(TextFormat, KeepsItsAttributes) {
    ComPtr<IDWriteTextFormat> format;
    ASSERT_EQ(MakeFormat(L"Segoe UI", 14.5F, format), S_OK);
    wchar_t family[9];
    EXPECT_EQ(format->GetFontFamilyNameLength(), 8U);
    EXPECT_EQ(format->GetFontFamilyName(family, 9), S_OK);
    EXPECT_STREQ(family, L"Segoe UI");
    EXPECT_EQ(format->GetFontWeight(), DWRITE_FONT_WEIGHT_SEMI_BOLD);
    EXPECT_EQ(format->GetFontStyle(), DWRITE_FONT_STYLE_ITALIC);
    EXPECT_EQ(format->GetFontStretch(), DWRITE_FONT_STRETCH_NORMAL);
    EXPECT_EQ(format->GetFontSize(), 14.5F);
    EXPECT_EQ(format->GetLocaleNameLength(), 0U);  // An empty locale stays empty.
    ComPtr<IDWriteFontCollection> collection;
    EXPECT_EQ(format->GetFontCollection(&collection), S_OK);
    EXPECT_FALSE(collection);
}

TEST(TextFormat, NameNeedsRoomForItsEnd) {
    ComPtr<IDWriteTextFormat> format;
    ASSERT_EQ(MakeFormat(L"Segoe UI", 12, format), S_OK);
    wchar_t family[8];
    EXPECT_EQ(format->GetFontFamilyName(family, 8), HRESULT_FROM_WIN32(ERROR_INSUFFICIENT_BUFFER));
}

TEST(TextFormat, StartsLeadingNearAndWrapping) {
    ComPtr<IDWriteTextFormat> format;
    ASSERT_EQ(MakeFormat(L"Segoe UI", 12, format), S_OK);
    EXPECT_EQ(format->GetTextAlignment(), DWRITE_TEXT_ALIGNMENT_LEADING);
    EXPECT_EQ(format->GetParagraphAlignment(), DWRITE_PARAGRAPH_ALIGNMENT_NEAR);
    EXPECT_EQ(format->GetWordWrapping(), DWRITE_WORD_WRAPPING_WRAP);
}

TEST(TextFormat, RefusesValuesOutsideTheEnumerations) {
    ComPtr<IDWriteTextFormat> format;
    ASSERT_EQ(MakeFormat(L"Segoe UI", 12, format), S_OK);
    EXPECT_EQ(format->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_JUSTIFIED), S_OK);
    EXPECT_EQ(format->SetTextAlignment(static_cast<DWRITE_TEXT_ALIGNMENT>(4)), E_INVALIDARG);
    EXPECT_EQ(format->GetTextAlignment(), DWRITE_TEXT_ALIGNMENT_JUSTIFIED);
    EXPECT_EQ(format->SetParagraphAlignment(static_cast<DWRITE_PARAGRAPH_ALIGNMENT>(-1)), E_INVALIDARG);
    EXPECT_EQ(format->SetWordWrapping(DWRITE_WORD_WRAPPING_CHARACTER), S_OK);
    EXPECT_EQ(format->SetWordWrapping(static_cast<DWRITE_WORD_WRAPPING>(5)), E_INVALIDARG);
}

TEST(TextFormat, RefusesASizeThatIsNotPositive) {
    ComPtr<IDWriteTextFormat> format;
    EXPECT_EQ(MakeFormat(L"Segoe UI", 0, format), E_INVALIDARG);
    EXPECT_FALSE(format);
}

TEST(TextFormat, SharedFactoryIsOneObjectAndAnIsolatedOneIsNot) {
    EXPECT_EQ(MakeFactory().Get(), MakeFactory().Get());
    EXPECT_NE(MakeFactory().Get(), MakeFactory(DWRITE_FACTORY_TYPE_ISOLATED).Get());
}

}  // namespace
