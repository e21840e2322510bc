#include "foundation/text/FString.h"

#include "support/SystemText.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>

namespace tessera {
namespace {

using testing_support::systemBytes;
using testing_support::whyNoUtf8;

TEST(FStringEdit, AppendJoinsTextOfTheSameWidth) {
    FString text("ab");
    text.append("cd");
    text.append8("efgh", 2);
    EXPECT_EQ(text.view8(), "abcdef");
    FString wide(u"ab");
    wide.append16(u"cdef", 2);
    EXPECT_EQ(wide.view16(), u"abcd");
    wide.append16(nullptr);
    wide.append("");
    EXPECT_EQ(wide.view16(), u"abcd");
}

TEST(FStringEdit, AppendOfTheOtherWidthEndsWide) {
    FString text(systemBytes(u"caf\u00e9 ").c_str());
    text.append(u"\u97f3");
    EXPECT_EQ(text.view16(), u"caf\u00e9 \u97f3");
    text.append(systemBytes(u" \u00e9").c_str());
    EXPECT_EQ(text.view16(), u"caf\u00e9 \u97f3 \u00e9");
}

TEST(FStringEdit, AppendThatCantBeWidenedIsDropped) {
    if (const char* reason = whyNoUtf8()) {
        GTEST_SKIP() << reason;
    }
    FString wide(u"ab");
    wide.append("\xff");
    EXPECT_EQ(wide.view16(), u"ab");
    FString narrow("\xff");
    narrow.append(u"ab");
    EXPECT_EQ(narrow.view8(), "\xff");
}

TEST(FStringEdit, AppendOfTheOwnBufferDoesNothingAndOfItsMiddleWorks) {
    FString text("abcdef");
    text.append(text);
    EXPECT_EQ(text.view8(), "abcdef");
    text.append8(text.text8(), 2);
    EXPECT_EQ(text.view8(), "abcdef");
    text.append8(text.text8() + 4);
    EXPECT_EQ(text.view8(), "abcdefef");
    FString wide(u"abcdef");
    wide.append(FStringRef(wide, 1, 3));
    EXPECT_EQ(wide.view16(), u"abcdefbcd");
}

TEST(FStringEdit, AppendToADefaultStringStaysWide) {
    FString text;
    text.append("ab");
    EXPECT_EQ(text.view16(), u"ab");
}

TEST(FStringEdit, CharactersAreAppendedRepeatedly) {
    FString text("a");
    text.appendChar('b', 3);
    text.appendChar(u'c');
    text.appendChar('x', 0);
    text.appendChar('x', -1);
    EXPECT_EQ(text.view8(), "abbbc");
}

TEST(FStringEdit, ACharacterThatTheWidthCantHoldWidensTheText) {
    if (const char* reason = whyNoUtf8()) {
        GTEST_SKIP() << reason;
    }
    FString text("abbbc");
    text.appendChar(u'\u00e9', 2);
    EXPECT_EQ(text.view16(), u"abbbc\u00e9\u00e9");
    text.appendChar('d');
    EXPECT_EQ(text.view16(), u"abbbc\u00e9\u00e9d");
    text.appendChar('\xff');
    EXPECT_EQ(text.view16(), u"abbbc\u00e9\u00e9d");
}

TEST(FStringEdit, InsertAndReplaceWorkAtEveryPosition) {
    FString text("bd");
    EXPECT_TRUE(text.insert(0, "a"));
    EXPECT_TRUE(text.insert(2, "cxx", 1));
    EXPECT_TRUE(text.insert(4, "e"));
    EXPECT_EQ(text.view8(), "abcde");
    EXPECT_FALSE(text.insert(6, "f"));
    EXPECT_FALSE(text.insert(-1, "f"));
    EXPECT_TRUE(text.replace(1, 3, "-"));
    EXPECT_EQ(text.view8(), "a-e");
    EXPECT_TRUE(text.replace(1, -1, u"\u97f3"));
    EXPECT_EQ(text.view16(), u"a\u97f3");
    EXPECT_TRUE(text.replace(0, 100, ""));
    EXPECT_TRUE(text.isEmpty());
}

TEST(FStringEdit, InsertTakesTextFromItself) {
    FString text("abc");
    EXPECT_TRUE(text.insert(1, text));
    EXPECT_EQ(text.view8(), "aabcbc");
    EXPECT_TRUE(text.replace(0, 2, FStringRef(text, 4)));
    EXPECT_EQ(text.view8(), "bcbcbc");
}

struct ReplaceRow {
    const char* name;
    const char* text;
    const char* find;
    const char* with;
    FOccurrences occurrences;
    FCase folding;
    std::int32_t count;
    const char* result;
};

class FStringReplaceAll : public testing::TestWithParam<ReplaceRow> {};

TEST_P(FStringReplaceAll, ReplacesTheSameInEveryMixOfWidths) {
    const ReplaceRow& row = GetParam();
    const auto wide = [](const char* text) {
        FString result(text);
        result.toWide();
        return result;
    };
    for (int mix = 0; mix < 8; ++mix) {
        FString text = (mix & 1) != 0 ? wide(row.text) : FString(row.text);
        // Views, since an empty FString is null and replaces nothing.
        const std::string find8 = row.find;
        const std::string with8 = row.with;
        const std::u16string find16(find8.begin(), find8.end());
        const std::u16string with16(with8.begin(), with8.end());
        const FStringRef find = (mix & 2) != 0 ? FStringRef(find16.c_str()) : FStringRef(find8.c_str());
        const FStringRef with = (mix & 4) != 0 ? FStringRef(with16.c_str()) : FStringRef(with8.c_str());
        EXPECT_EQ(text.replaceAll(find, with, row.occurrences, row.folding), row.count) << "mix " << mix;
        EXPECT_EQ(text.compare(row.result), 0) << "mix " << mix << ": " << text.text8();
    }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FStringReplaceAll,
    testing::Values(ReplaceRow{"SameLength", "abcabc", "b", "x", FOccurrences::all, FCase::exact, 2, "axcaxc"},
                    ReplaceRow{"Longer", "abcabc", "b", "xyz", FOccurrences::all, FCase::exact, 2, "axyzcaxyzc"},
                    ReplaceRow{"Shorter", "abcabc", "bc", "x", FOccurrences::all, FCase::exact, 2, "axax"},
                    ReplaceRow{"ToNothing", "abcabc", "abc", "", FOccurrences::all, FCase::exact, 2, ""},
                    ReplaceRow{"FirstAlone", "abcabc", "b", "x", FOccurrences::first, FCase::exact, 1, "axcabc"},
                    ReplaceRow{"None", "abc", "x", "y", FOccurrences::all, FCase::exact, 0, "abc"},
                    ReplaceRow{"EmptyFind", "abc", "", "y", FOccurrences::all, FCase::exact, 0, "abc"},
                    ReplaceRow{"InsertedIsntSearched", "aa", "a", "aa", FOccurrences::all, FCase::exact, 2, "aaaa"},
                    ReplaceRow{"FromTheLeft", "aaa", "aa", "b", FOccurrences::all, FCase::exact, 1, "ba"},
                    ReplaceRow{"CaseCounts", "Abab", "AB", "x", FOccurrences::all, FCase::exact, 0, "Abab"},
                    ReplaceRow{"CaseIgnored", "Abab", "AB", "x", FOccurrences::all, FCase::ignore, 2, "xx"}),
    [](const auto& row) { return row.param.name; });

TEST(FStringEdit, ReplaceAllDoesNothingWithNull) {
    FString text("abc");
    EXPECT_EQ(text.replaceAll(FStringRef(), "x"), 0);
    EXPECT_EQ(text.replaceAll("b", FString()), 0) << "an empty FString is null";
    EXPECT_EQ(FString().replaceAll("b", "x"), 0);
    EXPECT_EQ(text.view8(), "abc");
}

TEST(FStringEdit, ReplaceAllTakesItsArgumentsFromTheTextItself) {
    FString text("abab");
    EXPECT_EQ(text.replaceAll(FStringRef(text, 0, 1), FStringRef(text, 1, 1)), 2);
    EXPECT_EQ(text.view8(), "bbbb");
    EXPECT_EQ(text.replaceAll(FStringRef(text, 0, 2), u"x"), 2);
    EXPECT_EQ(text.view16(), u"xx");
}

TEST(FStringEdit, ReplaceCharsPutsABlankForZero) {
    FString text("a/b:c");
    EXPECT_TRUE(text.replaceChars("/:", '_'));
    EXPECT_EQ(text.view8(), "a_b_c");
    EXPECT_TRUE(text.replaceChars("_", '\0'));
    EXPECT_EQ(text.view8(), "a b c");
    EXPECT_FALSE(text.replaceChars("xyz", '-'));
    EXPECT_FALSE(text.replaceChars("", '-'));
    EXPECT_FALSE(FString().replaceChars("a", '-'));
}

TEST(FStringEdit, ReplaceCharsCrossesWidths) {
    FString wide(u"a\u97f3b");
    EXPECT_TRUE(wide.replaceChars(u"\u97f3", u'-'));
    EXPECT_EQ(wide.view16(), u"a-b");
    EXPECT_TRUE(wide.replaceChars("-", '\0'));
    EXPECT_EQ(wide.view16(), u"a b");
    // Characters of one low byte are told apart.
    EXPECT_FALSE(wide.replaceChars(u"\u0161\u0162", u'-'));
}

TEST(FStringEdit, ReplaceCharsKeepsOutWhatTheWidthCantHold) {
    if (const char* reason = whyNoUtf8()) {
        GTEST_SKIP() << reason;
    }
    FString narrow("a.b");
    EXPECT_FALSE(narrow.replaceChars(".", u'\u97f3')) << "the character doesn't fit a byte";
    EXPECT_EQ(narrow.view8(), "a.b");
    EXPECT_TRUE(narrow.replaceChars(u".", u'\u97f3'));
    EXPECT_EQ(narrow.view16(), u"a\u97f3b");
}

TEST(FStringEdit, CharactersOfASetAreRemoved) {
    FString text("banana");
    EXPECT_TRUE(text.removeChars("an"));
    EXPECT_EQ(text.view8(), "b");
    EXPECT_FALSE(text.removeChars("an"));
    EXPECT_TRUE(text.removeChars("b"));
    EXPECT_TRUE(text.isNull());
    FString wide(u"a\u00e9b");
    EXPECT_TRUE(wide.removeChars(systemBytes(u"\u00e9").c_str()));
    EXPECT_EQ(wide.view16(), u"ab");
}

TEST(FStringEdit, ASetInsideTheOwnTextStaysWhatItWas) {
    FString text("abcab");
    EXPECT_TRUE(text.replaceChars(FStringRef(text, 0, 2), '_'));
    EXPECT_EQ(text.view8(), "__c__");
    FString wide(u"abcab");
    EXPECT_TRUE(wide.replaceChars(FStringRef(wide, 0, 2), u'_'));
    EXPECT_EQ(wide.view16(), u"__c__");
    FString whole("ab");
    EXPECT_TRUE(whole.replaceChars(whole, '_'));
    EXPECT_EQ(whole.view8(), "__");

    FString removed("abcab");
    EXPECT_TRUE(removed.removeChars(FStringRef(removed, 0, 2)));
    EXPECT_EQ(removed.view8(), "c");
    FString removedWide(u"xabcab");
    EXPECT_TRUE(removedWide.removeChars(FStringRef(removedWide, 1, 2)));
    EXPECT_EQ(removedWide.view16(), u"xc");
    EXPECT_TRUE(removedWide.removeChars(removedWide));
    EXPECT_TRUE(removedWide.isEmpty());
}

TEST(FStringEdit, SubstringsAreSearchedFromTheStartEachTime) {
    FString text("aabb");
    EXPECT_TRUE(text.removeSubstring("ab"));
    EXPECT_TRUE(text.isEmpty());
    FString first("abab");
    EXPECT_TRUE(first.removeSubstring("ab", FOccurrences::first));
    EXPECT_EQ(first.view8(), "ab");
    FString wide(u"xaabby");
    EXPECT_TRUE(wide.removeSubstring("ab"));
    EXPECT_EQ(wide.view16(), u"xy");
    EXPECT_FALSE(wide.removeSubstring("ab"));
    EXPECT_FALSE(wide.removeSubstring(""));
    FString itself("abc");
    EXPECT_TRUE(itself.removeSubstring(itself));
    EXPECT_TRUE(itself.isEmpty());
}

// Against the definition, on every text of two letters up to a length.
TEST(FStringEdit, RemovingInOneWalkIsRemovingFromTheStartEachTime) {
    for (const std::string& needle : {std::string("ab"), std::string("aab"), std::string("aba"), std::string("aa")}) {
        for (unsigned bits = 0; bits < 1024; ++bits) {
            std::string text;
            for (unsigned i = 0; i < 10; ++i) {
                text += (bits >> i & 1) != 0 ? 'b' : 'a';
            }
            FString removed(text.c_str());
            removed.removeSubstring(needle.c_str());
            for (std::size_t at = text.find(needle); at != text.npos; at = text.find(needle)) {
                text.erase(at, needle.size());
            }
            ASSERT_EQ(removed.view8(), text) << needle << " " << bits;
        }
    }
}

TEST(FStringEdit, RemoveIsBoundedByTheText) {
    FString text("abcdef");
    text.remove(1, 2);
    EXPECT_EQ(text.view8(), "adef");
    text.remove(4);
    text.remove(-1);
    text.remove(0, 0);
    EXPECT_EQ(text.view8(), "adef");
    text.remove(2, 100);
    EXPECT_EQ(text.view8(), "ad");
    text.remove(0);
    EXPECT_TRUE(text.isNull());
    FString wide(u"abc");
    wide.remove(1, 1);
    EXPECT_EQ(wide.view16(), u"ac");
}

TEST(FStringEdit, TrimTakesFromBothEnds) {
    FString text(" \t take 1 \n");
    EXPECT_TRUE(text.trim());
    EXPECT_EQ(text.view8(), "take 1");
    EXPECT_FALSE(text.trim());
    EXPECT_TRUE(text.trim(FTrimMode::allButLetters));
    EXPECT_EQ(text.view8(), "take");
    FString mixed("--take_1--");
    EXPECT_TRUE(mixed.trim(FTrimMode::allButLettersAndDigits));
    EXPECT_EQ(mixed.view8(), "take_1");
    FString blanks("   ");
    EXPECT_TRUE(blanks.trim());
    EXPECT_TRUE(blanks.isNull());
    EXPECT_FALSE(blanks.trim());
    EXPECT_FALSE(FString().trim());
}

TEST(FStringEdit, WideTextTrimsNonBreakingBlanks) {
    FString text(u"\u00a0\u3000take\u2003");
    EXPECT_TRUE(text.trim());
    EXPECT_EQ(text.view16(), u"take");
    FString letters(u"1\u00e9t\u00e91");
    EXPECT_TRUE(letters.trim(FTrimMode::allButLetters));
    EXPECT_EQ(letters.view16(), u"\u00e9t\u00e9");
}

TEST(FStringEdit, RemoveAllTakesEverywhere) {
    FString text(" t a\tk e ");
    EXPECT_TRUE(text.removeAll(FTrimMode::whiteSpace));
    EXPECT_EQ(text.view8(), "take");
    EXPECT_FALSE(text.removeAll(FTrimMode::whiteSpace));
    FString mixed(u"t-a_k e1");
    EXPECT_TRUE(mixed.removeAll(FTrimMode::allButLettersAndDigits));
    EXPECT_EQ(mixed.view16(), u"take1");
    EXPECT_TRUE(mixed.removeAll(FTrimMode::allButLetters));
    EXPECT_EQ(mixed.view16(), u"take");
}

TEST(FStringEdit, AnUnknownTrimModeDoesNothing) {
    FString text(" take ");
    EXPECT_FALSE(text.trim(static_cast<FTrimMode>(3)));
    EXPECT_FALSE(text.removeAll(static_cast<FTrimMode>(-1)));
    EXPECT_EQ(text.view8(), " take ");
}

TEST(FStringEdit, SetCharReplacesAndExtendsWithBlanks) {
    FString text("abc");
    EXPECT_TRUE(text.setChar(1, 'x'));
    EXPECT_EQ(text.view8(), "axc");
    EXPECT_TRUE(text.setChar(5, 'y'));
    EXPECT_EQ(text.view8(), "axc  y");
    EXPECT_FALSE(text.setChar(-1, 'z'));
    FString fresh;
    EXPECT_TRUE(fresh.setChar(2, u'z'));
    EXPECT_EQ(fresh.view16(), u"  z");
}

TEST(FStringEdit, SetCharWithNulEndsTheTextThere) {
    FString text("abcdef");
    EXPECT_TRUE(text.setChar(6, '\0'));
    EXPECT_TRUE(text.setChar(60, '\0'));
    EXPECT_EQ(text.view8(), "abcdef");
    EXPECT_TRUE(text.setChar(3, '\0'));
    EXPECT_EQ(text.view8(), "abc");
    EXPECT_TRUE(text.setChar(0, '\0'));
    EXPECT_EQ(text.length(), 0);
    FString wide(u"abc");
    EXPECT_TRUE(wide.setChar(1, '\0'));
    EXPECT_EQ(wide.view16(), u"a");
}

TEST(FStringEdit, SetCharCrossesWidthsByOneCharacter) {
    FString narrow("abc");
    EXPECT_TRUE(narrow.setChar(0, u'x'));
    EXPECT_EQ(narrow.view8(), "xbc");
    FString wide(u"abc");
    EXPECT_TRUE(wide.setChar(0, 'x'));
    EXPECT_EQ(wide.view16(), u"xbc");
}

TEST(FStringEdit, SetCharRefusesWhatTheWidthCantHold) {
    if (const char* reason = whyNoUtf8()) {
        GTEST_SKIP() << reason;
    }
    FString narrow("abc");
    EXPECT_FALSE(narrow.setChar(0, u'\u00e9'));
    EXPECT_EQ(narrow.view8(), "abc");
    FString wide(u"abc");
    EXPECT_FALSE(wide.setChar(0, '\xe9'));
    EXPECT_EQ(wide.view16(), u"abc");
}

TEST(FStringEdit, BytesOfLongerCharactersHaveNoCase) {
    if (const char* reason = whyNoUtf8()) {
        GTEST_SKIP() << reason;
    }
    FString text("take \xc3\xa9");
    text.toUpper();
    EXPECT_EQ(text.view8(), "TAKE \xc3\xa9");
    text.toLower();
    EXPECT_EQ(text.view8(), "take \xc3\xa9");
}

TEST(FStringEdit, CaseChangesByCharacterOrAsAWhole) {
    FString narrow("tAKE");
    narrow.toUpper(0);
    narrow.toLower(1);
    narrow.toLower(99);
    narrow.toUpper(-1);
    EXPECT_EQ(narrow.view8(), "TaKE");
    narrow.toLower();
    EXPECT_EQ(narrow.view8(), "take");
    narrow.toUpper();
    EXPECT_EQ(narrow.view8(), "TAKE");
    FString wide(u"\u00e9cole \u0436 stra\u00dfe");
    wide.toUpper();
    EXPECT_EQ(wide.view16(), u"\u00c9COLE \u0416 STRA\u00dfE");
    wide.toLower();
    EXPECT_EQ(wide.view16(), u"\u00e9cole \u0436 stra\u00dfe");
    wide.toUpper(0);
    EXPECT_EQ(wide.char16At(0), u'\u00c9');
}

struct VersionRow {
    const char* name;
    const char* text;
    std::uint32_t width;
    char separator;
    std::uint64_t minimum;
    bool keepNumber;
    bool done;
    const char* result;
};

class FStringVersion : public testing::TestWithParam<VersionRow> {};

TEST_P(FStringVersion, CountsTheSuffixInBothWidths) {
    const VersionRow& row = GetParam();
    FString narrow(row.text);
    EXPECT_EQ(narrow.incrementVersion(row.width, row.separator, row.minimum, row.keepNumber), row.done);
    EXPECT_STREQ(narrow.text8(), row.result);
    FString wide(row.text);
    wide.toWide();
    EXPECT_EQ(wide.incrementVersion(row.width, row.separator, row.minimum, row.keepNumber), row.done);
    EXPECT_TRUE(wide.isWide());
    EXPECT_STREQ(wide.text8(), row.result);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FStringVersion,
    testing::Values(
        VersionRow{"Counts", "Take_07", 2, '_', 0, false, true, "Take_08"},
        VersionRow{"BeginsAtOne", "Take", 2, '_', 0, false, true, "Take_01"},
        VersionRow{"Grows", "Take_99", 2, '_', 0, false, true, "Take_100"},
        VersionRow{"TakesTheSeparatorAlong", "Take7", 2, '_', 0, false, true, "Take_08"},
        VersionRow{"WithoutSeparator", "Take7", 3, '\0', 0, false, true, "Take008"},
        VersionRow{"OtherSeparatorStays", "Take-7", 1, '_', 0, false, true, "Take-_8"},
        VersionRow{"AtLeastTheMinimum", "Take_07", 2, '_', 20, false, true, "Take_20"},
        VersionRow{"AboveTheMinimum", "Take_30", 2, '_', 20, false, true, "Take_31"},
        VersionRow{"KeepsTheNumber", "Take_7", 3, '_', 0, true, true, "Take_007"},
        VersionRow{"NumberAlone", "7", 2, '_', 0, false, true, "08"},
        VersionRow{"SeparatorAndNumberAlone", "_7", 2, '_', 0, false, true, "08"},
        VersionRow{"Nothing", "", 2, '_', 0, false, true, "01"},
        VersionRow{"NoPadding", "Take_007", 0, '_', 0, false, true, "Take_8"},
        VersionRow{"WidestNumber", "T1", 32, '\0', 0, false, true, "T00000000000000000000000000000002"},
        VersionRow{"TooWide", "Take_07", 33, '_', 0, false, false, "Take_07"},
        VersionRow{"TimeStamp", "Take_20261121063159", 2, '_', 0, false, true, "Take_20261121063160"},
        VersionRow{"LargestNumber", "T18446744073709551615", 2, '\0', 0, false, false, "T18446744073709551615"},
        VersionRow{"LargestNumberKept", "T18446744073709551615", 2, '\0', 0, true, true, "T18446744073709551615"},
        VersionRow{"BeyondTheLargest", "T99999999999999999999", 2, '\0', 0, false, false, "T99999999999999999999"}),
    [](const auto& row) { return row.param.name; });

} // namespace
} // namespace tessera
