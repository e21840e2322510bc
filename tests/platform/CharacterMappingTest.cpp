#include "platform/CharacterMapping.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace tessera::platform {
namespace {

std::u16string composed(std::u16string_view text) {
    char16_t target[64];
    const std::ptrdiff_t length = compose(text.data(), text.size(), target, 64);
    return length < 0 ? u"refused" : std::u16string(target, static_cast<std::size_t>(length));
}

TEST(CharacterMapping, LettersMapToTheirOtherCaseAndBack) {
    struct Pair {
        char16_t small;
        char16_t capital;
    };
    for (const Pair pair : {Pair{u'a', u'A'}, Pair{u'\u00e9', u'\u00c9'}, Pair{u'\u0436', u'\u0416'},
                            Pair{u'\u03c9', u'\u03a9'}, Pair{u'\u00ff', u'\u0178'}}) {
        EXPECT_EQ(lowerCase(pair.capital), pair.small);
        EXPECT_EQ(upperCase(pair.small), pair.capital);
        EXPECT_EQ(lowerCase(pair.small), pair.small);
        EXPECT_EQ(upperCase(pair.capital), pair.capital);
    }
}

TEST(CharacterMapping, WhatHasNoSingleOtherCaseStays) {
    EXPECT_EQ(upperCase(u'\u00df'), u'\u00df');
    EXPECT_EQ(upperCase(u'7'), u'7');
    EXPECT_EQ(lowerCase(u'\u97f3'), u'\u97f3');
    EXPECT_EQ(lowerCase(static_cast<char16_t>(0xd83d)), static_cast<char16_t>(0xd83d));
    EXPECT_EQ(upperCase(static_cast<char16_t>(0xdc00)), static_cast<char16_t>(0xdc00));
    EXPECT_EQ(lowerCase(u'\0'), u'\0');
}

TEST(CharacterMapping, BytesOfAsciiMapToTheirOtherCase) {
    EXPECT_EQ(lowerCase('Q'), 'q');
    EXPECT_EQ(upperCase('q'), 'Q');
    EXPECT_EQ(lowerCase('q'), 'q');
    EXPECT_EQ(upperCase('['), '[');
    EXPECT_EQ(upperCase('\0'), '\0');
}

TEST(CharacterMapping, ComparisonsFoldAsciiAtLeast) {
    EXPECT_EQ(comparisonCase(u'Q'), u'q');
    EXPECT_EQ(comparisonCase(u'7'), u'7');
    for (const char16_t c : {u'\u00c4', u'\u0416', u'\u03a9'}) {
        EXPECT_EQ(comparisonCase(c), comparesByLowerCase() ? lowerCase(c) : c);
    }
}

TEST(CharacterMapping, ClassesFollowTheCharacter) {
    EXPECT_TRUE(isLetter(u'\u00e9'));
    EXPECT_TRUE(isLetter(u'\u97f3'));
    EXPECT_FALSE(isLetter(u'1'));
    EXPECT_FALSE(isLetter(u'\u0301')) << "a mark is no letter";
    EXPECT_FALSE(isLetter(static_cast<char16_t>(0xd83d)));
    EXPECT_TRUE(isLetterOrDigit(u'1'));
    EXPECT_TRUE(isLetterOrDigit(u'\u0661'));
    EXPECT_FALSE(isLetterOrDigit(u'_'));
    EXPECT_TRUE(isLowerLetter(u'\u00df'));
    EXPECT_FALSE(isLowerLetter(u'A'));
    EXPECT_TRUE(isUpperLetter(u'\u0178'));
    EXPECT_FALSE(isUpperLetter(u'a'));
    EXPECT_TRUE(isWhiteSpace(u'\u00a0'));
    EXPECT_TRUE(isWhiteSpace(u'\u3000'));
    EXPECT_FALSE(isWhiteSpace(u'\u200b'));
}

TEST(CharacterMapping, ComposeGivesTheCanonicalForm) {
    EXPECT_EQ(composed(u"e\u0301"), u"\u00e9");
    EXPECT_EQ(composed(u"a\u0302\u0323"), u"\u1ead") << "marks in the wrong order";
    EXPECT_EQ(composed(u"\u1100\u1161\u11a8"), u"\uac01");
    EXPECT_EQ(composed(u"\u212b"), u"\u00c5");
    EXPECT_EQ(composed(u"\u0958"), u"\u0915\u093c") << "what is excluded from composition stays apart";
    EXPECT_EQ(composed(u"plain"), u"plain");
    EXPECT_EQ(composed(u""), u"");
}

TEST(CharacterMapping, ComposeKeepsPairs) {
    EXPECT_EQ(composed(u"\U0001f3b5e\u0301"), u"\U0001f3b5\u00e9");
    EXPECT_EQ(composed(u"\U00011099\U000110ba"), u"\U0001109a") << "a pair and a mark that compose";
}

TEST(CharacterMapping, ComposeMeasuresWithoutRoom) {
    EXPECT_EQ(compose(u"ae\u0301", 3, nullptr, 0), 2);
    char16_t target[2] = {u'#', u'#'};
    EXPECT_EQ(compose(u"ae\u0301", 3, target, 1), 2);
    EXPECT_EQ(target[0], u'#') << "nothing is written when it doesn't fit";
}

} // namespace
} // namespace tessera::platform
