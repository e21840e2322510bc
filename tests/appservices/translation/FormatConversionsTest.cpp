#include "appservices/translation/FormatConversions.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

struct Pair {
    const char16_t* key;
    const char16_t* text;
    bool answer;
};

void expectRows(const Pair* rows, std::size_t count, bool (*question)(std::u16string_view, std::u16string_view)) {
    for (std::size_t i = 0; i < count; ++i) {
        EXPECT_EQ(question(rows[i].key, rows[i].text), rows[i].answer) << "row " << i;
    }
}

TEST(ConversionsMatch, ComparesTheCharacterBehindEachSign) {
    constexpr Pair kRows[] = {
        {u"%d files", u"%d Dateien", true},
        {u"%d files", u"%s Dateien", false},
        {u"%s and %d", u"%s und %d", true},
        {u"%s and %d", u"%d und %s", false},
        {u"%s and %d", u"%s und %s", false},
        // Only letters of the key count.
        {u"100%", u"100 %.", true},
        {u"50% off", u"50%d off", true},
        {u"50%% off", u"50%d off", true},
        {u"%.2f", u"%d", true},
        {u"%d", u"%", false},
        {u"%d", u"%%", false},
        // Where one side has no further sign there is nothing to compare.
        {u"%d", u"Dateien", true},
        {u"Files", u"%s", true},
        {u"%d", u"%d %s", true},
        {u"%d %s", u"%d", true},
        {u"", u"", true},
    };
    expectRows(kRows, std::size(kRows), conversionsMatch);
}

TEST(TakeSameArguments, IsTrueWhereAPrintReadsTheSame) {
    constexpr Pair kRows[] = {
        {u"%d bit", u"%d Bit", true},
        {u"%d bit", u"%u Bit zu %%", true},
        {u"%.3f kHz", u"%.1f kHz", true},
        {u"%.3f kHz", u"%g kHz", true},
        {u"%s", u"%-10s", true},
        {u"%d", u"%s", false},
        {u"%d", u"%d %s", false},
        {u"%d %s", u"%d", false},
        {u"%d", u"Dateien", false},
        {u"%d", u"%*d", false},
        {u"%.*f", u"%.2f", false},
        {u"%d", u"%I64d", false},
        {u"%I32d", u"%I64d", false},
        {u"%lld", u"%lld", true},
        {u"%s", u"%S", false},
        {u"100%", u"100 %", true},
        // What prints as it stands takes nothing.
        {u"%y", u"", true},
        {u"%n", u"", true},
        {u"", u"% d", false},
    };
    expectRows(kRows, std::size(kRows), takeSameArguments);
}

struct Length {
    const char16_t* text;
    std::size_t length;
};

TEST(ConversionLength, SpansFlagsWidthPrecisionAndSize) {
    constexpr Length kRows[] = {
        {u"%d", 2},  {u"%-+ #05d!", 8}, {u"%5.3lf kHz", 6}, {u"%*.*s", 5}, {u"%I64u", 5}, {u"%I32x", 5}, {u"%hhd", 4},
        {u"%hS", 3}, {u"%lld", 4},      {u"%zu", 3},        {u"%%", 2},    {u"%", 0},     {u"%y", 0},    {u"%l", 0},
        {u"%5", 0},  {u"%.", 0},        {u"d", 0},          {u"", 0},      {u"x%d", 0},   {u"%I6d", 0},  {u"% of", 3}};
    for (const Length& row : kRows) {
        EXPECT_EQ(conversionLength(row.text), row.length) << &row - kRows;
    }
}

} // namespace
} // namespace tessera
