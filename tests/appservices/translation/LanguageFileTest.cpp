#include "appservices/translation/LanguageFile.h"

#include "persistence/streams/FMemoryStream.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera {
namespace {

LanguageCode codeIn(const std::string& bytes) {
    FMemoryStream stream(static_cast<const void*>(bytes.data()), static_cast<std::int32_t>(bytes.size()));
    return readLanguageFile(stream);
}

TEST(LanguageFile, ItsFirstTwoBytesAreTheCode) {
    EXPECT_EQ(codeIn("de").view(), "de");
    EXPECT_EQ(codeIn("de\r\n").view(), "de");
    EXPECT_EQ(codeIn("deutsch").view(), "de");
    EXPECT_TRUE(codeIn("de").isComplete());
}

TEST(LanguageFile, WithLessThanTwoBytesItSaysNothing) {
    EXPECT_TRUE(codeIn("").isEmpty());
    EXPECT_TRUE(codeIn("d").isEmpty());
}

TEST(LanguageFile, ANulIsNoLetterOfACode) {
    EXPECT_FALSE(codeIn(std::string("\0d", 2)).isComplete());
    EXPECT_FALSE(codeIn(std::string("d\0", 2)).isComplete());
}

TEST(LanguageCode, KeepsTwoBytesAndATerminator) {
    EXPECT_STREQ(LanguageCode("deutsch").text(), "de");
    EXPECT_STREQ(LanguageCode("d").text(), "d");
    EXPECT_FALSE(LanguageCode("d").isComplete());
    EXPECT_TRUE(LanguageCode().isEmpty());
    EXPECT_TRUE(LanguageCode("de") == LanguageCode("deu"));
    EXPECT_FALSE(LanguageCode("de") == LanguageCode("fr"));
    static_assert(sizeof(LanguageCode) == 3);
}

} // namespace
} // namespace tessera
