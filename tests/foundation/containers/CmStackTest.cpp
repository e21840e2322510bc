#include "foundation/containers/CmStack.h"

#include "tests/foundation/containers/TestNumber.h"

namespace tessera::test {
namespace {

using CmStackTest = ContainerTest;

TEST_F(CmStackTest, GivesTheLastFirst) {
    CmStack stack;
    TestNumber first(1);
    TestNumber second(2);
    EXPECT_TRUE(stack.push(&first));
    EXPECT_TRUE(stack.push(&second));
    EXPECT_FALSE(stack.push(nullptr));
    EXPECT_EQ(stack.pop(), &second);
    EXPECT_EQ(stack.pop(), &first);
    EXPECT_EQ(stack.pop(), nullptr);
}

TEST_F(CmStackTest, CloneKeepsTheOrder) {
    CmStack stack;
    stack.setOwnership(CmOwnership::owner);
    for (const int value : {1, 2, 3}) {
        stack.push(new TestNumber(value));
    }
    const auto copy = FRefPtr<CmStack>::adopt(stack.clone());
    const auto top = FRefPtr<CmObject>::adopt(copy->pop());
    EXPECT_EQ(static_cast<TestNumber&>(*top).value, 3);
    EXPECT_EQ(contents(*copy), "2 1");
}

} // namespace
} // namespace tessera::test
