#include "foundation/text/FTextHash.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera {
namespace {

// The definition, a division for every character.
std::uint32_t stepByStep(std::string_view text, std::uint32_t tableSize) {
    std::uint32_t h = 0;
    for (const char c : text) {
        h = ((h << 6) + static_cast<std::uint32_t>(static_cast<signed char>(c))) % tableSize;
    }
    return h;
}

std::uint32_t stepByStep(std::u16string_view text, std::uint32_t tableSize) {
    std::uint32_t h = 0;
    for (const char16_t c : text) {
        h = ((h << 6) + c) % tableSize;
    }
    return h;
}

constexpr std::uint32_t kTableSizes[] = {
    1,     2,       10,      50,      253,           254,     255,        256,         16127,      16128,
    16383, 1 << 20, 1048069, 1 << 26, (1 << 26) + 1, 1 << 30, 0x7fffffff, 0x80000000u, 0xffffffffu};

TEST(FTextHash, KnownValuesByHand) {
    // 'a' = 97, 'b' = 98: (97 % 50 * 64 + 98) % 50 = (47 * 64 + 98) % 50 = 3106 % 50 = 6.
    EXPECT_EQ(hashText(std::string_view("a"), 50), 47u);
    EXPECT_EQ(hashText(std::string_view("ab"), 50), 6u);
    EXPECT_EQ(hashText(std::u16string_view(u"ab"), 50), 6u);
    // A byte from 0x80 up is negative: 0xe9 is 0xffffffe9, and 4294967273 % 50 = 23.
    EXPECT_EQ(hashText(std::string_view("\xe9"), 50), 23u);
    EXPECT_EQ(hashText(std::u16string_view(u"\u00e9"), 50), 33u);
}

TEST(FTextHash, NothingHashesToZero) {
    EXPECT_EQ(hashText(std::string_view(), 50), 0u);
    EXPECT_EQ(hashText(std::u16string_view(), 50), 0u);
    EXPECT_EQ(hashText(std::string_view("text"), 0), 0u);
    EXPECT_EQ(hashText(std::u16string_view(u"text"), 0), 0u);
}

TEST(FTextHash, GroupsGiveTheSameAsSingleSteps) {
    std::string text;
    std::u16string wide;
    std::uint32_t seed = 12345;
    for (int i = 0; i < 300; ++i) {
        seed = seed * 1664525 + 1013904223;
        // Three of four are ASCII; the rest breaks up groups at changing places.
        const std::uint32_t limit = seed >> 30 == 0 ? 0x100 : 0x80;
        text.push_back(static_cast<char>((seed >> 8) % limit));
        wide.push_back(static_cast<char16_t>(seed >> 30 == 0 ? seed >> 4 : (seed >> 8) % 0x80));
        for (const std::uint32_t size : kTableSizes) {
            ASSERT_EQ(hashText(std::string_view(text), size), stepByStep(std::string_view(text), size))
                << "length " << i + 1 << ", table size " << size;
            ASSERT_EQ(hashText(std::u16string_view(wide), size), stepByStep(std::u16string_view(wide), size))
                << "length " << i + 1 << ", table size " << size;
        }
    }
}

TEST(FTextHash, TheLargestGroupOfAsciiStaysBelowTheWrap) {
    const std::string text(64, '\x7f');
    for (const std::uint32_t size : kTableSizes) {
        EXPECT_EQ(hashText(std::string_view(text), size), stepByStep(std::string_view(text), size)) << size;
    }
}

} // namespace
} // namespace tessera
