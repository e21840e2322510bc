#include "foundation/text/FString.h"
#include "foundation/text/FStringRef.h"
#include "platform/CharacterMapping.h"
#include "support/SystemText.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera {
namespace {

using testing_support::systemBytes;
using testing_support::whyNoUtf8;

int signOf(int value) {
    return value < 0 ? -1 : value > 0 ? 1 : 0;
}

std::u16string widened(const std::string& text) {
    return std::u16string(text.begin(), text.end());
}

struct CompareRow {
    const char* name;
    std::string a;
    std::string b;
    std::int32_t length;
    FCase folding;
    int sign;
};

class FStringRefCompare : public testing::TestWithParam<CompareRow> {};

TEST_P(FStringRefCompare, HasTheSameSignInEveryPairOfWidths) {
    const CompareRow& row = GetParam();
    const std::u16string a16 = widened(row.a);
    const std::u16string b16 = widened(row.b);
    const FStringRef a(row.a.data(), static_cast<std::int32_t>(row.a.size()));
    const FStringRef b(row.b.data(), static_cast<std::int32_t>(row.b.size()));
    const FStringRef wideA(a16.data(), static_cast<std::int32_t>(a16.size()));
    const FStringRef wideB(b16.data(), static_cast<std::int32_t>(b16.size()));
    EXPECT_EQ(signOf(a.compare(b, row.length, row.folding)), row.sign);
    EXPECT_EQ(signOf(wideA.compare(wideB, row.length, row.folding)), row.sign);
    EXPECT_EQ(signOf(a.compare(wideB, row.length, row.folding)), row.sign);
    EXPECT_EQ(signOf(wideA.compare(b, row.length, row.folding)), row.sign);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FStringRefCompare,
    testing::Values(CompareRow{"Equal", "take", "take", -1, FCase::exact, 0},
                    CompareRow{"Smaller", "take 1", "take 2", -1, FCase::exact, -1},
                    CompareRow{"Greater", "tale", "take", -1, FCase::exact, 1},
                    CompareRow{"PrefixIsSmaller", "take", "takes", -1, FCase::exact, -1},
                    CompareRow{"LongerIsGreater", "takes", "take", -1, FCase::exact, 1},
                    CompareRow{"LengthZeroIsEqual", "a", "b", 0, FCase::exact, 0},
                    CompareRow{"BoundedEqual", "take 1", "take 2", 5, FCase::exact, 0},
                    CompareRow{"BoundedBeyondBoth", "take", "take", 50, FCase::exact, 0},
                    CompareRow{"BoundedOtherHasFurther", "ta", "tak", 3, FCase::exact, -1},
                    CompareRow{"EmptyOther", "a", "", -1, FCase::exact, 1},
                    CompareRow{"EmptySelf", "", "a", -1, FCase::exact, -1},
                    CompareRow{"BothEmpty", "", "", -1, FCase::exact, 0},
                    CompareRow{"CaseCounts", "Take", "take", -1, FCase::exact, -1},
                    CompareRow{"CaseIgnored", "TAKE one", "take ONE", -1, FCase::ignore, 0},
                    CompareRow{"CaseIgnoredThenDiffers", "TAKE a", "take B", -1, FCase::ignore, -1},
                    CompareRow{"UnderscoreFoldsBelowLetters", "a_", "aB", -1, FCase::ignore, -1},
                    CompareRow{"LongEqual", std::string(100, 'x'), std::string(100, 'x'), -1, FCase::exact, 0},
                    CompareRow{"LongDiffersLate", std::string(99, 'x') + "a", std::string(99, 'x') + "b", -1,
                               FCase::exact, -1},
                    CompareRow{"EndsAtANul", std::string("ab\0x", 4), std::string("ab\0y", 4), -1, FCase::exact, 0},
                    CompareRow{"NulAgainstTheEnd", std::string("ab\0x", 4), "ab", -1, FCase::exact, 0},
                    CompareRow{"NulInSelf", std::string("ab\0x", 4), "abc", -1, FCase::exact, -1}),
    [](const auto& row) { return row.param.name; });

// Every length and every place of a difference, so that each path through blocks and remainders is walked.
TEST(FStringRefCompare, FindsADifferenceInEveryPlaceOfEveryLength) {
    for (std::size_t length = 1; length < 70; ++length) {
        const std::string text(length, 'm');
        for (std::size_t place = 0; place < length; ++place) {
            std::string other = text;
            other[place] = 'n';
            ASSERT_LT(FStringRef(text.c_str()).compare(other.c_str()), 0) << length << " " << place;
            ASSERT_LT(FStringRef(widened(text).c_str()).compare(widened(other).c_str()), 0) << length << " " << place;
            other[place] = 'M';
            ASSERT_EQ(FStringRef(text.c_str()).compare(other.c_str(), -1, FCase::ignore), 0) << length << " " << place;
            ASSERT_EQ(FStringRef(widened(text).c_str()).compare(widened(other).c_str(), -1, FCase::ignore), 0)
                << length << " " << place;
            // A NUL in the same place ends both.
            std::string cut = text;
            cut[place] = '\0';
            std::string otherCut = cut;
            otherCut.back() = otherCut.back() == '\0' ? '\0' : 'z';
            const auto size = static_cast<std::int32_t>(length);
            ASSERT_EQ(FStringRef(cut.data(), size).compare(FStringRef(otherCut.data(), size)), 0);
        }
    }
}

TEST(FStringRefCompare, CharactersCompareUnsigned) {
    EXPECT_GT(FStringRef("\xe9").compare("z"), 0);
    EXPECT_GT(FStringRef(u"\uff00").compare(u"z"), 0);
}

TEST(FStringRefCompare, WideLettersBeyondAsciiFoldOneByOne) {
    if (!platform::comparesByLowerCase()) {
        GTEST_SKIP() << "the system's comparisons fold ASCII alone";
    }
    EXPECT_EQ(FStringRef(u"\u00c9COLE Stra\u00dfe \u0416").compare(u"\u00e9cole stra\u00dfe \u0436", -1, FCase::ignore),
              0);
    EXPECT_NE(FStringRef(u"\u00c9").compare(u"\u00e8", -1, FCase::ignore), 0);
    const std::u16string large(40, u'\u00c4');
    const std::u16string small(40, u'\u00e4');
    EXPECT_EQ(FStringRef(large.c_str()).compare(small.c_str(), -1, FCase::ignore), 0);
}

TEST(FStringRefCompare, BytesFoldByAsciiAlone) {
    EXPECT_NE(FStringRef("\xc3\x89").compare("\xc3\xa9", -1, FCase::ignore), 0);
}

TEST(FStringRefCompare, WidthsMeetInTheSystemsCodePage) {
    const std::string cafe = systemBytes(u"caf\u00e9");
    EXPECT_EQ(FStringRef(cafe.c_str()).compare(u"caf\u00e9"), 0);
    EXPECT_EQ(FStringRef(u"caf\u00e9").compare(cafe.c_str()), 0);
}

TEST(FStringRefCompare, TheSideThatCantBeWidenedIsTheGreater) {
    if (const char* reason = whyNoUtf8()) {
        GTEST_SKIP() << reason;
    }
    EXPECT_EQ(FStringRef("\xff").compare(u"a"), 1);
    EXPECT_EQ(FStringRef(u"a").compare("\xff"), -1);
    EXPECT_EQ(FStringRef("\xff").compareNatural(u"a"), 1);
    EXPECT_EQ(FStringRef(u"a").compareNatural("\xff"), -1);
    EXPECT_FALSE(FStringRef("\xff").startsWith(u"a"));
    EXPECT_FALSE(FStringRef(u"a").startsWith("\xff"));
    EXPECT_FALSE(FStringRef("\xff").endsWith(u"a"));
    EXPECT_FALSE(FStringRef("\xff").contains(u"a"));
    EXPECT_EQ(FStringRef("\xff").firstDifference(u"a"), 0);
}

TEST(FStringRefCompare, CompareAtBeginsAtTheStart) {
    EXPECT_EQ(FStringRef("one two").compareAt(4, "two"), 0);
    EXPECT_EQ(FStringRef("one two").compareAt(4, "twofold", 3), 0);
    EXPECT_LT(FStringRef("one two").compareAt(7, "two"), 0);
    EXPECT_EQ(FStringRef("one").compareAt(4, "two"), -1);
    EXPECT_EQ(FStringRef("one").compareAt(-4, "one"), 0);
    EXPECT_EQ(FStringRef("one").compareAt(99, "x", 0), 0);
    // Positions speak of the widened text, however many bytes a character takes.
    EXPECT_EQ(FStringRef(systemBytes(u"\u00e9x").c_str()).compareAt(1, u"x"), 0);
}

TEST(FStringRefCompare, AViewWithoutANulIsComparedByItsLength) {
    EXPECT_EQ(FStringRef("abcdef", 3).compare("abc"), 0);
    EXPECT_EQ(FStringRef(u"abcdef", 3).compare(u"abc"), 0);
    EXPECT_LT(FStringRef("abcdef", 3).compare("abcd"), 0);
}

TEST(FStringRefCompare, OperatorsFollowCompare) {
    EXPECT_TRUE(FString("abc") == FString(u"abc"));
    EXPECT_TRUE(FString("abc") != "abd");
    EXPECT_TRUE(FStringRef("abc") < FStringRef("abd"));
}

struct NaturalRow {
    const char* name;
    const char* a;
    const char* b;
    FCase folding;
    int sign;
};

class FStringRefNatural : public testing::TestWithParam<NaturalRow> {};

TEST_P(FStringRefNatural, OrdersBothWaysInEveryPairOfWidths) {
    const NaturalRow& row = GetParam();
    const std::u16string a = widened(row.a);
    const std::u16string b = widened(row.b);
    EXPECT_EQ(signOf(FStringRef(row.a).compareNatural(row.b, row.folding)), row.sign);
    EXPECT_EQ(signOf(FStringRef(row.b).compareNatural(row.a, row.folding)), -row.sign);
    EXPECT_EQ(signOf(FStringRef(a.c_str()).compareNatural(b.c_str(), row.folding)), row.sign);
    EXPECT_EQ(signOf(FStringRef(row.a).compareNatural(b.c_str(), row.folding)), row.sign);
    EXPECT_EQ(signOf(FStringRef(b.c_str()).compareNatural(row.a, row.folding)), -row.sign);
}

INSTANTIATE_TEST_SUITE_P(Rows, FStringRefNatural,
                         testing::Values(NaturalRow{"Equal", "file9", "file9", FCase::exact, 0},
                                         NaturalRow{"NineBeforeTen", "file9", "file10", FCase::exact, -1},
                                         NaturalRow{"A9BeforeA10", "a9", "a10", FCase::exact, -1},
                                         NaturalRow{"MoreZerosAfter", "a07", "a7", FCase::exact, 1},
                                         NaturalRow{"StillMoreZerosAfter", "a007", "a07", FCase::exact, 1},
                                         NaturalRow{"ValueBeforeZeros", "a08", "a7", FCase::exact, 1},
                                         NaturalRow{"DigitsDecide", "a12b", "a13a", FCase::exact, -1},
                                         NaturalRow{"WalkGoesOnBehindNumbers", "a1b2", "a1b10", FCase::exact, -1},
                                         NaturalRow{"ZerosDecideBeforeWhatFollows", "a01z", "a1a", FCase::exact, 1},
                                         NaturalRow{"ZeroAlone", "a0", "a00", FCase::exact, -1},
                                         NaturalRow{"LettersDecide", "a1", "b0", FCase::exact, -1},
                                         NaturalRow{"DigitAgainstLetter", "a1", "ab", FCase::exact, -1},
                                         NaturalRow{"EndsFirst", "take", "take 1", FCase::exact, -1},
                                         NaturalRow{"EmptyFirst", "", "a", FCase::exact, -1},
                                         NaturalRow{"BothEmpty", "", "", FCase::exact, 0},
                                         NaturalRow{"CaseCounts", "A1", "a1", FCase::exact, -1},
                                         NaturalRow{"CaseIgnored", "A2", "a10", FCase::ignore, -1},
                                         NaturalRow{"CaseIgnoredEqual", "TAKE2", "take2", FCase::ignore, 0},
                                         NaturalRow{"NumbersBeyond64Bits", "a99999999999999999999999998",
                                                    "a99999999999999999999999999", FCase::exact, -1}),
                         [](const auto& row) { return row.param.name; });

TEST(FStringRefNatural, NullOperandsFollowCompare) {
    EXPECT_EQ(FStringRef().compareNatural(FStringRef()), 0);
    EXPECT_EQ(FStringRef().compareNatural("a"), -1);
    EXPECT_EQ(FStringRef("a").compareNatural(FStringRef()), 1);
}

TEST(FStringRefNatural, WideLettersFoldBeyondAscii) {
    if (!platform::comparesByLowerCase()) {
        GTEST_SKIP() << "the system's comparisons fold ASCII alone";
    }
    EXPECT_EQ(FStringRef(u"\u00c92").compareNatural(u"\u00e92", FCase::ignore), 0);
    EXPECT_LT(FStringRef(u"\u00c92").compareNatural(u"\u00e910", FCase::ignore), 0);
}

TEST(FStringRefPrefix, AnEmptyArgumentMatchesEmptyTextAlone) {
    EXPECT_FALSE(FStringRef("text").startsWith(""));
    EXPECT_FALSE(FStringRef("text").startsWith(FStringRef()));
    EXPECT_FALSE(FStringRef("text").endsWith(""));
    EXPECT_TRUE(FStringRef("").startsWith(""));
    EXPECT_TRUE(FStringRef().startsWith(FStringRef()));
    EXPECT_TRUE(FString().startsWith(""));
    EXPECT_TRUE(FStringRef("").endsWith(FStringRef()));
    EXPECT_FALSE(FStringRef("text").contains(""));
    EXPECT_FALSE(FStringRef("").contains(""));
}

TEST(FStringRefPrefix, BeginsAndEndsAreFoundInBothWidths) {
    EXPECT_TRUE(FStringRef("Take 7").startsWith("Take"));
    EXPECT_TRUE(FStringRef(u"Take 7").startsWith("Take"));
    EXPECT_TRUE(FStringRef("Take 7").startsWith(u"Take"));
    EXPECT_FALSE(FStringRef("Take 7").startsWith("take"));
    EXPECT_TRUE(FStringRef("Take 7").startsWith("take", FCase::ignore));
    EXPECT_FALSE(FStringRef("Ta").startsWith("Take"));
    EXPECT_FALSE(FStringRef("").startsWith("Take"));
    EXPECT_TRUE(FStringRef("mix.wav").endsWith(".wav"));
    EXPECT_TRUE(FStringRef(u"mix.WAV").endsWith(".wav", FCase::ignore));
    EXPECT_FALSE(FStringRef("mix.wav").endsWith(".WAV"));
    EXPECT_TRUE(FStringRef("the mix.wav").contains("mix"));
    EXPECT_TRUE(FStringRef("the MIX.wav").contains(u"mix", FCase::ignore));
    EXPECT_FALSE(FStringRef("the MIX.wav").contains("mix"));
}

TEST(FStringRefPrefix, TheFirstDifferenceIncludesTheEnds) {
    EXPECT_EQ(FStringRef("abc").firstDifference("abc"), -1);
    EXPECT_EQ(FStringRef("abc").firstDifference("abd"), 2);
    EXPECT_EQ(FStringRef("abc").firstDifference("abcd"), 3);
    EXPECT_EQ(FStringRef("abcd").firstDifference(u"abc"), 3);
    EXPECT_EQ(FStringRef("ABC").firstDifference("abd", FCase::ignore), 2);
    EXPECT_EQ(FStringRef(u"ABC").firstDifference("abc", FCase::ignore), -1);
    EXPECT_EQ(FStringRef().firstDifference(""), -1);
    EXPECT_EQ(FStringRef().firstDifference("a"), 0);
    EXPECT_EQ(FStringRef(systemBytes(u"\u00e9x").c_str()).firstDifference(u"\u00e9y"), 1);
}

TEST(FStringRefPrefix, EqualsCharAtCrossesWidthsByTheCodePage) {
    EXPECT_TRUE(FStringRef("abc").equalsCharAt(1, 'b'));
    EXPECT_TRUE(FStringRef("abc").equalsCharAt(1, u'b'));
    EXPECT_TRUE(FStringRef(u"abc").equalsCharAt(1, 'b'));
    EXPECT_TRUE(FStringRef(u"a\u00e9").equalsCharAt(1, u'\u00e9'));
    EXPECT_FALSE(FStringRef("abc").equalsCharAt(3, 'd'));
    EXPECT_FALSE(FStringRef("abc").equalsCharAt(-1, 'a'));
}

TEST(FStringRefPrefix, EqualsCharAtFindsNoCharacterThatTheWidthCantHold) {
    if (const char* reason = whyNoUtf8()) {
        GTEST_SKIP() << reason;
    }
    // In UTF-8 it takes two bytes, so no single character of 8-bit text is it.
    EXPECT_FALSE(FStringRef("\xc3\xa9").equalsCharAt(0, u'\u00e9'));
    EXPECT_FALSE(FStringRef(u"\u00e9").equalsCharAt(0, '\xe9'));
}

} // namespace
} // namespace tessera
