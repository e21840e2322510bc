#include "foundation/text/FCaseFold.h"

#include "platform/CharacterMapping.h"
#include "support/SystemText.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

TEST(FCaseFold, BytesFoldByAscii) {
    EXPECT_EQ(FCaseFold::fold('A'), 'a');
    EXPECT_EQ(FCaseFold::fold('Z'), 'z');
    EXPECT_EQ(FCaseFold::fold('@'), '@');
    EXPECT_EQ(FCaseFold::fold('['), '[');
    EXPECT_EQ(FCaseFold::foldInText('A'), 'a');
    EXPECT_EQ(FCaseFold::foldInText('\xc4'), '\xc4');
}

TEST(FCaseFold, ABytePartOfALongerCharacterStays) {
    if (const char* reason = testing_support::whyNoUtf8()) {
        GTEST_SKIP() << reason;
    }
    EXPECT_EQ(FCaseFold::fold('\xc4'), '\xc4');
}

TEST(FCaseFold, AByteThatIsALetterOfTheCodePageFolds) {
    if (const char* reason = testing_support::whyNotWestern()) {
        GTEST_SKIP() << reason;
    }
    EXPECT_EQ(FCaseFold::fold('\xc4'), '\xe4');
    EXPECT_EQ(FCaseFold::fold('\xd7'), '\xd7');
}

TEST(FCaseFold, InTextsFoldsTheLettersThatTheSystemComparesSo) {
    EXPECT_EQ(FCaseFold::foldInText(u'Q'), u'q');
    EXPECT_EQ(FCaseFold::foldInText(u'\u20ac'), u'\u20ac');
    EXPECT_EQ(FCaseFold::foldInText(u'\u00c4'), platform::comparesByLowerCase() ? u'\u00e4' : u'\u00c4');
    EXPECT_TRUE(FCaseFold::equalInText(u'Q', u'q', FCase::ignore));
    EXPECT_FALSE(FCaseFold::equalInText(u'Q', u'q', FCase::exact));
}

TEST(FCaseFold, CodeUnitsFoldByTheirSmallForm) {
    EXPECT_EQ(FCaseFold::fold(u'Q'), u'q');
    EXPECT_EQ(FCaseFold::fold(u'\u00c4'), u'\u00e4');
    EXPECT_EQ(FCaseFold::fold(u'\u0416'), u'\u0436');
    EXPECT_EQ(FCaseFold::fold(u'\u03a9'), u'\u03c9');
    EXPECT_EQ(FCaseFold::fold(u'\u20ac'), u'\u20ac');
    EXPECT_EQ(FCaseFold::fold(static_cast<char16_t>(0xd83d)), static_cast<char16_t>(0xd83d));
}

TEST(FCaseFold, EqualAsksForTheFoldOnlyWhenToldTo) {
    EXPECT_TRUE(FCaseFold::equal('a', 'A', FCase::ignore));
    EXPECT_FALSE(FCaseFold::equal('a', 'A', FCase::exact));
    EXPECT_TRUE(FCaseFold::equal(u'\u00c9', u'\u00e9', FCase::ignore));
    EXPECT_FALSE(FCaseFold::equal(u'\u00c9', u'e', FCase::ignore));
}

} // namespace
} // namespace tessera
