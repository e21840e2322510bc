#include "platform/Identifiers.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace tessera::platform {
namespace {

TEST(Identifiers, AreRandomOnesAndMarkedAsSuch) {
    std::set<std::string> seen;
    for (int i = 0; i < 1000; ++i) {
        std::uint8_t bytes[16] = {};
        ASSERT_TRUE(generateIdentifier(bytes));
        EXPECT_EQ(bytes[7] & 0xf0, 0x40);
        EXPECT_EQ(bytes[8] & 0xc0, 0x80);
        seen.insert(std::string(bytes, bytes + 16));
    }
    EXPECT_EQ(seen.size(), 1000u);
}

} // namespace
} // namespace tessera::platform
