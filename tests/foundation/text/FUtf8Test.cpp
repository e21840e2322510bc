#include "foundation/text/FUtf8.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

namespace tessera {
namespace {

std::optional<std::u16string> widen(std::string_view text) {
    std::u16string result(FUtf8::widenedLength(text.data(), text.size()), u'?');
    if (!FUtf8::widen(text.data(), text.size(), result.data(), result.size())) {
        return std::nullopt;
    }
    return result;
}

std::string narrow(std::u16string_view text) {
    std::string result(FUtf8::narrowedLength(text.data(), text.size()), '?');
    FUtf8::narrow(text.data(), text.size(), result.data(), result.size());
    return result;
}

struct PairRow {
    const char* name;
    std::string bytes;
    std::u16string units;
};

class FUtf8Pairs : public testing::TestWithParam<PairRow> {};

TEST_P(FUtf8Pairs, ConvertBothWays) {
    EXPECT_EQ(widen(GetParam().bytes), GetParam().units);
    EXPECT_EQ(narrow(GetParam().units), GetParam().bytes);
}

// With so much ASCII in front, the text ends in every place of a block.
TEST_P(FUtf8Pairs, ConvertBothWaysBehindAnyStretchOfAscii) {
    for (std::size_t front = 0; front < 40; ++front) {
        for (std::size_t back = 0; back < 40; back += 7) {
            const std::string bytes = std::string(front, 'x') + GetParam().bytes + std::string(back, 'y');
            const std::u16string units = std::u16string(front, u'x') + GetParam().units + std::u16string(back, u'y');
            ASSERT_EQ(widen(bytes), units) << front << " in front, " << back << " behind";
            ASSERT_EQ(narrow(units), bytes) << front << " in front, " << back << " behind";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FUtf8Pairs,
    testing::Values(PairRow{"Empty", "", u""}, PairRow{"Ascii", "Take 7", u"Take 7"},
                    PairRow{"Nul", std::string("a\0b", 3), std::u16string(u"a\0b", 3)},
                    PairRow{"FirstOfTwo", "\xc2\x80", u"\u0080"}, PairRow{"LastOfTwo", "\xdf\xbf", u"\u07ff"},
                    PairRow{"FirstOfThree", "\xe0\xa0\x80", u"\u0800"},
                    PairRow{"BelowSurrogates", "\xed\x9f\xbf", u"\ud7ff"},
                    PairRow{"AboveSurrogates", "\xee\x80\x80", u"\ue000"},
                    PairRow{"LastOfThree", "\xef\xbf\xbf", u"\uffff"},
                    PairRow{"FirstOfFour", "\xf0\x90\x80\x80", u"\U00010000"},
                    PairRow{"LastOfFour", "\xf4\x8f\xbf\xbf", u"\U0010ffff"},
                    PairRow{"Umlauts", "\xc3\xa4\xc3\xb6\xc3\xbc", u"\u00e4\u00f6\u00fc"},
                    PairRow{"Japanese", "\xe9\x9f\xb3\xe6\xa5\xbd", u"\u97f3\u697d"},
                    PairRow{"Mixed", "a\xc3\xa4\xe9\x9f\xb3\xf0\x9f\x8e\xb5z", u"a\u00e4\u97f3\U0001f3b5z"}),
    [](const auto& row) { return row.param.name; });

struct InvalidRow {
    const char* name;
    std::string bytes;
};

class FUtf8Invalid : public testing::TestWithParam<InvalidRow> {};

TEST_P(FUtf8Invalid, FailsWhereverItStands) {
    for (std::size_t front = 0; front < 40; ++front) {
        EXPECT_FALSE(widen(std::string(front, 'x') + GetParam().bytes)) << front;
        EXPECT_FALSE(widen(std::string(front, 'x') + GetParam().bytes + "tail of ordinary text")) << front;
        EXPECT_FALSE(widen(GetParam().bytes + std::string(front, '\xbf'))) << front;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FUtf8Invalid,
    testing::Values(InvalidRow{"ContinuationAlone", "\x80"}, InvalidRow{"OverlongTwo", "\xc0\xaf"},
                    InvalidRow{"OverlongTwoHigh", "\xc1\xbf"}, InvalidRow{"OverlongThree", "\xe0\x9f\xbf"},
                    InvalidRow{"OverlongFour", "\xf0\x8f\xbf\xbf"}, InvalidRow{"HighSurrogate", "\xed\xa0\x80"},
                    InvalidRow{"LowSurrogate", "\xed\xbf\xbf"}, InvalidRow{"BeyondUnicode", "\xf4\x90\x80\x80"},
                    InvalidRow{"FiveBytes", "\xf8\x88\x80\x80\x80"}, InvalidRow{"Byte0xff", "\xff"},
                    InvalidRow{"SecondMissing", "\xc3 "}, InvalidRow{"ThirdMissing", "\xe9\x9f "},
                    InvalidRow{"FourthMissing", "\xf0\x9f\x8e "}),
    [](const auto& row) { return row.param.name; });

TEST(FUtf8, ASequenceThatTheEndCutsFails) {
    EXPECT_FALSE(widen("x\xc3"));
    EXPECT_FALSE(widen("x\xe9\x9f"));
    EXPECT_FALSE(widen("x\xf0\x9f\x8e"));
}

TEST(FUtf8, HalfOfAPairBecomesTheReplacementCharacter) {
    const std::u16string high(1, static_cast<char16_t>(0xd83d));
    const std::u16string low(1, static_cast<char16_t>(0xde00));
    EXPECT_EQ(narrow(high), "\xef\xbf\xbd");
    EXPECT_EQ(narrow(low), "\xef\xbf\xbd");
    EXPECT_EQ(narrow(high + u"a"), "\xef\xbf\xbd"
                                   "a");
    EXPECT_EQ(narrow(low + high), "\xef\xbf\xbd\xef\xbf\xbd");
    EXPECT_EQ(narrow(high + high + low), "\xef\xbf\xbd\xf0\x9f\x98\x80");
}

TEST(FUtf8, LongTextsAreMeasuredAcrossTheSumsOfTheirBlocks) {
    for (const std::size_t count : {1900u, 1920u, 1921u, 4000u, 100000u}) {
        std::u16string units;
        std::string bytes;
        for (std::size_t i = 0; i < count; ++i) {
            units += u"\U0001f3b5";
            bytes += "\xf0\x9f\x8e\xb5";
        }
        ASSERT_EQ(FUtf8::narrowedLength(units.data(), units.size()), bytes.size());
        ASSERT_EQ(FUtf8::widenedLength(bytes.data(), bytes.size()), units.size());
        EXPECT_EQ(widen(bytes), units);
        EXPECT_EQ(narrow(units), bytes);
    }
}

} // namespace
} // namespace tessera
