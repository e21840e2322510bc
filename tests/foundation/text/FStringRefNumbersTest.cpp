#include "foundation/text/FStringRef.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace tessera {
namespace {

TEST(FStringRefNumbers, IntegersAreReadAtTheIndex) {
    std::int64_t value = -77;
    EXPECT_TRUE(FStringRef("take 42").getInt64(value, 5));
    EXPECT_EQ(value, 42);
    EXPECT_TRUE(FStringRef(u"take -42").getInt64(value, 4));
    EXPECT_EQ(value, -42);
    value = -77;
    EXPECT_FALSE(FStringRef("take 42").getInt64(value));
    EXPECT_FALSE(FStringRef("42").getInt64(value, 2));
    EXPECT_FALSE(FStringRef("42").getInt64(value, -1));
    EXPECT_FALSE(FStringRef().getInt64(value));
    EXPECT_EQ(value, -77) << "a failed read leaves the value alone";
}

struct SkipRow {
    const char* name;
    const char* text;
    std::int64_t value;
};

class FStringRefSkip : public testing::TestWithParam<SkipRow> {};

TEST_P(FStringRefSkip, TheFirstNumberBehindTheIndexIsRead) {
    const std::string text = GetParam().text;
    const std::u16string wide(text.begin(), text.end());
    std::int64_t value = -77;
    FStringRef(text.c_str()).getInt64(value, 0, FNumberSearch::ahead);
    EXPECT_EQ(value, GetParam().value);
    value = -77;
    FStringRef(wide.c_str()).getInt64(value, 0, FNumberSearch::ahead);
    EXPECT_EQ(value, GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(Rows, FStringRefSkip,
                         testing::Values(SkipRow{"BehindWords", "take number 42", 42},
                                         SkipRow{"WithItsSign", "a-5", -5}, SkipRow{"SignApart", "a - 5", 5},
                                         SkipRow{"SignsInARow", "--5", -5}, SkipRow{"None", "no number", -77},
                                         SkipRow{"SignAtTheEnd", "abc-", -77}, SkipRow{"BlanksAtTheEnd", "abc   ", -77},
                                         SkipRow{"LastCharacter", "abc7", 7}, SkipRow{"BlanksAlone", "   ", -77}),
                         [](const auto& row) { return row.param.name; });

TEST(FStringRefNumbers, ANulEndsTheSearchForANumber) {
    std::int64_t value = -77;
    EXPECT_FALSE(FStringRef("ab\0 42", 6).getInt64(value, 0, FNumberSearch::ahead));
    EXPECT_EQ(value, -77);
}

TEST(FStringRefNumbers, LongTextWithoutANumberIsReadOnce) {
    // Were every position scanned through to the end, each of these would take many minutes.
    for (const char filler : {' ', '-', '.', 'e', 'x'}) {
        const std::string text(500000, filler);
        const std::u16string wide(text.begin(), text.end());
        std::int64_t integer = 0;
        double real = 0.0;
        std::uint32_t hex = 0;
        EXPECT_FALSE(FStringRef(text.c_str()).getInt64(integer, 0, FNumberSearch::ahead));
        EXPECT_FALSE(FStringRef(wide.c_str()).getInt64(integer, 0, FNumberSearch::ahead));
        EXPECT_FALSE(FStringRef(text.c_str()).getFloat(real, 0, FNumberSearch::ahead));
        EXPECT_FALSE(FStringRef(wide.c_str()).getFloat(real, 0, FNumberSearch::ahead));
        EXPECT_EQ(FStringRef(wide.c_str()).getHex(hex, 0, FNumberSearch::ahead), filler == 'e');
    }
}

TEST(FStringRefNumbers, SixtyFourBitsClampAndThirtyTwoAreTheirLowHalf) {
    std::int64_t signed64 = 0;
    std::uint64_t unsigned64 = 0;
    std::int32_t signed32 = 0;
    std::uint32_t unsigned32 = 0;
    const FStringRef huge("99999999999999999999999");
    EXPECT_TRUE(huge.getInt64(signed64));
    EXPECT_EQ(signed64, std::numeric_limits<std::int64_t>::max());
    EXPECT_TRUE(huge.getUInt64(unsigned64));
    EXPECT_EQ(unsigned64, std::numeric_limits<std::uint64_t>::max());
    EXPECT_TRUE(FStringRef("4294967297").getInt32(signed32));
    EXPECT_EQ(signed32, 1);
    EXPECT_TRUE(FStringRef("-1").getInt32(signed32));
    EXPECT_EQ(signed32, -1);
    EXPECT_TRUE(FStringRef(u"x 4294967295").getUInt32(unsigned32, 0, FNumberSearch::ahead));
    EXPECT_EQ(unsigned32, 4294967295u);
    EXPECT_FALSE(FStringRef("x").getInt32(signed32));
    EXPECT_FALSE(FStringRef("x").getUInt32(unsigned32));
    EXPECT_EQ(signed32, -1);
    EXPECT_EQ(unsigned32, 4294967295u);
}

TEST(FStringRefNumbers, FloatsTakeWordsOnlyAtTheIndexItself) {
    double value = 77.0;
    EXPECT_TRUE(FStringRef("gain -6.25 dB").getFloat(value, 0, FNumberSearch::ahead));
    EXPECT_EQ(value, -6.25);
    EXPECT_TRUE(FStringRef(u"gain .5").getFloat(value, 0, FNumberSearch::ahead));
    EXPECT_EQ(value, 0.5);
    EXPECT_TRUE(FStringRef("inf").getFloat(value));
    EXPECT_EQ(value, std::numeric_limits<double>::infinity());
    EXPECT_TRUE(FStringRef(u"0x10").getFloat(value));
    EXPECT_EQ(value, 16.0);
    EXPECT_TRUE(FStringRef("inf nan 3").getFloat(value, 0, FNumberSearch::ahead));
    EXPECT_EQ(value, 3.0);
    EXPECT_FALSE(FStringRef("info").getFloat(value, 0, FNumberSearch::ahead));
}

TEST(FStringRefNumbers, HexadecimalDigitsAreReadInBothWidths) {
    std::uint32_t value = 0;
    EXPECT_TRUE(FStringRef("0xCAFE").getHex(value));
    EXPECT_EQ(value, 0xcafeu);
    EXPECT_TRUE(FStringRef(u"id 7f").getHex(value, 3));
    EXPECT_EQ(value, 0x7fu);
    EXPECT_TRUE(FStringRef("wxyz 12").getHex(value, 0, FNumberSearch::ahead));
    EXPECT_EQ(value, 0x12u);
    EXPECT_FALSE(FStringRef("wxyz").getHex(value));
}

TEST(FStringRefNumbers, TrailingDigitsBeginWhereTheRunDoes) {
    EXPECT_EQ(FStringRef("Take_07").trailingDigitsStart(), 5);
    EXPECT_EQ(FStringRef(u"Take_07").trailingDigitsStart(), 5);
    EXPECT_EQ(FStringRef("Take").trailingDigitsStart(), -1);
    EXPECT_EQ(FStringRef("7 take").trailingDigitsStart(), -1);
    EXPECT_EQ(FStringRef("123").trailingDigitsStart(), 0);
    EXPECT_EQ(FStringRef().trailingDigitsStart(), -1);
    EXPECT_EQ(FStringRef("Take_07").trailingDigitsStart(2), 5);
    EXPECT_EQ(FStringRef("Take_07").trailingDigitsStart(1), -1);
    EXPECT_EQ(FStringRef("Take_07").trailingDigitsStart(3), -1);
}

TEST(FStringRefNumbers, TheTrailingNumberHasADefault) {
    EXPECT_EQ(FStringRef("Take_07").trailingNumber(), 7);
    EXPECT_EQ(FStringRef(u"Take 123").trailingNumber(5), 123);
    EXPECT_EQ(FStringRef("Take").trailingNumber(5), 5);
    EXPECT_EQ(FStringRef("Take").trailingNumber(), -1);
    EXPECT_EQ(FStringRef().trailingNumber(9), 9);
}

} // namespace
} // namespace tessera
