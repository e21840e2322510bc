#include "foundation/text/FNumberText.h"

#include "support/ScopedLocale.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <limits>
#include <string>

namespace tessera {
namespace {

TEST(FNumberText, IntegersReachBothEndsOfTheirRange) {
    EXPECT_EQ(FNumberText::integer(0).view(), "0");
    EXPECT_EQ(FNumberText::integer(std::numeric_limits<std::int64_t>::min()).view(), "-9223372036854775808");
    EXPECT_EQ(FNumberText::integer(std::numeric_limits<std::int64_t>::max()).view(), "9223372036854775807");
    EXPECT_EQ(FNumberText::unsignedInteger(std::numeric_limits<std::uint64_t>::max()).view(), "18446744073709551615");
}

struct ExactRow {
    const char* name;
    double value;
    const char* text;
};

class FNumberTextExact : public testing::TestWithParam<ExactRow> {};

TEST_P(FNumberTextExact, GivesUpToFiftyDigitsOfTheBinaryValue) {
    const FNumberText number = FNumberText::exact(GetParam().value);
    EXPECT_EQ(number.view(), GetParam().text);
    EXPECT_STREQ(number.text(), GetParam().text);
    EXPECT_EQ(number.length(), static_cast<std::int32_t>(number.view().size()));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FNumberTextExact,
    testing::Values(ExactRow{"Zero", 0.0, "0"}, ExactRow{"NegativeZero", -0.0, "-0"}, ExactRow{"One", 1.0, "1"},
                    ExactRow{"Half", 0.5, "0.5"}, ExactRow{"Negative", -1.25, "-1.25"},
                    ExactRow{"Tenth", 0.1, "0.1000000000000000055511151231257827021181583404541"},
                    ExactRow{"Rate", 44100.0, "44100"}, ExactRow{"Large", 1e22, "10000000000000000000000"},
                    ExactRow{"Exponent", 1e60, "9.9999999999999994938713529707401886696364501101341e+59"},
                    ExactRow{"Smallest", 5e-324, "4.9406564584124654417656879286822137236505980261432e-324"},
                    ExactRow{"Infinity", std::numeric_limits<double>::infinity(), "inf"}),
    [](const auto& row) { return row.param.name; });

TEST(FNumberText, ExactIsWhatTheLibraryPrintsWithFiftyDigits) {
    for (const double value : {1.0 / 3, 2e-5, 123456789.987654321, 1e300, -7.25e-200}) {
        char expected[400];
        std::snprintf(expected, sizeof expected, "%.50g", value);
        EXPECT_EQ(FNumberText::exact(value).view(), expected);
    }
}

TEST(FNumberText, ShortestReadsBackAsTheSameValue) {
    EXPECT_EQ(FNumberText::shortest(0.1).view(), "0.1");
    EXPECT_EQ(FNumberText::shortest(1e100).view(), "1e+100");
}

TEST(FNumberText, AnotherLocaleChangesNothing) {
    const test::ScopedLocale german("de_DE", "UTF-8");
    if (!german.useForNumbers()) {
        GTEST_SKIP() << "this machine can't build the German locale";
    }
    EXPECT_EQ(FNumberText::exact(1.5).view(), "1.5");
    EXPECT_EQ(FNumberText::shortest(0.1).view(), "0.1");
}

TEST(FNumberText, ACopyCarriesItsText) {
    FNumberText copy = FNumberText::integer(1);
    {
        const FNumberText number = FNumberText::integer(4711);
        copy = number;
    }
    EXPECT_EQ(copy.ref().view8(), "4711");
}

} // namespace
} // namespace tessera
