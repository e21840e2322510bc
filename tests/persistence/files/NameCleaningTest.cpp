#include "persistence/files/NameCleaning.h"

#include "persistence/files/PathSupport.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera {
namespace {

struct CleaningRow {
    const char* name;
    const char* text;
    char16_t replacement;
    const char* expected;
};

class CleanedNames : public testing::TestWithParam<CleaningRow> {};

TEST_P(CleanedNames, LoseWhatCantStandInAName) {
    const CleaningRow& row = GetParam();
    FString text = wideText(row.text);
    EXPECT_EQ(cleanName(text, row.replacement, ControlCharacters::keep), std::string(row.text) != row.expected);
    EXPECT_EQ(utf8Of(text), row.expected);
}

const CleaningRow kNames[] = {
    {"AGoodNameStays", "Take 1.wav", 0, "Take 1.wav"},
    {"EveryForbiddenCharacter", "\\*?/:<>|\"\t\n\r", 0, "____________"},
    {"WithAReplacement", "a/b:c", u'-', "a-b-c"},
    {"UmlautsStay",
     "Gr\xC3\xBC\xC3\x9F"
     "e?",
     0,
     "Gr\xC3\xBC\xC3\x9F"
     "e_"},
    {"Empty", "", 0, ""},
};

INSTANTIATE_TEST_SUITE_P(NameCleaning, CleanedNames, testing::ValuesIn(kNames),
                         [](const auto& row) { return std::string(row.param.name); });

class CleanedPaths : public testing::TestWithParam<CleaningRow> {};

TEST_P(CleanedPaths, LoseWhatCantStandInAPath) {
    const CleaningRow& row = GetParam();
    FString text = wideText(row.text);
    EXPECT_EQ(cleanPath(text, row.replacement), std::string(row.text) != row.expected);
    EXPECT_EQ(utf8Of(text), row.expected);
}

const CleaningRow kPaths[] = {
    {"TheFirstColonStays", "a:b:c", 0, "a:b_c"},
    {"AQuestionMarkBecomesAnS", "\\folder\\what?", 0, "\\folder\\whatS"},
    {"AStarBecomesAnX", "4*4", 0, "4x4"},
    {"TheOthersBecomeUnderscores", "/\"<>|", 0, "_____"},
    {"AReplacementStandsForAll", "a:b:c?*/", u'-', "a:b-c---"},
    {"SeparatorsStay", "C:\\x\\y", 0, "C:\\x\\y"},
};

INSTANTIATE_TEST_SUITE_P(NameCleaning, CleanedPaths, testing::ValuesIn(kPaths),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(NameCleaning, ControlCharactersGoWhenAsked) {
    FString text("a\x01"
                 "b\x7f"
                 "c\td");
    EXPECT_TRUE(cleanName(text, 0, ControlCharacters::drop));
    EXPECT_EQ(utf8Of(text), "abcd");
}

TEST(NameCleaning, LongNamesAreCutTo260Characters) {
    FString text(std::string(300, 'n').c_str());
    EXPECT_TRUE(cleanName(text, 0, ControlCharacters::keep));
    EXPECT_EQ(text.length(), 260);
    FString exact(std::string(260, 'n').c_str());
    EXPECT_FALSE(cleanName(exact, 0, ControlCharacters::keep));
    EXPECT_EQ(exact.length(), 260);
}

TEST(NameCleaning, ACutLeavesNoHalfCharacter) {
    std::u16string name(259, u'n');
    name += u"\U0001F3B5 and more";
    FString text(name.c_str());
    EXPECT_TRUE(cleanName(text, 0, ControlCharacters::keep));
    EXPECT_EQ(text.length(), 259);
}

TEST(NameCleaning, BytesThatMeanNothingDontHideWhatHasToGo) {
    // Where all bytes mean something these stand for the same characters.
    for (const ControlCharacters controls : {ControlCharacters::keep, ControlCharacters::drop}) {
        FString name("a/b\xE4\x81");
        EXPECT_TRUE(cleanName(name, 0, controls));
        EXPECT_EQ(name.length(), 5);
        EXPECT_EQ(utf8Of(name).substr(0, 5), "a_b\xC3\xA4");
    }
    FString path("C:\\a?b\xE4:");
    EXPECT_TRUE(cleanPath(path, 0));
    EXPECT_EQ(utf8Of(path), "C:\\aSb\xC3\xA4_");
}

TEST(NameCleaning, ALabelKeepsItsFirstCapital) {
    const auto folded = [](const char* label) {
        FString text = wideText(label);
        foldLabel(text);
        return utf8Of(text);
    };
    EXPECT_EQ(folded("MY TAKES"), "My takes");
    EXPECT_EQ(folded("my TAKES"), "my takes");
    EXPECT_EQ(folded("\xC3\x84\xC3\x96 3"), "\xC3\x84\xC3\xB6 3");
    EXPECT_EQ(folded(""), "");
}

TEST(NameCleaning, CharactersAreCountedAndNotBytes) {
    std::string name;
    for (int i = 0; i < 200; ++i) {
        name += "\xC3\xBC";
    }
    FString text = wideText(name);
    EXPECT_FALSE(cleanName(text, 0, ControlCharacters::keep));
    EXPECT_EQ(utf8Of(text), name);
}

} // namespace
} // namespace tessera
