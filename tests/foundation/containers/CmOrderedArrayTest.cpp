#include "foundation/containers/CmOrderedArray.h"

#include "tests/foundation/containers/TestNumber.h"

namespace tessera::test {
namespace {

using CmOrderedArrayTest = ContainerTest;

void fill(CmOrderedArray& array, std::initializer_list<TestNumber*> elements) {
    array.setOwnership(CmOwnership::owner);
    for (TestNumber* element : elements) {
        EXPECT_TRUE(array.add(element));
    }
}

TEST_F(CmOrderedArrayTest, KeepsItsElementsSorted) {
    CmOrderedArray array;
    array.setOwnership(CmOwnership::owner);
    addNew(array, {5, 1, 9, 3, 7, 4, 0, 8, 6, 2, 11, 10});
    EXPECT_EQ(contents(array), "0 1 2 3 4 5 6 7 8 9 10 11");
}

TEST_F(CmOrderedArrayTest, EqualElementsStandInOrderOfInsertion) {
    CmOrderedArray array;
    fill(array, {new TestNumber(2, 'a'), new TestNumber(1), new TestNumber(3), new TestNumber(2, 'b'),
                 new TestNumber(3, 'x'), new TestNumber(2, 'c'), new TestNumber(1, 'y')});
    EXPECT_EQ(contents(array), "1 1y 2a 2b 2c 3 3x");
}

TEST_F(CmOrderedArrayTest, IndexOfGivesTheFirstOfTheEqualOnes) {
    CmOrderedArray array;
    fill(array, {new TestNumber(1), new TestNumber(2, 'a'), new TestNumber(2, 'b'), new TestNumber(2, 'c'),
                 new TestNumber(3)});
    const TestNumber two(2);
    EXPECT_EQ(array.indexOf(&two), 1);
    EXPECT_EQ(static_cast<TestNumber*>(array.find(&two))->mark, 'a');
    EXPECT_TRUE(array.remove(array.at(3)));
    EXPECT_EQ(contents(array), "1 2b 2c 3") << "an equal one goes, the first, and not that very object";
}

TEST_F(CmOrderedArrayTest, InsertionIndexIsBehindTheEqualOnes) {
    CmOrderedArray array;
    const TestNumber two(2);
    EXPECT_EQ(array.insertionIndex(&two), 0);
    fill(array, {new TestNumber(1), new TestNumber(2), new TestNumber(2), new TestNumber(4)});
    EXPECT_EQ(array.insertionIndex(&two), 3);
    EXPECT_EQ(array.insertionIndex(std::make_unique<TestNumber>(0).get()), 0);
    EXPECT_EQ(array.insertionIndex(std::make_unique<TestNumber>(3).get()), 3);
    EXPECT_EQ(array.insertionIndex(std::make_unique<TestNumber>(4).get()), 4);
    EXPECT_EQ(array.insertionIndex(std::make_unique<TestNumber>(5).get()), 4);
}

// compare and isEqual of one class may disagree; from three elements on the look-up believes compare.
TEST_F(CmOrderedArrayTest, IndexOfBelievesCompareFromThreeElementsOn) {
    class Incomparable : public TestNumber {
    public:
        using TestNumber::TestNumber;
        bool isEqual(const CmObject* other) const override { return other == this; }
    };
    CmOrderedArray array;
    fill(array, {new Incomparable(1), new Incomparable(2)});
    const Incomparable two(2);
    EXPECT_EQ(array.indexOf(&two), -1);
    EXPECT_TRUE(array.add(new Incomparable(3)));
    EXPECT_EQ(array.indexOf(&two), 1);
}

TEST_F(CmOrderedArrayTest, FixedRefusesBeyondItsCapacity) {
    CmOrderedArray array(1, CmOrderedArray::kFixed);
    array.setOwnership(CmOwnership::owner);
    addNew(array, {1});
    TestNumber refused(0);
    EXPECT_FALSE(array.add(&refused));
    EXPECT_EQ(contents(array), "1");
}

TEST_F(CmOrderedArrayTest, FixedKeepsItsCapacityWhenItIsEmptiedOrCloned) {
    CmOrderedArray array(2, CmOrderedArray::kFixed);
    array.setOwnership(CmOwnership::owner);
    addNew(array, {2});
    const auto copy = FRefPtr<CmOrderedArray>::adopt(array.clone());
    addNew(*copy, {1});
    EXPECT_EQ(contents(*copy), "1 2");
    array.removeAll();
    addNew(array, {4, 3});
    EXPECT_EQ(contents(array), "3 4");
}

TEST_F(CmOrderedArrayTest, RefusesAPlaceOutOfOrder) {
    CmOrderedArray array;
    array.setOwnership(CmOwnership::owner);
    addNew(array, {1, 3, 5});
    TestNumber four(4);
    EXPECT_FALSE(array.insertAt(0, &four));
    EXPECT_FALSE(array.setAt(0, &four));
    EXPECT_FALSE(array.insertAt(9, &four));
    EXPECT_TRUE(array.insertAt(2, new TestNumber(4)));
    EXPECT_TRUE(array.setAt(0, new TestNumber(2)));
    EXPECT_EQ(contents(array), "2 3 4 5");
}

TEST_F(CmOrderedArrayTest, SortMendsTheOrderOfChangedKeys) {
    CmOrderedArray array;
    array.setOwnership(CmOwnership::owner);
    addNew(array, {1, 2, 3});
    static_cast<TestNumber*>(array.at(0))->value = 9;
    array.sort();
    EXPECT_EQ(contents(array), "2 3 9");
}

} // namespace
} // namespace tessera::test
