#include "launcher/GameDiscovery/QuotedValues.h"
#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "ValuesByExpression.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <string_view>

using GameDiscovery::FindQuotedValues;
using GameDiscovery::ReadQuotedValues;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

using namespace std::string_literals;

constexpr std::size_t largestFile = 4'194'304;

using Values = std::vector<std::string>;

void ExpectAgreement(const std::string& text, const std::string& key) {
    ASSERT_EQ(FindQuotedValues(text, key), ValuesByExpression(text, key))
        << "key " << key << ", text " << testing::PrintToString(text);
}

/// Text of up to `longest` pieces, which are likely parts of a match and of what nearly is one.
std::string RandomText(std::mt19937& random, const std::string& key, int longest) {
    static const std::array<std::string, 14> pieces{"\"", "\"", "\\", "\\",  "\n",   "\r", " ",
                                                    "\t", "\v", "\f", "\0"s, "\xFF", "n",  "p"};
    std::uniform_int_distribution<std::size_t> pick(0, pieces.size() + 2);
    std::string text;
    for (int count = std::uniform_int_distribution<int>(0, longest)(random); count > 0; --count) {
        const std::size_t index = pick(random);
        if (index < pieces.size()) {
            text += pieces[index];
        } else if (index == pieces.size()) {
            text += key;
        } else {
            text += '"' + key + '"';
        }
    }
    return text;
}

}  // namespace

TEST(QuotedValues, ValuesComeInFileOrder) {
    EXPECT_THAT(FindQuotedValues(R"("path" "one" "label" "x" "path"  "two")", "path"), ElementsAre("one", "two"));
}

TEST(QuotedValues, KeysAreFoundAtAnyDepthAndInAnyBlock) {
    const char* const text = R"("libraryfolders" { "0" { "path" "a" "apps" { "2320" "1" } } "other" { "path" "b" } })";
    EXPECT_THAT(FindQuotedValues(text, "path"), ElementsAre("a", "b"));
}

TEST(QuotedValues, AnEmptyValueCounts) {
    EXPECT_THAT(FindQuotedValues(R"("path" "" "path" "x")", "path"), ElementsAre("", "x"));
}

TEST(QuotedValues, KeysAreCaseSensitive) {
    EXPECT_THAT(FindQuotedValues(R"("Path" "a" "PATH" "b")", "path"), IsEmpty());
}

TEST(QuotedValues, TheKeyIsAWholeQuotedWord) {
    EXPECT_THAT(FindQuotedValues(R"("xpath" "a" "pathx" "b" path "c")", "path"), IsEmpty());
}

TEST(QuotedValues, AllWhiteSpaceOfTheCLocaleMayStandBetween) {
    EXPECT_THAT(FindQuotedValues("\"path\" \t\n\v\f\r\"a\" \"path\"\"b\"", "path"), ElementsAre("a", "b"));
    EXPECT_THAT(FindQuotedValues("\"path\"\0\"a\" \"path\"\xA0\"b\""s, "path"), IsEmpty());
}

TEST(QuotedValues, ADoubledBackslashBecomesOne) {
    EXPECT_THAT(FindQuotedValues(R"("path" "D:\\Steam\\Library")", "path"), ElementsAre(R"(D:\Steam\Library)"));
}

TEST(QuotedValues, AnEscapedQuoteDoesNotEndTheValue) {
    EXPECT_THAT(FindQuotedValues(R"("path" "a\"b" "path" "c")", "path"), ElementsAre("a\"b", "c"));
}

TEST(QuotedValues, ABackslashBeforeAnythingElseStays) {
    EXPECT_THAT(FindQuotedValues(R"("path" "a\nb\t")", "path"), ElementsAre(R"(a\nb\t)"));
}

TEST(QuotedValues, AValueMayHoldLineEndsAndNulBytes) {
    EXPECT_THAT(FindQuotedValues("\"path\" \"a\r\nb\0c\""s, "path"), ElementsAre("a\r\nb\0c"s));
}

TEST(QuotedValues, AnEscapedLineEndIsNoValue) {
    EXPECT_THAT(FindQuotedValues("\"path\" \"a\\\nb\" \"path\" \"c\"", "path"), ElementsAre("c"));
    EXPECT_THAT(FindQuotedValues("\"path\" \"a\\\rb\" \"path\" \"c\"", "path"), ElementsAre("c"));
}

TEST(QuotedValues, AValueWithoutItsEndIsNone) {
    EXPECT_THAT(FindQuotedValues(R"("path" "abc)", "path"), IsEmpty());
    EXPECT_THAT(FindQuotedValues(R"("path" "abc\")", "path"), IsEmpty());
    EXPECT_THAT(FindQuotedValues(R"("path" "abc\)", "path"), IsEmpty());
    EXPECT_THAT(FindQuotedValues(R"("path" )", "path"), IsEmpty());
    EXPECT_THAT(FindQuotedValues(R"("path")", "path"), IsEmpty());
    EXPECT_THAT(FindQuotedValues(R"("path)", "path"), IsEmpty());
    EXPECT_THAT(FindQuotedValues("", "path"), IsEmpty());
}

TEST(QuotedValues, AKeyAsAValueIsPassedOver) {
    EXPECT_THAT(FindQuotedValues(R"("path" "path" "x")", "path"), ElementsAre("path"));
    EXPECT_THAT(FindQuotedValues(R"("a" "path" "x")", "path"), ElementsAre("x"));
}

TEST(QuotedValues, AQuoteMayEndOneWordAndStartAnother) {
    EXPECT_THAT(FindQuotedValues(R"(x"path"path""y")", "path"), ElementsAre("y"));
}

TEST(QuotedValues, SpecialCharactersOfExpressionsInAKeyStandForThemselves) {
    EXPECT_THAT(FindQuotedValues(R"("a.c" "1" "abc" "2" "(" "3")", "a.c"), ElementsAre("1"));
    EXPECT_THAT(FindQuotedValues(R"("a.c" "1" "abc" "2" "(" "3")", "("), ElementsAre("3"));
}

TEST(QuotedValues, AgreeWithTheExpressionOnRandomTexts) {
    std::mt19937 random(2320);  // NOLINT: the same texts in every run.
    std::size_t matches = 0;
    for (const std::string key : {"path", "installdir", "p", "n", "pp", "", " ", " \n"}) {
        for (int i = 0; i < 4000; ++i) {
            const std::string text = RandomText(random, key, 24);
            ExpectAgreement(text, key);
            if (HasFatalFailure()) return;
            matches += FindQuotedValues(text, key).size();
        }
    }
    // The texts are of use only when many of them match.
    EXPECT_GT(matches, 5000U);
}

TEST(QuotedValues, AgreeWithTheExpressionOnAllShortTails) {
    // Every text of up to five characters behind a key.
    constexpr std::string_view alphabet("\"\\\n\r k");
    for (std::size_t length = 0; length <= 5; ++length) {
        std::size_t count = 1;
        for (std::size_t i = 0; i < length; ++i) count *= alphabet.size();
        for (std::size_t number = 0; number < count; ++number) {
            std::string text = "\"k\"";
            for (std::size_t i = 0, rest = number; i < length; ++i, rest /= alphabet.size()) {
                text += alphabet[rest % alphabet.size()];
            }
            ExpectAgreement(text, "k");
            if (HasFatalFailure()) return;
        }
    }
}

// A scan that takes more than linear time, or a stack as deep as the text is long, doesn't end these within the time
// that a test has.

TEST(QuotedValues, ATextThatIsOneValueIsTakenWhole) {
    const std::string start = "\"path\" \"";
    const std::string value(largestFile - start.size() - 1, 'x');
    const Values values = FindQuotedValues(start + value + '"', "path");
    ASSERT_THAT(values, SizeIs(1));
    EXPECT_TRUE(values[0] == value);
}

TEST(QuotedValues, AValueOfBackslashesAloneIsHalved) {
    const std::string start = "\"path\" \"";
    const std::string value((largestFile - start.size() - 1) / 2 * 2, '\\');
    const Values values = FindQuotedValues(start + value + '"', "path");
    ASSERT_THAT(values, SizeIs(1));
    EXPECT_TRUE(values[0] == std::string(value.size() / 2, '\\'));
}

TEST(QuotedValues, ATextOfBackslashesAloneHasNone) {
    EXPECT_THAT(FindQuotedValues(std::string(largestFile, '\\'), "path"), IsEmpty());
}

TEST(QuotedValues, ATextOfQuotesAloneHasNone) {
    EXPECT_THAT(FindQuotedValues(std::string(largestFile, '"'), "path"), IsEmpty());
    EXPECT_THAT(FindQuotedValues(std::string(largestFile, '"'), ""), SizeIs(largestFile / 4));
}

TEST(QuotedValues, ManyStartsWithoutAnEndTakeLinearTime) {
    const std::array<std::string, 7> pieces{"\"path\" \"a\\\n",
                                            "\"path\" \\\"",
                                            "\"path\" ",
                                            "\"path\"\"\\\"",
                                            "\\\"path\\\" \\\"",
                                            "\"path\" \"\\\"path\\\" \\\"",
                                            "\"path\" \"a\\\r\\\"path\" \\\""};
    for (const std::string& piece : pieces) {
        std::string text = "\"path\" \"";
        while (text.size() + piece.size() <= largestFile) text += piece;
        const Values all = FindQuotedValues(text, "path");
        const std::string small = text.substr(0, 3000);
        EXPECT_EQ(FindQuotedValues(small, "path"), ValuesByExpression(small, "path")) << piece;
        EXPECT_LT(all.size(), text.size()) << piece;
    }
}

TEST(QuotedValuesFile, AMissingFileHasNone) {
    const TemporaryFolder folder;
    EXPECT_THAT(ReadQuotedValues(folder / "libraryfolders.vdf", "path"), IsEmpty());
    EXPECT_THAT(ReadQuotedValues(folder / "missing" / "libraryfolders.vdf", "path"), IsEmpty());
    EXPECT_THAT(ReadQuotedValues({}, "path"), IsEmpty());
}

TEST(QuotedValuesFile, ADirectoryHasNone) {
    const TemporaryFolder folder;
    EXPECT_THAT(ReadQuotedValues(folder.Path(), "path"), IsEmpty());
}

TEST(QuotedValuesFile, AnEmptyFileHasNone) {
    const TemporaryFolder folder;
    WriteBytes(folder / "empty.vdf", "");
    EXPECT_THAT(ReadQuotedValues(folder / "empty.vdf", "path"), IsEmpty());
}

TEST(QuotedValuesFile, BytesAreTakenAsTheyAre) {
    const TemporaryFolder folder;
    WriteBytes(folder / "file.vdf", "\xEF\xBB\xBF\"path\"\r\n\"a\r\n\x1A\xFF\"\0\"path\" \"b\""s);
    EXPECT_THAT(ReadQuotedValues(folder / "file.vdf", "path"), ElementsAre("a\r\n\x1A\xFF", "b"));
}

TEST(QuotedValuesFile, AFileOf4194304BytesIsRead) {
    const TemporaryFolder folder;
    std::string text = "\"path\" \"first\"";
    const std::string last = "\"path\" \"last\"";
    text.resize(largestFile - last.size(), ' ');
    WriteBytes(folder / "largest.vdf", text + last);
    EXPECT_THAT(ReadQuotedValues(folder / "largest.vdf", "path"), ElementsAre("first", "last"));
}

TEST(QuotedValuesFile, AFileOf4194305BytesHasNone) {
    const TemporaryFolder folder;
    std::string text = "\"path\" \"first\"";
    text.resize(largestFile + 1, ' ');
    WriteBytes(folder / "too large.vdf", text);
    EXPECT_THAT(ReadQuotedValues(folder / "too large.vdf", "path"), IsEmpty());
}
