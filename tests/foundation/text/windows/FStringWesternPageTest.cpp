// Text where the system's code page has one byte for each character, and none for most of the world's.
#include "foundation/text/FString.h"

#include <gtest/gtest.h>

#include <string_view>
#include <windows.h>

namespace tessera {
namespace {

class FStringWesternPage : public testing::Test {
protected:
    void SetUp() override {
        if (::GetACP() != static_cast<UINT>(CodePage::western)) {
            GTEST_SKIP() << "the system's code page is another one";
        }
    }
};

TEST_F(FStringWesternPage, ReadingInBytesLosesWhatThePageLacks) {
    const FString text(u"caf\u00e9 \u97f3");
    EXPECT_STREQ(text.text8(), "caf\xe9 ?");
    EXPECT_EQ(text.length(), 6);
    EXPECT_EQ(std::u16string_view(text.text16()), u"caf\u00e9 ?") << "it is lost for good";
}

TEST_F(FStringWesternPage, APairIsTwoLostCharacters) {
    const FString text(u"a\U0001f3b5");
    EXPECT_STREQ(text.text8(), "a??");
}

TEST_F(FStringWesternPage, EveryByteIsAText) {
    for (int byte = 1; byte < 256; ++byte) {
        const char bytes[] = {static_cast<char>(byte), '\0'};
        FString text(bytes);
        EXPECT_TRUE(text.toWide()) << byte;
        EXPECT_EQ(text.length(), 1) << byte;
    }
}

TEST_F(FStringWesternPage, LettersBeyondAsciiCrossWidthsAsOneCharacter) {
    EXPECT_EQ(FStringRef("\xe9").indexOf(0, u'\u00e9'), 0);
    EXPECT_EQ(FStringRef(u"\u00e9").indexOf(0, '\xe9'), 0);
    EXPECT_EQ(FStringRef("\xe9t\xe9").count(u'\u00e9'), 2);
    EXPECT_TRUE(FStringRef("\xe9").equalsCharAt(0, u'\u00e9'));
    FString narrow("abc");
    EXPECT_TRUE(narrow.setChar(0, u'\u00e9'));
    EXPECT_EQ(narrow.view8(), "\xe9"
                              "bc");
    FString wide(u"abc");
    EXPECT_TRUE(wide.setChar(0, '\x80'));
    EXPECT_EQ(wide.view16(), u"\u20acbc");
    narrow.appendChar(u'\u00e9', 2);
    EXPECT_EQ(narrow.view8(), "\xe9"
                              "bc\xe9\xe9");
}

TEST_F(FStringWesternPage, TextOfTheOtherWidthMeetsWithoutLoss) {
    EXPECT_EQ(FStringRef("caf\xe9").compare(u"caf\u00e9"), 0);
    EXPECT_NE(FStringRef("caf?").compare(u"caf\u97f3"), 0) << "the bytes are widened, not the other way round";
    FString text("caf\xe9 ");
    text.append(u"\u97f3");
    EXPECT_EQ(text.view16(), u"caf\u00e9 \u97f3");
}

TEST_F(FStringWesternPage, CaseIsTheCodePagesForCharactersAndAsciisForTexts) {
    EXPECT_EQ(FStringRef("\xc9").indexOf(0, '\xe9', FCase::ignore), 0);
    EXPECT_EQ(FStringRef(u"\u0416").indexOf(0, u'\u0436', FCase::ignore), 0);
    EXPECT_NE(FStringRef("\xc9").compare("\xe9", -1, FCase::ignore), 0);
    EXPECT_NE(FStringRef(u"\u0416").compare(u"\u0436", -1, FCase::ignore), 0);
    EXPECT_EQ(FStringRef(u"STRA\u00dfE").compare(u"stra\u00dfe", -1, FCase::ignore), 0);
    FString narrow("\xc9t\xe9");
    narrow.toUpper();
    EXPECT_EQ(narrow.view8(), "\xc9T\xc9");
    narrow.toLower();
    EXPECT_EQ(narrow.view8(), "\xe9t\xe9");
}

TEST_F(FStringWesternPage, Utf8HoldsWhatThePageLacks) {
    FString text(u"\u97f3 \U0001f3b5");
    EXPECT_TRUE(text.toMultiByte(CodePage::utf8));
    EXPECT_EQ(text.view8(), "\xe9\x9f\xb3 \xf0\x9f\x8e\xb5");
    EXPECT_TRUE(text.toWide(CodePage::utf8));
    EXPECT_EQ(text.view16(), u"\u97f3 \U0001f3b5");
}

} // namespace
} // namespace tessera
