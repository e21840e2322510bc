#include "persistence/urls/PercentCoding.h"

#include "foundation/text/FString.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera::test {
namespace {

std::u16string decodedWide(const char16_t* text) {
    FString string(text);
    EXPECT_TRUE(decodePercent(string));
    EXPECT_TRUE(string.isWide());
    return string.text16();
}

std::string decodedNarrow(const char* text) {
    FString string(text);
    EXPECT_TRUE(decodePercent(string));
    EXPECT_FALSE(string.isWide());
    return std::string(string.view8());
}

TEST(PercentCoding, TwoHexadecimalDigitsAreAByte) {
    EXPECT_EQ(decodedWide(u"a%20b%2Fc%2fd"), u"a b/c/d");
    EXPECT_EQ(decodedNarrow("%41%e9%E9"), "A\xe9\xe9");
}

TEST(PercentCoding, AnyOtherPercentStays) {
    EXPECT_EQ(decodedWide(u"%"), u"%");
    EXPECT_EQ(decodedWide(u"%4"), u"%4");
    EXPECT_EQ(decodedWide(u"100%"), u"100%");
    EXPECT_EQ(decodedWide(u"%g0%0g%%41"), u"%g0%0g%A");
    EXPECT_EQ(decodedWide(u"%2541"), u"%41"); // once
    EXPECT_EQ(decodedWide(u""), u"");
}

TEST(PercentCoding, WideTextGoesThroughUtf8) {
    EXPECT_EQ(decodedWide(u"%C3%A9\u00e9%E4%B8%AD%F0%9F%8E%B5"), u"\u00e9\u00e9\u4e2d\U0001f3b5");
}

TEST(PercentCoding, BytesThatAreNoUtf8StayBytes) {
    FString string(u"a%ff");
    EXPECT_FALSE(decodePercent(string));
    EXPECT_FALSE(string.isWide());
    EXPECT_EQ(string.view8(), "a\xff");
}

TEST(PercentCoding, ANulIsAByteLikeAnyOther) {
    FString string("a%00b");
    EXPECT_TRUE(decodePercent(string));
    EXPECT_EQ(string.view8(), std::string_view("a\0b", 3));
}

TEST(PercentCoding, EncodingLeavesLettersDigitsAndSomeSignsAlone) {
    FString plain(u"AZaz09-._~/");
    encodePercent(plain);
    EXPECT_EQ(std::u16string(plain.text16()), u"AZaz09-._~/");
    FString rest(u" !\"#%&:?@\\\u00e9");
    encodePercent(rest);
    EXPECT_EQ(std::u16string(rest.text16()), u"%20%21%22%23%25%26%3A%3F%40%5C%C3%A9");
    EXPECT_TRUE(decodePercent(rest));
    EXPECT_EQ(std::u16string(rest.text16()), u" !\"#%&:?@\\\u00e9");
}

} // namespace
} // namespace tessera::test
