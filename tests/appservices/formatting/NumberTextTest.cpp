#include "appservices/formatting/NumberText.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace tessera {
namespace {

std::string formatted(double value, std::int32_t decimals) {
    return std::string(formatNumber(value, decimals).view8());
}

struct Row {
    double value;
    std::int32_t decimals;
    const char* text;
};

TEST(FormatNumber, NegativeCountDropsTrailingZerosAndKeepsThePoint) {
    constexpr Row kRows[] = {{0, -1, "0."},
                             {1.5, -1, "1.5"},
                             {2, -1, "2."},
                             {1.25, -1, "1.25"},
                             {-4, -1, "-4."},
                             {100, -2, "100."},
                             {10.1, -1, "10.1"},
                             {-1.5, -7, "-1.5"},
                             {0.05, -1, "0.05"},
                             {-0.001, -1, "0."},
                             {-0.004, -1, "0."},
                             {-0.01, -1, "-0.01"},
                             {1e20, -1, "100000000000000000000."}};
    for (const Row& row : kRows) {
        EXPECT_EQ(formatted(row.value, row.decimals), row.text) << row.value;
    }
}

TEST(FormatNumber, CountGivesTheDecimals) {
    constexpr Row kRows[] = {{1.5, 0, "2"}, {1.25, 1, "1.2"},     {2, 3, "2.000"},
                             {-4, 0, "-4"}, {-0.006, 2, "-0.01"}, {3.14159, 4, "3.1416"}};
    for (const Row& row : kRows) {
        EXPECT_EQ(formatted(row.value, row.decimals), row.text) << row.value;
    }
}

TEST(FormatNumber, NothingButZerosHasNoSign) {
    constexpr Row kRows[] = {
        {-0.004, 2, "0.00"}, {-0.5, 0, "0"}, {-0.0, 2, "0.00"}, {-0.4, 0, "0"}, {-1e-300, 5, "0.00000"}};
    for (const Row& row : kRows) {
        EXPECT_EQ(formatted(row.value, row.decimals), row.text) << row.value;
    }
}

TEST(FormatNumber, WhatIsNoNumberKeepsItsName) {
    EXPECT_EQ(formatted(std::numeric_limits<double>::infinity(), -1), "inf");
    EXPECT_EQ(formatted(-std::numeric_limits<double>::infinity(), 2), "-inf");
    EXPECT_EQ(formatted(std::numeric_limits<double>::quiet_NaN(), 2), "nan");
}

TEST(FormatNumber, CountsBeyondReasonAreCutAtTheLengthOfAText) {
    const std::string text = formatted(1, std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(text.size(), static_cast<std::size_t>(FString::kPrintLimit));
    EXPECT_EQ(text.substr(0, 4), "1.00");
}

} // namespace
} // namespace tessera
