#include "foundation/text/FCaseFold.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

TEST(FCaseFold, BytesFoldByAsciiAlone) {
    EXPECT_EQ(FCaseFold::fold('A'), 'a');
    EXPECT_EQ(FCaseFold::fold('Z'), 'z');
    EXPECT_EQ(FCaseFold::fold('@'), '@');
    EXPECT_EQ(FCaseFold::fold('['), '[');
    EXPECT_EQ(FCaseFold::fold('\xc4'), '\xc4');
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
