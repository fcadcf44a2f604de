// Layouts: measures, alignment, what is handed to a renderer.

#include "Layouts.h"

#include <cmath>
#include <limits>

namespace {

using namespace Layouts;

TEST(TextLayout, EmptyTextHasOneLineAndNoRun) {
    const DWRITE_TEXT_METRICS metrics = Metrics(L"");
    EXPECT_EQ(metrics.lineCount, 1U);
    EXPECT_EQ(metrics.width, 0.0F);
    EXPECT_EQ(metrics.height, Metrics(L"x").height);
    EXPECT_TRUE(Runs(L"").empty());
}

TEST(TextLayout, LinesOfTheSystemFamilyAreAsHighAsOnWindows) {
    EXPECT_NEAR(Metrics(L"Play", {.size = 100.0F}).height, 133.0F, 0.1F);
    EXPECT_NEAR(Lines(Layout(L"Play", {.size = 100.0F}).Get())[0].baseline, 107.9F, 0.1F);
}

TEST(TextLayout, WidthIsTheSumOfTheAdvances) {
    const std::vector<DrawnRun> runs = Runs(L"Select a folder");
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_NEAR(runs[0].width, Metrics(L"Select a folder").width, 0.01F);
    EXPECT_GT(runs[0].width, 50.0F);
}

TEST(TextLayout, MeasuresGrowWithTheSizeInProportion) {
    const float small = Metrics(L"Proportion", {.size = 14.0F}).width;
    EXPECT_NEAR(Metrics(L"Proportion", {.size = 28.0F}).width, small * 2, 0.1F);
}

TEST(TextLayout, TrailingWhiteSpaceCountsInTheFullWidthOnly) {
    const DWRITE_TEXT_METRICS bare = Metrics(L"word");
    const DWRITE_TEXT_METRICS spaced = Metrics(L"word   ");
    EXPECT_EQ(spaced.width, bare.width);
    EXPECT_GT(spaced.widthIncludingTrailingWhitespace, bare.width + 5);
}

TEST(TextLayout, AlignmentMovesTheLineWithinTheBox) {
    const float width = Metrics(L"Play").width;
    EXPECT_EQ(Metrics(L"Play", {.width = 200}).left, 0.0F);
    EXPECT_NEAR(Metrics(L"Play", {.width = 200, .alignment = DWRITE_TEXT_ALIGNMENT_TRAILING}).left, 200 - width, 0.01F);
    EXPECT_NEAR(Metrics(L"Play", {.width = 200, .alignment = DWRITE_TEXT_ALIGNMENT_CENTER}).left, (200 - width) / 2,
                0.01F);
}

TEST(TextLayout, TrailingWhiteSpaceHangsOverWhenAlignedToTheFarEdge) {
    const Setting trailing{.width = 200, .alignment = DWRITE_TEXT_ALIGNMENT_TRAILING};
    EXPECT_EQ(Metrics(L"Play  ", trailing).left, Metrics(L"Play", trailing).left);
}

TEST(TextLayout, ParagraphAlignmentMovesTheTextWithinTheHeight) {
    const float height = Metrics(L"Play").height;
    EXPECT_EQ(Metrics(L"Play").top, 0.0F);
    EXPECT_NEAR(Metrics(L"Play", {.paragraph = DWRITE_PARAGRAPH_ALIGNMENT_FAR}).top, 100 - height, 0.01F);
    EXPECT_NEAR(Metrics(L"Play", {.paragraph = DWRITE_PARAGRAPH_ALIGNMENT_CENTER}).top, (100 - height) / 2, 0.01F);
}

TEST(TextLayout, TextHigherThanItsBoxIsCentredOverIt) {
    EXPECT_LT(Metrics(L"Play", {.height = 4, .paragraph = DWRITE_PARAGRAPH_ALIGNMENT_CENTER}).top, 0.0F);
}

TEST(TextLayout, JustifiedLinesMeetBothEdgesExceptTheLast) {
    const Setting setting{.width = 120, .alignment = DWRITE_TEXT_ALIGNMENT_JUSTIFIED};
    const ComPtr<IDWriteTextLayout> layout = Layout(L"some words that fill more than one line", setting);
    EXPECT_EQ(Metrics(layout.Get()).width, 120.0F);
    Renderer renderer;
    layout->Draw(nullptr, &renderer, 0, 0);
    const std::size_t lines = Lines(layout.Get()).size();
    ASSERT_GE(lines, 3U);
    const float lastY = renderer.runs.back().y;
    float lastWidth = 0;
    for (const DrawnRun& run : renderer.runs) lastWidth += run.y == lastY ? run.width : 0;
    EXPECT_LT(lastWidth, 110.0F);
}

TEST(TextLayout, AnUnknownFamilyIsSetInTheSystemFamilysStandIn) {
    EXPECT_EQ(Metrics(L"Play", {.family = L"No Such Family"}).width, Metrics(L"Play").width);
    EXPECT_EQ(Metrics(L"Play", {.family = L"Segoe UI Variable"}).width, Metrics(L"Play").width);
}

TEST(TextLayout, AFamilyThatIsInstalledIsTakenByName) {
    EXPECT_GT(Metrics(L"Play", {.family = L"dejavu sans"}).width, Metrics(L"Play").width);
}

TEST(TextLayout, SemiboldLiesBetweenRegularAndBold) {
    const float regular = Metrics(L"minimum width").width;
    const float semibold = Metrics(L"minimum width", {.weight = DWRITE_FONT_WEIGHT_SEMI_BOLD}).width;
    const float bold = Metrics(L"minimum width", {.weight = DWRITE_FONT_WEIGHT_BOLD}).width;
    EXPECT_LT(regular + 1, semibold);
    EXPECT_LT(semibold + 1, bold);
}

TEST(TextLayout, RightToLeftRunsStartAtTheirRightEnd) {
    const std::vector<DrawnRun> runs = Runs(L"\u05e9\u05dc\u05d5\u05dd");
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs[0].level % 2, 1U);
    EXPECT_NEAR(runs[0].x, runs[0].width, 0.01F);
}

TEST(TextLayout, MixedDirectionsKeepTheParagraphsOrder) {
    const std::vector<DrawnRun> runs = Runs(L"ab \u05e9\u05dc\u05d5\u05dd cd");
    ASSERT_GE(runs.size(), 3U);
    EXPECT_EQ(runs.front().textPosition, 0U);
    EXPECT_EQ(runs.front().x, 0.0F);
    EXPECT_GT(runs.back().textPosition, 6U);
}

TEST(TextLayout, CharactersThatTheFamilyLacksComeFromAnotherFace) {
    const std::vector<DrawnRun> runs = Runs(L"a\u6f22\u5b57");
    ASSERT_EQ(runs.size(), 2U);
    EXPECT_NE(runs[0].face.Get(), runs[1].face.Get());
    for (const UINT16 glyph : runs[1].glyphs) EXPECT_NE(glyph, 0) << "a font for CJK is missing";
}

TEST(TextLayout, ControlCharactersTakeNoRoom) {
    EXPECT_EQ(Metrics(std::wstring(L"ab\0\x01\x7f\x9f", 6)).width, Metrics(L"ab").width);
}

TEST(TextLayout, TabsGoToStopsOfFourEms) {
    EXPECT_NEAR(Metrics(L"a\tb").width, 4 * 14 + Metrics(L"b").width, 0.01F);
}

TEST(TextLayout, UnderlineAndStrikethroughAreToldBesideTheirRuns) {
    const ComPtr<IDWriteTextLayout> layout = Layout(L"plain marked");
    EXPECT_EQ(layout->SetUnderline(TRUE, {6, 6}), S_OK);
    EXPECT_EQ(layout->SetStrikethrough(TRUE, {0, 5}), S_OK);
    Renderer renderer;
    EXPECT_EQ(layout->Draw(nullptr, &renderer, 0, 0), S_OK);
    ASSERT_EQ(renderer.underlines.size(), 1U);
    ASSERT_EQ(renderer.strikethroughs.size(), 1U);
    EXPECT_NEAR(renderer.underlines[0].width, Metrics(L"marked").width, 0.01F);
    EXPECT_GT(renderer.underlines[0].offset, 0.0F);
    EXPECT_LT(renderer.strikethroughs[0].offset, 0.0F);
}

TEST(TextLayout, BaselinesLieOnWholePixelsForARendererThatWantsIt) {
    Renderer renderer;
    renderer.snappingDisabled = FALSE;
    renderer.pixelsPerDip = 1.5F;
    EXPECT_EQ(Layout(L"Play")->Draw(nullptr, &renderer, 0, 3.3F), S_OK);
    ASSERT_EQ(renderer.runs.size(), 1U);
    const float pixels = renderer.runs[0].y * 1.5F;
    EXPECT_NEAR(pixels, std::round(pixels), 0.001F);
}

TEST(TextLayout, AChangeOfTheFormatAfterwardsDoesNotReachTheLayout) {
    const ComPtr<IDWriteFactory5> factory = Factory();
    ComPtr<IDWriteTextFormat> format;
    ASSERT_EQ(factory->CreateTextFormat(L"Segoe UI", nullptr, DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STYLE_NORMAL,
                                        DWRITE_FONT_STRETCH_NORMAL, 14, L"", &format),
              S_OK);
    ComPtr<IDWriteTextLayout> layout;
    ASSERT_EQ(factory->CreateTextLayout(L"Play", 4, format.Get(), 100, 100, &layout), S_OK);
    format->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_TRAILING);
    EXPECT_EQ(Metrics(layout.Get()).left, 0.0F);
    EXPECT_EQ(layout->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_TRAILING), S_OK);
    EXPECT_GT(Metrics(layout.Get()).left, 0.0F);
}

TEST(TextLayout, ABoxThatIsNoneIsRefused) {
    const ComPtr<IDWriteFactory5> factory = Factory();
    ComPtr<IDWriteTextFormat> format;
    factory->CreateTextFormat(L"Segoe UI", nullptr, DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STYLE_NORMAL,
                              DWRITE_FONT_STRETCH_NORMAL, 14, L"", &format);
    ComPtr<IDWriteTextLayout> layout;
    EXPECT_EQ(factory->CreateTextLayout(L"x", 1, format.Get(), -1, 10, &layout), E_INVALIDARG);
    EXPECT_EQ(factory->CreateTextLayout(L"x", 1, format.Get(), 10, std::numeric_limits<float>::quiet_NaN(), &layout),
              E_INVALIDARG);
    EXPECT_EQ(factory->CreateTextLayout(L"x", 1, nullptr, 10, 10, &layout), E_INVALIDARG);
    EXPECT_EQ(layout.Get(), nullptr);
}

}  // namespace
