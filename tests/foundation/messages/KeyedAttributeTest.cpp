// The two keyed forms of a value.
#include "foundation/messages/FIntIDAttribute.h"
#include "foundation/messages/FStringIDAttribute.h"
#include "foundation/object/FRefPtr.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

TEST(FIntIDAttribute, ComparesItsIdUnsigned) {
    const FIntIDAttribute small(1);
    const FIntIDAttribute large(0xffffffff);
    EXPECT_LT(small.compare(&large), 0);
    EXPECT_GT(large.compare(&small), 0);
    EXPECT_EQ(small.compare(&small), 0);
}

TEST(FIntIDAttribute, IsEqualByItsIdAlone) {
    FIntIDAttribute a(7);
    FIntIDAttribute b(7);
    a.setInt(1);
    b.setInt(2);
    const CmObject other;
    EXPECT_TRUE(a.isEqual(&b));
    EXPECT_FALSE(a.isEqual(&other));
    b.setId(8);
    EXPECT_FALSE(a.isEqual(&b));
}

TEST(FIntIDAttribute, ClonesWithIdAndValue) {
    FIntIDAttribute attribute(7, 2);
    attribute.setInt(5);
    const auto copy = FRefPtr<FIntIDAttribute>::adopt(attribute.clone());
    EXPECT_EQ(copy->getId(), 7u);
    EXPECT_EQ(copy->getInt(), 5);
    EXPECT_EQ(copy->getType(), 0x0081);
}

TEST(FStringIDAttribute, PointsAtConstantKeysAndCopiesOthers) {
    char key[] = "gain";
    const FStringIDAttribute copied{FStringRef(key)};
    const FStringIDAttribute pointing(FStringRef(key), KeyHolding::constant);
    EXPECT_NE(copied.getKey().rawText(), key);
    EXPECT_EQ(pointing.getKey().rawText(), key);
    EXPECT_TRUE(copied.isEqual(&pointing));
}

TEST(FStringIDAttribute, ComparesKeysWithCase) {
    const FStringIDAttribute upper{FStringRef("Gain")};
    const FStringIDAttribute lower{FStringRef("gain")};
    EXPECT_LT(upper.compare(&lower), 0);
    EXPECT_GT(lower.compare(&upper), 0);
    EXPECT_FALSE(upper.isEqual(&lower));
    const CmObject other;
    EXPECT_FALSE(upper.isEqual(&other));
}

TEST(FStringIDAttribute, AnotherKeyReplacesEitherForm) {
    FStringIDAttribute attribute(FStringRef("one"), KeyHolding::constant);
    attribute.setKey(FStringRef("two"));
    EXPECT_TRUE(attribute.getKey() == FStringRef("two"));
    attribute.setKey(FStringRef("three"), KeyHolding::constant);
    EXPECT_TRUE(attribute.getKey() == FStringRef("three"));
}

TEST(FStringIDAttribute, ClonesWithKeyAndValue) {
    FStringIDAttribute attribute{FStringRef("gain")};
    attribute.setFloat(0.5);
    const auto copy = FRefPtr<FStringIDAttribute>::adopt(attribute.clone());
    EXPECT_TRUE(copy->getKey() == FStringRef("gain"));
    EXPECT_EQ(copy->getFloat(), 0.5);
}

} // namespace
} // namespace tessera
