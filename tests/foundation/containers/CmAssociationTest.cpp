#include "foundation/containers/CmAssociation.h"

#include "tests/foundation/containers/TestNumber.h"

namespace tessera::test {
namespace {

using CmAssociationTest = ContainerTest;

TEST_F(CmAssociationTest, EqualityAndOrderLookAtTheKeyAlone) {
    TestNumber one(1);
    TestNumber otherOne(1);
    TestNumber two(2);
    const CmAssociation first(&one, &two);
    const CmAssociation second(&otherOne, nullptr);
    const CmAssociation third(&two, &two);
    EXPECT_TRUE(first.isEqual(&second));
    EXPECT_FALSE(first.isEqual(&third));
    EXPECT_EQ(first.compare(&second), 0);
    EXPECT_LT(first.compare(&third), 0);
    EXPECT_GT(third.compare(&first), 0);
}

TEST_F(CmAssociationTest, WithoutAKeyItEqualsNothingAndSortsBelow) {
    TestNumber one(1);
    const CmAssociation empty;
    const CmAssociation full(&one, nullptr);
    EXPECT_FALSE(empty.isEqual(&empty));
    EXPECT_EQ(empty.compare(&full), -1);
    EXPECT_FALSE(full.isEqual(&empty));
    EXPECT_EQ(full.compare(&empty), -1);
}

TEST_F(CmAssociationTest, AnotherClassEqualsNothingAndSortsAbove) {
    TestNumber one(1);
    const CmAssociation association(&one, nullptr);
    EXPECT_FALSE(association.isEqual(&one));
    EXPECT_EQ(association.compare(&one), -1);
    EXPECT_FALSE(association.isEqual(nullptr));
    EXPECT_EQ(association.compare(nullptr), -1);
}

TEST_F(CmAssociationTest, CloneCopiesKeyAndValue) {
    TestNumber one(1);
    TestNumber two(2);
    const CmAssociation association(&one, &two);
    const auto copy = FRefPtr<CmAssociation>::adopt(association.clone());
    const auto key = FRefPtr<CmObject>::adopt(copy->getKey());
    const auto value = FRefPtr<CmObject>::adopt(copy->getValue());
    EXPECT_NE(key.get(), &one);
    EXPECT_TRUE(key->isEqual(&one));
    EXPECT_NE(value.get(), &two);
    EXPECT_TRUE(value->isEqual(&two));

    const CmAssociation empty;
    const auto emptyCopy = FRefPtr<CmAssociation>::adopt(empty.clone());
    EXPECT_EQ(emptyCopy->getKey(), nullptr);
    EXPECT_EQ(emptyCopy->getValue(), nullptr);
}

} // namespace
} // namespace tessera::test
