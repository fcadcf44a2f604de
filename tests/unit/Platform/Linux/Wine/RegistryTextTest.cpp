#include "Platform/Linux/Wine/RegistryText.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

using Platform::FindRegistryString;

namespace {

const std::string Start = "WINE REGISTRY Version 2\n;; All keys relative to \\\\User\n\n#arch=win64\n\n";
const std::string SteamKey = "[Software\\\\Valve\\\\Steam] 1700000000\n#time=1d9e2f3a4b5c6d7\n";

/// What the value "x" is, when its line is `line` (all after the name).
std::optional<std::wstring> ValueOf(const std::string& line) {
    return FindRegistryString(Start + SteamKey + "\"x\"" + line, L"Software\\Valve\\Steam", L"x");
}

}  // namespace

TEST(RegistryText, FindsAValueAmongKeysAndValues) {
    const std::string text = Start + "[Software\\\\Valve] 1\n\"SteamPath\"=\"wrong\"\n\n" + SteamKey +
                             "\"Language\"=\"english\"\n\"SteamPath\"=\"c:/program files (x86)/steam\"\n\n" +
                             "[Software\\\\Wine] 1\n\"SteamPath\"=\"wrong\"\n";
    EXPECT_EQ(FindRegistryString(text, L"Software\\Valve\\Steam", L"SteamPath"), L"c:/program files (x86)/steam");
}

TEST(RegistryText, KeysAndNamesMatchWithoutRegardToCase) {
    EXPECT_EQ(
        FindRegistryString(Start + "[SOFTWARE\\\\wow6432node\\\\Gr\\x00fc\\x00dfe] 1\n\"INSTALLPath\"=\"C:\\\\S\"\n",
                           L"Software\\Wow6432Node\\GR\xDC\xDF"
                           L"E",
                           L"installpath"),
        L"C:\\S");
}

TEST(RegistryText, KeysAndNamesMatchWhole) {
    const std::string text = Start + SteamKey + "\"SteamPath\"=\"v\"\n";
    EXPECT_EQ(FindRegistryString(text, L"Software\\Valve", L"SteamPath"), std::nullopt);
    EXPECT_EQ(FindRegistryString(text, L"Software\\Valve\\Steam\\Apps", L"SteamPath"), std::nullopt);
    EXPECT_EQ(FindRegistryString(text, L"Software\\Valve\\Steam", L"Steam"), std::nullopt);
    EXPECT_EQ(FindRegistryString(text, L"Software\\Valve\\Steam", L"SteamPathX"), std::nullopt);
}

TEST(RegistryText, EscapesAreUndone) {
    EXPECT_EQ(ValueOf("=\"c:\\\\a\\\"b\\\\\"\n"), L"c:\\a\"b\\");
    EXPECT_EQ(ValueOf("=\"a\\nb\\tc\\r\"\n"), L"a\nb\tc\r");
    EXPECT_EQ(ValueOf("=\"\\33[\\x1\"\n"), L"\x1B[\x1");
}

TEST(RegistryText, HexEscapesAreUtf16OfOneToFourDigits) {
    EXPECT_EQ(ValueOf("=\"Spiele \\xfcber\"\n"),
              L"Spiele \uFCBE"
              L"r");
    EXPECT_EQ(ValueOf("=\"\\x00fcber\"\n"),
              L"\u00FC"
              L"ber");
    EXPECT_EQ(ValueOf("=\"\\x263a!\"\n"), L"\u263A!");
    EXPECT_EQ(ValueOf("=\"\\xd83d\\xde00\"\n"), L"\U0001F600");
    EXPECT_EQ(ValueOf("=\"\\xg\"\n"), L"xg");
}

TEST(RegistryText, DefaultValueHasAnEmptyName) {
    const std::string text = Start + SteamKey + "\"x\"=\"named\"\n@=\"default\"\n";
    EXPECT_EQ(FindRegistryString(text, L"Software\\Valve\\Steam", L""), L"default");
    EXPECT_EQ(FindRegistryString(text, L"Software\\Valve\\Steam", L"@"), std::nullopt);
}

TEST(RegistryText, OtherTypesAreNotFound) {
    for (const char* const line : {"=dword:00000001\n", "=str(2):\"%SystemRoot%\"\n", "=str(7):\"a\\0b\\0\"\n",
                                   "=hex:61,00\n", "=hex(2):61,00\n", "=hex(b):01,00\n", "\n", "=\n", " = \"v\"\n"}) {
        EXPECT_EQ(ValueOf(line), std::nullopt) << line;
    }
}

TEST(RegistryText, StringsInHexGoOnOverLines) {
    EXPECT_EQ(ValueOf("=hex(1):63,00,3a,00,\\\n  2f,00,73,00\n\"y\"=\"v\"\n"), L"c:/s");
    EXPECT_EQ(ValueOf("=hex(1):63,00,3a\n"), L"c");
    EXPECT_EQ(ValueOf("=hex(1):\n"), L"");
}

TEST(RegistryText, TextEndsAtANulCharacter) {
    EXPECT_EQ(ValueOf("=\"a\\0b\"\n"), L"a");
}

TEST(RegistryText, LastLineNeedsNoLineEnd) {
    EXPECT_EQ(ValueOf("=\"v\""), L"v");
}

TEST(RegistryText, TextWithoutTheSignatureIsNoRegistry) {
    EXPECT_EQ(FindRegistryString(SteamKey + "\"x\"=\"v\"\n", L"Software\\Valve\\Steam", L"x"), std::nullopt);
    EXPECT_EQ(FindRegistryString("", L"Software\\Valve\\Steam", L"x"), std::nullopt);
}

TEST(RegistryText, EveryTruncationIsAnswered) {
    const std::string text = Start + SteamKey + "\"x\"=\"c:\\\\ste\\x00e4m\"";
    for (std::size_t size = 0; size < text.size(); ++size) {
        EXPECT_EQ(FindRegistryString(text.substr(0, size), L"Software\\Valve\\Steam", L"x"), std::nullopt) << size;
    }
    EXPECT_EQ(FindRegistryString(text, L"Software\\Valve\\Steam", L"x"), L"c:\\ste\u00E4m");
}

TEST(RegistryText, UnterminatedValueDoesNotReachIntoTheNextLine) {
    EXPECT_EQ(ValueOf("=\"open\n\"y\"=\"v\"\n"), std::nullopt);
    EXPECT_EQ(ValueOf("=\"c:\\\"\n\"y\"=\"v\"\n"), std::nullopt);
}

TEST(RegistryText, HugeLinesAreReadAndPassedOver) {
    constexpr std::size_t size = 16U << 20U;
    const std::string huge(size, 'a');
    EXPECT_EQ(FindRegistryString(Start + "[" + huge + "\n" + SteamKey + "\"" + huge + "\n\"x\"=\"v\"\n",
                                 L"Software\\Valve\\Steam", L"x"),
              L"v");
    const std::optional<std::wstring> value = ValueOf("=\"" + huge + "\"\n");
    ASSERT_TRUE(value);
    EXPECT_EQ(value->size(), huge.size());
    EXPECT_EQ(ValueOf("=\"" + std::string(size, '\\')), std::nullopt);
}
