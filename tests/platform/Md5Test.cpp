#include "platform/Md5.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera::test {
namespace {

std::string digits(const platform::Md5Digest& digest) {
    std::string text;
    for (const std::uint8_t byte : digest) {
        text += "0123456789abcdef"[byte >> 4];
        text += "0123456789abcdef"[byte & 15];
    }
    return text;
}

// The examples that the algorithm was published with.
TEST(Md5, GivesThePublishedDigests) {
    EXPECT_EQ(digits(platform::md5("")), "d41d8cd98f00b204e9800998ecf8427e");
    EXPECT_EQ(digits(platform::md5("abc")), "900150983cd24fb0d6963f7d28e17f72");
    EXPECT_EQ(digits(platform::md5("message digest")), "f96b697d7cb7938d525a2f31aaf161d0");
    EXPECT_EQ(digits(platform::md5("12345678901234567890123456789012345678901234567890123456789012345678901234567890")),
              "57edf4a22be3c955ac49da2e2107b67a");
}

TEST(Md5, TakesEveryByteOfTheText) {
    EXPECT_NE(platform::md5(std::string_view("a\0b", 3)), platform::md5(std::string_view("a\0c", 3)));
}

} // namespace
} // namespace tessera::test
