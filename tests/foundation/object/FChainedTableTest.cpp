#include "foundation/object/FChainedTable.h"

#include <gtest/gtest.h>

#include <vector>

namespace tessera {
namespace {

struct Item {
    int key;
    int order;
};

struct ByKey {
    static std::uint32_t hash(int key, std::uint32_t size) { return static_cast<std::uint32_t>(key) % size; }
    static bool matches(int key, const Item& item) { return item.key == key; }
};

using Table = FChainedTable<Item, int, ByKey>;

TEST(FChainedTable, FindsWhatWasAddedUnderItsKey) {
    // Three buckets, so that 1 and 4 share one.
    Table table(3);
    Item one{1, 0};
    Item four{4, 0};
    table.add(1, &one);
    table.add(4, &four);
    EXPECT_EQ(table.find(1), &one);
    EXPECT_EQ(table.find(4), &four);
    EXPECT_EQ(table.find(7), nullptr);
    EXPECT_EQ(table.getCount(), 2u);
}

TEST(FChainedTable, TheFirstOfEqualKeysIsFound) {
    Table table(3);
    Item items[] = {{1, 0}, {1, 1}};
    table.add(1, &items[0]);
    table.add(1, &items[1]);
    EXPECT_EQ(table.find(1), &items[0]);
    EXPECT_TRUE(table.remove(1, &items[0]));
    EXPECT_EQ(table.find(1), &items[1]);
}

TEST(FChainedTable, RemovesHeadMiddleAndTailOfABucket) {
    for (int removed = 0; removed < 3; ++removed) {
        Table table(1);
        Item items[] = {{0, 0}, {1, 1}, {2, 2}, {3, 3}};
        for (int i = 0; i < 3; ++i) {
            table.add(i, &items[i]);
        }
        EXPECT_TRUE(table.remove(removed, &items[removed]));
        EXPECT_FALSE(table.remove(removed, &items[removed]));
        table.add(3, &items[3]);
        std::vector<int> left;
        table.forEach([&](const Item& item) { left.push_back(item.key); });
        std::vector<int> expected{0, 1, 2, 3};
        expected.erase(expected.begin() + removed);
        EXPECT_EQ(left, expected);
    }
}

TEST(FChainedTable, ATableThatWasEmptiedTakesElementsAgain) {
    Table table(1);
    Item item{1, 0};
    table.add(1, &item);
    table.remove(1, &item);
    EXPECT_EQ(table.getCount(), 0u);
    table.add(1, &item);
    EXPECT_EQ(table.find(1), &item);
}

} // namespace
} // namespace tessera
