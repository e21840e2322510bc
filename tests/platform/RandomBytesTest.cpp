#include "platform/RandomBytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace tessera::test {
namespace {

TEST(RandomBytes, FillsAllOfTheBlock) {
    std::vector<unsigned char> bytes(100000);
    ASSERT_TRUE(platform::fillRandomBytes(bytes.data(), bytes.size()));
    // 256 values in 1000 bytes at the end: fewer than 64 zeros with overwhelming likelihood.
    EXPECT_LT(std::count(bytes.end() - 1000, bytes.end(), 0), 64);
    EXPECT_TRUE(platform::fillRandomBytes(nullptr, 0));
}

} // namespace
} // namespace tessera::test
