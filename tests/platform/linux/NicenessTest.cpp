#include "platform/linux/Niceness.h"

#include <gtest/gtest.h>

namespace tessera::platform {
namespace {

TEST(Niceness, OfAThreadIsThatOfTheClassAndOfItsOwnValue) {
    constexpr struct {
        const char* name;
        std::uint32_t processClass;
        std::int32_t value;
        int nice;
    } rows[] = {
        {"normal, idle", 32, -15, 19},
        {"normal, two below", 32, -2, 4},
        {"normal, one below", 32, -1, 2},
        {"normal, normal", 32, 0, 0},
        {"normal, one above", 32, 1, -2},
        {"normal, two above", 32, 2, -4},
        {"normal, highest", 32, 15, -10},
        {"high, idle", 128, -15, 9},
        {"high, one below", 128, -1, -8},
        {"high, normal", 128, 0, -10},
        {"high, highest", 128, 15, -20},
        {"above normal, normal", 32768, 0, -5},
        {"above normal, highest", 32768, 15, -15},
        {"below normal, normal", 16384, 0, 5},
        {"below normal, highest", 16384, 15, -5},
        {"below normal, idle stays in range", 16384, -15, 19},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(threadNiceness(row.processClass, row.value), row.nice) << row.name;
    }
}

TEST(Niceness, OfWordsThatNobodyDefinedIsNothing) {
    EXPECT_EQ(threadNiceness(32, 3), std::nullopt);
    EXPECT_EQ(threadNiceness(64, 0), std::nullopt);
    EXPECT_EQ(classNiceness(256), std::nullopt);
}

} // namespace
} // namespace tessera::platform
