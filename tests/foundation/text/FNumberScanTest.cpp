#include "foundation/text/FNumberScan.h"

#include "support/ScopedLocale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <string_view>

namespace tessera {
namespace {

constexpr std::int64_t kUntouched = -77;

std::u16string widened(std::string_view text) {
    return std::u16string(text.begin(), text.end());
}

struct SignedRow {
    const char* name;
    std::string_view text;
    std::int64_t value;
    // Characters taken; -1: no number.
    std::ptrdiff_t taken;
};

class FNumberScanSigned : public testing::TestWithParam<SignedRow> {};

TEST_P(FNumberScanSigned, ReadsTheSameInBothWidths) {
    const SignedRow& row = GetParam();
    std::int64_t value = kUntouched;
    const char* const begin = row.text.data();
    const char* const behind = FNumberScan::signedDecimal(begin, begin + row.text.size(), value);
    EXPECT_EQ(behind == nullptr ? -1 : behind - begin, row.taken);
    EXPECT_EQ(value, row.value);

    const std::u16string wide = widened(row.text);
    std::int64_t wideValue = kUntouched;
    const char16_t* const wideBehind = FNumberScan::signedDecimal(wide.data(), wide.data() + wide.size(), wideValue);
    EXPECT_EQ(wideBehind == nullptr ? -1 : wideBehind - wide.data(), row.taken);
    EXPECT_EQ(wideValue, row.value);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FNumberScanSigned,
    testing::Values(SignedRow{"Plain", "42", 42, 2}, SignedRow{"BlanksAndSign", " \t\n-17x", -17, 6},
                    SignedRow{"Plus", "+5", 5, 2}, SignedRow{"LeadingZeros", "0007", 7, 4},
                    SignedRow{"Largest", "9223372036854775807", std::numeric_limits<std::int64_t>::max(), 19},
                    SignedRow{"Smallest", "-9223372036854775808", std::numeric_limits<std::int64_t>::min(), 20},
                    SignedRow{"ClampedUp", "9223372036854775808", std::numeric_limits<std::int64_t>::max(), 19},
                    SignedRow{"ClampedDown", "-99999999999999999999999", std::numeric_limits<std::int64_t>::min(), 24},
                    SignedRow{"Empty", "", kUntouched, -1}, SignedRow{"SignAlone", "-", kUntouched, -1},
                    SignedRow{"TwoSigns", "--1", kUntouched, -1}, SignedRow{"Word", "abc", kUntouched, -1},
                    SignedRow{"BlanksAlone", "   ", kUntouched, -1}),
    [](const auto& row) { return row.param.name; });

TEST(FNumberScan, UnsignedNumbersClampAndTurnAroundWithAMinus) {
    const auto scan = [](std::string_view text) {
        std::uint64_t value = 1;
        FNumberScan::unsignedDecimal(text.data(), text.data() + text.size(), value);
        return value;
    };
    EXPECT_EQ(scan("18446744073709551615"), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(scan("18446744073709551616"), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(scan("-5"), 18446744073709551611u);
}

TEST(FNumberScan, HexadecimalKeepsTheLowThirtyTwoBits) {
    const auto scan = [](std::string_view text) {
        std::uint32_t value = 0x5a;
        return FNumberScan::hexadecimal(text.data(), text.data() + text.size(), value) == nullptr ? 0xdeadu : value;
    };
    EXPECT_EQ(scan("ff"), 0xffu);
    EXPECT_EQ(scan("0xFf"), 0xffu);
    EXPECT_EQ(scan("0X10"), 0x10u);
    EXPECT_EQ(scan(" 0x1"), 1u);
    EXPECT_EQ(scan("123456789"), 0x23456789u);
    EXPECT_EQ(scan("-1"), 0xffffffffu);
    EXPECT_EQ(scan("0xg"), 0u);
    EXPECT_EQ(scan("xyz"), 0xdeadu);
    EXPECT_EQ(scan(""), 0xdeadu);
}

struct FloatRow {
    const char* name;
    std::string_view text;
    double value;
    std::ptrdiff_t taken;
};

class FNumberScanFloat : public testing::TestWithParam<FloatRow> {};

TEST_P(FNumberScanFloat, ReadsTheSameInBothWidths) {
    const FloatRow& row = GetParam();
    double value = 77.0;
    const char* const begin = row.text.data();
    const char* const behind = FNumberScan::decimalFloat(begin, begin + row.text.size(), value);
    EXPECT_EQ(behind == nullptr ? -1 : behind - begin, row.taken);
    EXPECT_EQ(value, row.value);

    const std::u16string wide = widened(row.text);
    double wideValue = 77.0;
    const char16_t* const wideBehind = FNumberScan::decimalFloat(wide.data(), wide.data() + wide.size(), wideValue);
    EXPECT_EQ(wideBehind == nullptr ? -1 : wideBehind - wide.data(), row.taken);
    EXPECT_EQ(wideValue, row.value);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FNumberScanFloat,
    testing::Values(FloatRow{"Plain", "1.5", 1.5, 3}, FloatRow{"BlanksAndSign", "  -2.25e3;", -2250.0, 9},
                    FloatRow{"Plus", "+1", 1.0, 2}, FloatRow{"PointFirst", ".5", 0.5, 2},
                    FloatRow{"PointLast", "5.", 5.0, 2}, FloatRow{"CommaEnds", "1,5", 1.0, 1},
                    FloatRow{"Huge", "1e999", std::numeric_limits<double>::infinity(), 5},
                    FloatRow{"HugeDigits", "0.0001e99999999999999999999", std::numeric_limits<double>::infinity(), 27},
                    FloatRow{"NegativeHuge", "-1e999", -std::numeric_limits<double>::infinity(), 6},
                    FloatRow{"Tiny", "1e-999", 0.0, 6}, FloatRow{"Subnormal", "5e-324", 5e-324, 6},
                    FloatRow{"InfinityIsNoDecimal", "inf", 77.0, -1}, FloatRow{"NanIsNoDecimal", "nan", 77.0, -1},
                    FloatRow{"HexadecimalIsItsZero", "0x1p3", 0.0, 1}, FloatRow{"PointAlone", ".", 77.0, -1},
                    FloatRow{"TwoSigns", "--1", 77.0, -1}, FloatRow{"PlusMinus", "+-1", 77.0, -1},
                    FloatRow{"Empty", "", 77.0, -1}),
    [](const auto& row) { return row.param.name; });

TEST(FNumberScan, AnyFloatTakesWordsAndHexadecimalFloats) {
    const auto scan = [](std::string_view text) {
        double value = 77.0;
        FNumberScan::anyFloat(text.data(), text.data() + text.size(), value);
        const std::u16string wide = widened(text);
        double wideValue = 77.0;
        FNumberScan::anyFloat(wide.data(), wide.data() + wide.size(), wideValue);
        EXPECT_TRUE(value == wideValue || (std::isnan(value) && std::isnan(wideValue)));
        return value;
    };
    EXPECT_EQ(scan("inf"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(scan("-Infinity"), -std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(scan("nan")));
    EXPECT_EQ(scan("0x1.8p3"), 12.0);
    EXPECT_EQ(scan("-0x10"), -16.0);
    EXPECT_EQ(scan("0x1p99999"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(scan("0x1p-99999"), 0.0);
    EXPECT_EQ(scan("0x.8"), 0.5);
    // Without a digit behind it the prefix is the digit 0 with something behind it.
    for (const char* text : {"0x", "0x.", "0x-5", "0x+5", "0xinf", "0xnan", "0xg"}) {
        EXPECT_EQ(scan(text), 0.0) << text;
    }
    EXPECT_EQ(scan("2.5"), 2.5);
}

TEST(FNumberScan, AWideNumberLongerThanTheStackBufferIsReadWhole) {
    const std::u16string text = u"0." + std::u16string(300, u'0') + u"1";
    double value = 77.0;
    EXPECT_NE(FNumberScan::decimalFloat(text.data(), text.data() + text.size(), value), nullptr);
    EXPECT_EQ(value, 1e-301);
}

TEST(FNumberScan, ThePointCountsInEveryLocale) {
    const test::ScopedLocale german("de_DE", "UTF-8");
    if (!german.useForNumbers()) {
        GTEST_SKIP() << "this machine can't build the German locale";
    }
    const std::string_view text = "1.5";
    double value = 0.0;
    FNumberScan::anyFloat(text.data(), text.data() + text.size(), value);
    EXPECT_EQ(value, 1.5);
}

} // namespace
} // namespace tessera
