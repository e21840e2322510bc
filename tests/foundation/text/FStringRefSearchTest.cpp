#include "foundation/text/FStringRef.h"

#include "support/SystemText.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera {
namespace {

using testing_support::systemBytes;
using testing_support::whyNoUtf8;

struct SearchRow {
    const char* name;
    const char* text;
    const char* needle;
    std::int32_t start;
    std::int32_t otherLength;
    FCase folding;
    std::int32_t lastStart;
    std::int32_t found;
};

class FStringRefSearch : public testing::TestWithParam<SearchRow> {};

TEST_P(FStringRefSearch, FindsTheSamePlaceInEveryPairOfWidths) {
    const SearchRow& row = GetParam();
    const std::string text = row.text;
    const std::string needle = row.needle;
    const std::u16string wideText(text.begin(), text.end());
    const std::u16string wideNeedle(needle.begin(), needle.end());
    const auto find = [&](const FStringRef& in, const FStringRef& what) {
        return in.indexOf(row.start, what, row.otherLength, row.folding, row.lastStart);
    };
    EXPECT_EQ(find(row.text, row.needle), row.found);
    EXPECT_EQ(find(wideText.c_str(), wideNeedle.c_str()), row.found);
    EXPECT_EQ(find(row.text, wideNeedle.c_str()), row.found);
    EXPECT_EQ(find(wideText.c_str(), row.needle), row.found);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FStringRefSearch,
    testing::Values(SearchRow{"AtTheStart", "take one", "take", 0, -1, FCase::exact, -1, 0},
                    SearchRow{"Inside", "take one", "one", 0, -1, FCase::exact, -1, 5},
                    SearchRow{"NegativeStartIsZero", "take one", "take", -3, -1, FCase::exact, -1, 0},
                    SearchRow{"BehindTheStart", "one one", "one", 1, -1, FCase::exact, -1, 4},
                    SearchRow{"StartPastTheEnd", "one", "one", 3, -1, FCase::exact, -1, -1},
                    SearchRow{"Missing", "take one", "two", 0, -1, FCase::exact, -1, -1},
                    SearchRow{"EmptyNeedle", "take", "", 0, -1, FCase::exact, -1, -1},
                    SearchRow{"EmptyText", "", "a", 0, -1, FCase::exact, -1, -1},
                    SearchRow{"NeedleLonger", "ab", "abc", 0, -1, FCase::exact, -1, -1},
                    SearchRow{"NeedleBounded", "take one", "onto", 0, 2, FCase::exact, -1, 5},
                    SearchRow{"NeedleBoundedToNothing", "take", "take", 0, 0, FCase::exact, -1, -1},
                    SearchRow{"CaseCounts", "TAKE", "take", 0, -1, FCase::exact, -1, -1},
                    SearchRow{"CaseIgnored", "a TAKE", "take", 0, -1, FCase::ignore, -1, 2},
                    SearchRow{"LastStartIncluded", "xxab", "ab", 0, -1, FCase::exact, 2, 2},
                    SearchRow{"LastStartBefore", "xxab", "ab", 0, -1, FCase::exact, 1, -1},
                    SearchRow{"LastStartZero", "abab", "ab", 0, -1, FCase::exact, 0, 0},
                    SearchRow{"LastStartBeyondIsNoLimit", "xxab", "ab", 0, -1, FCase::exact, 4, 2},
                    SearchRow{"NearMisses", "ababababac", "abac", 0, -1, FCase::exact, -1, 6}),
    [](const auto& row) { return row.param.name; });

// A needle of every length at every place of texts that end in every place of a block.
TEST(FStringRefSearch, FindsEveryNeedleWhereverItStands) {
    for (std::size_t length = 1; length < 60; ++length) {
        for (std::size_t size = 1; size <= 5 && size <= length; ++size) {
            for (std::size_t place = 0; place + size <= length; ++place) {
                std::string text(length, 'a');
                text.replace(place, size, size, 'b');
                const std::string needle(size, 'b');
                const std::u16string wide(text.begin(), text.end());
                const std::u16string wideNeedle(needle.begin(), needle.end());
                const auto found = static_cast<std::int32_t>(place);
                ASSERT_EQ(FStringRef(text.c_str()).indexOf(0, needle.c_str()), found) << text;
                ASSERT_EQ(FStringRef(wide.c_str()).indexOf(0, wideNeedle.c_str()), found) << text;
                ASSERT_EQ(FStringRef(text.c_str()).indexOf(0, needle[0]), found) << text;
                ASSERT_EQ(FStringRef(wide.c_str()).indexOf(0, wideNeedle[0]), found) << text;
            }
        }
    }
}

TEST(FStringRefSearch, ANulInTheNeedleEndsTheComparison) {
    // What stands behind the NUL doesn't count, and the end of the text is one.
    EXPECT_EQ(FStringRef("xab", 3).indexOf(0, FStringRef("b\0z", 3)), 2);
    EXPECT_EQ(FStringRef("ab\0q", 4).indexOf(0, FStringRef("b\0z", 3)), 1);
    EXPECT_EQ(FStringRef("abq", 3).indexOf(0, FStringRef("b\0z", 3)), -1);
    EXPECT_EQ(FStringRef("a\0bc", 4).indexOf(0, "bc"), 2) << "a NUL in the text doesn't end the search";
}

TEST(FStringRefSearch, PositionsSpeakOfTheWidenedText) {
    const std::string etude = systemBytes(u"\u00e9tude");
    EXPECT_EQ(FStringRef(etude.c_str()).indexOf(0, u"tude"), 1);
    EXPECT_EQ(FStringRef(etude.c_str()).indexOf(0, "tude"), static_cast<std::int32_t>(etude.size()) - 4);
}

TEST(FStringRefSearch, CharactersAreFoundForwardAndBackward) {
    EXPECT_EQ(FStringRef("a.b.c").indexOf(0, '.'), 1);
    EXPECT_EQ(FStringRef("a.b.c").indexOf(2, '.'), 3);
    EXPECT_EQ(FStringRef("a.b.c").indexOf(0, '.', FCase::exact, 0), -1);
    EXPECT_EQ(FStringRef(u"a.b.c").indexOf(-5, '.'), 1);
    EXPECT_EQ(FStringRef("a.b.c").indexOf(0, u'.'), 1);
    EXPECT_EQ(FStringRef("abc").indexOf(0, 'B'), -1);
    EXPECT_EQ(FStringRef("abc").indexOf(0, 'B', FCase::ignore), 1);
    EXPECT_EQ(FStringRef(u"x\u00e9").indexOf(0, u'\u00c9', FCase::ignore), 1);
    EXPECT_EQ(FStringRef("a.b.c").lastIndexOf(-1, '.'), 3);
    EXPECT_EQ(FStringRef("a.b.c").lastIndexOf(99, '.'), 3);
    EXPECT_EQ(FStringRef("a.b.c").lastIndexOf(2, '.'), 1);
    EXPECT_EQ(FStringRef("a.b.c").lastIndexOf(3, u'.'), 3);
    EXPECT_EQ(FStringRef(u"a.b.c").lastIndexOf(0, u'.'), -1);
    EXPECT_EQ(FStringRef(u"aBc").lastIndexOf(-1, 'b', FCase::ignore), 1);
    EXPECT_EQ(FStringRef().lastIndexOf(-1, '.'), -1);
    EXPECT_EQ(FStringRef().indexOf(0, '.'), -1);
}

TEST(FStringRefSearch, ACharacterThatTheWidthCantHoldIsNowhere) {
    if (const char* reason = whyNoUtf8()) {
        GTEST_SKIP() << reason;
    }
    EXPECT_EQ(FStringRef("\xc3\xa9").indexOf(0, u'\u00e9'), -1);
    EXPECT_EQ(FStringRef("\xc3\xa9").lastIndexOf(-1, u'\u00e9'), -1);
    EXPECT_EQ(FStringRef(u"\u00e9").indexOf(0, '\xe9'), -1);
}

TEST(FStringRefSearch, TextIsFoundBackward) {
    EXPECT_EQ(FStringRef("one one one").lastIndexOf(-1, "one"), 8);
    EXPECT_EQ(FStringRef("one one one").lastIndexOf(7, "one"), 4);
    EXPECT_EQ(FStringRef("one one one").lastIndexOf(100, "one"), 8);
    EXPECT_EQ(FStringRef("one one one").lastIndexOf(0, "one"), 0);
    EXPECT_EQ(FStringRef("one ONE").lastIndexOf(-1, "one", -1, FCase::ignore), 4);
    EXPECT_EQ(FStringRef("one two").lastIndexOf(-1, "onto", 2), 0);
    EXPECT_EQ(FStringRef(u"one one").lastIndexOf(-1, "one"), 4);
    EXPECT_EQ(FStringRef("one").lastIndexOf(-1, ""), -1);
    EXPECT_EQ(FStringRef("one").lastIndexOf(-1, "two"), -1);
    EXPECT_EQ(FStringRef().lastIndexOf(-1, "one"), -1);
}

TEST(FStringRefSearch, ACharacterThatTheWidthCantHoldIsntCounted) {
    if (const char* reason = whyNoUtf8()) {
        GTEST_SKIP() << reason;
    }
    EXPECT_EQ(FStringRef("banana").count(u'\u00e9'), -1);
    EXPECT_EQ(FStringRef(u"banana").count('\xe9'), -1);
}

TEST(FStringRefSearch, CountCountsFromTheStart) {
    EXPECT_EQ(FStringRef("banana").count('a'), 3);
    EXPECT_EQ(FStringRef("banana").count('a', 2), 2);
    EXPECT_EQ(FStringRef("banana").count('a', -2), 3);
    EXPECT_EQ(FStringRef("banana").count('A'), 0);
    EXPECT_EQ(FStringRef("banana").count('A', 0, FCase::ignore), 3);
    EXPECT_EQ(FStringRef(u"banana").count('n'), 2);
    EXPECT_EQ(FStringRef("banana").count(u'n'), 2);
    EXPECT_EQ(FStringRef("banana").count('a', 99), 0);
}

} // namespace
} // namespace tessera
