#include "foundation/containers/CmQueue.h"

#include "tests/foundation/containers/TestNumber.h"

namespace tessera::test {
namespace {

using CmQueueTest = ContainerTest;

TEST_F(CmQueueTest, GivesElementsAsTheyCame) {
    CmQueue queue;
    TestNumber first(1);
    TestNumber second(2);
    EXPECT_TRUE(queue.enqueue(&first));
    EXPECT_TRUE(queue.enqueue(&second));
    EXPECT_FALSE(queue.enqueue(nullptr));
    EXPECT_EQ(queue.dequeue(), &first);
    EXPECT_EQ(queue.dequeue(), &second);
    EXPECT_EQ(queue.dequeue(), nullptr);
}

TEST_F(CmQueueTest, OwnerHandsOverWhatIsDequeuedAndReleasesTheRest) {
    CmObject* taken = nullptr;
    {
        CmQueue queue;
        queue.setOwnership(CmOwnership::owner);
        addNew(queue, {1, 2, 3});
        taken = queue.dequeue();
        EXPECT_EQ(TestNumber::alive, 3);
    }
    EXPECT_EQ(TestNumber::alive, 1);
    EXPECT_EQ(taken->getReferenceCount(), 1u);
    taken->release();
}

TEST_F(CmQueueTest, SharedHandsItsReferenceOver) {
    CmQueue queue;
    queue.setOwnership(CmOwnership::shared);
    TestNumber element(1);
    queue.enqueue(&element);
    EXPECT_EQ(queue.dequeue(), &element);
    EXPECT_EQ(element.getReferenceCount(), 2u);
    element.release();
}

} // namespace
} // namespace tessera::test
