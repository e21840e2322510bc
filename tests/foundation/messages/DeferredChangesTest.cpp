#include "foundation/messages/DeferredChanges.h"

#include "support/ForeignObject.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace tessera {
namespace {

using Foreign = test::ForeignObject<>;

class DeferredChangesTest : public testing::Test {
protected:
    void append(std::initializer_list<std::pair<Foreign*, int>> changes) {
        for (const auto& change : changes) {
            changes_.append({change.first, change.second});
        }
    }
    std::vector<int> takeAll(IBaseUnknown* object) {
        std::vector<int> messages;
        while (const auto change = changes_.takeFirst(object)) {
            messages.push_back(change->message);
        }
        return messages;
    }

    DeferredChanges changes_;
    Foreign a_;
    Foreign b_;
};

TEST_F(DeferredChangesTest, KeepsTheOrderAndEachPairOnce) {
    append({{&a_, 1}, {&b_, 1}, {&a_, 2}, {&a_, 1}});
    EXPECT_EQ(takeAll(nullptr), (std::vector<int>{1, 1, 2}));
    EXPECT_TRUE(changes_.isEmpty());
    EXPECT_EQ(a_.references, 1u);
}

TEST_F(DeferredChangesTest, TakesOneObjectsChanges) {
    append({{&a_, 1}, {&b_, 2}, {&a_, 3}});
    EXPECT_EQ(takeAll(&a_), (std::vector<int>{1, 3}));
    EXPECT_EQ(takeAll(nullptr), std::vector<int>{2});
}

TEST_F(DeferredChangesTest, CancelsOneObjectsChanges) {
    append({{&a_, 1}, {&b_, 2}, {&a_, 3}});
    changes_.cancel(&a_);
    changes_.cancel(&a_);
    EXPECT_EQ(takeAll(nullptr), std::vector<int>{2});
}

TEST_F(DeferredChangesTest, APairThatWasTakenMayComeAgain) {
    append({{&a_, 1}});
    takeAll(nullptr);
    append({{&a_, 1}});
    EXPECT_EQ(takeAll(&a_), std::vector<int>{1});
}

TEST_F(DeferredChangesTest, AppendsAnothersChangesBehindItsOwn) {
    DeferredChanges other;
    other.append({&b_, 5});
    other.append({&a_, 1});
    append({{&a_, 1}});
    changes_.appendAll(other);
    EXPECT_TRUE(other.isEmpty());
    EXPECT_EQ(takeAll(nullptr), (std::vector<int>{1, 5}));
}

} // namespace
} // namespace tessera
