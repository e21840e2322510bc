#include "appservices/translation/LanguageTable.h"

#include "support/ScopedEnvironment.h"
#include "support/ScopedLocale.h"
#include "support/Skips.h"

#include <gtest/gtest.h>

#include <string_view>

namespace tessera {
namespace {

using testing_support::ScopedEnvironment;

struct Row {
    std::int32_t index;
    const char* code;
    const char* name;
    std::uint16_t id;
};

// Programs and files go by these numbers.
constexpr Row kRows[] = {
    {0, "us", "English", 0x09},     {1, "de", "German", 0x07},
    {2, "fr", "French", 0x0C},      {3, "jp", "Japanese", 0x11},
    {4, "es", "Spanish", 0x0A},     {5, "it", "Italian", 0x10},
    {6, "ar", "Arabic", 0x01},      {7, "bg", "Bulgarian", 0x02},
    {8, "ca", "Catalan", 0x03},     {9, "zh", "Chinese", 0x04},
    {10, "cs", "Czech", 0x05},      {11, "da", "Danish", 0x06},
    {12, "el", "Greek", 0x08},      {13, "fi", "Finnish", 0x0B},
    {14, "he", "Hebrew", 0x0D},     {15, "hu", "Hungarian", 0x0E},
    {16, "is", "Icelandic", 0x0F},  {17, "ko", "Korean", 0x12},
    {18, "nl", "Dutch", 0x13},      {19, "no", "Norwegian", 0x14},
    {20, "pl", "Polish", 0x15},     {21, "pt", "Portuguese", 0x16},
    {22, "ro", "Romanian", 0x18},   {23, "ru", "Russian", 0x19},
    {24, "hr", "Croatian", 0x1A},   {25, "sr", "Serbian", 0x1A},
    {26, "sk", "Slovak", 0x1B},     {27, "sq", "Albanian", 0x1C},
    {28, "sv", "Swedish", 0x1D},    {29, "th", "Thai", 0x1E},
    {30, "tr", "Turkish", 0x1F},    {31, "ur", "Urdu", 0x20},
    {32, "id", "Indonesian", 0x21}, {33, "uk", "Ukrainian", 0x22},
    {34, "be", "Belarusian", 0x23}, {35, "sl", "Slovenian", 0x24},
    {36, "et", "Estonian", 0x25},   {37, "lv", "Latvian", 0x26},
    {38, "lt", "Lithuanian", 0x27}, {39, "fa", "Farsi", 0x29},
    {40, "vi", "Vietnamese", 0x2A}, {41, "hy", "Armenian", 0x2B},
    {42, "az", "Azeri", 0x2C},      {43, "eu", "Basque", 0x2D},
    {44, "mk", "Macedonian", 0x2F}, {45, "af", "Afrikaans", 0x36},
    {46, "fo", "Faeroese", 0x38},   {47, "hi", "Hindi", 0x39},
    {48, "ms", "Malay", 0x3E},      {49, "bp", "Brazilian Portuguese", 0x16},
};
static_assert(std::size(kRows) == LanguageTable::kCount);

TEST(LanguageTable, EveryLanguageHasItsPlace) {
    for (const Row& row : kRows) {
        EXPECT_STREQ(LanguageTable::codeOf(row.index), row.code);
        EXPECT_STREQ(LanguageTable::nameOf(row.index), row.name);
        EXPECT_EQ(LanguageTable::idOf(row.index), row.id);
        EXPECT_EQ(LanguageTable::indexOfCode(row.code), row.index);
        EXPECT_EQ(LanguageTable::indexOfName(row.name), row.index);
    }
}

TEST(LanguageTable, OfLanguagesWithOneNumberTheUpperOneIsFound) {
    for (const Row& row : kRows) {
        const std::string_view code = row.code;
        const std::int32_t expected = code == "sr" ? 24 : code == "bp" ? 21 : row.index;
        EXPECT_EQ(LanguageTable::indexOfId(row.id), expected) << code;
    }
}

TEST(LanguageTable, WhatItDoesNotKnowIsEnglish) {
    for (const std::int32_t index : {-1, 50, INT32_MIN, INT32_MAX}) {
        EXPECT_STREQ(LanguageTable::codeOf(index), "us");
        EXPECT_STREQ(LanguageTable::nameOf(index), "English");
        EXPECT_EQ(LanguageTable::idOf(index), 0x09);
    }
    EXPECT_EQ(LanguageTable::indexOfCode("xx"), 0);
    EXPECT_EQ(LanguageTable::indexOfCode("DE"), 0);
    EXPECT_EQ(LanguageTable::indexOfCode("deu"), 0);
    EXPECT_EQ(LanguageTable::indexOfCode(""), 0);
    EXPECT_EQ(LanguageTable::indexOfCode(FStringRef()), 0);
    EXPECT_EQ(LanguageTable::indexOfName("Klingon"), 0);
    EXPECT_EQ(LanguageTable::indexOfId(0), 0);
    EXPECT_EQ(LanguageTable::indexOfId(0x407), 0);
}

TEST(LanguageTable, IsAskedInEitherWidth) {
    EXPECT_EQ(LanguageTable::indexOfCode(u"bp"), 49);
    EXPECT_EQ(LanguageTable::indexOfName(u"Japanese"), 3);
}

TEST(LanguageTable, ThreeLanguagesHaveCharactersOfTwoBytes) {
    for (std::int32_t index = -2; index < 70; ++index) {
        EXPECT_EQ(LanguageTable::isMultiByte(index), index == 3 || index == 9 || index == 17) << index;
    }
}

TEST(LanguageTable, KnowsWhichBytesBeginACharacter) {
    for (int value = 0; value < 256; ++value) {
        const auto byte = static_cast<std::uint8_t>(value);
        EXPECT_EQ(LanguageTable::isLeadByte(3, byte),
                  (value >= 0x81 && value <= 0x9F) || (value >= 0xE0 && value <= 0xFC));
        EXPECT_EQ(LanguageTable::isLeadByte(9, byte), value >= 0x81 && value <= 0xFC);
        EXPECT_EQ(LanguageTable::isLeadByte(17, byte), value >= 0x81 && value <= 0xBF);
        EXPECT_FALSE(LanguageTable::isLeadByte(0, byte));
        EXPECT_FALSE(LanguageTable::isLeadByte(49, byte));
    }
}

class LanguageOfTheUser : public testing::Test {
protected:
    void SetUp() override {
        if (const char* reason = testing_support::whyNoLanguageInVariables()) {
            GTEST_SKIP() << reason;
        }
    }

    ScopedEnvironment all_{"LC_ALL", ""};
    ScopedEnvironment messages_{"LC_MESSAGES", ""};
    ScopedEnvironment lang_{"LANG", "de_DE.UTF-8"};
    LanguageTable table_;
};

TEST_F(LanguageOfTheUser, IsWhatTheSettingsSay) {
    const ScopedEnvironment messages("LC_MESSAGES", "pt_BR");
    EXPECT_EQ(table_.systemLanguage(), 1);
    EXPECT_EQ(table_.userLanguage(), 21);
}

TEST_F(LanguageOfTheUser, IsEnglishWhenTheSettingsSayNothingKnown) {
    const ScopedEnvironment lang("LANG", "eo_XX");
    EXPECT_EQ(table_.systemLanguage(), 0);
    EXPECT_EQ(table_.userLanguage(), 0);
}

TEST_F(LanguageOfTheUser, IsAskedForOnce) {
    EXPECT_EQ(table_.systemLanguage(), 1);
    EXPECT_EQ(table_.userLanguage(), 1);
    const ScopedEnvironment lang("LANG", "fr_FR");
    EXPECT_EQ(table_.systemLanguage(), 1);
    EXPECT_EQ(table_.userLanguage(), 1);
}

TEST(LanguageOfTheProgram, CanBeGivenInPlaceOfTheUsers) {
    LanguageTable table;
    const auto users = table.userLanguage();
    const auto systems = table.systemLanguage();
    table.setUserLanguage(3);
    EXPECT_EQ(table.userLanguage(), 3);
    EXPECT_EQ(table.systemLanguage(), systems);
    table.setUserLanguage(99);
    EXPECT_EQ(table.userLanguage(), 0);
    table.setUserLanguage(-1);
    EXPECT_EQ(table.userLanguage(), users);
}

TEST_F(LanguageOfTheUser, DecidesHowManyHoursTheClockHas) {
    const ScopedEnvironment measures("LC_ALL", "C");
    EXPECT_EQ(LanguageTable::timeFormat(), 1);
    const ScopedEnvironment nowhere("LC_ALL", "xx_XX");
    EXPECT_EQ(LanguageTable::timeFormat(), -1);
    const test::ScopedLocale american("en_US", "UTF-8");
    if (american.isUsable()) {
        const ScopedEnvironment halves("LC_ALL", american.name());
        EXPECT_EQ(LanguageTable::timeFormat(), 0);
    }
}

} // namespace
} // namespace tessera
