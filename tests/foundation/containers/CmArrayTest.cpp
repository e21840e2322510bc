#include "foundation/containers/CmArray.h"

#include "tests/foundation/containers/TestNumber.h"

#include <cstdlib>
#include <limits>

namespace tessera::test {
namespace {

using CmArrayTest = ContainerTest;

void own(CmArray& array) {
    array.setOwnership(CmOwnership::owner);
}

TEST_F(CmArrayTest, GrowsByTenUnlessToldOtherwise) {
    CmArray array;
    own(array);
    EXPECT_EQ(array.getGrowth(), 10);
    EXPECT_EQ(array.getCapacity(), 0);
    addNew(array, {1});
    EXPECT_EQ(array.getCapacity(), 10);
    addNew(array, {2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
    EXPECT_EQ(array.getCapacity(), 20);
}

TEST_F(CmArrayTest, DoublesFromTenWithGrowthMinusOne) {
    CmArray array(0, CmArray::kDoubling);
    own(array);
    addNew(array, {1});
    EXPECT_EQ(array.getCapacity(), 10);
    addNew(array, {2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
    EXPECT_EQ(array.getCapacity(), 20);
    for (int value = 0; value < 10; ++value) {
        addNew(array, {value});
    }
    EXPECT_EQ(array.getCapacity(), 40);
}

TEST_F(CmArrayTest, FixedRefusesBeyondItsCapacity) {
    CmArray array(2, CmArray::kFixed);
    own(array);
    addNew(array, {1, 2});
    TestNumber refused(3);
    EXPECT_FALSE(array.add(&refused));
    EXPECT_FALSE(array.insertAt(0, &refused));
    EXPECT_EQ(refused.getReferenceCount(), 1u);
    EXPECT_EQ(contents(array), "1 2");
}

TEST_F(CmArrayTest, FixedKeepsItsCapacityWhenItIsEmptiedOrCloned) {
    CmArray array(2, CmArray::kFixed);
    own(array);
    addNew(array, {1});
    const auto copy = FRefPtr<CmArray>::adopt(array.clone());
    EXPECT_EQ(copy->getCapacity(), 2);
    addNew(*copy, {2});
    EXPECT_EQ(contents(*copy), "1 2");
    array.removeAll();
    EXPECT_EQ(TestNumber::alive, 2);
    EXPECT_EQ(array.getCapacity(), 2);
    addNew(array, {3, 4});
    EXPECT_EQ(contents(array), "3 4");
    TestNumber refused(5);
    EXPECT_FALSE(array.add(&refused));
}

TEST_F(CmArrayTest, OtherNegativeGrowthRefuses) {
    CmArray array(0, -2);
    TestNumber refused(1);
    EXPECT_FALSE(array.add(&refused));
}

TEST_F(CmArrayTest, AGrowthThatOverflowsRefuses) {
    CmArray array(1, std::numeric_limits<std::int32_t>::max());
    own(array);
    addNew(array, {1});
    TestNumber refused(2);
    EXPECT_FALSE(array.add(&refused));
    EXPECT_EQ(contents(array), "1");
}

TEST_F(CmArrayTest, InsertsAnywhere) {
    CmArray array;
    own(array);
    EXPECT_TRUE(array.insertAt(0, new TestNumber(3)));
    EXPECT_TRUE(array.insertAt(0, new TestNumber(1)));
    EXPECT_TRUE(array.insertAt(1, new TestNumber(2)));
    EXPECT_TRUE(array.insertAt(3, new TestNumber(4)));
    TestNumber refused(9);
    EXPECT_FALSE(array.insertAt(5, &refused));
    EXPECT_FALSE(array.insertAt(-1, &refused));
    EXPECT_FALSE(array.insertAt(0, nullptr));
    EXPECT_EQ(contents(array), "1 2 3 4");
}

TEST_F(CmArrayTest, SetAtDropsTheOldElement) {
    CmArray array;
    own(array);
    addNew(array, {1, 2});
    EXPECT_TRUE(array.setAt(1, new TestNumber(7)));
    EXPECT_EQ(contents(array), "1 7");
    EXPECT_EQ(TestNumber::alive, 2);
    TestNumber refused(9);
    EXPECT_FALSE(array.setAt(2, &refused));
    EXPECT_FALSE(array.setAt(-1, &refused));
    EXPECT_FALSE(array.setAt(0, nullptr));
}

TEST_F(CmArrayTest, SetAtBearsTheElementThatIsThere) {
    TestNumber element(1);
    CmArray array;
    array.setOwnership(CmOwnership::shared);
    array.add(&element);
    EXPECT_TRUE(array.setAt(0, &element));
    EXPECT_EQ(element.getReferenceCount(), 2u);
}

TEST_F(CmArrayTest, SmallerCapacityDropsTheTail) {
    CmArray array;
    own(array);
    addNew(array, {1, 2, 3});
    EXPECT_TRUE(array.setCapacity(2));
    EXPECT_EQ(contents(array), "1 2");
    EXPECT_EQ(TestNumber::alive, 2);
    EXPECT_EQ(array.getCapacity(), 2);
    EXPECT_FALSE(array.setCapacity(-1));
    EXPECT_TRUE(array.setCapacity(0));
    EXPECT_TRUE(array.isEmpty());
}

TEST_F(CmArrayTest, ReserveNeverShrinks) {
    CmArray array;
    EXPECT_TRUE(array.reserve(30));
    EXPECT_EQ(array.getCapacity(), 30);
    EXPECT_TRUE(array.reserve(5));
    EXPECT_EQ(array.getCapacity(), 30);
}

TEST_F(CmArrayTest, SortsByCompare) {
    CmArray array;
    own(array);
    addNew(array, {5, 1, 4, 2, 3, 1});
    array.sort();
    EXPECT_EQ(contents(array), "1 1 2 3 4 5");
    CmArray empty;
    empty.sort();
    EXPECT_TRUE(empty.isEmpty());
}

// A path against a non-path is -1 both ways round: no order at all.
TEST_F(CmArrayTest, SortStaysInsideWhateverCompareSays) {
    class Odd : public CmObject {
    public:
        int compare(const CmObject*) const override { return -1; }
    };
    CmArray array(0, CmArray::kDoubling);
    own(array);
    for (int index = 0; index < 1000; ++index) {
        array.add(new Odd);
    }
    array.sort();
    EXPECT_EQ(array.getCount(), 1000);
}

TEST_F(CmArrayTest, RemovesTheInstanceNotItsEqual) {
    CmArray array;
    TestNumber first(1, 'a');
    TestNumber second(1, 'b');
    array.add(&first);
    array.add(&second);
    EXPECT_EQ(array.indexOf(&second), 0);
    EXPECT_EQ(array.indexOfInstance(&second), 1);
    EXPECT_TRUE(array.remove(&second));
    EXPECT_EQ(contents(array), "1a");
    EXPECT_EQ(array.indexOfInstance(&second), -1);
    EXPECT_FALSE(array.remove(&second));
}

TEST_F(CmArrayTest, RemoveAllGivesItsBlockBack) {
    CmArray array;
    own(array);
    addNew(array, {1, 2});
    array.removeAll();
    EXPECT_EQ(array.getCapacity(), 0);
    addNew(array, {3});
    EXPECT_EQ(contents(array), "3");
}

} // namespace
} // namespace tessera::test
