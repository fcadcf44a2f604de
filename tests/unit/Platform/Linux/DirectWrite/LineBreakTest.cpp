// Where lines end in each wrapping mode.

#include "Layouts.h"

namespace {

using namespace Layouts;

std::vector<UINT32> LineLengths(std::wstring_view text, const Setting& setting) {
    std::vector<UINT32> lengths;
    for (const DWRITE_LINE_METRICS& line : Lines(Layout(text, setting).Get())) lengths.push_back(line.length);
    return lengths;
}

using Lengths = std::vector<UINT32>;
constexpr const wchar_t* twoWords = L"short Donaudampfschifffahrt";

TEST(LineBreaks, WrapEndsLinesBetweenWords) {
    const float width = Metrics(L"one two").width + 3;
    EXPECT_EQ(LineLengths(L"one two three", {.width = width}), (Lengths{8, 5}));
}

TEST(LineBreaks, TextInABoxOfItsOwnWidthStaysOnOneLine) {
    for (const wchar_t* const text : {L"Play", L"Select a folder", L"The quick brown fox jumps over the lazy dog"}) {
        EXPECT_EQ(Metrics(text, {.width = Metrics(text).width}).lineCount, 1U) << text;
    }
}

TEST(LineBreaks, NoWrapOverflowsOnOneLine) {
    const DWRITE_TEXT_METRICS metrics = Metrics(twoWords, {.width = 30, .wrapping = DWRITE_WORD_WRAPPING_NO_WRAP});
    EXPECT_EQ(metrics.lineCount, 1U);
    EXPECT_GT(metrics.width, 100.0F);
}

TEST(LineBreaks, NoWrapCentredOverflowsOnBothSides) {
    const Setting setting{
        .width = 30, .alignment = DWRITE_TEXT_ALIGNMENT_CENTER, .wrapping = DWRITE_WORD_WRAPPING_NO_WRAP};
    EXPECT_LT(Metrics(twoWords, setting).left, -20.0F);
}

TEST(LineBreaks, AWordWiderThanTheBoxBreaksInAnEmergency) {
    for (const auto wrapping : {DWRITE_WORD_WRAPPING_WRAP, DWRITE_WORD_WRAPPING_EMERGENCY_BREAK}) {
        const DWRITE_TEXT_METRICS metrics = Metrics(twoWords, {.width = 60, .wrapping = wrapping});
        EXPECT_GT(metrics.lineCount, 2U);
        EXPECT_LE(metrics.width, 60.02F);
        EXPECT_EQ(LineLengths(twoWords, {.width = 60, .wrapping = wrapping})[0], 6U);
    }
}

TEST(LineBreaks, WholeWordNeverBreaksAWord) {
    EXPECT_EQ(LineLengths(twoWords, {.width = 60, .wrapping = DWRITE_WORD_WRAPPING_WHOLE_WORD}), (Lengths{6, 21}));
}

TEST(LineBreaks, CharacterModeFillsTheFirstLine) {
    const Lengths lengths = LineLengths(twoWords, {.width = 60, .wrapping = DWRITE_WORD_WRAPPING_CHARACTER});
    EXPECT_GT(lengths[0], 6U);
}

TEST(LineBreaks, CharacterModeKeepsCombiningMarksWithTheirLetter) {
    const std::wstring text = L"e\u0301e\u0301e\u0301";
    EXPECT_EQ(LineLengths(text, {.width = 1, .wrapping = DWRITE_WORD_WRAPPING_CHARACTER}), (Lengths{2, 2, 2}));
}

TEST(LineBreaks, AWidthOfZeroGivesACharacterALine) {
    EXPECT_EQ(LineLengths(L"abc", {.width = 0}), (Lengths{1, 1, 1}));
}

TEST(LineBreaks, EachKindOfNewlineEndsALine) {
    for (const wchar_t* const newline : {L"\n", L"\r", L"\v", L"\f", L"\x85", L"\u2028", L"\u2029"}) {
        EXPECT_EQ(LineLengths(std::wstring(L"a") + newline + L"b", {}), (Lengths{2, 1}));
    }
    EXPECT_EQ(LineLengths(L"a\r\nb", {}), (Lengths{3, 1}));
}

TEST(LineBreaks, ANewlineAtTheEndBeginsAnEmptyLine) {
    const std::vector<DWRITE_LINE_METRICS> lines = Lines(Layout(L"a \r\n").Get());
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].length, 4U);
    EXPECT_EQ(lines[0].newlineLength, 2U);
    EXPECT_EQ(lines[0].trailingWhitespaceLength, 3U);
    EXPECT_EQ(lines[1].length, 0U);
    EXPECT_EQ(lines[1].height, lines[0].height);
}

TEST(LineBreaks, AHardSpaceHoldsWordsTogether) {
    const float width = Metrics(L"two\u00a0three").width + 1;
    EXPECT_EQ(LineLengths(L"one two\u00a0three", {.width = width}), (Lengths{4, 9}));
}

TEST(LineBreaks, TooSmallABufferIsToldHowManyLinesThereAre) {
    DWRITE_LINE_METRICS line{};
    UINT32 count = 0;
    EXPECT_EQ(Layout(L"a\nb")->GetLineMetrics(&line, 1, &count), HRESULT_FROM_WIN32(ERROR_INSUFFICIENT_BUFFER));
    EXPECT_EQ(count, 2U);
}

}  // namespace
