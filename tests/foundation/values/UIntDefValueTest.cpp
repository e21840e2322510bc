#include "foundation/values/UIntDefValue.h"

#include "foundation/object/FRefPtr.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

TEST(UIntDefValue, BeginsAtItsDefaultAndRemembersIt) {
    UIntDefValue value(7, 0, 10);
    EXPECT_EQ(value.getValue(), 7);
    value.setValue(3);
    EXPECT_EQ(value.getDefault(), 7);
    EXPECT_EQ(static_cast<IValue&>(value).getDefault(), 7);
    EXPECT_EQ(UIntDefValue().getDefault(), 0);
}

TEST(UIntDefValue, ACloneHasTheDefault) {
    UIntDefValue value(7, 0, 10);
    value.setDefault(5);
    value.setValue(2);
    const auto copy = FRefPtr<UIntDefValue>::adopt(value.clone());
    EXPECT_EQ(copy->getDefault(), 5);
    EXPECT_EQ(copy->getValue(), 2);
    EXPECT_EQ(copy->getMaximum(), 10);
    EXPECT_STREQ(copy->getClassName(), "UIntDefValue");
}

} // namespace
} // namespace tessera
