#include "link/WireMessage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

namespace tessera {
namespace {

TEST(WireMessage, WritesTheVersionAndEndsEachFieldWithASemicolon) {
    EXPECT_EQ(writeMessage({"openFile", "a"}), "2;openFile;a;");
    EXPECT_EQ(writeMessage({WireVerb::sendConnectionInfo, "Harrow Max", "9.0.20", "true"}),
              "2;sendConnectionInfo;Harrow Max;9.0.20;true;");
    EXPECT_EQ(writeMessage({WireVerb::openFile, "C:\\temp\\take 1.wav"}), "2;openFile;C:\\temp\\take 1.wav;");
}

TEST(WireMessage, WritesAFieldListLikeItsFields) {
    EXPECT_EQ(writeMessage(FieldList{"openFile", "", "a"}), "2;openFile;;a;");
}

TEST(WireMessage, WritesAnEmptyListAsTheVersionAlone) {
    EXPECT_EQ(writeMessage({}), "2;");
    EXPECT_EQ(writeMessage(FieldList{}), "2;");
}

TEST(WireMessage, WritesBytesAsTheyAre) {
    EXPECT_EQ(writeMessage({"openFile", std::string_view("\0\xFF;\n", 4)}), std::string("2;openFile;\0\xFF;\n;", 16));
}

struct ReadRow {
    const char* name;
    std::string_view text;
    FieldList fields;
};

class WireMessageReading : public testing::TestWithParam<ReadRow> {};

TEST_P(WireMessageReading, GivesTheFields) {
    EXPECT_EQ(readMessage(GetParam().text), GetParam().fields);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, WireMessageReading,
    testing::Values(ReadRow{"FourFields", "2;finishedFileEdit;a;b;", {"2", "finishedFileEdit", "a", "b"}},
                    ReadRow{"EndsWithSeparator", "2;a;", {"2", "a"}},
                    ReadRow{"EndsWithoutSeparator", "2;a", {"2", "a"}},
                    ReadRow{"PathWithSemicolonSplits", "2;openFile;C:\\a;b.wav;", {"2", "openFile", "C:\\a", "b.wav"}},
                    ReadRow{"EmptyVerb", "2;;", {"2", ""}}, ReadRow{"LoneSeparator", ";", {""}},
                    ReadRow{"EmptyFieldInside", "2;a;;b;", {"2", "a", "", "b"}}, ReadRow{"NoText", "", {}},
                    ReadRow{"OneField", "2", {"2"}},
                    ReadRow{"ZeroByteInside", std::string_view("2;a\0b;", 6), {"2", std::string("a\0b", 3)}}),
    [](const auto& row) { return row.param.name; });

TEST(WireMessage, OnlyTheTextTwoIsTheCurrentVersion) {
    EXPECT_TRUE(hasCurrentVersion(readMessage("2;openFile;a;")));
    EXPECT_FALSE(hasCurrentVersion(readMessage("1;openFile;a;")));
    EXPECT_FALSE(hasCurrentVersion(readMessage("02;openFile;a;")));
    EXPECT_FALSE(hasCurrentVersion(readMessage("2 ;openFile;a;")));
    EXPECT_FALSE(hasCurrentVersion(readMessage(";")));
    EXPECT_FALSE(hasCurrentVersion(readMessage("")));
}

template <class Exception, class Function>
std::string messageOf(Function function) {
    try {
        function();
    } catch (const Exception& e) {
        return e.what();
    } catch (...) {
        return "another exception";
    }
    return "no exception";
}

TEST(WireMessage, ReadingPastTheEndIsTheSubscriptFailure) {
    const FieldList fields{"2", "a"};
    EXPECT_EQ(fieldText(fields, 1), "a");
    EXPECT_EQ(messageOf<std::out_of_range>([&] { fieldText(fields, 2); }), "invalid vector<T> subscript");
    EXPECT_EQ(messageOf<std::out_of_range>([&] { fieldNumber(fields, 2); }), "invalid vector<T> subscript");
}

struct NumberRow {
    const char* name;
    std::string text;
    double number;
};

class WireNumber : public testing::TestWithParam<NumberRow> {};

TEST_P(WireNumber, IsReadAsDecimalText) {
    const double number = fieldNumber({GetParam().text}, 0);
    EXPECT_EQ(number, GetParam().number);
    EXPECT_EQ(std::signbit(number), std::signbit(GetParam().number));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, WireNumber,
    testing::Values(NumberRow{"Whole", "12", 12}, NumberRow{"Fraction", "1.5", 1.5},
                    NumberRow{"Negative", "-0.25", -0.25}, NumberRow{"Exponent", "2.5e3", 2500},
                    NumberRow{"Plus", "+7", 7}, NumberRow{"LeadingWhiteSpace", " \t\n3", 3},
                    NumberRow{"TrailingText", "4.5 s", 4.5}, NumberRow{"CommaEnds", "1,5", 1},
                    NumberRow{"Hexadecimal", "0x10", 16}, NumberRow{"NegativeHexadecimal", "-0x.8p1", -1},
                    NumberRow{"HexadecimalPrefixAlone", "0x", 0}, NumberRow{"HexadecimalPrefixAndText", "-0xg", -0.0},
                    NumberRow{"HexadecimalPrefixAndSign", "0x-1", 0}, NumberRow{"NegativeZero", "-0", -0.0},
                    NumberRow{"Infinity", "-inf", -std::numeric_limits<double>::infinity()},
                    NumberRow{"Smallest", "2.2250738585072014e-308", 2.2250738585072014e-308}),
    [](const auto& row) { return row.param.name; });

TEST(WireMessage, NotANumberIsRead) {
    EXPECT_TRUE(std::isnan(fieldNumber({"nan"}, 0)));
}

TEST(WireMessage, TextWithoutANumberIsTheArgumentFailure) {
    for (const char* text : {"", "abc", "-", "+", "+-1", "--1", " ", "."}) {
        EXPECT_EQ(messageOf<std::invalid_argument>([&] { fieldNumber({text}, 0); }), "invalid stod argument") << text;
    }
}

TEST(WireMessage, NumberBeyondADoubleIsTheRangeFailure) {
    for (const char* text : {"1e999", "-1e999", "1e-999", "0x1p99999"}) {
        EXPECT_EQ(messageOf<std::out_of_range>([&] { fieldNumber({text}, 0); }), "stod argument out of range") << text;
    }
}

} // namespace
} // namespace tessera
