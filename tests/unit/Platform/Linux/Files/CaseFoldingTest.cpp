#include "Platform/Linux/Files/CaseFolding.h"

#include <gtest/gtest.h>
#include <windows.h>

using namespace Platform;

TEST(CaseFolding, FoldsLettersOfAnyAlphabetWhateverTheLocale) {
    EXPECT_TRUE(EqualIgnoringCase(L"baseq2", L"BaseQ2"));
    EXPECT_TRUE(EqualIgnoringCase(L"\u00C4\u00D6\u00DC", L"\u00E4\u00F6\u00FC"));
    EXPECT_TRUE(EqualIgnoringCase(L"\u0416", L"\u0436"));
    EXPECT_FALSE(EqualIgnoringCase(L"a", L"b"));
    EXPECT_FALSE(EqualIgnoringCase(L"a", L"ab"));
    EXPECT_FALSE(EqualIgnoringCase(L"\u00C4", L"a"));
}

TEST(CaseFolding, PunctuationBetweenTheCasesOfAsciiStaysApart) {
    EXPECT_FALSE(EqualNamesIgnoringCase("[", "{"));
    EXPECT_FALSE(EqualNamesIgnoringCase("@", "`"));
    EXPECT_TRUE(EqualNamesIgnoringCase("[Az]", "[aZ]"));
}

TEST(CaseFolding, NamesFoldAsTheirText) {
    EXPECT_TRUE(EqualNamesIgnoringCase("\xC3\x84pfel", "\xC3\xA4PFEL"));
    EXPECT_FALSE(EqualNamesIgnoringCase("\xC3\x84", "A"));
}

TEST(CaseFolding, BytesThatAreNotUtf8EqualOnlyThemselves) {
    EXPECT_TRUE(EqualNamesIgnoringCase("A\xFF", "a\xFF"));
    EXPECT_FALSE(EqualNamesIgnoringCase("\xC4", "\xE4"));  // these would be a pair in Latin-1
}

TEST(CompareStringOrdinal, OrdersByCodeUnitAndFoldsOnRequest) {
    EXPECT_EQ(CompareStringOrdinal(L"Quake2.EXE", -1, L"quake2.exe", -1, TRUE), CSTR_EQUAL);
    EXPECT_EQ(CompareStringOrdinal(L"Quake2.EXE", -1, L"quake2.exe", -1, FALSE), CSTR_LESS_THAN);
    EXPECT_EQ(CompareStringOrdinal(L"b", -1, L"A", -1, TRUE), CSTR_GREATER_THAN);
    EXPECT_EQ(CompareStringOrdinal(L"a", -1, L"ab", -1, TRUE), CSTR_LESS_THAN);
    EXPECT_EQ(CompareStringOrdinal(L"abc", 2, L"abd", 2, FALSE), CSTR_EQUAL);
}

TEST(CompareStringOrdinal, RefusesWhatIsNoText) {
    EXPECT_EQ(CompareStringOrdinal(nullptr, -1, L"a", -1, TRUE), 0);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(CompareStringOrdinal(L"a", -2, L"a", -1, TRUE), 0);
}
