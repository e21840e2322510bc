// Values as trees of named values.
#include "foundation/values/UIntDefValue.h"
#include "foundation/values/UPlugTarget.h"
#include "persistence/attributes/FAttributes.h"

#include <gtest/gtest.h>

#include <limits>

namespace tessera {
namespace {

TEST(ValueAttributes, HoldTheValueAndItsRangeAsIntegers) {
    const UIntValue value(5, -3, 8);
    FAttributes attributes;
    ASSERT_TRUE(value.storeAttributes(attributes));
    ASSERT_EQ(attributes.getCount(), 3);
    const char* const names[] = {"Value", "Min", "Max"};
    const std::int64_t numbers[] = {5, -3, 8};
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(attributes.at(i)->getKey() == FStringRef(names[i]));
        EXPECT_EQ(attributes.at(i)->getInt(), numbers[i]);
    }
    UIntValue restored;
    ASSERT_TRUE(restored.restoreAttributes(attributes));
    EXPECT_EQ(restored.getValue(), 5);
    EXPECT_EQ(restored.getMinimum(), -3);
    EXPECT_EQ(restored.getMaximum(), 8);
}

TEST(ValueAttributes, AValueOutsideItsStoredRangeIsClamped) {
    FAttributes attributes;
    attributes.setInt("Value", 99);
    attributes.setInt("Min", 10);
    attributes.setInt("Max", 20);
    UIntValue value;
    ASSERT_TRUE(value.restoreAttributes(attributes));
    EXPECT_EQ(value.getValue(), 20);
}

TEST(ValueAttributes, EachMayBeMissing) {
    UIntValue value(5, 0, 8);
    FAttributes nothing;
    EXPECT_TRUE(value.restoreAttributes(nothing));
    EXPECT_EQ(value.getValue(), 5);
    FAttributes maximum;
    maximum.setInt("Max", 3);
    EXPECT_TRUE(value.restoreAttributes(maximum));
    EXPECT_EQ(value.getMinimum(), 0);
    EXPECT_EQ(value.getMaximum(), 3);
    FAttributes number;
    number.setInt("Value", 2);
    EXPECT_TRUE(value.restoreAttributes(number));
    EXPECT_EQ(value.getValue(), 2);
}

TEST(ValueAttributes, NumbersBeyond32BitsAreTheNearest) {
    FAttributes attributes;
    attributes.setInt("Min", std::numeric_limits<std::int64_t>::min());
    attributes.setInt("Max", std::numeric_limits<std::int64_t>::max());
    attributes.setInt("Value", std::int64_t{1} << 40);
    UIntValue value;
    EXPECT_TRUE(value.restoreAttributes(attributes));
    EXPECT_EQ(value.getMinimum(), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(value.getMaximum(), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(value.getValue(), std::numeric_limits<std::int32_t>::max());
}

TEST(ValueAttributes, TheDefaultBelongsToTheProgram) {
    UIntDefValue value(5, 0, 8);
    FAttributes attributes;
    ASSERT_TRUE(value.storeAttributes(attributes));
    EXPECT_EQ(attributes.getCount(), 3);
    value.setDefault(1);
    ASSERT_TRUE(value.restoreAttributes(attributes));
    EXPECT_EQ(value.getDefault(), 1);
}

TEST(ValueAttributes, APlainValueHasNone) {
    UValue value;
    FAttributes attributes;
    EXPECT_FALSE(value.storeAttributes(attributes));
    EXPECT_FALSE(value.restoreAttributes(attributes));
}

TEST(ValueAttributes, SayWhetherTheyAreOfAPlugTarget) {
    FAttributes attributes;
    EXPECT_FALSE(UPlugTarget::isPlugTarget(attributes));
    attributes.setInt("IsPlugTarget", 1);
    EXPECT_TRUE(UPlugTarget::isPlugTarget(attributes));
}

} // namespace
} // namespace tessera
