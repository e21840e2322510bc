#include "foundation/containers/CmBTree.h"

#include "tests/foundation/containers/TestNumber.h"

#include <algorithm>
#include <random>
#include <vector>

namespace tessera::test {
namespace {

using CmBTreeTest = ContainerTest;

std::string sorted(std::vector<int> values) {
    std::sort(values.begin(), values.end());
    std::string text;
    for (const int value : values) {
        text += (text.empty() ? "" : " ") + std::to_string(value);
    }
    return text;
}

TEST_F(CmBTreeTest, OneToSevenGiveARootOfOneKeyAndThreeLevels) {
    CmBTree tree;
    tree.setOwnership(CmOwnership::owner);
    addNew(tree, {1, 2, 3, 4, 5, 6, 7});
    EXPECT_EQ(tree.rootKeyCount(), 1);
    EXPECT_EQ(tree.height(), 3);
    for (int value = 1; value <= 7; ++value) {
        const TestNumber wanted(value);
        EXPECT_TRUE(tree.remove(tree.find(&wanted))) << value;
    }
    EXPECT_EQ(tree.height(), 0) << "no node is left";
    EXPECT_EQ(tree.getCount(), 0);
    EXPECT_EQ(contents(tree), "");
}

TEST_F(CmBTreeTest, NodesFillToOrderLessOne) {
    CmBTree tree;
    tree.setOwnership(CmOwnership::owner);
    addNew(tree, {1, 2});
    EXPECT_EQ(tree.height(), 1);
    EXPECT_EQ(tree.rootKeyCount(), 2);
    addNew(tree, {3});
    EXPECT_EQ(tree.height(), 2);
    EXPECT_EQ(tree.rootKeyCount(), 1);
}

TEST_F(CmBTreeTest, OrderBelowThreeIsThree) {
    EXPECT_EQ(CmBTree().getOrder(), 3);
    for (const std::int32_t order : {-1, 0, 1, 2}) {
        CmBTree tree(order);
        EXPECT_EQ(tree.getOrder(), 3);
        tree.setOwnership(CmOwnership::owner);
        addNew(tree, {3, 1, 2, 5, 4});
        EXPECT_EQ(contents(tree), "1 2 3 4 5") << order;
    }
}

TEST_F(CmBTreeTest, EqualKeysGoToTheRight) {
    CmBTree tree;
    tree.setOwnership(CmOwnership::owner);
    for (const char mark : {'a', 'b', 'c', 'd', 'e', 'f'}) {
        tree.add(new TestNumber(1, mark));
    }
    EXPECT_EQ(contents(tree), "1a 1b 1c 1d 1e 1f");
    tree.add(new TestNumber(0));
    tree.add(new TestNumber(2));
    tree.add(new TestNumber(1, 'g'));
    EXPECT_EQ(contents(tree), "0 1a 1b 1c 1d 1e 1f 1g 2");
}

// A median that went up by a search, and not beside its own node, would land between other equal keys.
TEST_F(CmBTreeTest, OrderSurvivesSplitsAmongEqualKeys) {
    CmBTree three;
    three.setOwnership(CmOwnership::owner);
    addNew(three, {1, 1, 0, 2, 1});
    const TestNumber zero(0);
    EXPECT_TRUE(three.remove(three.find(&zero)));
    addNew(three, {0});
    EXPECT_EQ(contents(three), "0 1 1 1 2");

    CmBTree four(4);
    four.setOwnership(CmOwnership::owner);
    addNew(four, {1, 1, 2, 1, 0, 0});
    EXPECT_EQ(contents(four), "0 0 1 1 1 2");
}

TEST_F(CmBTreeTest, RemovesAnEqualOneByElement) {
    CmBTree tree;
    tree.setOwnership(CmOwnership::owner);
    addNew(tree, {1, 2, 3});
    TestNumber two(2);
    EXPECT_TRUE(tree.remove(&two));
    EXPECT_EQ(contents(tree), "1 3");
    EXPECT_FALSE(tree.remove(&two));
}

TEST_F(CmBTreeTest, IndexWalksInOrder) {
    CmBTree tree;
    tree.setOwnership(CmOwnership::owner);
    addNew(tree, {4, 2, 6, 1, 3, 5, 7});
    for (std::int32_t index = 0; index < 7; ++index) {
        EXPECT_EQ(static_cast<TestNumber*>(tree.at(index))->value, index + 1);
    }
    EXPECT_EQ(backwards(tree), "7 6 5 4 3 2 1");
}

// A path against a non-path is -1 both ways round: no order at all. Look-ups miss then, but nothing gets lost.
TEST_F(CmBTreeTest, IteratorReachesEveryElementWhateverCompareSays) {
    class Odd : public TestNumber {
    public:
        using TestNumber::TestNumber;
        int compare(const CmObject*) const override { return value % 3 - 1; }
    };
    CmBTree tree;
    tree.setOwnership(CmOwnership::owner);
    for (int value = 0; value < 200; ++value) {
        tree.add(new Odd(value));
    }
    int removed = 0;
    for (const auto iterator = tree.newIterator(); !iterator->isDone(); ++removed) {
        ASSERT_TRUE(tree.removeAtIterator(*iterator));
    }
    EXPECT_EQ(removed, 200);
    EXPECT_EQ(tree.height(), 0);
}

class EveryOrder : public testing::TestWithParam<int> {
protected:
    void TearDown() override { EXPECT_EQ(TestNumber::alive, 0); }
};
INSTANTIATE_TEST_SUITE_P(Orders, EveryOrder, testing::Values(3, 4, 5, 6, 7, 16, 101));

// Against a sorted vector, with many equal keys, growing and shrinking by turns.
TEST_P(EveryOrder, StaysSortedThroughAnyMixOfAddAndRemove) {
    CmBTree tree(GetParam());
    tree.setOwnership(CmOwnership::owner);
    std::vector<int> model;
    std::mt19937 random(20250 + static_cast<unsigned>(GetParam()));
    for (int step = 0; step < 6000; ++step) {
        const int value = static_cast<int>(random() % 40);
        const bool growing = step / 1000 % 2 == 0;
        if (random() % 10 < (growing ? 7u : 3u)) {
            addNew(tree, {value});
            model.push_back(value);
        } else {
            TestNumber wanted(value);
            const auto found = std::find(model.begin(), model.end(), value);
            ASSERT_EQ(tree.remove(&wanted), found != model.end()) << "step " << step;
            if (found != model.end()) {
                model.erase(found);
            }
        }
        if (step % 50 == 0) {
            ASSERT_EQ(contents(tree), sorted(model)) << "step " << step;
        }
        ASSERT_EQ(tree.getCount(), static_cast<std::int32_t>(model.size()));
    }
    while (!tree.isEmpty()) {
        ASSERT_TRUE(tree.removeAt(static_cast<std::int32_t>(random() % static_cast<unsigned>(tree.getCount()))));
    }
    EXPECT_EQ(tree.height(), 0);
}

TEST_P(EveryOrder, RemoveAllReleasesEachElementOnce) {
    CmBTree tree(GetParam());
    tree.setOwnership(CmOwnership::owner);
    for (int value = 0; value < 500; ++value) {
        addNew(tree, {value * 7919 % 500});
    }
    EXPECT_EQ(TestNumber::alive, 500);
    tree.removeAll();
    EXPECT_EQ(TestNumber::alive, 0);
    EXPECT_EQ(tree.height(), 0);
    addNew(tree, {1});
    EXPECT_EQ(contents(tree), "1");
}

TEST_P(EveryOrder, IteratorRemovesEveryThird) {
    CmBTree tree(GetParam());
    tree.setOwnership(CmOwnership::owner);
    for (int value = 0; value < 300; ++value) {
        addNew(tree, {value});
    }
    std::vector<int> left;
    const auto iterator = tree.newIterator();
    while (!iterator->isDone()) {
        const int value = static_cast<TestNumber*>(iterator->current())->value;
        if (value % 3 == 0) {
            ASSERT_TRUE(tree.removeAtIterator(*iterator));
        } else {
            left.push_back(value);
            iterator->next();
        }
    }
    EXPECT_EQ(contents(tree), sorted(left));
    EXPECT_EQ(left.size(), 200u);
}

} // namespace
} // namespace tessera::test
