#include "foundation/text/FTextScan.h"

#include "platform/CharacterMapping.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace tessera {
namespace {

TEST(FTextScan, DifferenceGoesOnBehindLettersThatOnlyTheFoldMakesEqual) {
    if (!platform::comparesByLowerCase()) {
        GTEST_SKIP() << "the system's comparisons fold ASCII alone";
    }
    // Blocks see ASCII case alone; each pair of letters here stops them and is then found to be equal.
    const std::u16string large(50, u'\u00c4');
    const std::u16string small(50, u'\u00e4');
    EXPECT_EQ(FTextScan::difference(large, small, FCase::ignore), FTextScan::kNothing);
    EXPECT_EQ(FTextScan::difference(large, small, FCase::exact), 0u);
    for (std::size_t place = 0; place < 50; ++place) {
        std::u16string other = small;
        other[place] = u'\u00e5';
        ASSERT_EQ(FTextScan::difference(large, other, FCase::ignore), place);
    }
}

TEST(FTextScan, TheFirstNulEndsTheDifference) {
    EXPECT_EQ(FTextScan::difference(std::string_view("ab\0c", 4), std::string_view("ab\0d", 4), FCase::exact),
              FTextScan::kNothing);
    EXPECT_EQ(FTextScan::difference(std::string_view("ab"), std::string_view("ab\0d", 4), FCase::exact),
              FTextScan::kNothing);
    EXPECT_EQ(FTextScan::difference(std::string_view("ab"), std::string_view("abc"), FCase::exact), 2u);
}

TEST(FTextScan, FindStopsAtTheLimit) {
    const std::string text = std::string(40, 'x') + "needle" + std::string(40, 'x');
    EXPECT_EQ(FTextScan::find(text, std::string_view("needle"), text.size(), FCase::exact), 40u);
    EXPECT_EQ(FTextScan::find(text, std::string_view("needle"), 41, FCase::exact), 40u);
    EXPECT_EQ(FTextScan::find(text, std::string_view("needle"), 40, FCase::exact), FTextScan::kNothing);
    EXPECT_EQ(FTextScan::find(text, std::string_view("NEEDLE"), 41, FCase::ignore), 40u);
    EXPECT_EQ(FTextScan::find(text, std::string_view("NEEDLE"), 40, FCase::ignore), FTextScan::kNothing);
}

TEST(FTextScan, SeveralFalseStartsInOneBlockDontHideTheMatch) {
    // First and last character of the needle stand together many times before all of it does.
    const std::string text = "a1b a2b a3b a4b a5b axb ayb";
    EXPECT_EQ(FTextScan::find(text, std::string_view("axb"), text.size(), FCase::exact), 20u);
    const std::u16string wide(text.begin(), text.end());
    EXPECT_EQ(FTextScan::find(wide, std::u16string_view(u"ayb"), wide.size(), FCase::exact), 24u);
}

TEST(FTextScan, CountFoldsWhenTold) {
    EXPECT_EQ(FTextScan::count(std::string_view("aAbB"), 'a', FCase::exact), 1u);
    EXPECT_EQ(FTextScan::count(std::string_view("aAbB"), 'a', FCase::ignore), 2u);
    EXPECT_EQ(FTextScan::count(std::u16string_view(u"\u00e9\u00c9e"), u'\u00e9', FCase::ignore), 2u);
}

TEST(FTextScan, AsciiIsAskedOfEveryCharacter) {
    for (std::size_t length = 1; length < 40; ++length) {
        for (std::size_t place = 0; place < length; ++place) {
            std::string text(length, 'x');
            std::u16string wide(length, u'x');
            ASSERT_TRUE(FTextScan::isAscii(std::string_view(text)));
            ASSERT_TRUE(FTextScan::isAscii(std::u16string_view(wide)));
            text[place] = '\x80';
            wide[place] = u'\u0100';
            ASSERT_FALSE(FTextScan::isAscii(std::string_view(text)));
            ASSERT_FALSE(FTextScan::isAscii(std::u16string_view(wide)));
        }
    }
}

} // namespace
} // namespace tessera
