#include "foundation/containers/CmLinkedList.h"

#include "tests/foundation/containers/TestNumber.h"

namespace tessera::test {
namespace {

using CmLinkedListTest = ContainerTest;

TEST_F(CmLinkedListTest, AppendsAndPrepends) {
    CmLinkedList list;
    list.setOwnership(CmOwnership::owner);
    addNew(list, {2, 3});
    EXPECT_TRUE(list.prepend(new TestNumber(1)));
    EXPECT_FALSE(list.prepend(nullptr));
    EXPECT_EQ(contents(list), "1 2 3");
    EXPECT_EQ(list.getCapacity(), 3);
}

TEST_F(CmLinkedListTest, InsertsAtAnIndex) {
    CmLinkedList list;
    list.setOwnership(CmOwnership::owner);
    EXPECT_TRUE(list.insertAt(0, new TestNumber(2)));
    EXPECT_TRUE(list.insertAt(0, new TestNumber(0)));
    EXPECT_TRUE(list.insertAt(1, new TestNumber(1)));
    EXPECT_TRUE(list.insertAt(3, new TestNumber(3)));
    TestNumber refused(9);
    EXPECT_FALSE(list.insertAt(5, &refused));
    EXPECT_FALSE(list.insertAt(-1, &refused));
    EXPECT_EQ(contents(list), "0 1 2 3");
    EXPECT_EQ(backwards(list), "3 2 1 0");
}

TEST_F(CmLinkedListTest, KeepsItsEndWhenTheLastGoes) {
    CmLinkedList list;
    list.setOwnership(CmOwnership::owner);
    addNew(list, {1, 2});
    EXPECT_TRUE(list.removeAt(1));
    addNew(list, {3});
    EXPECT_EQ(contents(list), "1 3");
    EXPECT_EQ(backwards(list), "3 1");
}

TEST_F(CmLinkedListTest, TakesItsHeadWithoutARelease) {
    CmLinkedList list;
    EXPECT_EQ(list.takeFirst(), nullptr);
    list.setOwnership(CmOwnership::shared);
    TestNumber element(1);
    list.add(&element);
    EXPECT_EQ(list.takeFirst(), &element);
    EXPECT_EQ(element.getReferenceCount(), 2u);
    element.release();
}

TEST_F(CmLinkedListTest, RemovesTheInstanceNotItsEqual) {
    CmLinkedList list;
    TestNumber first(1, 'a');
    TestNumber second(1, 'b');
    list.add(&first);
    list.add(&second);
    EXPECT_TRUE(list.remove(&second));
    EXPECT_EQ(contents(list), "1a");
    EXPECT_FALSE(list.remove(&second));
}

TEST_F(CmLinkedListTest, FindsTheFirstOfTheEqualOnes) {
    CmLinkedList list;
    TestNumber first(1, 'a');
    TestNumber second(1, 'b');
    list.add(&first);
    list.add(&second);
    const TestNumber one(1);
    EXPECT_EQ(list.find(&one), &first);
}

} // namespace
} // namespace tessera::test
