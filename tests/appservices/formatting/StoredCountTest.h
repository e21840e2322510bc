// What a date and a time have in common: an object that is one count, compared, cloned and stored by it.
//
// A test instantiates the suite for its class and tells by a StoredCount how the count is reached.
#pragma once

#include "foundation/containers/CmString.h"
#include "foundation/object/FRefPtr.h"
#include "persistence/attributes/FAttributes.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace tessera::test {

// Of a class: `key` of the attribute, the `least` and the `most` that the count can be, and `of(object)`, the count.
template <class Object>
struct StoredCount;

template <class Object>
class StoredCountTest : public testing::Test {
protected:
    using Count = StoredCount<Object>;

    static std::int64_t restored(std::int64_t stored) {
        FAttributes attributes;
        attributes.setInt(Count::key, stored);
        Object object;
        EXPECT_TRUE(object.restoreAttributes(attributes));
        return Count::of(object);
    }
};

TYPED_TEST_SUITE_P(StoredCountTest);

TYPED_TEST_P(StoredCountTest, ComparesAndHashesByItsCount) {
    const TypeParam early(10);
    const TypeParam same(10);
    const TypeParam late(20);
    const CmString other(FStringRef("10"));
    EXPECT_TRUE(early.isEqual(&same));
    EXPECT_FALSE(early.isEqual(&late));
    EXPECT_FALSE(early.isEqual(&other));
    EXPECT_FALSE(early.isEqual(nullptr));
    EXPECT_LT(early.compare(&late), 0);
    EXPECT_GT(late.compare(&early), 0);
    EXPECT_EQ(early.compare(&same), 0);
    EXPECT_EQ(late.hash(7), 6u);
    EXPECT_EQ(late.hash(0), 0u);
}

TYPED_TEST_P(StoredCountTest, IsClonedWithItsCount) {
    const TypeParam object(2'451'911);
    const auto copy = FRefPtr<TypeParam>::adopt(object.clone());
    EXPECT_NE(copy.get(), &object);
    EXPECT_EQ(StoredCount<TypeParam>::of(*copy), 2'451'911);
}

TYPED_TEST_P(StoredCountTest, KeepsItsCountUnderItsKeyAsAnInteger) {
    FAttributes attributes;
    ASSERT_TRUE(TypeParam(2'451'911).storeAttributes(attributes));
    ASSERT_EQ(attributes.getCount(), 1);
    EXPECT_TRUE(attributes.at(0)->hasType(AttributeBits::kInteger));
    std::int64_t stored = 0;
    ASSERT_TRUE(attributes.getInt(StoredCount<TypeParam>::key, stored));
    EXPECT_EQ(stored, 2'451'911);
    EXPECT_EQ(this->restored(stored), 2'451'911);
}

TYPED_TEST_P(StoredCountTest, StaysWhenItsAttributeIsMissing) {
    FAttributes attributes;
    TypeParam object(7);
    EXPECT_FALSE(object.restoreAttributes(attributes));
    EXPECT_EQ(StoredCount<TypeParam>::of(object), 7);
}

TYPED_TEST_P(StoredCountTest, TakesTheNearestCountForANumberThatDoesNotFit) {
    EXPECT_EQ(this->restored(INT64_MIN), StoredCount<TypeParam>::least);
    EXPECT_EQ(this->restored(StoredCount<TypeParam>::least - 1), StoredCount<TypeParam>::least);
    EXPECT_EQ(this->restored(StoredCount<TypeParam>::least), StoredCount<TypeParam>::least);
    EXPECT_EQ(this->restored(StoredCount<TypeParam>::most), StoredCount<TypeParam>::most);
    EXPECT_EQ(this->restored(StoredCount<TypeParam>::most + 1), StoredCount<TypeParam>::most);
    EXPECT_EQ(this->restored(INT64_MAX), StoredCount<TypeParam>::most);
}

REGISTER_TYPED_TEST_SUITE_P(StoredCountTest, ComparesAndHashesByItsCount, IsClonedWithItsCount,
                            KeepsItsCountUnderItsKeyAsAnInteger, StaysWhenItsAttributeIsMissing,
                            TakesTheNearestCountForANumberThatDoesNotFit);

} // namespace tessera::test
