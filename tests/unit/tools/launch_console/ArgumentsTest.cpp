#include "tools/launch_console/Arguments.h"

#include <gtest/gtest.h>

#include "tools/launch_console/Calls.h"

using LaunchConsole::Arguments;
using LaunchConsole::SignedNumber;
using LaunchConsole::UnsignedNumber;
using LaunchConsole::WrongUsage;

namespace {

const LaunchConsole::Syntax StartSyntax{{"DIR"}, {L"--windowed"}, {L"--mode"}};

}  // namespace

TEST(Arguments, OptionsStandBeforeAndAfterNames) {
    for (const std::vector<std::wstring>& words : {std::vector<std::wstring>{L"--windowed", L"--mode", L"3", L"folder"},
                                                   {L"folder", L"--mode", L"3", L"--windowed"}}) {
        const Arguments arguments(StartSyntax, words);
        EXPECT_EQ(arguments.Positional(0), L"folder");
        EXPECT_TRUE(arguments.Has(L"--windowed"));
        EXPECT_EQ(arguments.Value(L"--mode"), L"3");
        EXPECT_FALSE(arguments.Plain());
    }
}

TEST(Arguments, ValueOfAnOptionIsTheNextWordWhateverItIs) {
    EXPECT_EQ(Arguments(StartSyntax, {L"--mode", L"--windowed", L"folder"}).Value(L"--mode"), L"--windowed");
    EXPECT_EQ(Arguments(StartSyntax, {L"--mode", L"", L"folder"}).Value(L"--mode"), L"");
    EXPECT_EQ(Arguments(StartSyntax, {L"--mode", L"-1", L"folder"}).Value(L"--mode"), L"-1");
}

TEST(Arguments, TwoDashesEndTheOptions) {
    const Arguments arguments(StartSyntax, {L"--", L"--windowed"});
    EXPECT_EQ(arguments.Positional(0), L"--windowed");
    EXPECT_TRUE(arguments.Plain());
}

TEST(Arguments, EmptyNameAndLoneDashAreNames) {
    EXPECT_EQ(Arguments(StartSyntax, {L""}).Positional(0), L"");
    EXPECT_EQ(Arguments(StartSyntax, {L"-"}).Positional(0), L"-");
}

TEST(Arguments, WrongUsageIsThrown) {
    EXPECT_THROW(Arguments(StartSyntax, {}), WrongUsage);
    EXPECT_THROW(Arguments(StartSyntax, {L"folder", L"another"}), WrongUsage);
    EXPECT_THROW(Arguments(StartSyntax, {L"folder", L"--mode"}), WrongUsage);
    EXPECT_THROW(Arguments(StartSyntax, {L"folder", L"--Windowed"}), WrongUsage);
    EXPECT_THROW(Arguments(StartSyntax, {L"folder", L"--mode=3"}), WrongUsage);
    EXPECT_THROW(Arguments(StartSyntax, {L"folder", L"-w"}), WrongUsage);
    EXPECT_THROW(Arguments(StartSyntax, {L"folder", L"--windowed", L"--windowed"}), WrongUsage);
}

TEST(Arguments, SignedNumbersHave32Bits) {
    EXPECT_EQ(SignedNumber(L"-2147483648"), INT32_MIN);
    EXPECT_EQ(SignedNumber(L"2147483647"), INT32_MAX);
    EXPECT_EQ(SignedNumber(L"007"), 7);
    for (const wchar_t* text : {L"", L"-", L"+1", L" 1", L"1 ", L"1.0", L"0x1", L"2147483648", L"-2147483649"}) {
        EXPECT_THROW(SignedNumber(text), WrongUsage) << text;
    }
}

TEST(Arguments, UnsignedNumbersHave32Bits) {
    EXPECT_EQ(UnsignedNumber(L"0"), 0U);
    EXPECT_EQ(UnsignedNumber(L"4294967295"), UINT32_MAX);
    for (const wchar_t* text : {L"", L"-1", L"-0", L"four", L"4294967296", L"99999999999999999999"}) {
        EXPECT_THROW(UnsignedNumber(text), WrongUsage) << text;
    }
}
