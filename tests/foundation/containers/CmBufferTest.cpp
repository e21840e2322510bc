#include "foundation/containers/CmBuffer.h"

#include "foundation/object/FRefPtr.h"

#include <gtest/gtest.h>

namespace tessera::test {
namespace {

TEST(CmBuffer, EqualityComparesTheUsedPart) {
    CmBuffer first;
    CmBuffer second(1);
    first.append("abc", 3);
    second.append("abc", 3);
    EXPECT_NE(first.getSize(), second.getSize());
    EXPECT_TRUE(first.isEqual(&second));
    second.append("d", 1);
    EXPECT_FALSE(first.isEqual(&second));
    EXPECT_TRUE(CmBuffer().isEqual(std::make_unique<CmBuffer>().get()));
}

TEST(CmBuffer, EqualsNoOtherClass) {
    const CmBuffer buffer;
    const CmObject object;
    EXPECT_FALSE(buffer.isEqual(&object));
    EXPECT_FALSE(buffer.isEqual(nullptr));
}

TEST(CmBuffer, CloneIsABufferOfItsOwn) {
    CmBuffer buffer;
    buffer.append("abc", 3);
    const auto copy = FRefPtr<CmBuffer>::adopt(buffer.clone());
    EXPECT_TRUE(copy->isEqual(&buffer));
    EXPECT_NE(copy->getData(), buffer.getData());
    EXPECT_STREQ(copy->getClassName(), "CmBuffer");
}

} // namespace
} // namespace tessera::test
