// The records of all layers together, as the module has them.
#include "support/ClassRecords.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

TEST(ClassRecords, OfAllLayersCreateTheirObjectsAndEndInTheRoot) {
    EXPECT_GE(test::expectSoundRecords(), 30);
}

TEST(ClassRecords, EachTableHasEnteredItsOwn) {
    const ClassFactory& registry = *ClassFactory::getInstance(true);
    for (const char* name : {"CmObject", "FMemoryStream", "WinIPCSemaphore"}) {
        EXPECT_NE(registry.findByName(name), nullptr) << name;
    }
}

} // namespace
} // namespace tessera
