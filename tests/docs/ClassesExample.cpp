#include "docs/Marker.h"
#include "foundation/containers/CmString.h"
#include "foundation/object/ClassFactory.h"
#include "foundation/object/FRefPtr.h"

#include <gtest/gtest.h>

namespace tessera::test {
namespace {

// [by name]
FRefPtr<Marker> newMarker() {
    const auto object = FRefPtr<CmObject>::adopt(ClassFactory::getInstance(true)->createObject("Marker"));
    return FRefPtr<Marker>(cmCast<Marker>(object.get()));
}
// [by name]

TEST(ClassesExample, AClassIsCreatedByItsName) {
    const auto marker = newMarker();
    ASSERT_TRUE(marker);
    EXPECT_EQ(marker->getReferenceCount(), 1u);
    EXPECT_TRUE(marker->isTypeOf("CmObject", true));
    EXPECT_TRUE(marker->isA("Marker"));
    EXPECT_FALSE(marker->isA("CmObject"));
    EXPECT_EQ(ClassFactory::getInstance(true)->createObject("No such class"), nullptr);
}

TEST(ClassesExample, TheCastGivesNullForAnotherClass) {
    CmString text;
    EXPECT_EQ(cmCast<Marker>(static_cast<CmObject*>(&text)), nullptr);
    EXPECT_EQ(cmCast<Marker>(static_cast<CmObject*>(nullptr)), nullptr);
}

} // namespace
} // namespace tessera::test
