#include "foundation/containers/CmHashTable.h"

#include "tests/foundation/containers/TestNumber.h"

#include <limits>

namespace tessera::test {
namespace {

using CmHashTableTest = ContainerTest;

TEST_F(CmHashTableTest, HasTenBucketsAndStaysAtThem) {
    CmHashTable table;
    table.setOwnership(CmOwnership::owner);
    EXPECT_EQ(table.getCapacity(), 10);
    EXPECT_FALSE(table.getAutoGrow());
    for (int value = 0; value < 100; ++value) {
        addNew(table, {value});
    }
    EXPECT_EQ(table.getCapacity(), 10);
    EXPECT_EQ(table.getCount(), 100);
}

TEST_F(CmHashTableTest, GrowsTenfoldAtTwoElementsPerBucket) {
    CmHashTable table(10, true);
    table.setOwnership(CmOwnership::owner);
    for (int value = 0; value < 20; ++value) {
        addNew(table, {value});
    }
    EXPECT_EQ(table.getCapacity(), 10);
    addNew(table, {20});
    EXPECT_EQ(table.getCapacity(), 100);
    EXPECT_EQ(table.getCount(), 21);
    for (int value = 0; value <= 20; ++value) {
        const TestNumber wanted(value);
        EXPECT_TRUE(table.contains(&wanted)) << value;
    }
}

TEST_F(CmHashTableTest, WalksBucketByBucket) {
    CmHashTable table(3);
    table.setOwnership(CmOwnership::owner);
    addNew(table, {1, 2, 3, 4, 5, 6, 7});
    EXPECT_EQ(contents(table), "3 6 1 4 7 2 5");
    EXPECT_EQ(backwards(table), "5 2 7 4 1 6 3");
    EXPECT_EQ(static_cast<TestNumber*>(table.at(4))->value, 7);
}

TEST_F(CmHashTableTest, AsksTheHashFunctionWhenOneIsSet) {
    CmHashTable table(4, false, [](const CmObject* element, std::uint32_t size) {
        return size - 1 - static_cast<std::uint32_t>(static_cast<const TestNumber*>(element)->value) % size;
    });
    table.setOwnership(CmOwnership::owner);
    addNew(table, {0, 1, 2, 3});
    EXPECT_EQ(contents(table), "3 2 1 0");
}

TEST_F(CmHashTableTest, AHashBeyondTheTableStaysInside) {
    CmHashTable table(4, false, [](const CmObject*, std::uint32_t) { return 0xffffffffu; });
    table.setOwnership(CmOwnership::owner);
    addNew(table, {1, 2});
    EXPECT_EQ(contents(table), "1 2");
}

TEST_F(CmHashTableTest, RemovesTheInstanceNotItsEqual) {
    CmHashTable table;
    TestNumber first(1, 'a');
    TestNumber second(1, 'b');
    table.add(&first);
    table.add(&second);
    EXPECT_TRUE(table.remove(&second));
    EXPECT_EQ(contents(table), "1a");
    EXPECT_FALSE(table.remove(&second));
}

TEST_F(CmHashTableTest, RemovesAnElementWhoseHashHasChanged) {
    CmHashTable table;
    TestNumber element(1);
    table.add(&element);
    element.value = 5;
    EXPECT_TRUE(table.containsInstance(&element));
    EXPECT_TRUE(table.remove(&element));
    EXPECT_TRUE(table.isEmpty());
}

TEST_F(CmHashTableTest, SizesOutOfRangeAreHeldInBounds) {
    EXPECT_EQ(CmHashTable(0).getCapacity(), 10);
    EXPECT_EQ(CmHashTable(-5).getCapacity(), 10);
    EXPECT_EQ(CmHashTable(std::numeric_limits<std::int32_t>::max()).getCapacity(), 1 << 20);
    CmHashTable table;
    EXPECT_FALSE(table.rehash(0));
    EXPECT_FALSE(table.rehash(-1));
    EXPECT_FALSE(table.rehash((1 << 20) + 1));
    EXPECT_EQ(table.getCapacity(), 10);
    EXPECT_TRUE(table.rehash(1 << 20));
    EXPECT_EQ(table.getCapacity(), 1 << 20);
}

TEST_F(CmHashTableTest, GrowthStopsAtTheLargestTable) {
    CmHashTable table(200000, true);
    std::vector<TestNumber> elements(400001);
    for (TestNumber& element : elements) {
        ASSERT_TRUE(table.add(&element));
    }
    EXPECT_EQ(table.getCapacity(), 1 << 20);
    EXPECT_EQ(table.getCount(), 400001);
}

TEST_F(CmHashTableTest, RehashKeepsEveryElement) {
    CmHashTable table(2);
    table.setOwnership(CmOwnership::owner);
    addNew(table, {5, 1, 4, 2, 3});
    EXPECT_TRUE(table.rehash(7));
    EXPECT_EQ(contents(table), "1 2 3 4 5");
    EXPECT_TRUE(table.rehash(1));
    EXPECT_EQ(table.getCount(), 5);
}

} // namespace
} // namespace tessera::test
