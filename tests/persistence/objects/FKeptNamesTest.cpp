#include "persistence/objects/FKeptNames.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace tessera {
namespace {

TEST(FKeptNames, ANameIsKeptOnce) {
    const std::string name = "Volume";
    const FStringRef kept = FKeptNames::find(name);
    EXPECT_EQ(kept.view8(), name);
    EXPECT_NE(kept.rawText(), static_cast<const void*>(name.data()));
    EXPECT_EQ(FKeptNames::find(std::string("Vol") + "ume").rawText(), kept.rawText());
    EXPECT_NE(FKeptNames::find("volume").rawText(), kept.rawText());
    EXPECT_EQ(kept.view8().data()[name.size()], '\0');
}

TEST(FKeptNames, EmptyAndLongNamesAreNotKept) {
    EXPECT_TRUE(FKeptNames::find("").isNull());
    EXPECT_FALSE(FKeptNames::find(std::string(FKeptNames::kLongest, 'n')).isNull());
    EXPECT_TRUE(FKeptNames::find(std::string(FKeptNames::kLongest + 1, 'n')).isNull());
}

TEST(FKeptNames, BytesOfAnyKindMakeAName) {
    EXPECT_EQ(FKeptNames::find(std::string_view("a\0b", 3)).length(), 3);
    EXPECT_EQ(FKeptNames::find("\xC3\xA4").view8(), "\xC3\xA4");
}

TEST(FKeptNames, AllThreadsGetOneCopy) {
    std::vector<std::vector<const void*>> seen(4);
    std::vector<std::thread> threads;
    for (auto& mine : seen) {
        threads.emplace_back([&mine] {
            for (int i = 0; i < 200; ++i) {
                mine.push_back(FKeptNames::find("shared name " + std::to_string(i)).rawText());
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(seen[0], seen[1]);
    EXPECT_EQ(seen[0], seen[2]);
    EXPECT_EQ(seen[0], seen[3]);
}

// Last: it leaves little room.
TEST(FKeptNames, TheTableIsBounded) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < 3 * FKeptNames::kTableSize; ++i) {
        kept += FKeptNames::find("odd name " + std::to_string(i)).isNull() ? 0 : 1;
    }
    EXPECT_GT(kept, FKeptNames::kTableSize / 2);
    EXPECT_LE(kept, FKeptNames::kTableSize);
}

} // namespace
} // namespace tessera
