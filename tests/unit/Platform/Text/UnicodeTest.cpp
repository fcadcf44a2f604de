#include "Platform/Text/Unicode.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using namespace Platform;
using namespace std::string_literals;

namespace {

// Escapes for bytes end their literal, so that no following letter counts as a digit of theirs.
const std::string mixedUtf8 = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z";  // a, U+00E9, U+20AC, U+1F600, z
const std::wstring mixedWide = L"a\u00E9\u20AC\U0001F600z";
const std::u16string mixedUtf16 = u"a\u00E9\u20AC\U0001F600z";

std::wstring Unit(unsigned value) {
    return std::wstring(1, static_cast<wchar_t>(value));
}

const std::vector<std::string> malformed{
    "\x80",              // a continuation alone
    "\xBF",              //
    "\xC0\x80",          // overlong forms of U+0000
    "\xE0\x80\x80",      //
    "\xF0\x80\x80\x80",  //
    "\xC1\xBF",          // overlong U+007F
    "\xE0\x9F\xBF",      // overlong U+07FF
    "\xF0\x8F\xBF\xBF",  // overlong U+FFFF
    "\xED\xA0\x80",      // U+D800
    "\xED\xBF\xBF",      // U+DFFF
    "\xF4\x90\x80\x80",  // U+110000
    "\xF8\x88\x80\x80\x80",
    "\xFF",
    "\xFE",
    "\xC3",          // truncated
    "\xE2\x82",      //
    "\xF0\x9F\x98",  //
    "\xC3(",         // a lead byte without its continuation
    "\xE2\x82(",     //
    "\xE2(\xAC",     //
};

}  // namespace

TEST(WideFromUtf8, DecodesEverySequenceLength) {
    EXPECT_EQ(WideFromUtf8(mixedUtf8), mixedWide);
}

TEST(WideFromUtf8, KeepsNulCharacters) {
    EXPECT_EQ(WideFromUtf8("a\0b"s), L"a\0b"s);
}

TEST(WideFromUtf8, DecodesTheFirstAndLastCodePointOfEachLength) {
    EXPECT_EQ(
        WideFromUtf8(
            "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"),
        L"\x7F" + Unit(0x80) + Unit(0x7FF) + Unit(0x800) + Unit(0xD7FF) + Unit(0xE000) + Unit(0xFFFF) +
            L"\U00010000\U0010FFFF");
}

TEST(WideFromUtf8, ThrowsOnMalformedText) {
    for (const std::string& text : malformed) {
        EXPECT_THROW(WideFromUtf8(text), InvalidText) << testing::PrintToString(text);
        EXPECT_THROW(WideFromUtf8("valid" + text), InvalidText) << testing::PrintToString(text);
        EXPECT_THROW(WideFromUtf8(text + "valid"), InvalidText) << testing::PrintToString(text);
    }
}

TEST(WideFromUtf8, EmptyTextStaysEmpty) {
    EXPECT_EQ(WideFromUtf8(""), L"");
}

TEST(Utf8FromWide, EncodesEverySequenceLength) {
    EXPECT_EQ(Utf8FromWide(mixedWide), mixedUtf8);
}

TEST(Utf8FromWide, LoneSurrogatesBecomeTheReplacementCharacter) {
    EXPECT_EQ(Utf8FromWide(L"a" + Unit(0xD800) + L"b" + Unit(0xDC80)),
              "a\xEF\xBF\xBD"
              "b\xEF\xBF\xBD");
}

TEST(Utf8FromWide, ASurrogateInFrontOfOrdinaryTextKeepsThatText) {
    EXPECT_EQ(Utf8FromWide(Unit(0xD83D) + L"x"), "\xEF\xBF\xBDx");
}

TEST(Utf16, RoundTripsThroughWide) {
    EXPECT_EQ(Utf16FromWide(mixedWide), mixedUtf16);
    EXPECT_EQ(WideFromUtf16(mixedUtf16), mixedWide);
}

TEST(Utf16, CharactersBeyondTheFirstPlaneTakeTwoUnits) {
    EXPECT_EQ(Utf16FromWide(L"\U0010FFFF"), (std::u16string{0xDBFF, 0xDFFF}));
}

TEST(Utf16, LoneSurrogatesPassThroughBothWays) {
    const std::u16string lone{0xDC00, u'a', 0xD800, u'b', 0xD83D};
    EXPECT_EQ(Utf16FromWide(WideFromUtf16(lone)), lone);
    EXPECT_EQ(Utf16FromWide(Unit(0xD800)), std::u16string(1, char16_t{0xD800}));
}

TEST(Native, ValidUtf8IsDecoded) {
    EXPECT_EQ(WideFromNative(mixedUtf8), mixedWide);
}

TEST(Native, EachStrayByteBecomesALoneSurrogate) {
    EXPECT_EQ(WideFromNative("x\x80\xFF"), L"x" + Unit(0xDC80) + Unit(0xDCFF));
    EXPECT_EQ(WideFromNative("\xE2\x82"), Unit(0xDCE2) + Unit(0xDC82));
}

TEST(Native, TheEncodedFormOfAStrayByteIsItselfMadeOfStrayBytes) {
    EXPECT_EQ(WideFromNative("\xED\xB2\x80"), Unit(0xDCED) + Unit(0xDCB2) + Unit(0xDC80));
}

TEST(Native, MalformedTextComesBackAsItWas) {
    for (const std::string& text : malformed) {
        EXPECT_EQ(NativeFromWide(WideFromNative(text)), text) << testing::PrintToString(text);
        const std::string between = std::string("a").append(text).append(mixedUtf8);
        EXPECT_EQ(NativeFromWide(WideFromNative(between)), between);
    }
}

TEST(Native, AnyBytesComeBackAsTheyWere) {
    std::mt19937 random(20260726);
    std::uniform_int_distribution<int> byte(0, 255);
    std::uniform_int_distribution<std::size_t> length(0, 12);
    for (int i = 0; i < 20'000; ++i) {
        std::string text(length(random), '\0');
        for (char& each : text) each = static_cast<char>(byte(random));
        ASSERT_EQ(NativeFromWide(WideFromNative(text)), text) << testing::PrintToString(text);
    }
}

TEST(Native, OtherLoneSurrogatesBecomeTheReplacementCharacter) {
    EXPECT_EQ(NativeFromWide(Unit(0xD800)), "\xEF\xBF\xBD");
    EXPECT_EQ(NativeFromWide(Unit(0xDC7F)), "\xEF\xBF\xBD");
    EXPECT_EQ(NativeFromWide(Unit(0xDD00)), "\xEF\xBF\xBD");
}
