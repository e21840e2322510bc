#include "foundation/object/FArray.h"

#include <gtest/gtest.h>

#include <vector>

namespace tessera {
namespace {

std::vector<std::int32_t> contentOf(const FArray<std::int32_t>& array) {
    return {array.begin(), array.end()};
}

TEST(FArray, ABadIndexGivesTheEmptyElement) {
    FArray<std::int32_t> array(10, -7);
    array.add(1);
    EXPECT_EQ(array.at(0), 1);
    EXPECT_EQ(array.at(1), -7);
    EXPECT_EQ(array.at(-1), -7);
}

TEST(FArray, GrowsByItsStep) {
    FArray<std::int32_t> array(3);
    EXPECT_EQ(array.getCapacity(), 0);
    array.add(1);
    EXPECT_EQ(array.getCapacity(), 3);
    for (std::int32_t i = 2; i <= 4; ++i) {
        array.add(i);
    }
    EXPECT_EQ(array.getCapacity(), 6);
    EXPECT_EQ(contentOf(array), (std::vector<std::int32_t>{1, 2, 3, 4}));
}

TEST(FArray, DoublesFromTen) {
    FArray<std::int32_t> array(-1);
    for (std::int32_t i = 0; i < 11; ++i) {
        EXPECT_EQ(array.getCapacity(), i == 0 ? 0 : 10);
        array.add(i);
    }
    EXPECT_EQ(array.getCapacity(), 20);
}

TEST(FArray, AnyOtherGrowthRefuses) {
    for (const std::int32_t growth : {0, -2}) {
        FArray<std::int32_t> array(growth);
        EXPECT_FALSE(array.add(1));
        ASSERT_TRUE(array.setCapacity(1));
        EXPECT_TRUE(array.add(1));
        EXPECT_FALSE(array.add(2));
        EXPECT_EQ(array.getCount(), 1);
    }
}

TEST(FArray, InsertsReplacesAndRemovesByIndex) {
    FArray<std::int32_t> array;
    array.add(1);
    array.add(3);
    EXPECT_TRUE(array.insertAt(1, 2));
    EXPECT_TRUE(array.insertAt(0, 0));
    EXPECT_FALSE(array.insertAt(5, 9));
    EXPECT_FALSE(array.insertAt(-1, 9));
    EXPECT_TRUE(array.setAt(3, 30));
    EXPECT_FALSE(array.setAt(4, 9));
    EXPECT_EQ(contentOf(array), (std::vector<std::int32_t>{0, 1, 2, 30}));
    EXPECT_TRUE(array.removeAt(1));
    EXPECT_FALSE(array.removeAt(3));
    EXPECT_EQ(contentOf(array), (std::vector<std::int32_t>{0, 2, 30}));
}

TEST(FArray, RemovesTheFirstOfAValue) {
    FArray<std::int32_t> array;
    for (const std::int32_t value : {5, 6, 5}) {
        array.add(value);
    }
    EXPECT_EQ(array.indexOf(5), 0);
    EXPECT_TRUE(array.remove(5));
    EXPECT_FALSE(array.remove(7));
    EXPECT_EQ(contentOf(array), (std::vector<std::int32_t>{6, 5}));
}

TEST(FArray, ACopyIsItsOwn) {
    FArray<std::int32_t> array;
    array.add(1);
    FArray<std::int32_t> copy(array);
    copy.setAt(0, 2);
    EXPECT_EQ(array.at(0), 1);
    copy = array;
    EXPECT_EQ(contentOf(copy), std::vector<std::int32_t>{1});
}

TEST(FArray, RemoveAllGivesTheMemoryBack) {
    FArray<std::int32_t> array;
    array.add(1);
    array.removeAll();
    EXPECT_EQ(array.getCount(), 0);
    EXPECT_EQ(array.getCapacity(), 0);
    EXPECT_TRUE(array.add(2));
}

TEST(FArray, CapacityNeverFallsBelowTheCount) {
    FArray<std::int32_t> array;
    array.add(1);
    array.add(2);
    EXPECT_FALSE(array.setCapacity(1));
    EXPECT_FALSE(array.setCapacity(-1));
    EXPECT_TRUE(array.setCapacity(2));
    EXPECT_EQ(array.getCapacity(), 2);
}

} // namespace
} // namespace tessera
