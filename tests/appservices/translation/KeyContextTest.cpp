#include "appservices/translation/KeyContext.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

TEST(KeyContext, BeginsAtDoubleBraces) {
    EXPECT_TRUE(hasContext(u"Copy{{Noun}}"));
    EXPECT_TRUE(hasContext(u"{{"));
    EXPECT_FALSE(hasContext(u"Copy{Noun}"));
    EXPECT_FALSE(hasContext(u""));
}

TEST(KeyContext, IsNoPartOfWhatIsShown) {
    EXPECT_EQ(withoutContext(u"Copy{{Noun}}"), u"Copy");
    EXPECT_EQ(withoutContext(u"Copy {{a}} {{b}}"), u"Copy ");
    EXPECT_EQ(withoutContext(u"Copy"), u"Copy");
    EXPECT_EQ(withoutContext(u"{{x}}"), u"");
}

} // namespace
} // namespace tessera
