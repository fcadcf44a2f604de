#include "Platform/Linux/Profile/ProfileText.h"

#include <gtest/gtest.h>

#include <string>

using Platform::ProfileText;
using namespace std::string_literals;

namespace {

std::wstring Value(const std::string& bytes, const std::wstring& key = L"key", const std::wstring& section = L"S") {
    return ProfileText(bytes).Value(section, key).value_or(L"(none)");
}

/// The bytes after an edit, and "(unchanged)" where there was none to make.
std::string Edited(const std::string& bytes, const std::wstring& key, const std::wstring& value) {
    ProfileText text(bytes);
    return text.SetValue(L"S", key, value) ? text.Bytes() : "(unchanged)";
}

/// ASCII text as UTF-16 with its mark.
std::string Utf16(const std::string& ascii, bool bigEndian) {
    std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char each : ascii) bytes += bigEndian ? std::string{'\0', each} : std::string{each, '\0'};
    return bytes;
}

}  // namespace

TEST(ProfileText, FindsAKeyInItsSection) {
    EXPECT_EQ(Value("[Other]\nkey=1\n[S]\nkey=2\n[Last]\nkey=3\n"), L"2");
    EXPECT_EQ(Value("key=0\n[S]\n[Other]\nkey=1\n"), L"(none)");
    EXPECT_EQ(Value(""), L"(none)");
}

TEST(ProfileText, NamesMatchWithoutRegardToCase) {
    EXPECT_EQ(Value("[lAUNCHER]\nFOLDER=x\n", L"Folder", L"Launcher"), L"x");
    EXPECT_EQ(Value("[S]\n\xC3\x84=x\n", L"\u00E4"), L"x");
}

TEST(ProfileText, OfASectionThatStandsTwiceTheFirstCounts) {
    const std::string twice = "[S]\nkey=1\n[s]\nkey=2\nonly second=3\n";
    EXPECT_EQ(Value(twice), L"1");
    EXPECT_EQ(Value(twice, L"only second"), L"(none)");
}

TEST(ProfileText, OfAKeyThatStandsTwiceTheFirstCounts) {
    EXPECT_EQ(Value("[S]\nkey=1\nKEY=2\n"), L"1");
}

TEST(ProfileText, CommentsAndLinesWithoutEqualsMeanNothing) {
    EXPECT_EQ(Value("[S]\n;key=1\n  ; key=2\nkey\nkey=3\n"), L"3");
    EXPECT_EQ(Value("[S]\n;key=1\nkey\n"), L"(none)");
}

TEST(ProfileText, ASemicolonBehindAValueBelongsToIt) {
    EXPECT_EQ(Value("[S]\nkey=a;b ; c\n"), L"a;b ; c");
}

TEST(ProfileText, BlanksAroundNamesAndValuesAreDropped) {
    EXPECT_EQ(Value(" \t[ S ] \n \tkey \t= \t a b \t\n"), L"a b");
    EXPECT_EQ(Value("[S]\nkey=\n"), L"");
    EXPECT_EQ(Value("[S]\nkey= \t \n"), L"");
}

TEST(ProfileText, OnePairOfTheSameQuotesIsDropped) {
    EXPECT_EQ(Value("[S]\nkey=\"a b\"\n"), L"a b");
    EXPECT_EQ(Value("[S]\nkey='a b'\n"), L"a b");
    EXPECT_EQ(Value("[S]\nkey= \" a \" \n"), L" a ");
    EXPECT_EQ(Value("[S]\nkey=\"\"a\"\"\n"), L"\"a\"");
    EXPECT_EQ(Value("[S]\nkey=\"a'\n"), L"\"a'");
    EXPECT_EQ(Value("[S]\nkey=\"\n"), L"\"");
    EXPECT_EQ(Value("[S]\nkey=\"\"\n"), L"");
}

TEST(ProfileText, AValueMayHoldEqualsAndBrackets) {
    EXPECT_EQ(Value("[S]\nkey=a=b[c]\n"), L"a=b[c]");
    EXPECT_EQ(Value("[S]\nkey=[S]\n"), L"[S]");
}

TEST(ProfileText, ASectionLineWithoutItsBracketIsNone) {
    EXPECT_EQ(Value("[S\nkey=1\n"), L"(none)");
}

TEST(ProfileText, EachKindOfLineEndIsOne) {
    EXPECT_EQ(Value("[S]\r\nother=1\r\nkey=2\r\n"), L"2");
    EXPECT_EQ(Value("[S]\nother=1\nkey=2\n"), L"2");
    EXPECT_EQ(Value("[S]\rother=1\rkey=2\r"), L"2");
    EXPECT_EQ(Value("[S]\n\r\n\rkey=2"), L"2");
}

TEST(ProfileText, AMarkInFrontOfUtf8IsNoPartOfTheFirstLine) {
    EXPECT_EQ(Value("\xEF\xBB\xBF[S]\nkey=1\n"), L"1");
}

TEST(ProfileText, Utf16OfBothByteOrdersIsRead) {
    EXPECT_EQ(Value(Utf16("[S]\r\nkey=1\r\n", false)), L"1");
    EXPECT_EQ(Value(Utf16("[S]\r\nkey=1\r\n", true)), L"1");
    EXPECT_EQ(Value(Utf16("[S]\nkey=", false) + "\x3D\xD8\x00\xDE"s), L"\U0001F600");
    EXPECT_EQ(Value(Utf16("[S]\nkey=", true) + "\xD8\x3D\xDE\x00"s), L"\U0001F600");
}

TEST(ProfileText, Utf16WithAnOddLastByteIsReadAndKept) {
    const std::string odd = Utf16("[S]\nkey=1\n", false) + 'x';
    EXPECT_EQ(Value(odd), L"1");
    EXPECT_EQ(ProfileText(odd).Bytes(), odd);
    EXPECT_EQ(Edited(odd, L"key", L"2"), Utf16("[S]\nkey=2\n", false) + 'x');
}

TEST(ProfileText, NulBytesAreOrdinaryCharacters) {
    EXPECT_EQ(Value("[S]\n\0\0=x\nkey=1\n\0"s), L"1");
    EXPECT_EQ(Value("[S]\nkey=a\0b\n"s), L"a\0b"s);
}

TEST(ProfileText, LinesOfOneMebibyteAreRead) {
    const std::string longLine(1 << 20, 'x');
    EXPECT_EQ(Value("[S]\n" + longLine + "\n;" + longLine + "\n" + longLine + "=1\nkey=2\n"), L"2");
    EXPECT_EQ(Value("[S]\nkey=" + longLine).size(), longLine.size());
}

TEST(ProfileText, WhatIsNotEditedComesOutByteForByte) {
    const std::string contents[] = {"",
                                    "no line end",
                                    "\xEF\xBB\xBF",
                                    "\xFF\xFE",
                                    "\xFE\xFF",
                                    "\xFF",
                                    "[S]\r\n\xFF\xC3=\x80\r\n\0x"s,
                                    Utf16("[S]\n", true),
                                    "\xFF\xFE\x00\xDC\x00\xD8"s,
                                    "\xEF\xBB\xBF\xEF\xBB\xBF"};
    for (const std::string& bytes : contents)
        EXPECT_EQ(ProfileText(bytes).Bytes(), bytes) << testing::PrintToString(bytes);
}

TEST(ProfileText, ANewFileGetsSectionAndKey) {
    EXPECT_EQ(Edited("", L"key", L"v"), "[S]\nkey=v\n");
}

TEST(ProfileText, AnEditReplacesTheValueAndNothingElse) {
    EXPECT_EQ(Edited("; c\r\n\r\n[S]\r\n Key\t=  old \r\nx=1\r\n", L"key", L"new"),
              "; c\r\n\r\n[S]\r\n Key\t=  new \r\nx=1\r\n");
    EXPECT_EQ(Edited("[S]\nkey=\"old\"\n", L"key", L"new"), "[S]\nkey=new\n");
    EXPECT_EQ(Edited("[S]\nkey=", L"key", L"new"), "[S]\nkey=new");
    EXPECT_EQ(Edited("[S]\nkey= \n\n", L"key", L"new"), "[S]\nkey= new\n\n");
    EXPECT_EQ(Edited("[S]\nkey=1\nkey=2\n[S]\nkey=3\n", L"key", L"new"), "[S]\nkey=new\nkey=2\n[S]\nkey=3\n");
}

TEST(ProfileText, AnEditKeepsBytesThatAreNotUtf8) {
    EXPECT_EQ(Edited("\xFFjunk\n[S]\n\xC3=\x80\nkey=\xFF\xFE\n", L"key", L"x"), "\xFFjunk\n[S]\n\xC3=\x80\nkey=x\n");
}

TEST(ProfileText, ANewKeyGoesBehindTheSectionsLastLine) {
    EXPECT_EQ(Edited("[S]\na=1\n; note\n\n\n[T]\n", L"key", L"v"), "[S]\na=1\n; note\nkey=v\n\n\n[T]\n");
    EXPECT_EQ(Edited("[S]\n[T]\nkey=1\n", L"key", L"v"), "[S]\nkey=v\n[T]\nkey=1\n");
    EXPECT_EQ(Edited("[S]", L"key", L"v"), "[S]\nkey=v\n");
    EXPECT_EQ(Edited("[S]\na=1", L"key", L"v"), "[S]\na=1\nkey=v\n");
}

TEST(ProfileText, ANewSectionGoesToTheEnd) {
    EXPECT_EQ(Edited("[T]\na=1\n", L"key", L"v"), "[T]\na=1\n[S]\nkey=v\n");
    EXPECT_EQ(Edited("[T]\na=1", L"key", L"v"), "[T]\na=1\n[S]\nkey=v\n");
}

TEST(ProfileText, NewLinesEndAsTheFilesDo) {
    EXPECT_EQ(Edited("[S]\r\na=1\r\n", L"key", L"v"), "[S]\r\na=1\r\nkey=v\r\n");
    EXPECT_EQ(Edited("[S]\r\na=1", L"key", L"v"), "[S]\r\na=1\r\nkey=v\r\n");
    EXPECT_EQ(Edited("[T]\ra=1\r", L"key", L"v"), "[T]\ra=1\r[S]\rkey=v\r");
}

TEST(ProfileText, AnEditKeepsTheEncodingAndItsMark) {
    EXPECT_EQ(Edited("\xEF\xBB\xBF[S]\nkey=1\n", L"key", L"\u00E9"), "\xEF\xBB\xBF[S]\nkey=\xC3\xA9\n");
    EXPECT_EQ(Edited(Utf16("[S]\r\nkey=1\r\n", false), L"key", L"2"), Utf16("[S]\r\nkey=2\r\n", false));
    EXPECT_EQ(Edited(Utf16("[S]\r\nkey=1\r\n", true), L"key", L"2"), Utf16("[S]\r\nkey=2\r\n", true));
    EXPECT_EQ(Edited(Utf16("[S]\nkey=", true), L"key", L"\U0001F600"), Utf16("[S]\nkey=", true) + "\xD8\x3D\xDE\x00"s);
}

TEST(ProfileText, AValueThatStandsAlreadyIsNoEdit) {
    EXPECT_EQ(Edited("[S]\nkey=v\n", L"key", L"v"), "(unchanged)");
    EXPECT_EQ(Edited("[S]\nkey = \"v\"\n", L"key", L"v"), "(unchanged)");
    EXPECT_EQ(Edited("[S]\nkey=v\n", L"key", L" v "), "(unchanged)");
    EXPECT_EQ(Edited("[S]\nkey=\"v\"\n", L"key", L"\"v\""), "(unchanged)");
    EXPECT_EQ(Edited("[S]\nkey=\n", L"key", L""), "(unchanged)");
    EXPECT_EQ(Edited("[S]\nkey=V\n", L"key", L"v"), "[S]\nkey=v\n");
    EXPECT_EQ(Edited("[S]\n", L"key", L""), "[S]\nkey=\n");
}

TEST(ProfileText, ValuesAreWrittenWithoutQuotes) {
    EXPECT_EQ(Edited("", L"key", L" a b "), "[S]\nkey= a b \n");
    EXPECT_EQ(Edited("", L"key", L"'q'"), "[S]\nkey='q'\n");
}

TEST(ProfileText, LineBreaksAndNulCannotBeHeld) {
    for (const std::wstring& bad : {L"a\rb"s, L"a\nb"s, L"a\0b"s}) {
        EXPECT_FALSE(ProfileText::CanHold(L"S", L"key", bad));
        EXPECT_FALSE(ProfileText::CanHold(L"S", bad, L"v"));
        EXPECT_FALSE(ProfileText::CanHold(bad, L"key", L"v"));
    }
    EXPECT_TRUE(ProfileText::CanHold(L"S", L"key", L"; [any] = 'thing' \t"));
    EXPECT_TRUE(ProfileText::CanHold(L"S", L"key", L""));
}

TEST(ProfileText, NamesThatWouldReadAsSomethingElseCannotBeHeld) {
    EXPECT_FALSE(ProfileText::CanHold(L"S", L"a=b", L"v"));
    EXPECT_FALSE(ProfileText::CanHold(L"S", L";a", L"v"));
    EXPECT_FALSE(ProfileText::CanHold(L"S", L" [a", L"v"));
    EXPECT_FALSE(ProfileText::CanHold(L"S", L" ", L"v"));
    EXPECT_FALSE(ProfileText::CanHold(L"a]b", L"key", L"v"));
    EXPECT_FALSE(ProfileText::CanHold(L"", L"key", L"v"));
}
