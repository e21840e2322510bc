#include "exportscripts/AppVersion.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace tessera {

void PrintTo(const AppVersion& version, std::ostream* out) {
    *out << version.major << '.' << version.minor << '.' << version.patch << '.' << version.build;
}

namespace {

AppVersion version(std::uint32_t major, std::uint32_t minor, std::uint32_t patch, std::uint32_t build) {
    AppVersion result;
    result.build = build;
    result.patch = patch;
    result.minor = minor;
    result.major = major;
    return result;
}

static_assert(sizeof(AppVersion) == 16 && offsetof(AppVersion, build) == 0 && offsetof(AppVersion, major) == 12);

struct VersionText {
    const char* name;
    const char* text;
    AppVersion expected;
};

class VersionTexts : public testing::TestWithParam<VersionText> {};

TEST_P(VersionTexts, AreReadAsStated) {
    EXPECT_EQ(parseVersion(GetParam().text), GetParam().expected);
}

const VersionText kTexts[] = {
    {"Empty", "", version(0, 0, 0, 0)},
    {"WithoutDigit", "no version - at all.", version(0, 0, 0, 0)},
    {"MajorAlone", "9", version(9, 0, 0, 0)},
    {"LetterInFront", "V9.1", version(9, 1, 0, 0)},
    {"WordsAround", "Version 9.0.12 beta", version(9, 0, 12, 0)},
    {"Hyphen", "9.0.12-3", version(9, 0, 12, 3)},
    {"FourParts", "8.5.10.77", version(8, 5, 10, 77)},
    {"FifthPartIsIgnored", "1.2.3.4.5", version(1, 2, 3, 4)},
    {"EmptyPiecesAreDropped", "1..2--3.-4", version(1, 2, 3, 4)},
    {"SeparatorsInFront", "..-7.1", version(7, 1, 0, 0)},
    {"SeparatorsBehind", "7.1.-.", version(7, 1, 0, 0)},
    {"LastGroupCounts", "Harrow 8 (build 8.5.20)", version(8, 5, 20, 0)},
    {"DigitBehindALetterCounts", "9.0b2", version(2, 0, 0, 0)},
    {"LeadingZeros", "009.010", version(9, 10, 0, 0)},
    {"LargestNumber", "4294967295.1", version(4294967295u, 1, 0, 0)},
    {"NumberTooLarge", "4294967296.1", version(0, 1, 0, 0)},
    {"BytesAboveAscii",
     "\xC3\xA4"
     "9.5",
     version(9, 5, 0, 0)},
    {"HyphenIsNoSign", "-9.-5", version(9, 5, 0, 0)},
};

INSTANTIATE_TEST_SUITE_P(AppVersion, VersionTexts, testing::ValuesIn(kTexts),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(AppVersion, IsOrderedByMajorThenMinorThenPatchThenBuild) {
    EXPECT_LT(version(8, 9, 9, 9), version(9, 0, 0, 0));
    EXPECT_LT(version(9, 0, 9, 9), version(9, 1, 0, 0));
    EXPECT_LT(version(9, 1, 0, 9), version(9, 1, 1, 0));
    EXPECT_LT(version(9, 1, 1, 0), version(9, 1, 1, 1));
    EXPECT_EQ(version(9, 1, 1, 1), version(9, 1, 1, 1));
    EXPECT_GT(version(10, 0, 0, 0), version(9, 99, 99, 99));
}

} // namespace
} // namespace tessera
